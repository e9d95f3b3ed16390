// Collision-free configurations: seeds first, then random draws.
#pragma once

#include "configuration.h"

class HostItem;
struct RoadmapMatrix;

// Reads the robot's lower and upper joint limits; returns the joint count J.
int readJointLimits(HostItem* robot, double lower[JointVector::MaxJoints], double upper[JointVector::MaxJoints]);

// Moves the robot to the configuration, refreshes the station and returns the
// number of colliding pairs the host reports (0 = free).
int collisionCount(HostItem* robot, const double* configuration, int jointCount);

// True when the robot refuses the configuration (outside what it accepts).
bool configurationRejected(HostItem* robot, const double* configuration, int jointCount);

// Next collision-free configuration: seeds first (from the 1-based seedCursor
// on, which advances), then random draws within the limits, until found or
// cancelled. cancelValue > 0 means cancelled; the configuration is then unusable.
void findFreeConfiguration(HostItem* robot, const double* lower, const double* upper, int jointCount,
                           const RoadmapMatrix* seeds, double* seedCursor, Configuration& configuration,
                           double* cancelValue);
