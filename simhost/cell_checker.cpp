#include "cell_checker.h"

#include "cell_placement.h"
#include "station.h"

#include <fcl/narrowphase/collision.h>

#include <chrono>
#include <deque>

namespace {

const fcl::CollisionRequestd& request()
{
    static const fcl::CollisionRequestd shared = [] {
        fcl::CollisionRequestd r(1, false);
        // FCL's own GJK is faster than libccd's on these few convex primitives.
        r.gjk_solver_type = fcl::GST_INDEP;
        return r;
    }();
    return shared;
}

}  // namespace

CellChecker::CellChecker(const Station& station, const SimItem* robot) : station_(station)
{
    if (!robot || !robot->arm)
        return;
    arm_ = robot->arm.get();
    base_ = cell_placement::absolutePose(robot);
    for (const SimItem* item : station.items(ObjectType)) {
        if (!item->object)
            continue;
        objects_.push_back(item->object.get());
        objectCentres_.push_back(item->object->world * item->object->solid.boundCentre);
    }
    point_.resize(arm_->joints.size());
}

void CellChecker::place(const double* q)
{
    arm_->linkFrames(base_, q, frames_);
    placed_.clear();
    for (const LinkSolid& linkSolid : arm_->solids) {
        Placed placed;
        placed.link = linkSolid.link;
        placed.solid = &linkSolid.solid;
        placed.world = frames_[static_cast<size_t>(linkSolid.link)] * linkSolid.solid.local;
        placed.centre = placed.world * linkSolid.solid.boundCentre;
        placed_.push_back(placed);
    }
}

bool CellChecker::touch(const Placed& a, const Solid& bSolid, const Eigen::Isometry3d& bWorld,
                        const Eigen::Vector3d& bCentre)
{
    // Bounding spheres first: most pairs are far apart.
    const double reach = a.solid->boundRadius + bSolid.boundRadius;
    if ((a.centre - bCentre).squaredNorm() > reach * reach)
        return false;
    fcl::CollisionResultd result;
    return fcl::collide(a.solid->geometry.get(), a.world, bSolid.geometry.get(), bWorld, request(), result) > 0;
}

bool CellChecker::linkPairTouches(int linkA, int linkB) const
{
    for (const Placed& a : placed_) {
        if (a.link != linkA)
            continue;
        for (const Placed& b : placed_) {
            if (b.link == linkB && touch(a, *b.solid, b.world, b.centre))
                return true;
        }
    }
    return false;
}

int CellChecker::countPairs(bool withObjects, bool withSelf, bool firstOnly)
{
    int count = 0;
    if (withObjects) {
        for (size_t o = 0; o < objects_.size(); ++o) {
            int lastLink = -1;
            for (const Placed& placed : placed_) {
                // One count per (link, object): skip the link's other solids once it touched.
                if (placed.link == lastLink)
                    continue;
                if (touch(placed, objects_[o]->solid, objects_[o]->world, objectCentres_[o])) {
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

int CellChecker::collidingPairs(const double* q, bool firstOnly)
{
    if (!active())
        return 0;
    const auto start = std::chrono::steady_clock::now();
    place(q);
    const int count = countPairs(true, true, firstOnly);
    station_.cellStats.configurations += 1;
    station_.cellStats.seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return count;
}

int CellChecker::selfPairs(const double* q)
{
    if (!active())
        return 0;
    place(q);
    return countPairs(false, true, false);
}

int CellChecker::testMove(const double* a, const double* b, int n)
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
    // Halve the intervals level by level, so that a wall in the middle of the
    // move is met after a handful of checks.
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
