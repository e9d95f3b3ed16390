// Linking two joint configurations: the query the map exists for.
#pragma once

#include "vorlik/host_item.h"

#include <QString>

class OperationScope;
class PlannerSession;

// Links two joint configurations (all 12 values are taken; the robot's first
// J count) through the roadmap: both become nodes, the shortest chain of nodes
// between them is written as program `progname` of joint moves through new
// targets "Pt %1 (S%2)". Returns the program, or null on any failure (reported
// to the user, as a message box unless silent), also when another operation runs.
Item linkJointValues(PlannerSession& session, bool silent, const JointVector& start, const JointVector& end,
                     const QString& progname);

// The same within an operation that is already running (the joins of targets and programs).
Item linkJoints(OperationScope& operation, bool silent, const JointVector& start, const JointVector& end,
                const QString& progname);
