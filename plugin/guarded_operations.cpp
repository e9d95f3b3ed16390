// The session's operations, each behind the entry guard.
#include "guarded_operations.h"

#include "add_targets.h"
#include "calculate_map.h"
#include "entry_guard.h"
#include "join_joints.h"
#include "join_operations.h"
#include "planner_session.h"
#include "show_samples.h"

void GuardedOperations::calculateMap()
{
    guardedEntry(session_.resources(), session_.host(), [this] { ::calculateMap(session_); });
}

bool GuardedOperations::addTargetsToMap(bool silent, bool robotPositionOnly)
{
    return guardedEntry(session_.resources(), session_.host(), false,
                        [&] { return ::addTargetsToMap(session_, silent, robotPositionOnly); });
}

void GuardedOperations::joinSelection(bool silent)
{
    guardedEntry(session_.resources(), session_.host(), [&] { linkSelection(session_, silent); });
}

Item GuardedOperations::joinTargets(bool silent, Item target1, Item target2)
{
    return guardedEntry(session_.resources(), session_.host(), Item(nullptr),
                        [&] { return linkTargets(session_, silent, target1, target2); });
}

bool GuardedOperations::joinPrograms(bool silent, const QList<Item>& programs, const QString& programName)
{
    return guardedEntry(session_.resources(), session_.host(), false,
                        [&] { return linkPrograms(session_, silent, programs, programName); });
}

Item GuardedOperations::joinJoints(bool silent, const double* joints1, const double* joints2,
                                   const QString& programName)
{
    return guardedEntry(session_.resources(), session_.host(), Item(nullptr),
                        [&] {
                            // The host hands over 12 values each, the most a robot has.
                            return linkJointValues(session_, silent, JointVector(joints1, JointVector::MaxJoints),
                                                   JointVector(joints2, JointVector::MaxJoints), programName);
                        });
}

void GuardedOperations::showSamples()
{
    guardedEntry(session_.resources(), session_.host(), [this] { ::showSamples(session_); });
}
