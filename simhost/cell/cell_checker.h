// The 3D collision check of one robot against its cell and itself.
#pragma once

#include "cell_stage_stats.h"
#include "cell_view.h"

#include <cstdint>
#include <utility>
#include <vector>

class CellPart;
class CellWorld;
struct CellStats;

// Checks one robot of a station in 3D: the solids of its links and tool
// against the station's objects, and against each other for links that are
// not neighbours. Works on a view built once; the station keeps one checker
// per robot and builds a new one when its geometry changes.
//
// A check places the links, lets the broad phase and the bounding spheres
// rule out the pairs that are far apart, and runs the exact narrow test on
// the rest, the pairs that hit most often first.
class CellChecker {
public:
    struct Options {
        bool culling = true;  // false: every pair goes to the narrow test
    };

    CellChecker(const CellWorld& world, const CellPart* robot);
    CellChecker(const CellWorld& world, const CellPart* robot, Options options);

    // True when the robot has solids to check.
    bool active() const { return view_.active(); }

    // Colliding pairs at joints q: (link, object) and (link, link), each pair
    // counted once whatever the number of its solids that touch. With
    // firstOnly the count stops at 1.
    int collidingPairs(const double* q, bool firstOnly);
    // Colliding (link, link) pairs only.
    int selfPairs(const double* q);

    // One colliding pair: a link (0 the base, J + 1 the tool) and an object,
    // or two links.
    struct Contact {
        int link = 0;
        int object = -1;     // index into the world's objects; -1 for two links
        int otherLink = -1;  // the second link of a pair of links
    };
    // Every colliding pair at joints q, for telling a person what collides.
    std::vector<Contact> contacts(const double* q);

    // 1 when one of the points a + (b - a) * k / n, k = 0 ... n, collides:
    // the ends first, then midpoints coarse to fine, stopping at the first hit.
    int testMove(const double* a, const double* b, int n);

    // What the stages did so far; timing them costs a clock read per narrow test.
    const CellStageStats& stageStats() const { return stages_; }
    void timeStages(bool on) { stages_.timed = on; }

private:
    // A pair of the arm's body and an object or another body.
    struct Pair {
        int body = 0;
        int other = 0;  // an object, or for a self pair the other body
        bool self = false;
    };

    int check(const double* q, bool withObjects, bool withSelf, bool firstOnly);
    void place(const double* q);
    // The solid's centre, then all of its placement, worked out once per configuration when first needed.
    const Eigen::Vector3d& solidCentre(int index);
    const PlacedSolid& solidAt(int index);
    // The pairs whose bounds meet, by the tree over the objects for (body,
    // object) pairs and by the bodies' spheres for self pairs.
    void gatherCandidates(bool withObjects, bool withSelf);
    void orderByHits();
    bool bodiesMeet(int first, int second) const
    {
        const CellBody& a = view_.bodies()[size_t(first)];
        const CellBody& b = view_.bodies()[size_t(second)];
        const double reach = a.boundRadius + b.boundRadius;
        return (bodyCentres_[size_t(first)] - bodyCentres_[size_t(second)]).squaredNorm() <= reach * reach;
    }
    bool objectPairTouches(int body, int object);
    bool selfPairTouches(int first, int second);
    bool narrowTouch(const PlacedSolid& a, const PlacedSolid& b);

    CellStats& stats_;
    CellView view_;
    Options options_;
    CellStageStats stages_;
    int objectCount_ = 0;
    // Every pair: body * objectCount_ + object for (body, object) pairs (the
    // base's among them, though never tried), then one per self pair.
    std::vector<Pair> pairs_;
    std::vector<long long> hits_;  // hits of each pair so far
    // Per configuration, all marked by the configuration's stamp.
    std::uint64_t stamp_ = 0;
    std::vector<Eigen::Isometry3d> frames_;
    std::vector<Eigen::Vector3d> bodyCentres_;
    std::vector<int> candidates_;  // the pairs that reach the narrow tests
    std::vector<std::uint64_t> centredAt_;
    std::vector<Eigen::Vector3d> centres_;
    std::vector<std::uint64_t> placedAt_;
    std::vector<PlacedSolid> placed_;
    std::vector<int> found_;              // the broad phase's answer for one body
    std::vector<double> point_;
    std::vector<std::pair<int, int>> intervals_;
};
