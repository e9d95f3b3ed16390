#pragma once

#include "vorlik/joint_vector.h"

#include <array>

// A robot configuration inside the planner: 12 joint values of which only the
// first J (the robot's joint count) matter; the rest stay 0.
using Configuration = std::array<double, JointVector::MaxJoints>;
