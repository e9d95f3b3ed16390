// Where station items sit in the world, from their poses and parents.
#include "cell_placement.h"

#include "cell_model.h"
#include "sim_item.h"

#include "vorlik/item_types.h"

namespace cell_placement {

namespace {

Eigen::Isometry3d localPose(const SimItem* item)
{
    return item->pose.size() == 6 ? placementFromValues(item->pose.data()) : Eigen::Isometry3d::Identity();
}

// Where the children of an item are placed: a rail's carriage for the robot it carries.
Eigen::Isometry3d mountFor(const SimItem* parent, const SimItem* child)
{
    if (!parent)
        return Eigen::Isometry3d::Identity();
    Eigen::Isometry3d mount = absolutePose(parent);
    if (parent->itemType() == ItemType::Robot && parent->carried == child && parent->arm &&
        static_cast<int>(parent->jointValues.size()) >= parent->jointCount())
        mount = mount * parent->arm->toolPose(parent->jointValues.data());
    return mount;
}

}  // namespace

Eigen::Isometry3d absolutePose(const SimItem* item)
{
    if (!item)
        return Eigen::Isometry3d::Identity();
    if (item->itemType() == ItemType::Program)
        return Eigen::Isometry3d::Identity();
    if (item->itemType() == ItemType::Target && item->robot && item->robot->arm &&
        static_cast<int>(item->jointValues.size()) == item->robot->jointCount())
        return absolutePose(item->robot) * item->robot->arm->toolPose(item->jointValues.data());
    return mountFor(item->parentItem, item) * localPose(item);
}

const SimItem* railOf(const SimItem* robot)
{
    for (const SimItem* up = robot ? robot->parentItem : nullptr; up; up = up->parentItem) {
        if (up->itemType() == ItemType::Robot && up->carried == robot)
            return up;
    }
    return nullptr;
}

Eigen::Isometry3d reachedPose(const SimItem* robot, const double* q, const Eigen::Isometry3d& tool,
                              const Eigen::Isometry3d& reference)
{
    Eigen::Isometry3d flange = absolutePose(robot);
    for (size_t i = 0; i < robot->arm->joints.size(); ++i) {
        // The arm's own tool is left out: the caller names the tool.
        flange = flange * ArmModel::jointTransform(robot->arm->joints[i], q[i]);
    }
    return reference.inverse() * flange * tool;
}

QMatrix4x4 toHostPose(const Eigen::Isometry3d& pose)
{
    QMatrix4x4 out;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c)
            out(r, c) = static_cast<float>(pose.matrix()(r, c));
    }
    return out;
}

Eigen::Isometry3d fromHostPose(const QMatrix4x4& pose)
{
    Eigen::Isometry3d out = Eigen::Isometry3d::Identity();
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c)
            out.matrix()(r, c) = static_cast<double>(pose(r, c));
    }
    return out;
}

}  // namespace cell_placement
