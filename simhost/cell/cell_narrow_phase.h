// Whether two placed solids touch: the exact tests, FCL where they end.
#pragma once

#include "cell_placed_solid.h"

// Whether two placed solids touch. Spheres, capsules and boxes meet one
// another in closed form (distances of points and segments, separating axes
// for two boxes). A cylinder is exact too while the closest points of its
// axis to the other solid lie beside its side wall; near its rim the answer
// is left to FCL's GJK.
namespace cell_narrow_phase {

enum class Verdict { Apart, Touch, Unsure };

// The exact answer where the shapes allow one, else Unsure.
Verdict exactTest(const PlacedSolid& a, const PlacedSolid& b);

// A ball and a solid, exactly: a sphere's own test, and the cull of any
// solid's bounding sphere.
bool ballTouches(const Eigen::Vector3d& centre, double radius, const PlacedSolid& solid);

// FCL's answer, as the host has always given it.
bool fclTouch(const PlacedSolid& a, const PlacedSolid& b);

// Work done by the narrow tests: how many answered exactly and how many went to FCL.
struct Counts {
    long long exact = 0;
    long long fcl = 0;
};

// exactTest, falling back to fclTouch when it is unsure.
bool touch(const PlacedSolid& a, const PlacedSolid& b, Counts* counts);

}  // namespace cell_narrow_phase
