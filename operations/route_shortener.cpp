// Shortening a route by dropped via points and cuts between points on its moves.
#include "route_shortener.h"

#include "edge_test.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {
// Where on a move a shortcut may start or end: its start, quarters, its end.
constexpr double Fractions[] = {0.0, 0.25, 0.5, 0.75, 1.0};
constexpr int FractionCount = 5;
// Host checks one route may cost, beyond a few per via point.
constexpr int BaseBudget = 200;
constexpr int BudgetPerPoint = 40;

Configuration along(const Configuration& from, const Configuration& to, double fraction, int jointCount)
{
    if (fraction <= 0.0)
        return from;
    if (fraction >= 1.0)
        return to;
    Configuration point{};
    for (int i = 0; i < jointCount; ++i)
        point[size_t(i)] = from[size_t(i)] + (to[size_t(i)] - from[size_t(i)]) * fraction;
    return point;
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

RouteShortener::RouteShortener(HostItem* robot, int jointCount) : robot_(robot), jointCount_(jointCount) {}

double RouteShortener::distance(const Configuration& a, const Configuration& b) const
{
    return jointDistance(a.data(), b.data(), jointCount_);
}

double RouteShortener::travel(const std::vector<ViaPoint>& route, int jointCount)
{
    double total = 0.0;
    for (size_t i = 1; i < route.size(); ++i)
        total += jointDistance(route[i - 1].joints.data(), route[i].joints.data(), jointCount);
    return total;
}

bool RouteShortener::moveIsFree(const Configuration& from, const Configuration& to)
{
    --budget_;
    ++movesChecked_;
    return edgeIsBlocked(robot_, from.data(), to.data(), jointCount_) == 0;
}

std::vector<ViaPoint> RouteShortener::shorten(std::vector<ViaPoint> route)
{
    if (route.size() < 3)
        return route;
    budget_ = BaseBudget + BudgetPerPoint * static_cast<int>(route.size());
    bool changed = true;
    while (changed && budget_ > 0) {
        changed = dropViaPoints(route);
        changed = cutOnce(route) || changed;
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

bool RouteShortener::cutOnce(std::vector<ViaPoint>& route)
{
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
            const Configuration a =
                along(route[size_t(s)].joints, route[size_t(s) + 1].joints, Fractions[u], jointCount_);
            const double at = before[size_t(s)] + Fractions[u] * length[size_t(s)];
            for (int t = s; t < moves; ++t) {
                for (int v = t == s ? u + 1 : 1; v < FractionCount; ++v) {
                    const Configuration b =
                        along(route[size_t(t)].joints, route[size_t(t) + 1].joints, Fractions[v], jointCount_);
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
