// The planner's state for one station.
#pragma once

#include "planner_resources.h"
#include "planner_settings.h"
#include "robot_map.h"

#include <QString>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

class HostApi;
class HostItem;
class QMainWindow;

// What the session needs of the object that holds it (the plug-in): to hear
// that settings, robot or map changed, and to choose a robot as it does.
struct SessionCallbacks {
    std::function<void()> changed;
    std::function<bool(bool autoSelect, const QString& name)> selectRobot;
};

// Why a running operation must stop early and leave the host's items alone.
enum class Abandonment { None, RobotDeleted, StationReplaced, Unloaded };

// The right to change a map. Only the operations (through OperationScope) and
// the map's persistence make one: the form and the commands read the map.
class MapKey {
    friend class OperationScope;
    friend class MapStore;
    MapKey() = default;
};

// The planner's state for one station: the settings, the chosen robot and its
// map, and the one operation that may run at a time. The progress dialog of
// an operation runs the event loop, so every entry point of the plug-in can be
// reached while an operation runs; the session is what they ask whether one
// does, and what defers an unload or a station replacement until it is over.
class PlannerSession : public std::enable_shared_from_this<PlannerSession> {
public:
    // A session of its own (a test's, a tool's) has resources of its own; the
    // plug-in lends its sessions the resources it owns.
    PlannerSession(HostApi* host, QMainWindow* mainWindow, SessionCallbacks callbacks,
                   std::shared_ptr<PlannerResources> resources = std::make_shared<PlannerResources>());
    void setCallbacks(SessionCallbacks callbacks) { callbacks_ = std::move(callbacks); }
    PlannerSession(const PlannerSession&) = delete;
    PlannerSession& operator=(const PlannerSession&) = delete;

    HostApi* host() const { return host_; }
    PlannerResources& resources() const { return *resources_; }
    // The progress dialog of the session's operations.
    ProgressReporter& progress() const { return resources_->progress(); }
    QMainWindow* mainWindow() const { return mainWindow_; }

    // Settings. Commands and the form change them (and mark them changed);
    // the station's record restores them without marking.
    const PlannerSettings& settings() const { return settings_; }
    void changeSettings(const PlannerSettings& settings);
    void restoreSettings(const PlannerSettings& settings) { settings_ = settings; }
    bool settingsChanged() const { return changed_; }
    // The station's options record was written by a later version: it is
    // kept as it is, whatever the options are here.
    bool keepsStoredOptions() const { return keepStoredOptions_; }
    void setKeepStoredOptions(bool keep) { keepStoredOptions_ = keep; }
    void markChanged() { changed_ = true; }
    void markSaved() { changed_ = false; }

    // The robot the map is built for.
    HostItem* robot() const { return robot_; }
    QString robotName() const;
    void setRobot(HostItem* robot) { robot_ = robot; }
    // True when a robot is chosen; otherwise says so (as a message box unless silent).
    bool requireRobot(bool silent);
    // Chooses a robot the plug-in's way (by name, the first one, or the user's pick).
    bool selectRobot(bool autoSelect, const QString& name);
    // The chosen robot is gone from the station: its handle is dropped unsaved
    // (there is nothing to save under), a running operation stops, and another
    // robot is chosen once none runs.
    void robotGone();
    // Asks the host whether the chosen robot is still there; robotGone() if not.
    bool robotStillThere();

    // The map, for everyone to read, and to change for those with the key.
    const RobotMap& map() const { return map_; }
    // Forgets the map (and whose it was): "Clear", another station.
    void forgetMap();
    // Back to the default settings, no robot and an empty map; only when there is a map.
    void resetToDefaults();
    RobotMap& editMap(MapKey) { return map_; }
    // What the last map computation built, kept when its result was not taken.
    const RobotMap& workMap() const { return work_; }
    RobotMap& editWorkMap(MapKey) { return work_; }

    // Tells the plug-in (and so the form) that settings, robot or map changed.
    void notifyChanged();

    // True while an operation runs, of this session or of one the plug-in
    // let go of (an unload) that is still unwinding: one at a time.
    bool busy() const { return resources_->operationRunning(); }
    // Tells the user that nothing else may start now.
    void refuseWhileBusy(bool silent);
    // What a refused command answers.
    static QString busyText();
    // Stops the running operation at its next progress step; from then on it
    // touches neither the map nor the host's items.
    void abandonOperation(Abandonment why);
    Abandonment abandonment() const { return abandonment_; }
    // Runs `action` once no operation runs: at once when idle.
    void whenIdle(std::function<void()> action);

private:
    friend class OperationScope;
    void operationStarted();
    void operationEnded();

    HostApi* host_;
    QMainWindow* mainWindow_;
    std::shared_ptr<PlannerResources> resources_;
    SessionCallbacks callbacks_;
    PlannerSettings settings_;
    bool changed_ = false;
    bool keepStoredOptions_ = false;
    HostItem* robot_ = nullptr;
    RobotMap map_;
    RobotMap work_;
    int operations_ = 0;
    Abandonment abandonment_ = Abandonment::None;
    std::vector<std::function<void()>> whenIdle_;
};
