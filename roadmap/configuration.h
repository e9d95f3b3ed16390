// A robot configuration inside the planner.
#pragma once

#include "vorlik/joint_vector.h"

#include <array>
#include <cmath>

// A robot configuration inside the planner: 12 joint values of which only the
// first J (the robot's joint count) matter; the rest stay 0.
using Configuration = std::array<double, JointVector::MaxJoints>;

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
