#pragma once

#include "fake_station.h"
#include "operation_scope.h"
#include "planner_session.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include <functional>
#include <memory>

// A planner session on a fake station, as the plug-in holds one: its
// UpdateForm notifications are counted and logged, and a robot choice finds
// whatever robot was set.
class TestSession {
public:
    explicit TestSession(FakeStation* station)
    {
        SessionCallbacks callbacks;
        callbacks.changed = [this, station] {
            ++updateFormCount;
            station->log(QStringLiteral("UpdateForm"));
        };
        callbacks.selectRobot = [this](bool, const QString&) { return planner_->robot() != nullptr; };
        planner_ = std::make_shared<PlannerSession>(station, nullptr, std::move(callbacks));
    }

    operator PlannerSession&() { return *planner_; }
    PlannerSession& planner() { return *planner_; }

    const RoadmapMatrix* samples() const { return planner_->map().samples(); }
    const RoadmapGraph* graph() const { return planner_->map().graph(); }
    const RoadmapMatrix* route() const { return planner_->map().route(); }
    const RoadmapMatrix* workSamples() const { return planner_->workMap().samples(); }
    const RoadmapGraph* workGraph() const { return planner_->workMap().graph(); }
    HostItem* robot() const { return planner_->robot(); }
    void setRobot(HostItem* robot) { planner_->setRobot(robot); }
    bool settingsChanged() const { return planner_->settingsChanged(); }

    // Settings as a station would hold them: not marked changed.
    void setSettings(const std::function<void(PlannerSettings&)>& change)
    {
        PlannerSettings settings = planner_->settings();
        change(settings);
        planner_->restoreSettings(settings);
    }

    // Lays out the map by hand, as an operation would change it.
    void editMap(const std::function<void(RobotMap&)>& edit)
    {
        OperationScope scope(*planner_, true);
        edit(scope.map());
    }

    int updateFormCount = 0;

private:
    std::shared_ptr<PlannerSession> planner_;
};
