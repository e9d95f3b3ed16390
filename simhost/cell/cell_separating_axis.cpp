// Separating-axis tests between boxes and round solids.
#include "cell_separating_axis.h"

#include <cmath>

namespace cell_separating_axis {

namespace {

// Cross products of nearly parallel directions carry only rounding: their
// separation is already decided by the face axes.
bool meaningful(const Eigen::Vector3d& axis)
{
    return axis.squaredNorm() > 1e-20;
}

// The directions that shape the solid's shadow: a box's three edges, a
// cylinder's or capsule's axis, none for a sphere.
int ownAxes(const PlacedSolid& solid, Eigen::Vector3d* out)
{
    switch (solid.kind()) {
    case Solid::Kind::Box:
        for (int i = 0; i < 3; ++i)
            out[i] = solid.world.linear().col(i);
        return 3;
    case Solid::Kind::Cylinder:
    case Solid::Kind::Capsule:
        out[0] = solid.axis();
        return 1;
    case Solid::Kind::Sphere:
        break;
    }
    return 0;
}

}  // namespace

double shadowHalf(const PlacedSolid& solid, const Eigen::Vector3d& axis)
{
    switch (solid.kind()) {
    case Solid::Kind::Box: {
        const Eigen::Vector3d local = solid.directionToLocal(axis);
        const Eigen::Vector3d& size = solid.solid->size;
        return 0.5 * (std::abs(local.x()) * size.x() + std::abs(local.y()) * size.y() + std::abs(local.z()) * size.z());
    }
    case Solid::Kind::Cylinder: {
        const double along = axis.dot(solid.axis());
        const double across = std::sqrt(std::max(0.0, axis.squaredNorm() - along * along));
        return std::abs(along) * solid.halfLength() + solid.solid->radius * across;
    }
    case Solid::Kind::Capsule:
        return std::abs(axis.dot(solid.axis())) * solid.halfLength() + solid.solid->radius * axis.norm();
    case Solid::Kind::Sphere:
        break;
    }
    return solid.solid->radius * axis.norm();
}

bool separates(const Eigen::Vector3d& axis, const PlacedSolid& a, const PlacedSolid& b)
{
    return std::abs(axis.dot(b.centre() - a.centre())) > shadowHalf(a, axis) + shadowHalf(b, axis);
}

bool boxesMeet(const PlacedSolid& a, const PlacedSolid& b)
{
    return !someAxisSeparates(a, b, Eigen::Vector3d::Zero());
}

bool someAxisSeparates(const PlacedSolid& a, const PlacedSolid& b, const Eigen::Vector3d& hint)
{
    Eigen::Vector3d axesA[3], axesB[3];
    const int countA = ownAxes(a, axesA);
    const int countB = ownAxes(b, axesB);
    for (int i = 0; i < countA; ++i) {
        if (separates(axesA[i], a, b))
            return true;
    }
    for (int j = 0; j < countB; ++j) {
        if (separates(axesB[j], a, b))
            return true;
    }
    for (int i = 0; i < countA; ++i) {
        for (int j = 0; j < countB; ++j) {
            const Eigen::Vector3d axis = axesA[i].cross(axesB[j]);
            if (meaningful(axis) && separates(axis, a, b))
                return true;
        }
    }
    return meaningful(hint) && separates(hint, a, b);
}

}  // namespace cell_separating_axis
