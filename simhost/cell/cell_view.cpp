// What a robot's 3D check works out once per cell geometry.
#include "cell_view.h"

#include "cell_narrow_phase.h"
#include "cell_world.h"

#include <algorithm>
#include <cmath>

CellView::CellView(const CellWorld& world, const CellPart* robot)
{
    std::vector<Aabb> boxes;
    for (std::shared_ptr<const CellObject>& object : world.cellObjects()) {
        PlacedSolid placed;
        placed.place(object->solid, object->world);
        objects_.push_back(placed);
        objectsHeld_.push_back(std::move(object));
        boxes.push_back(Aabb::around(placed));
    }
    tree_ = std::make_unique<ObjectTree>(boxes);
    if (!robot || !robot->arm)
        return;
    arm_ = robot->arm;
    base_ = robot->cellBase();
    kinematics_ = std::make_unique<ArmKinematics>(*arm_);
    findBodies();
    findReach();
    if (firstMovingBody() == 0)
        return;
    const CellBody& base = bodies_.front();
    cell_narrow_phase::Counts unused;
    std::vector<PlacedSolid> baseSolids;
    for (int s = 0; s < base.solidCount; ++s) {
        const Solid& solid = arm_->solids[size_t(base.firstSolid + s)].solid;
        PlacedSolid placed;
        placed.place(solid, base_ * solid.local);
        baseSolids.push_back(placed);
    }
    for (const PlacedSolid& object : objects_) {
        const bool touching = std::any_of(baseSolids.begin(), baseSolids.end(), [&](const PlacedSolid& solid) {
            return cell_narrow_phase::touch(solid, object, &unused);
        });
        baseObjectHits_ += touching ? 1 : 0;
    }
}

void CellView::findBodies()
{
    const std::vector<LinkSolid>& solids = arm_->solids;
    for (size_t s = 0; s < solids.size(); ++s) {
        if (bodies_.empty() || bodies_.back().link != solids[s].link)
            bodies_.push_back(CellBody{solids[s].link, static_cast<int>(s), 0, Eigen::Vector3d::Zero(), 0.0});
        ++bodies_.back().solidCount;
    }
    for (CellBody& body : bodies_) {
        // Grow a sphere from the first solid's until it holds every solid's.
        for (int s = 0; s < body.solidCount; ++s) {
            const Solid& solid = solids[size_t(body.firstSolid + s)].solid;
            const Eigen::Vector3d centre = solid.local.translation();
            const double apart = (centre - body.boundCentre).norm();
            if (s > 0 && apart + solid.boundRadius <= body.boundRadius)
                continue;
            if (s == 0 || apart + body.boundRadius <= solid.boundRadius) {
                body.boundCentre = centre;
                body.boundRadius = solid.boundRadius;
                continue;
            }
            const double radius = 0.5 * (apart + body.boundRadius + solid.boundRadius);
            body.boundCentre += (centre - body.boundCentre) * ((radius - body.boundRadius) / apart);
            body.boundRadius = radius;
        }
        // A hair more, so that rounding never leaves a solid poking out.
        body.boundRadius += 1e-9;
    }
    // The arm's self pairs, by link, as indices of bodies.
    for (const auto& pair : arm_->selfPairs) {
        auto bodyOf = [&](int link) {
            return static_cast<int>(std::find_if(bodies_.begin(), bodies_.end(),
                                                 [&](const CellBody& body) { return body.link == link; }) -
                                    bodies_.begin());
        };
        selfPairs_.emplace_back(bodyOf(pair.first), bodyOf(pair.second));
    }
}

void CellView::findReach()
{
    // A joint moves the next frame by the length of its (a, d) at most; a
    // prismatic joint's reach is not known here.
    double chain = 0.0;
    bool bounded = true;
    int link = 0;
    std::vector<int> found(objects_.size());
    for (CellBody& body : bodies_) {
        for (; link < body.link; ++link) {
            if (link < jointCount()) {
                const DhJoint& joint = arm_->joints[size_t(link)];
                chain += std::hypot(joint.a, joint.d);
                bounded = bounded && !joint.prismatic;
            } else {
                chain += arm_->tool.translation().norm();
            }
        }
        const double reach = chain + body.boundCentre.norm() + body.boundRadius;
        body.mayMeetObjects = !bounded || tree_->reachedBy(base_.translation(), reach, found.data()) > 0;
    }
}
