// A solid placed in the world for one check.
#pragma once

#include "cell_model.h"

#include <Eigen/Geometry>

// A solid where it sits in the world for one check: what the culling and the
// narrow tests read of it.
struct PlacedSolid {
    const Solid* solid = nullptr;
    Eigen::Isometry3d world = Eigen::Isometry3d::Identity();

    void place(const Solid& shape, const Eigen::Isometry3d& at)
    {
        solid = &shape;
        world = at;
    }
    Solid::Kind kind() const { return solid->kind; }
    // The centre of the solid and of its bounding sphere (prepareSolid centres both).
    Eigen::Vector3d centre() const { return world.translation(); }
    double boundRadius() const { return solid->boundRadius; }
    // A cylinder's or capsule's axis, the solid's z.
    Eigen::Vector3d axis() const { return world.linear().col(2); }
    double halfLength() const { return 0.5 * solid->length; }
    // The ends of the axis segment: the cap centres of a capsule, the face centres of a cylinder.
    Eigen::Vector3d end(double side) const { return centre() + side * halfLength() * axis(); }
    Eigen::Vector3d toLocal(const Eigen::Vector3d& point) const
    {
        return world.linear().transpose() * (point - world.translation());
    }
    Eigen::Vector3d directionToLocal(const Eigen::Vector3d& direction) const
    {
        return world.linear().transpose() * direction;
    }
};
