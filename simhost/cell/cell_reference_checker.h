// The plain FCL collision check the fast checker is compared against.
#pragma once

#include "cell_model.h"

#include <vector>

class CellPart;
class CellWorld;

// The 3D check as the host first made it, kept as the reference the fast
// checker is measured and compared against: every pair whose bounding
// spheres meet goes to FCL's GJK, nothing is kept between checks. Answers
// like CellChecker, and counts the configurations it checked itself rather
// than in the station's statistics.
class FclReferenceChecker {
public:
    FclReferenceChecker(const CellWorld& world, const CellPart* robot);

    bool active() const { return arm_ && !arm_->solids.empty(); }
    int collidingPairs(const double* q, bool firstOnly);
    int selfPairs(const double* q);
    int testMove(const double* a, const double* b, int n);
    long long configurations() const { return configurations_; }

private:
    struct Placed {
        int link;
        const Solid* solid;
        Eigen::Isometry3d world;
    };

    void place(const double* q);
    int countPairs(bool withObjects, bool withSelf, bool firstOnly);
    static bool touch(const Placed& a, const Solid& bSolid, const Eigen::Isometry3d& bWorld);
    bool linkPairTouches(int linkA, int linkB) const;

    const ArmModel* arm_ = nullptr;
    Eigen::Isometry3d base_ = Eigen::Isometry3d::Identity();
    std::vector<const CellObject*> objects_;
    std::vector<Eigen::Isometry3d> frames_;
    std::vector<Placed> placed_;
    std::vector<double> point_;
    long long configurations_ = 0;
};
