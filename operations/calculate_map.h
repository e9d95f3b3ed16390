// The map computation users start from the form, the menu and the "Calc" command.
#pragma once

class OperationScope;
class PlannerSession;

// Computes the collision-free map of the session's robot, seeded with the
// joints of the robot's targets, under a modal progress dialog. A cancelled
// computation replaces the stored map only when there was none or the user
// agrees. Refused while another operation runs.
void calculateMap(PlannerSession& session);

// The same within an operation that is already running (a join that finds no map).
void computeMap(OperationScope& operation);
