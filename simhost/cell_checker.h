#pragma once

#include "cell_model.h"

#include <vector>

class SimItem;
class Station;

// Checks one robot of a station in 3D: the solids of its links and tool
// against the station's objects, and against each other for links that are
// not neighbours. Gathers the objects once; build one per check or move.
class CellChecker {
public:
    CellChecker(const Station& station, const SimItem* robot);

    // True when the robot has solids to check.
    bool active() const { return arm_ && !arm_->solids.empty(); }

    // Colliding pairs at joints q: (link, object) and (link, link), each pair
    // counted once whatever the number of its solids that touch. With
    // firstOnly the count stops at 1.
    int collidingPairs(const double* q, bool firstOnly);
    // Colliding (link, link) pairs only.
    int selfPairs(const double* q);

    // 1 when one of the points a + (b - a) * k / n, k = 0 ... n, collides:
    // the ends first, then midpoints coarse to fine, stopping at the first hit.
    int testMove(const double* a, const double* b, int n);

private:
    struct Placed {
        int link;
        const Solid* solid;
        Eigen::Isometry3d world;
        Eigen::Vector3d centre;
    };

    void place(const double* q);
    int countPairs(bool withObjects, bool withSelf, bool firstOnly);
    static bool touch(const Placed& a, const Solid& bSolid, const Eigen::Isometry3d& bWorld,
                      const Eigen::Vector3d& bCentre);
    bool linkPairTouches(int linkA, int linkB) const;

    const Station& station_;
    const ArmModel* arm_ = nullptr;
    Eigen::Isometry3d base_ = Eigen::Isometry3d::Identity();
    std::vector<const CellObject*> objects_;
    std::vector<Eigen::Vector3d> objectCentres_;
    std::vector<Eigen::Isometry3d> frames_;
    std::vector<Placed> placed_;
    std::vector<double> point_;
};
