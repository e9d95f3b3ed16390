// The 3D model of a work cell: placements, solids, arms and objects.
#pragma once

#include <Eigen/Geometry>

#include <QJsonObject>
#include <QString>

#include <memory>
#include <vector>

namespace fcl {
template <typename S>
class CollisionGeometry;
}

// The 3D side of the station: placements, solids and arm kinematics.
// Lengths are millimetres, angles degrees, as in the station file.

// A placement read from [x, y, z, rx, ry, rz]: a translation and the rotation
// Rz(rz) * Ry(ry) * Rx(rx) (roll, pitch, yaw about the fixed axes).
Eigen::Isometry3d placementFromValues(const double values[6]);

// A solid: a box, cylinder (along its z), sphere or capsule (along its z),
// centred on its own placement.
struct Solid {
    enum class Kind { Box, Cylinder, Sphere, Capsule };
    Kind kind = Kind::Box;
    Eigen::Vector3d size = Eigen::Vector3d::Zero();  // box: the three edges
    double radius = 0.0;                             // cylinder, sphere, capsule
    double length = 0.0;                             // cylinder, capsule (between the cap centres)
    Eigen::Isometry3d local = Eigen::Isometry3d::Identity();
    std::shared_ptr<fcl::CollisionGeometry<double>> geometry;
    // Centre and radius of a sphere that holds the solid, in its own frame.
    Eigen::Vector3d boundCentre = Eigen::Vector3d::Zero();
    double boundRadius = 0.0;
};

// Builds the collision geometry and bounds of a solid whose shape fields are set.
void prepareSolid(Solid& solid);

// One joint in standard Denavit-Hartenberg form: the link transform is
// Rz(theta) * Tz(d) * Tx(a) * Rx(alpha), with theta = sign * q + offset for a
// revolute joint and d = d + sign * q for a prismatic one.
struct DhJoint {
    double a = 0.0;
    double alpha = 0.0;
    double d = 0.0;
    double offset = 0.0;
    double sign = 1.0;
    bool prismatic = false;
};

// A solid fixed to one link of an arm: 0 the base, i the link moved by joint i,
// and jointCount + 1 the tool.
struct LinkSolid {
    int link = 0;
    Solid solid;
};

// The arm of a robot item: kinematics, tool and solids. Shared, read-only
// once the station is read.
struct ArmModel {
    std::vector<DhJoint> joints;
    Eigen::Isometry3d tool = Eigen::Isometry3d::Identity();
    std::vector<LinkSolid> solids;
    bool selfCollision = true;
    // Pairs of links that are checked against each other (not neighbours in the
    // chain of links that hold solids), found once.
    std::vector<std::pair<int, int>> selfPairs;
    // The station-file fields this model was read from, written back unchanged.
    QJsonObject source;

    int toolLink() const { return static_cast<int>(joints.size()) + 1; }
    // The transform from the frame before a joint to the frame after it, at joint value q.
    static Eigen::Isometry3d jointTransform(const DhJoint& joint, double q);
    // Frames of the base (0) and of every link, and last the tool, for joints q.
    void linkFrames(const Eigen::Isometry3d& base, const double* q, std::vector<Eigen::Isometry3d>& frames) const;
    // The tool pose relative to the base for joints q.
    Eigen::Isometry3d toolPose(const double* q) const;
    // Finds the self pairs from the solids.
    void findSelfPairs();
};

// An environment object: one solid placed in the station.
struct CellObject {
    Solid solid;
    Eigen::Isometry3d world = Eigen::Isometry3d::Identity();  // where its solid sits
    QJsonObject source;
};
