// Whether the straight joint move of an edge is free, and its length.
#pragma once

class HostItem;

// 0 when the host reports the straight joint move from a to b free; anything
// else when it collides or cannot be checked. The host's own collision step
// ("PathStepCollisionDeg") is used.
int edgeIsBlocked(HostItem* robot, const double* a, const double* b, int jointCount);

// L1 distance in joint space: sum of absolute differences, in index order.
double jointDistance(const double* a, const double* b, int jointCount);
