#pragma once

class PlannerSession;

// Computes the collision-free map of the session's robot, seeded with the
// joints of the robot's targets, under a modal progress dialog. A cancelled
// computation replaces the stored map only when there was none or the user
// agrees.
void CalculateMap(PlannerSession& session);
