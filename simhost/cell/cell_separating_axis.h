// Separating-axis tests between boxes and round solids.
#pragma once

#include "cell_placed_solid.h"

// Separating-axis tests: two convex solids are apart when their shadows on
// some axis do not meet. For two boxes the fifteen axes of their faces and
// edges decide exactly; for the round solids any axis that separates still
// proves them apart, so a few likely axes make a cheap exact "apart" answer.
namespace cell_separating_axis {

// Half the length of the solid's shadow on the axis (any length), centred on the solid's centre.
double shadowHalf(const PlacedSolid& solid, const Eigen::Vector3d& axis);

// True when the shadows of the two solids on the axis do not meet.
bool separates(const Eigen::Vector3d& axis, const PlacedSolid& a, const PlacedSolid& b);

// Exact for two boxes: true when they overlap or touch.
bool boxesMeet(const PlacedSolid& a, const PlacedSolid& b);

// True when one of the solids' own axes, their cross products or the hint
// separates them: then they are certainly apart.
bool someAxisSeparates(const PlacedSolid& a, const PlacedSolid& b, const Eigen::Vector3d& hint);

}  // namespace cell_separating_axis
