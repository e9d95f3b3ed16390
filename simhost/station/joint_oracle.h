// The joint-space obstacle boxes and the checks over them.
#pragma once

#include <vector>

// The joint-space obstacle model of the simulated host: every robot carries a
// list of boxes in its joint space. It is exact and cheap on purpose, so that a
// planning result can be recomputed independently of the host.
struct JointBox {
    std::vector<double> lower;
    std::vector<double> upper;
};

namespace joint_oracle {

// True when lower[i] < q[i] < upper[i] for every joint i (strictly inside).
bool boxHolds(const JointBox& box, const double* q);

// Number of boxes that hold q.
int boxesHolding(const std::vector<JointBox>& boxes, const double* q);

// True when q has as many values as the limits and lies within them (bounds included).
bool withinLimits(const std::vector<double>& lower, const std::vector<double>& upper, const double* q,
                  int count);

// Number of intervals a straight joint move is cut into: max(1, ceil(max |b - a| / step)).
int moveSteps(const double* a, const double* b, int jointCount, double step);

// 1 when any of the points a + (b - a) * k / n, k = 0 ... n, lies in a box, else 0.
int testJointMove(const std::vector<JointBox>& boxes, int jointCount, const double* a, const double* b,
                  double step);

}  // namespace joint_oracle
