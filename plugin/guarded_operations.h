// The operations a user or another plug-in starts, each behind the entry guard.
#pragma once

#include "vorlik/host_item.h"

#include <QList>
#include <QString>

class PlannerSession;

// The operations on a session as the plug-in's slots, menus and commands start
// them: each runs behind the entry guard, so that no exception reaches the
// host and a failure gives the operation's empty answer.
class GuardedOperations {
public:
    explicit GuardedOperations(PlannerSession& session) : session_(session) {}

    void calculateMap();
    bool addTargetsToMap(bool silent, bool robotPositionOnly);
    void joinSelection(bool silent);
    Item joinTargets(bool silent, Item target1, Item target2);
    bool joinPrograms(bool silent, const QList<Item>& programs, const QString& programName);
    Item joinJoints(bool silent, const double* joints1, const double* joints2, const QString& programName);
    void showSamples();

private:
    PlannerSession& session_;
};
