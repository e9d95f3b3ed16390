// Whether joint values are numbers the planner can use.
#pragma once

#include "vorlik/joint_vector.h"

#include <cmath>

// True when every one of the `count` values is a finite number: joint values
// that are not cannot be compared or interpolated, and are refused.
inline bool allFinite(const double* values, int count)
{
    for (int i = 0; i < count; ++i)
        if (!std::isfinite(values[i]))
            return false;
    return true;
}

inline bool allFinite(const JointVector& joints)
{
    return allFinite(joints.values(), joints.count());
}
