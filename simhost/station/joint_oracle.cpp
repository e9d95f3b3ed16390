// The joint-space obstacle boxes and the checks over them.
#include "joint_oracle.h"

#include <algorithm>
#include <cmath>

namespace joint_oracle {

bool boxHolds(const JointBox& box, const double* q)
{
    const size_t count = std::min(box.lower.size(), box.upper.size());
    for (size_t i = 0; i < count; ++i) {
        if (!(box.lower[i] < q[i] && q[i] < box.upper[i]))
            return false;
    }
    return true;
}

int boxesHolding(const std::vector<JointBox>& boxes, const double* q)
{
    return static_cast<int>(std::count_if(boxes.begin(), boxes.end(),
                                          [q](const JointBox& box) { return boxHolds(box, q); }));
}

bool withinLimits(const std::vector<double>& lower, const std::vector<double>& upper, const double* q,
                  int count)
{
    if (count != static_cast<int>(lower.size()) || lower.size() != upper.size())
        return false;
    for (int i = 0; i < count; ++i) {
        if (!(lower[i] <= q[i] && q[i] <= upper[i]))
            return false;
    }
    return true;
}

int moveSteps(const double* a, const double* b, int jointCount, double step)
{
    double largest = 0.0;
    for (int i = 0; i < jointCount; ++i)
        largest = std::max(largest, std::fabs(b[i] - a[i]));
    const double steps = std::ceil(largest / step);
    // A huge move on a tiny step must not overflow the counter.
    if (!(steps < 1e9))
        return 1000000000;
    return std::max(1, static_cast<int>(steps));
}

int testJointMove(const std::vector<JointBox>& boxes, int jointCount, const double* a, const double* b,
                  double step)
{
    const int n = moveSteps(a, b, jointCount, step);
    std::vector<double> point(static_cast<size_t>(jointCount));
    for (int k = 0; k <= n; ++k) {
        for (int i = 0; i < jointCount; ++i)
            point[static_cast<size_t>(i)] = a[i] + (b[i] - a[i]) * k / n;
        if (boxesHolding(boxes, point.data()) > 0)
            return 1;
    }
    return 0;
}

}  // namespace joint_oracle
