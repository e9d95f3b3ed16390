// Adding targets or the robot's position to the map.
#pragma once

class PlannerSession;

// Inserts the selected targets of the robot's joint count into the map, one
// node each, or the robot's current position when no target is selected or
// `robotPositionOnly`. Every outcome goes to the status bar. False when there
// is no robot or the robot position could not be connected, and when another
// operation runs.
bool addTargetsToMap(PlannerSession& session, bool silent, bool robotPositionOnly);
