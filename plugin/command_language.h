// The text command language through which the host and scripts drive the planner.
#pragma once

#include <QString>

class PlannerSession;

// The text commands the host passes on from scripts and other plug-ins:
// "Join", "Calc", "Add", "Clear", "SelectRobot", "Info", "Save"/"SaveMap" and
// the settings ("Samples", "Edges", "NewNodeEdges", "Display", "Shortcut",
// "GrowMap", "CheckRoutes"). Keywords are matched at the start, in any case.
class CommandLanguage {
public:
    explicit CommandLanguage(PlannerSession& session) : session_(session) {}

    // Runs one command and gives its reply.
    QString run(const QString& command, const QString& value);

private:
    QString joinCommand(const QString& command, const QString& value);
    QString saveCommand(const QString& command, const QString& path);
    QString settingCommand(const QString& command, const QString& value);
    bool selectRobot(bool autoSelect, const QString& name);

    PlannerSession& session_;
};
