// Whether two placed solids touch: the exact tests, FCL where they end.
#include "cell_narrow_phase.h"

#include "cell_distance.h"
#include "cell_separating_axis.h"

#include <fcl/narrowphase/collision.h>

#include <cmath>

namespace cell_narrow_phase {

namespace {

using Kind = Solid::Kind;
using Vector = Eigen::Vector3d;

Verdict verdict(bool touching)
{
    return touching ? Verdict::Touch : Verdict::Apart;
}

double squared(double x)
{
    return x * x;
}

// Order of the shapes in a pair, so that each pair of kinds has one case.
int rank(Kind kind)
{
    switch (kind) {
    case Kind::Sphere: return 0;
    case Kind::Capsule: return 1;
    case Kind::Box: return 2;
    case Kind::Cylinder: return 3;
    }
    return 3;
}

// True when the point lies between the planes of the cylinder's end faces.
bool besideSideWall(const Vector& point, const PlacedSolid& cylinder)
{
    return std::abs(cylinder.axis().dot(point - cylinder.centre())) <= cylinder.halfLength();
}

// A cylinder lies within its axis grown by its radius R. With p the point of
// the other solid's core nearest the axis, at distance d, the solids are at
// least d - R apart, and exactly that when p lies beside the side wall: the
// wall's nearest point then faces p square across the axis.
Verdict segmentCylinder(const Vector& p0, const Vector& p1, double radius, const PlacedSolid& cylinder)
{
    double s = 0.0, t = 0.0;
    const double core = cell_distance::segmentSegment(p0, p1, cylinder.end(-1), cylinder.end(1), &s, &t);
    const double R = cylinder.solid->radius;
    if (core > squared(R + radius))
        return Verdict::Apart;
    const Vector p = p0 + s * (p1 - p0);
    if (besideSideWall(p, cylinder))
        return Verdict::Touch;
    for (const Vector& point : {p, p0, p1}) {
        if (ballTouches(point, radius, cylinder))
            return Verdict::Touch;
    }
    return Verdict::Unsure;
}

// As for a segment: the box's point nearest the axis decides when it lies beside the side wall.
Verdict boxCylinder(const PlacedSolid& box, const PlacedSolid& cylinder)
{
    const Vector half = 0.5 * box.solid->size;
    const Vector a = box.toLocal(cylinder.end(-1)), b = box.toLocal(cylinder.end(1));
    double t = 0.0;
    const double core = cell_distance::segmentBox(a, b, half, &t);
    const double R = cylinder.solid->radius;
    if (core > squared(R))
        return Verdict::Apart;
    // The box's point nearest the axis, back in the world to compare with the wall.
    const Vector nearest = a + t * (b - a);
    const Vector onBox = nearest.cwiseMax(-half).cwiseMin(half);
    if (besideSideWall(box.world * onBox, cylinder))
        return Verdict::Touch;
    return Verdict::Unsure;
}

Verdict cylinderCylinder(const PlacedSolid& a, const PlacedSolid& b)
{
    double s = 0.0, t = 0.0;
    const double core = cell_distance::segmentSegment(a.end(-1), a.end(1), b.end(-1), b.end(1), &s, &t);
    if (core > squared(a.solid->radius + b.solid->radius))
        return Verdict::Apart;
    // The segment between the closest axis points is square to both axes
    // when both lie beside the other's side wall: the walls face each other there.
    const Vector p = a.end(-1) + s * (a.end(1) - a.end(-1));
    const Vector q = b.end(-1) + t * (b.end(1) - b.end(-1));
    if (besideSideWall(p, b) && besideSideWall(q, a))
        return Verdict::Touch;
    return Verdict::Unsure;
}

// Cases with a.kind ranked no higher than b.kind.
Verdict ordered(const PlacedSolid& a, const PlacedSolid& b)
{
    switch (a.kind()) {
    case Kind::Sphere:
        return verdict(ballTouches(a.centre(), a.solid->radius, b));
    case Kind::Capsule:
        switch (b.kind()) {
        case Kind::Capsule: {
            double s = 0.0, t = 0.0;
            return verdict(cell_distance::segmentSegment(a.end(-1), a.end(1), b.end(-1), b.end(1), &s, &t) <=
                           squared(a.solid->radius + b.solid->radius));
        }
        case Kind::Box: {
            double t = 0.0;
            return verdict(cell_distance::segmentBox(b.toLocal(a.end(-1)), b.toLocal(a.end(1)), 0.5 * b.solid->size,
                                                     &t) <= squared(a.solid->radius));
        }
        default:
            return segmentCylinder(a.end(-1), a.end(1), a.solid->radius, b);
        }
    case Kind::Box:
        return b.kind() == Kind::Box ? verdict(cell_separating_axis::boxesMeet(a, b)) : boxCylinder(a, b);
    case Kind::Cylinder:
        break;
    }
    return cylinderCylinder(a, b);
}

const fcl::CollisionRequestd& request()
{
    static const fcl::CollisionRequestd shared = [] {
        fcl::CollisionRequestd r(1, false);
        // FCL's own GJK is faster than libccd's on these few convex primitives.
        r.gjk_solver_type = fcl::GST_INDEP;
        return r;
    }();
    return shared;
}

}  // namespace

bool ballTouches(const Vector& centre, double radius, const PlacedSolid& solid)
{
    const double reach = squared(radius);
    switch (solid.kind()) {
    case Kind::Sphere:
        return (centre - solid.centre()).squaredNorm() <= squared(radius + solid.solid->radius);
    case Kind::Capsule:
        return cell_distance::pointSegment(centre, solid.end(-1), solid.end(1)) <= squared(radius + solid.solid->radius);
    case Kind::Box:
        return cell_distance::pointBox(solid.toLocal(centre), 0.5 * solid.solid->size) <= reach;
    case Kind::Cylinder:
        return cell_distance::pointCylinder(solid.toLocal(centre), solid.solid->radius, solid.halfLength()) <= reach;
    }
    return false;
}

Verdict exactTest(const PlacedSolid& a, const PlacedSolid& b)
{
    return rank(a.kind()) <= rank(b.kind()) ? ordered(a, b) : ordered(b, a);
}

bool fclTouch(const PlacedSolid& a, const PlacedSolid& b)
{
    fcl::CollisionResultd result;
    return fcl::collide(a.solid->geometry.get(), a.world, b.solid->geometry.get(), b.world, request(), result) > 0;
}

bool touch(const PlacedSolid& a, const PlacedSolid& b, Counts* counts)
{
    const Verdict answer = exactTest(a, b);
    if (answer != Verdict::Unsure) {
        ++counts->exact;
        return answer == Verdict::Touch;
    }
    // Near a cylinder's rim: a cheap axis may still part them before GJK runs.
    const Vector between = b.centre() - a.centre();
    if (cell_separating_axis::someAxisSeparates(a, b, between)) {
        ++counts->exact;
        return false;
    }
    ++counts->fcl;
    return fclTouch(a, b);
}

}  // namespace cell_narrow_phase
