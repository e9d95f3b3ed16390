// Showing the map's samples on the robot.
#pragma once

class PlannerSession;

// Hands every sample of the map to the robot to show, one per column.
void showSamples(PlannerSession& session);
