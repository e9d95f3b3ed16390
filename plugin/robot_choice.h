// Which robot the map is built for.
#pragma once

#include <QString>

#include <functional>
#include <utility>

class PlannerSession;

// Chooses the robot the session's map is built for: the one named, else the
// first robot (automatic) or the one the user picks. The settings are saved
// under the robot chosen before, and the chosen robot's stored map is read,
// both by the plug-in's own calls: the user's pick runs the event loop, and
// the map goes to whatever session the plug-in has by then (none after an
// unload).
class RobotChoice {
public:
    RobotChoice(PlannerSession& session, std::function<void()> saveSettings, std::function<void()> loadRobotMap)
        : session_(session), saveSettings_(std::move(saveSettings)), loadRobotMap_(std::move(loadRobotMap))
    {
    }

    // True when a robot is chosen. While an operation runs, its robot stays.
    bool select(bool autoSelect, const QString& name);

private:
    PlannerSession& session_;
    std::function<void()> saveSettings_;  // the settings under the robot chosen before
    std::function<void()> loadRobotMap_;  // the chosen robot's stored map
};
