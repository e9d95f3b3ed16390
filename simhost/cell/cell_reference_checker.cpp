// The plain FCL collision check the fast checker is compared against.
#include "cell_reference_checker.h"

#include "cell_narrow_phase.h"
#include "cell_world.h"

#include <deque>

FclReferenceChecker::FclReferenceChecker(const CellWorld& world, const CellPart* robot)
{
    if (!robot || !robot->arm)
        return;
    arm_ = robot->arm.get();
    base_ = robot->cellBase();
    // The station keeps its objects alive while it is checked.
    for (const std::shared_ptr<const CellObject>& object : world.cellObjects())
        objects_.push_back(object.get());
    point_.resize(arm_->joints.size());
}

void FclReferenceChecker::place(const double* q)
{
    arm_->linkFrames(base_, q, frames_);
    placed_.clear();
    for (const LinkSolid& linkSolid : arm_->solids)
        placed_.push_back(Placed{linkSolid.link, &linkSolid.solid,
                                 frames_[static_cast<size_t>(linkSolid.link)] * linkSolid.solid.local});
}

bool FclReferenceChecker::touch(const Placed& a, const Solid& bSolid, const Eigen::Isometry3d& bWorld)
{
    // Bounding spheres first: most pairs are far apart.
    const double reach = a.solid->boundRadius + bSolid.boundRadius;
    if ((a.world * a.solid->boundCentre - bWorld * bSolid.boundCentre).squaredNorm() > reach * reach)
        return false;
    PlacedSolid one, two;
    one.place(*a.solid, a.world);
    two.place(bSolid, bWorld);
    return cell_narrow_phase::fclTouch(one, two);
}

bool FclReferenceChecker::linkPairTouches(int linkA, int linkB) const
{
    for (const Placed& a : placed_) {
        if (a.link != linkA)
            continue;
        for (const Placed& b : placed_) {
            if (b.link == linkB && touch(a, *b.solid, b.world))
                return true;
        }
    }
    return false;
}

int FclReferenceChecker::countPairs(bool withObjects, bool withSelf, bool firstOnly)
{
    int count = 0;
    if (withObjects) {
        for (const CellObject* object : objects_) {
            int lastLink = -1;
            for (const Placed& placed : placed_) {
                // One count per (link, object): skip the link's other solids once it touched.
                if (placed.link == lastLink)
                    continue;
                if (touch(placed, object->solid, object->world)) {
                    lastLink = placed.link;
                    if (++count && firstOnly)
                        return count;
                }
            }
        }
    }
    if (withSelf) {
        for (const auto& pair : arm_->selfPairs) {
            if (linkPairTouches(pair.first, pair.second) && ++count && firstOnly)
                return count;
        }
    }
    return count;
}

int FclReferenceChecker::collidingPairs(const double* q, bool firstOnly)
{
    if (!active())
        return 0;
    ++configurations_;
    place(q);
    return countPairs(true, true, firstOnly);
}

int FclReferenceChecker::selfPairs(const double* q)
{
    if (!active())
        return 0;
    place(q);
    return countPairs(false, true, false);
}

int FclReferenceChecker::testMove(const double* a, const double* b, int n)
{
    if (!active())
        return 0;
    const size_t count = arm_->joints.size();
    auto collidesAt = [&](int k) {
        for (size_t i = 0; i < count; ++i)
            point_[i] = a[i] + (b[i] - a[i]) * k / n;
        return collidingPairs(point_.data(), true) > 0;
    };
    if (collidesAt(0) || collidesAt(n))
        return 1;
    std::deque<std::pair<int, int>> intervals{{0, n}};
    while (!intervals.empty()) {
        const auto [low, high] = intervals.front();
        intervals.pop_front();
        if (high - low < 2)
            continue;
        const int middle = low + (high - low) / 2;
        if (collidesAt(middle))
            return 1;
        intervals.emplace_back(low, middle);
        intervals.emplace_back(middle, high);
    }
    return 0;
}
