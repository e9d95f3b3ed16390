#pragma once

#include "cell_placed_solid.h"

#include <Eigen/Geometry>

#include <memory>

// Solids made by hand for the narrow-phase tests.
namespace cell_solids {

inline std::shared_ptr<Solid> box(double x, double y, double z)
{
    auto solid = std::make_shared<Solid>();
    solid->kind = Solid::Kind::Box;
    solid->size = Eigen::Vector3d(x, y, z);
    prepareSolid(*solid);
    return solid;
}

inline std::shared_ptr<Solid> round(Solid::Kind kind, double radius, double length = 0.0)
{
    auto solid = std::make_shared<Solid>();
    solid->kind = kind;
    solid->radius = radius;
    solid->length = length;
    prepareSolid(*solid);
    return solid;
}

// A placement: a translation, then a turn of that many degrees about the axis.
inline Eigen::Isometry3d at(const Eigen::Vector3d& where, double degrees = 0.0,
                            const Eigen::Vector3d& axis = Eigen::Vector3d::UnitZ())
{
    Eigen::Isometry3d pose = Eigen::Isometry3d::Identity();
    pose.translation() = where;
    pose.linear() = Eigen::AngleAxisd(degrees * M_PI / 180.0, axis.normalized()).toRotationMatrix();
    return pose;
}

inline PlacedSolid placed(const Solid& solid, const Eigen::Isometry3d& pose)
{
    PlacedSolid out;
    out.place(solid, pose);
    return out;
}

}  // namespace cell_solids
