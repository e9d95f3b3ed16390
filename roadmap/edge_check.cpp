// The host's joint-move test of an edge, and the L1 joint distance.
#include "edge_check.h"

#include "vorlik/host_item.h"

#include <cmath>

namespace {
// Asks the host for its own "PathStepCollisionDeg".
constexpr double HostDefaultStep = -1.0;
}  // namespace

int edgeIsBlocked(HostItem* robot, const double* a, const double* b, int jointCount)
{
    return robot->testJointMove(JointVector(a, jointCount), JointVector(b, jointCount), HostDefaultStep);
}

double jointDistance(const double* a, const double* b, int jointCount)
{
    double distance = 0.0;
    for (int i = 0; i < jointCount; ++i)
        distance += std::fabs(a[i] - b[i]);
    return distance;
}
