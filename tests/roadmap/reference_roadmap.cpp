#include "reference_roadmap.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {
bool withinLimits(const std::vector<double>& q, const std::vector<double>& lower, const std::vector<double>& upper)
{
    for (size_t i = 0; i < q.size(); ++i)
        if (q[i] < lower[i] || q[i] > upper[i])
            return false;
    return true;
}

double l1(const std::vector<double>& a, const std::vector<double>& b)
{
    double total = 0.0;
    for (size_t i = 0; i < a.size(); ++i)
        total += std::fabs(a[i] - b[i]);
    return total;
}
}  // namespace

ReferenceRoadmap referenceRoadmap(const FakeRobot& robot, const std::vector<double>& lower,
                                  const std::vector<double>& upper, int sampleCount, int edgesPerSample,
                                  const std::vector<std::vector<double>>& seeds, ReferenceRandom& random,
                                  double step)
{
    ReferenceRoadmap map;
    const size_t joints = lower.size();
    size_t nextSeed = 0;
    auto nextFree = [&]() {
        for (; nextSeed < seeds.size();) {
            const std::vector<double>& seed = seeds[nextSeed++];
            if (!withinLimits(seed, lower, upper))
                continue;
            ++map.attempts;
            if (!robot.collides(seed.data()))
                return seed;
        }
        for (;;) {
            std::vector<double> q(joints);
            for (size_t i = 0; i < joints; ++i)
                q[i] = random.uniform() * (upper[i] - lower[i]) + lower[i];
            ++map.attempts;
            if (!robot.collides(q.data()))
                return q;
            ++map.skippedDraws;
        }
    };

    map.graph.assign(static_cast<size_t>(sampleCount), std::vector<double>(static_cast<size_t>(sampleCount), 0.0));
    for (int k = 0; k < sampleCount; ++k) {
        map.samples.push_back(nextFree());
        const std::vector<double>& fresh = map.samples.back();
        std::vector<int> older(static_cast<size_t>(k));
        std::iota(older.begin(), older.end(), 0);
        std::vector<double> distance(older.size());
        for (int p = 0; p < k; ++p)
            distance[p] = l1(fresh, map.samples[p]);
        std::stable_sort(older.begin(), older.end(), [&](int a, int b) { return distance[a] < distance[b]; });
        for (int m = 0; m < std::min(edgesPerSample, k); ++m) {
            const int q = older[m];
            ++map.edgeTests;
            if (robot.moveCollides(fresh.data(), map.samples[q].data(), step)) {
                ++map.blockedEdges;
                continue;
            }
            map.graph[k][q] = distance[q];
            map.graph[q][k] = distance[q];
        }
    }
    return map;
}
