// Shortening a route by dropped via points and cuts between points on its moves.
#include "route_shortener.h"

#include "collision_checker.h"
#include "vorlik/joint_vector.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <tuple>

namespace {
// Where on a move a shortcut may start or end: its start, quarters, its end;
// once those gain nothing, eighths.
constexpr double Coarse[] = {0.0, 0.25, 0.5, 0.75, 1.0};
constexpr double Fine[] = {0.0, 0.125, 0.25, 0.375, 0.5, 0.625, 0.75, 0.875, 1.0};
// Host checks one route may cost, beyond a few per via point.
constexpr int BaseBudget = 200;
constexpr int BudgetPerPoint = 40;

JointVector along(const JointVector& from, const JointVector& to, double fraction, int jointCount)
{
    if (fraction <= 0.0)
        return from;
    if (fraction >= 1.0)
        return to;
    JointVector point(jointCount);
    for (int i = 0; i < jointCount; ++i)
        point[i] = from[i] + (to[i] - from[i]) * fraction;
    return point;
}

// All the values two configurations hold are the same.
bool sameValues(const JointVector& a, const JointVector& b)
{
    return std::equal(a.values(), a.values() + JointVector::MaxJoints, b.values());
}

// All the values of a come before those of b, compared in order.
bool valuesBefore(const JointVector& a, const JointVector& b)
{
    return std::lexicographical_compare(a.values(), a.values() + JointVector::MaxJoints, b.values(),
                                        b.values() + JointVector::MaxJoints);
}

// A possible shortcut: from `u` along move s to `v` along move t, and what it saves.
struct Shortcut {
    double gain;
    int s;
    int u;  // index into Fractions
    int t;
    int v;
};
}  // namespace

bool RouteShortener::MoveOrder::operator()(const Move& a, const Move& b) const
{
    if (valuesBefore(a.first, b.first))
        return true;
    if (valuesBefore(b.first, a.first))
        return false;
    return valuesBefore(a.second, b.second);
}

RouteShortener::RouteShortener(CollisionChecker& checker, int jointCount) : checker_(checker), jointCount_(jointCount) {}

double RouteShortener::distance(const JointVector& a, const JointVector& b) const
{
    return JointVector::distance(a.values(), b.values(), jointCount_);
}

double RouteShortener::travel(const std::vector<ViaPoint>& route, int jointCount)
{
    double total = 0.0;
    for (size_t i = 1; i < route.size(); ++i)
        total += JointVector::distance(route[i - 1].joints.values(), route[i].joints.values(), jointCount);
    return total;
}

bool RouteShortener::moveIsFree(const JointVector& from, const JointVector& to)
{
    // A move asked about before has its answer already, at no cost.
    const auto key = std::make_pair(from, to);
    const auto known = answers_.find(key);
    if (known != answers_.end())
        return known->second;
    --budget_;
    ++movesChecked_;
    const bool free =
        checker_.jointMove(JointVector(from.values(), jointCount_), JointVector(to.values(), jointCount_)) == 0;
    answers_.emplace(key, free);
    return free;
}

std::vector<ViaPoint> RouteShortener::shorten(std::vector<ViaPoint> route)
{
    if (route.size() < 3)
        return route;
    for (const Grid grid : {Grid::Coarse, Grid::Fine}) {
        // The finer grid has a budget of its own: the coarse one may have spent all.
        budget_ = BaseBudget + BudgetPerPoint * static_cast<int>(route.size());
        bool changed = true;
        while (changed && budget_ > 0) {
            changed = dropViaPoints(route);
            changed = cutOnce(route, grid) || changed;
            // Relaxed via points may open new cuts; the cuts first, as they gain most.
            if (!changed)
                changed = relaxViaPoints(route);
        }
    }
    return route;
}

bool RouteShortener::dropViaPoints(std::vector<ViaPoint>& route)
{
    std::vector<ViaPoint> kept{route.front()};
    size_t i = 0;
    while (i + 1 < route.size()) {
        // The farthest point a free move reaches; the next one is reached already.
        size_t next = i + 1;
        for (size_t j = route.size() - 1; j >= i + 2 && budget_ > 0; --j) {
            if (moveIsFree(route[i].joints, route[j].joints)) {
                next = j;
                break;
            }
        }
        kept.push_back(route[next]);
        i = next;
    }
    const bool dropped = kept.size() < route.size();
    route.swap(kept);
    return dropped;
}

bool RouteShortener::cutOnce(std::vector<ViaPoint>& route, Grid grid)
{
    const double* const Fractions = grid == Grid::Coarse ? Coarse : Fine;
    const int FractionCount = grid == Grid::Coarse ? int(std::size(Coarse)) : int(std::size(Fine));
    // The fine grid tries only what the coarse one could not: a point off the quarters.
    const auto tried = [grid](int u, int v) { return grid == Grid::Coarse || u % 2 == 1 || v % 2 == 1; };
    const int moves = static_cast<int>(route.size()) - 1;
    std::vector<double> length(static_cast<size_t>(moves));
    std::vector<double> before(static_cast<size_t>(moves) + 1, 0.0);  // route length up to each point
    for (int s = 0; s < moves; ++s) {
        length[size_t(s)] = distance(route[size_t(s)].joints, route[size_t(s) + 1].joints);
        before[size_t(s) + 1] = before[size_t(s)] + length[size_t(s)];
    }
    const double tolerance = 1e-9 * (1.0 + before.back());

    std::vector<Shortcut> shortcuts;
    for (int s = 0; s < moves; ++s) {
        for (int u = 0; u < FractionCount - 1; ++u) {
            const JointVector a =
                along(route[size_t(s)].joints, route[size_t(s) + 1].joints, Fractions[u], jointCount_);
            const double at = before[size_t(s)] + Fractions[u] * length[size_t(s)];
            for (int t = s; t < moves; ++t) {
                for (int v = t == s ? u + 1 : 1; v < FractionCount; ++v) {
                    const JointVector b =
                        along(route[size_t(t)].joints, route[size_t(t) + 1].joints, Fractions[v], jointCount_);
                    if (!tried(u, v))
                        continue;
                    const double gain = before[size_t(t)] + Fractions[v] * length[size_t(t)] - at - distance(a, b);
                    if (gain > tolerance)
                        shortcuts.push_back({gain, s, u, t, v});
                }
            }
        }
    }
    // The largest saving first; equal savings in route order, so that the result is always the same.
    std::sort(shortcuts.begin(), shortcuts.end(), [](const Shortcut& x, const Shortcut& y) {
        if (x.gain != y.gain)
            return x.gain > y.gain;
        return std::tie(x.s, x.u, x.t, x.v) < std::tie(y.s, y.u, y.t, y.v);
    });

    for (const Shortcut& cut : shortcuts) {
        if (budget_ <= 0)
            return false;
        const ViaPoint& s0 = route[size_t(cut.s)];
        const ViaPoint& s1 = route[size_t(cut.s) + 1];
        const ViaPoint& t0 = route[size_t(cut.t)];
        const ViaPoint& t1 = route[size_t(cut.t) + 1];
        ViaPoint a{along(s0.joints, s1.joints, Fractions[cut.u], jointCount_),
                   cut.u == 0 ? s0.sample : ViaPoint::NewPoint};
        ViaPoint b{along(t0.joints, t1.joints, Fractions[cut.v], jointCount_),
                   cut.v == FractionCount - 1 ? t1.sample : ViaPoint::NewPoint};
        // The new straight move, and the pieces of the old moves that lead to and from it.
        if (!moveIsFree(a.joints, b.joints))
            continue;
        if (cut.u > 0 && !moveIsFree(s0.joints, a.joints))
            continue;
        if (cut.v < FractionCount - 1 && !moveIsFree(b.joints, t1.joints))
            continue;
        std::vector<ViaPoint> shorter(route.begin(), route.begin() + cut.s + 1);
        if (cut.u > 0)
            shorter.push_back(a);
        shorter.push_back(b);
        if (cut.v < FractionCount - 1)
            shorter.push_back(t1);
        shorter.insert(shorter.end(), route.begin() + cut.t + 2, route.end());
        route.swap(shorter);
        return true;
    }
    return false;
}

bool RouteShortener::relaxViaPoints(std::vector<ViaPoint>& route)
{
    bool moved = false;
    for (size_t i = 1; i + 1 < route.size() && budget_ > 0; ++i) {
        const JointVector& before = route[i - 1].joints;
        const JointVector& after = route[i + 1].joints;
        const JointVector& at = route[i].joints;
        // In L1 a via point costs nothing where each joint lies between its
        // values at the two neighbours: it goes there, or as far towards it as
        // free moves allow.
        JointVector goal = at;
        for (int j = 0; j < jointCount_; ++j)
            goal[j] = std::clamp(at[j], std::min(before[j], after[j]),
                                         std::max(before[j], after[j]));
        const double now = distance(before, at) + distance(at, after);
        const double tolerance = 1e-9 * (1.0 + now);
        auto take = [&](const JointVector& candidate) {
            if (distance(before, candidate) + distance(candidate, after) >= now - tolerance || budget_ <= 0)
                return false;
            if (!moveIsFree(before, candidate) || !moveIsFree(candidate, after))
                return false;
            route[i] = ViaPoint{candidate, ViaPoint::NewPoint};
            moved = true;
            return true;
        };
        bool taken = false;
        for (const double fraction : {1.0, 0.5, 0.25}) {
            if ((taken = take(along(at, goal, fraction, jointCount_))))
                break;
        }
        // Else one joint at a time, where another joint's move is what collides.
        for (int j = 0; j < jointCount_ && !taken; ++j) {
            JointVector candidate = at;
            candidate[j] = goal[j];
            taken = !sameValues(candidate, at) && take(candidate);
        }
    }
    return moved;
}
