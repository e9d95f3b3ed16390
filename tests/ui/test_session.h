#pragma once

#include "fake_station.h"
#include "planner_session.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"
#include "translate.h"

#include <QObject>

#include <array>

// The plug-in's side of the operations, as the plug-in object provides it:
// its robot check and its UpdateForm signal, which is counted and logged.
class TestSession : public PlannerSession {
public:
    TestSession()
    {
        for (RoadmapMatrix** matrix : matrices())
            *matrix = createMatrix();
        graph = new RoadmapGraph;
        workGraph = new RoadmapGraph;
    }
    virtual ~TestSession()
    {
        for (RoadmapMatrix** matrix : matrices())
            destroyMatrix(matrix);
        delete graph;
        delete workGraph;
    }
    TestSession(const TestSession&) = delete;
    TestSession& operator=(const TestSession&) = delete;

    bool requireRobot(bool silent) override
    {
        if (robot)
            return true;
        hostApi->showMessage(planTr("Invalid robot: add a robot or load a project"), !silent);
        return false;
    }
    bool selectRobot(bool, const QString&) override { return robot != nullptr; }
    QString robotName() override { return robot ? robot->name() : QString(); }
    void emitUpdateForm() override
    {
        ++updateFormCount;
        if (auto* station = dynamic_cast<FakeStation*>(hostApi))
            station->log(QStringLiteral("UpdateForm"));
    }
    QObject* sessionObject() override { return &signalSource; }

    int updateFormCount = 0;
    QObject signalSource;

private:
    std::array<RoadmapMatrix**, 4> matrices() { return {&samples, &route, &samplePositions, &workSamples}; }
};
