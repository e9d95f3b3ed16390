// What a robot's 3D check works out once per cell geometry.
#pragma once

#include "cell_arm_kinematics.h"
#include "cell_object_tree.h"
#include "cell_placed_solid.h"

#include <memory>
#include <utility>
#include <vector>

class CellPart;
class CellWorld;

// A link of the arm that holds solids.
struct CellBody {
    int link = 0;
    int firstSolid = 0;  // into ArmModel::solids, which keeps a link's solids together
    int solidCount = 0;
    // A sphere around the link's solids' bounding spheres, in the link's frame.
    Eigen::Vector3d boundCentre = Eigen::Vector3d::Zero();
    double boundRadius = 0.0;
    // False when no joint values bring the link near any object (a shoulder
    // high above the table): the broad phase need not ask about it.
    bool mayMeetObjects = true;
};

// The collision checker's view of one robot in a station: what stands still
// between two changes of the station's geometry, worked out once. The arm's
// bodies with their bounds, the objects placed in the world with their tree,
// and the (base, object) pairs that touch, which no joint value can change.
class CellView {
public:
    CellView(const CellWorld& world, const CellPart* robot);

    // True when the robot has solids to check.
    bool active() const { return arm_ && !arm_->solids.empty(); }
    const ArmModel& arm() const { return *arm_; }
    const Eigen::Isometry3d& base() const { return base_; }
    const ArmKinematics& kinematics() const { return *kinematics_; }
    int jointCount() const { return static_cast<int>(arm_->joints.size()); }
    // The highest link that holds a solid: forward kinematics stops there.
    int lastLink() const { return bodies_.empty() ? 0 : bodies_.back().link; }

    const std::vector<CellBody>& bodies() const { return bodies_; }
    // The first body that moves with the joints: 1 when the base holds solids, else 0.
    int firstMovingBody() const { return !bodies_.empty() && bodies_.front().link == 0 ? 1 : 0; }
    // Pairs of bodies (indices into bodies()) checked against each other.
    const std::vector<std::pair<int, int>>& selfPairs() const { return selfPairs_; }

    const std::vector<PlacedSolid>& objects() const { return objects_; }
    const ObjectTree& objectTree() const { return *tree_; }
    // (base, object) pairs that touch.
    int baseObjectHits() const { return baseObjectHits_; }

private:
    void findBodies();
    // Sets mayMeetObjects from how far each body can get from the base.
    void findReach();

    // Held, so that a solid replaced in the station stays alive while a view still points at it.
    std::shared_ptr<const ArmModel> arm_;
    std::vector<std::shared_ptr<const CellObject>> objectsHeld_;
    Eigen::Isometry3d base_ = Eigen::Isometry3d::Identity();
    std::unique_ptr<ArmKinematics> kinematics_;
    std::vector<CellBody> bodies_;
    std::vector<std::pair<int, int>> selfPairs_;
    std::vector<PlacedSolid> objects_;
    std::unique_ptr<ObjectTree> tree_;
    int baseObjectHits_ = 0;
};
