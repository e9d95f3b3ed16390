// Where station items sit in the world, from their poses and parents.
#pragma once

#include <Eigen/Geometry>

#include <QMatrix4x4>

class SimItem;

// Where items sit in the station. An item's "pose" places it relative to its
// parent; a robot whose parent is the rail that carries it sits on the rail's
// carriage (the rail's tool pose at its current joints).
namespace cell_placement {

// The item's absolute placement: a frame's, an object's or a robot's base;
// a target of an arm robot answers the tool pose its joints reach.
Eigen::Isometry3d absolutePose(const SimItem* item);

// The rail that carries the robot: the first ancestor that is a robot carrying it; null when none.
const SimItem* railOf(const SimItem* robot);

// The robot's tool pose relative to the reference pose, with these joints and tool.
Eigen::Isometry3d reachedPose(const SimItem* robot, const double* q, const Eigen::Isometry3d& tool,
                              const Eigen::Isometry3d& reference);

QMatrix4x4 toHostPose(const Eigen::Isometry3d& pose);
Eigen::Isometry3d fromHostPose(const QMatrix4x4& pose);

}  // namespace cell_placement
