#include "shortest_path.h"

#include "roadmap_matrix.h"

#include "dense_graph.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

namespace {
// A textbook Dijkstra over an adjacency matrix, with predecessors.
struct Reference {
    std::vector<double> distance;  // 1-based
    std::vector<int> predecessor;
};

Reference dijkstra(const std::vector<std::vector<double>>& w, int source)
{
    const int n = static_cast<int>(w.size());
    const double infinity = std::numeric_limits<double>::infinity();
    Reference result{std::vector<double>(n + 1, infinity), std::vector<int>(n + 1, 0)};
    std::vector<bool> done(n + 1, false);
    result.distance[source] = 0.0;
    for (int round = 0; round < n; ++round) {
        int best = 0;
        for (int v = 1; v <= n; ++v)
            if (!done[v] && result.distance[v] < infinity && (best == 0 || result.distance[v] < result.distance[best]))
                best = v;
        if (best == 0)
            break;
        done[best] = true;
        for (int v = 1; v <= n; ++v) {
            const double weight = w[best - 1][v - 1];
            if (weight > 0 && result.distance[best] + weight < result.distance[v]) {
                result.distance[v] = result.distance[best] + weight;
                result.predecessor[v] = best;
            }
        }
    }
    return result;
}

std::vector<std::vector<double>> randomGraph(std::mt19937& engine, int n, double density, bool integerWeights)
{
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    std::uniform_real_distribution<double> weight(1.0, 100.0);
    std::uniform_int_distribution<int> small(1, 4);
    std::vector<std::vector<double>> w(n, std::vector<double>(n, 0.0));
    for (int i = 0; i < n; ++i)
        for (int j = i + 1; j < n; ++j)
            if (unit(engine) < density)
                w[i][j] = w[j][i] = integerWeights ? small(engine) : weight(engine);
    return w;
}

ScopedGraph toGraph(const std::vector<std::vector<double>>& w)
{
    const int n = static_cast<int>(w.size());
    ScopedGraph g = makeScopedGraph();
    g->resize(n);
    for (int r = 0; r < n; ++r)
        for (int c = r + 1; c < n; ++c)
            g->setLength(r, c, w[r][c]);
    return g;
}
}  // namespace

// Real-valued random weights make every shortest route unique, so the route
// itself, not only its cost, must match.
TEST(ShortestPathReference, RoutesOnRandomGraphsMatchDijkstra)
{
    std::mt19937 engine(20240611);
    int reachablePairs = 0;
    int unreachablePairs = 0;
    for (int graphNumber = 0; graphNumber < 12; ++graphNumber) {
        const int n = 8 + graphNumber * 3;
        const auto w = randomGraph(engine, n, graphNumber % 3 == 0 ? 0.08 : 0.25, false);
        const ScopedGraph g = toGraph(w);
        ScopedMatrix path = makeScopedMatrix();
        for (int source = 1; source <= n; source += 3) {
            const Reference expected = dijkstra(w, source);
            for (int destination = 1; destination <= n; ++destination) {
                if (destination == source)
                    continue;
                double cost = 0.0;
                shortestPath(g.get(), source - 1, destination - 1, &cost, path.get());
                if (expected.distance[destination] == std::numeric_limits<double>::infinity()) {
                    ++unreachablePairs;
                    EXPECT_GE(cost, 1e99);
                    continue;
                }
                ++reachablePairs;
                ASSERT_EQ(cost, expected.distance[destination])
                    << "graph " << graphNumber << " " << source << "->" << destination;
                // From the destination back to the source.
                std::vector<int> route;
                for (int v = destination; v != 0; v = expected.predecessor[v])
                    route.push_back(v);
                ASSERT_EQ(route.back(), source);
                std::vector<int> found;
                for (int i = 0; i < columns(path.get()); ++i)
                    found.push_back(static_cast<int>(path->values[i]));
                ASSERT_EQ(found, route) << "graph " << graphNumber << " " << source << "->" << destination;
            }
        }
    }
    EXPECT_GT(reachablePairs, 500);
    EXPECT_GT(unreachablePairs, 0);
}

// Small integer weights give many equal routes: the cost still matches, and
// the route is a real chain of edges of that cost.
TEST(ShortestPathReference, CostsWithManyTiesMatchDijkstra)
{
    std::mt19937 engine(77);
    for (int graphNumber = 0; graphNumber < 10; ++graphNumber) {
        const int n = 6 + graphNumber * 2;
        const auto w = randomGraph(engine, n, 0.3, true);
        const ScopedGraph g = toGraph(w);
        ScopedMatrix path = makeScopedMatrix();
        for (int source = 1; source <= n; ++source) {
            const Reference expected = dijkstra(w, source);
            for (int destination = 1; destination <= n; ++destination) {
                if (destination == source || expected.distance[destination] == std::numeric_limits<double>::infinity())
                    continue;
                double cost = 0.0;
                shortestPath(g.get(), source - 1, destination - 1, &cost, path.get());
                ASSERT_EQ(cost, expected.distance[destination]);
                ASSERT_GE(columns(path.get()), 2);
                EXPECT_EQ(path->values[0], destination);
                EXPECT_EQ(path->values[columns(path.get()) - 1], source);
                double length = 0.0;
                for (int i = 0; i + 1 < columns(path.get()); ++i) {
                    const double edge = w[int(path->values[i]) - 1][int(path->values[i + 1]) - 1];
                    ASSERT_GT(edge, 0.0) << "consecutive route nodes are joined by an edge";
                    length += edge;
                }
                EXPECT_EQ(length, cost);
            }
        }
    }
}
