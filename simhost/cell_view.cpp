#include "cell_view.h"

#include "cell_narrow_phase.h"
#include "cell_placement.h"
#include "station.h"

#include <algorithm>

CellView::CellView(const Station& station, const SimItem* robot)
{
    std::vector<Aabb> boxes;
    for (const SimItem* item : station.items(ObjectType)) {
        if (!item->object)
            continue;
        PlacedSolid placed;
        placed.place(item->object->solid, item->object->world);
        objects_.push_back(placed);
        objectsHeld_.push_back(item->object);
        boxes.push_back(Aabb::around(placed));
    }
    tree_ = std::make_unique<ObjectTree>(boxes);
    if (!robot || !robot->arm)
        return;
    arm_ = robot->arm;
    base_ = cell_placement::absolutePose(robot);
    kinematics_ = std::make_unique<ArmKinematics>(*arm_);
    findBodies();
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
        Eigen::Vector3d sum = Eigen::Vector3d::Zero();
        for (int s = 0; s < body.solidCount; ++s)
            sum += solids[size_t(body.firstSolid + s)].solid.local.translation();
        body.boundCentre = sum / body.solidCount;
        for (int s = 0; s < body.solidCount; ++s) {
            const Solid& solid = solids[size_t(body.firstSolid + s)].solid;
            body.boundRadius = std::max(body.boundRadius,
                                        (solid.local.translation() - body.boundCentre).norm() + solid.boundRadius);
        }
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
