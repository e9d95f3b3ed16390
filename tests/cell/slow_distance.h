#pragma once

#include "cell_placed_solid.h"

// The distance between two placed solids worked out slowly and independently
// of the checker's narrow tests, to judge them where they and FCL disagree:
// a point's distance to a solid in closed form, minimised over the points of
// the other solid by nested golden-section searches in long double. The
// distance of a point to a convex solid is convex, and minimising a convex
// function over some coordinates leaves it convex in the rest, so each level
// of the search is over a convex function of one variable.
namespace slow_distance {

using Real = long double;

// 0 when the solids overlap (to the search's precision), else their distance in millimetres.
Real between(const PlacedSolid& a, const PlacedSolid& b);

// How deep the solids overlap: the largest distance from a point inside both
// to the nearer of their surfaces. 0 or less when they do not overlap. The
// depth inside a convex solid is concave, so the same searches find it.
Real overlap(const PlacedSolid& a, const PlacedSolid& b);

// Their distance when apart, minus their overlap when not. Good to about
// 1e-10 mm on solids of a metre.
Real signedGap(const PlacedSolid& a, const PlacedSolid& b);

}  // namespace slow_distance
