// Shortening routes before they are written as programs.
#pragma once

#include "vorlik/joint_vector.h"

#include <map>
#include <utility>
#include <vector>

class CollisionChecker;

// One point of a route: its joints, and the sample of the map it is (0-based),
// or NewPoint for a point the shortening put on a move.
struct ViaPoint {
    static constexpr int NewPoint = -2147483647 - 1;
    JointVector joints;
    int sample = NewPoint;
};

// Shortens a route through the roadmap, which zig-zags from sample to sample,
// before it is written as a program. Two steps, repeated while they gain:
// via points are dropped where the points around them are joined by a free
// straight move (from each point to the farthest later one that can be
// reached), and pieces of the route are cut short between points inside its
// moves (at their quarters, then, once those gain nothing, at their eighths),
// the likeliest gains first, as the path simplifiers of motion-planning
// libraries do. Every new move is checked by the host's joint-move test, the
// one the map is built with; the first and the last point stay. It draws no
// random numbers: the same route and host give the same result.
class RouteShortener {
public:
    RouteShortener(CollisionChecker& checker, int jointCount);

    std::vector<ViaPoint> shorten(std::vector<ViaPoint> route);

    // Joint moves the host was asked about.
    int movesChecked() const { return movesChecked_; }

    // Summed joint travel (L1) of a route.
    static double travel(const std::vector<ViaPoint>& route, int jointCount);

private:
    bool moveIsFree(const JointVector& from, const JointVector& to);
    double distance(const JointVector& a, const JointVector& b) const;
    // Drops via points that the farthest free straight move skips; true when any went.
    bool dropViaPoints(std::vector<ViaPoint>& route);
    // Where on the moves cuts may start and end: quarters, then eighths.
    enum class Grid { Coarse, Fine };
    // Moves via points to where, in L1, they lengthen the route least; true when any moved.
    bool relaxViaPoints(std::vector<ViaPoint>& route);
    // Cuts the route short once between two points inside its moves; true when it did.
    bool cutOnce(std::vector<ViaPoint>& route, Grid grid);

    CollisionChecker& checker_;
    int jointCount_;
    int movesChecked_ = 0;
    int budget_ = 0;
    // A move by its two ends, ordered by their joint values.
    using Move = std::pair<JointVector, JointVector>;
    struct MoveOrder {
        bool operator()(const Move& a, const Move& b) const;
    };
    // The host's answer for every move asked about, by its two ends.
    std::map<Move, bool, MoveOrder> answers_;
};
