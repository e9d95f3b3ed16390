#include "slow_distance.h"

#include <algorithm>
#include <cmath>

namespace slow_distance {

namespace {

struct Point {
    Real x, y, z;
};

Point sub(const Point& a, const Point& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Real norm(const Point& p)
{
    return std::sqrt(p.x * p.x + p.y * p.y + p.z * p.z);
}

// The placement of a solid in long double: local point to world and back.
struct Frame {
    Real r[3][3];
    Point t;

    explicit Frame(const PlacedSolid& solid)
    {
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j)
                r[i][j] = solid.world.linear()(i, j);
        }
        t = {solid.world.translation().x(), solid.world.translation().y(), solid.world.translation().z()};
    }
    Point toWorld(const Point& p) const
    {
        return {r[0][0] * p.x + r[0][1] * p.y + r[0][2] * p.z + t.x, r[1][0] * p.x + r[1][1] * p.y + r[1][2] * p.z + t.y,
                r[2][0] * p.x + r[2][1] * p.y + r[2][2] * p.z + t.z};
    }
    Point toLocal(const Point& w) const
    {
        const Point d = sub(w, t);
        return {r[0][0] * d.x + r[1][0] * d.y + r[2][0] * d.z, r[0][1] * d.x + r[1][1] * d.y + r[2][1] * d.z,
                r[0][2] * d.x + r[1][2] * d.y + r[2][2] * d.z};
    }
};

Real outside(Real x, Real half)
{
    return std::max<Real>(0, std::abs(x) - half);
}

// Distance of a point (in the solid's frame) to the solid.
Real pointDistance(const Point& p, const Solid& solid)
{
    switch (solid.kind) {
    case Solid::Kind::Box: {
        const Real dx = outside(p.x, Real(solid.size.x()) / 2), dy = outside(p.y, Real(solid.size.y()) / 2),
                   dz = outside(p.z, Real(solid.size.z()) / 2);
        return std::sqrt(dx * dx + dy * dy + dz * dz);
    }
    case Solid::Kind::Cylinder: {
        const Real radial = std::max<Real>(0, std::sqrt(p.x * p.x + p.y * p.y) - Real(solid.radius));
        const Real axial = outside(p.z, Real(solid.length) / 2);
        return std::sqrt(radial * radial + axial * axial);
    }
    case Solid::Kind::Sphere:
        return std::max<Real>(0, norm(p) - Real(solid.radius));
    case Solid::Kind::Capsule: {
        const Real z = std::clamp<Real>(p.z, -Real(solid.length) / 2, Real(solid.length) / 2);
        return std::max<Real>(0, norm({p.x, p.y, p.z - z}) - Real(solid.radius));
    }
    }
    return 0;
}

// How deep a point (in the solid's frame) lies inside the solid; negative
// outside (not the distance there, but concave everywhere, as needed).
Real depth(const Point& p, const Solid& solid)
{
    switch (solid.kind) {
    case Solid::Kind::Box:
        return std::min({Real(solid.size.x()) / 2 - std::abs(p.x), Real(solid.size.y()) / 2 - std::abs(p.y),
                         Real(solid.size.z()) / 2 - std::abs(p.z)});
    case Solid::Kind::Cylinder:
        return std::min(Real(solid.radius) - std::sqrt(p.x * p.x + p.y * p.y), Real(solid.length) / 2 - std::abs(p.z));
    case Solid::Kind::Sphere:
        return Real(solid.radius) - norm(p);
    case Solid::Kind::Capsule: {
        const Real z = std::clamp<Real>(p.z, -Real(solid.length) / 2, Real(solid.length) / 2);
        return Real(solid.radius) - norm({p.x, p.y, p.z - z});
    }
    }
    return 0;
}

template <typename F>
Real golden(Real low, Real high, const F& f)
{
    if (!(high > low))
        return f(low);
    const Real ratio = (std::sqrt(Real(5)) - 1) / 2;
    Real a = low, b = high;
    Real c = b - ratio * (b - a), d = a + ratio * (b - a);
    Real fc = f(c), fd = f(d);
    // 64 steps narrow the interval to 4e-14 of its length: 1e-10 mm on a metre.
    for (int i = 0; i < 64; ++i) {
        if (fc <= fd) {
            b = d;
            d = c;
            fd = fc;
            c = b - ratio * (b - a);
            fc = f(c);
        } else {
            a = c;
            c = d;
            fc = fd;
            d = a + ratio * (b - a);
            fd = f(d);
        }
    }
    return std::min({fc, fd, f(low), f(high)});
}

// The radius of the solid's cross-section square to its z at height z.
Real discRadius(const Solid& solid, Real z)
{
    switch (solid.kind) {
    case Solid::Kind::Cylinder:
        return Real(solid.radius);
    case Solid::Kind::Sphere:
        return std::sqrt(std::max<Real>(0, Real(solid.radius) * Real(solid.radius) - z * z));
    case Solid::Kind::Capsule: {
        const Real beyond = outside(z, Real(solid.length) / 2);
        return std::sqrt(std::max<Real>(0, Real(solid.radius) * Real(solid.radius) - beyond * beyond));
    }
    case Solid::Kind::Box:
        break;
    }
    return 0;
}

Real zReach(const Solid& solid)
{
    switch (solid.kind) {
    case Solid::Kind::Box: return Real(solid.size.z()) / 2;
    case Solid::Kind::Cylinder: return Real(solid.length) / 2;
    case Solid::Kind::Sphere: return Real(solid.radius);
    case Solid::Kind::Capsule: return Real(solid.length) / 2 + Real(solid.radius);
    }
    return 0;
}

}  // namespace

Real between(const PlacedSolid& a, const PlacedSolid& b)
{
    const Frame frameA(a), frameB(b);
    const Solid& shape = *a.solid;
    auto at = [&](Real x, Real y, Real z) {
        return pointDistance(frameB.toLocal(frameA.toWorld({x, y, z})), *b.solid);
    };
    const Real reach = zReach(shape);
    return golden(-reach, reach, [&](Real z) {
        if (shape.kind == Solid::Kind::Box) {
            const Real hx = Real(shape.size.x()) / 2, hy = Real(shape.size.y()) / 2;
            return golden(-hx, hx, [&](Real x) { return golden(-hy, hy, [&](Real y) { return at(x, y, z); }); });
        }
        const Real radius = discRadius(shape, z);
        return golden(-radius, radius, [&](Real x) {
            const Real half = std::sqrt(std::max<Real>(0, radius * radius - x * x));
            return golden(-half, half, [&](Real y) { return at(x, y, z); });
        });
    });
}

Real overlap(const PlacedSolid& a, const PlacedSolid& b)
{
    const Frame frameA(a), frameB(b);
    // Over the cube around a's bounding sphere: the points inside a lie there.
    const Point c = frameA.t;
    const Real r = Real(a.solid->boundRadius);
    auto shallowness = [&](Real x, Real y, Real z) {
        const Point world{x, y, z};
        return -std::min(depth(frameA.toLocal(world), *a.solid), depth(frameB.toLocal(world), *b.solid));
    };
    return -golden(c.x - r, c.x + r, [&](Real x) {
        return golden(c.y - r, c.y + r,
                      [&](Real y) { return golden(c.z - r, c.z + r, [&](Real z) { return shallowness(x, y, z); }); });
    });
}

Real signedGap(const PlacedSolid& a, const PlacedSolid& b)
{
    // Searching over the smaller solid keeps the search's own error small.
    if (a.solid->boundRadius > b.solid->boundRadius)
        return signedGap(b, a);
    const Real distance = between(a, b);
    return distance > 0 ? distance : -std::max<Real>(0, overlap(a, b));
}

}  // namespace slow_distance
