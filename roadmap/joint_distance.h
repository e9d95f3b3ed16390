// The planner's distance between configurations.
#pragma once

#include <cmath>

// L1 distance in joint space: the sum of absolute differences, in index order
// (the order fixes the rounding, and so every map's edge lengths).
inline double jointDistance(const double* a, const double* b, int jointCount)
{
    double distance = 0.0;
    for (int i = 0; i < jointCount; ++i)
        distance += std::fabs(a[i] - b[i]);
    return distance;
}
