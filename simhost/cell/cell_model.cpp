// The 3D model of a work cell: placements, solids, arms and objects.
#include "cell_model.h"

#include <fcl/geometry/shape/box.h>
#include <fcl/geometry/shape/capsule.h>
#include <fcl/geometry/shape/cylinder.h>
#include <fcl/geometry/shape/sphere.h>

#include <algorithm>
#include <cmath>

namespace {

double radians(double degrees)
{
    return degrees * M_PI / 180.0;
}

}  // namespace

Eigen::Isometry3d ArmModel::jointTransform(const DhJoint& joint, double q)
{
    const double theta = radians(joint.prismatic ? joint.offset : joint.sign * q + joint.offset);
    const double d = joint.prismatic ? joint.d + joint.sign * q : joint.d;
    const double alpha = radians(joint.alpha);
    const double ct = std::cos(theta), st = std::sin(theta);
    const double ca = std::cos(alpha), sa = std::sin(alpha);
    Eigen::Isometry3d t = Eigen::Isometry3d::Identity();
    t.matrix() << ct, -st * ca, st * sa, joint.a * ct,
                  st, ct * ca, -ct * sa, joint.a * st,
                  0.0, sa, ca, d,
                  0.0, 0.0, 0.0, 1.0;
    return t;
}

Eigen::Isometry3d placementFromValues(const double values[6])
{
    Eigen::Isometry3d pose = Eigen::Isometry3d::Identity();
    pose.translation() = Eigen::Vector3d(values[0], values[1], values[2]);
    pose.linear() = (Eigen::AngleAxisd(radians(values[5]), Eigen::Vector3d::UnitZ()) *
                     Eigen::AngleAxisd(radians(values[4]), Eigen::Vector3d::UnitY()) *
                     Eigen::AngleAxisd(radians(values[3]), Eigen::Vector3d::UnitX()))
                        .toRotationMatrix();
    return pose;
}

void prepareSolid(Solid& solid)
{
    switch (solid.kind) {
    case Solid::Kind::Box:
        solid.geometry = std::make_shared<fcl::Boxd>(solid.size.x(), solid.size.y(), solid.size.z());
        solid.boundRadius = 0.5 * solid.size.norm();
        break;
    case Solid::Kind::Cylinder:
        solid.geometry = std::make_shared<fcl::Cylinderd>(solid.radius, solid.length);
        solid.boundRadius = std::hypot(solid.radius, 0.5 * solid.length);
        break;
    case Solid::Kind::Sphere:
        solid.geometry = std::make_shared<fcl::Sphered>(solid.radius);
        solid.boundRadius = solid.radius;
        break;
    case Solid::Kind::Capsule:
        solid.geometry = std::make_shared<fcl::Capsuled>(solid.radius, solid.length);
        solid.boundRadius = solid.radius + 0.5 * solid.length;
        break;
    }
    solid.geometry->computeLocalAABB();
    solid.boundCentre = Eigen::Vector3d::Zero();
}

void ArmModel::linkFrames(const Eigen::Isometry3d& base, const double* q,
                          std::vector<Eigen::Isometry3d>& frames) const
{
    frames.resize(joints.size() + 2);
    frames[0] = base;
    for (size_t i = 0; i < joints.size(); ++i)
        frames[i + 1] = frames[i] * jointTransform(joints[i], q[i]);
    frames.back() = frames[joints.size()] * tool;
}

Eigen::Isometry3d ArmModel::toolPose(const double* q) const
{
    Eigen::Isometry3d pose = Eigen::Isometry3d::Identity();
    for (size_t i = 0; i < joints.size(); ++i)
        pose = pose * jointTransform(joints[i], q[i]);
    return pose * tool;
}

void ArmModel::findSelfPairs()
{
    selfPairs.clear();
    if (!selfCollision)
        return;
    // Links that hold no solid do not separate their neighbours: the three
    // links of a spherical wrist meet in one point.
    std::vector<int> bodies;
    for (const LinkSolid& solid : solids)
        bodies.push_back(solid.link);
    std::sort(bodies.begin(), bodies.end());
    bodies.erase(std::unique(bodies.begin(), bodies.end()), bodies.end());
    for (size_t i = 0; i < bodies.size(); ++i) {
        for (size_t j = i + 2; j < bodies.size(); ++j)
            selfPairs.emplace_back(bodies[i], bodies[j]);
    }
}
