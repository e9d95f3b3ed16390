// Which robot the map is built for.
#pragma once

#include <QString>

#include <utility>

class PlannerSession;

// Chooses the robot the session's map is built for: the one named, else the
// first robot (automatic) or the one the user picks. The settings are saved
// under the robot chosen before, and the chosen robot's stored map is read.
class RobotChoice {
public:
    RobotChoice(PlannerSession& session, QString pluginName) : session_(session), pluginName_(std::move(pluginName)) {}

    // True when a robot is chosen. While an operation runs, its robot stays.
    bool select(bool autoSelect, const QString& name);

private:
    PlannerSession& session_;
    QString pluginName_;  // whose records are saved and read
};
