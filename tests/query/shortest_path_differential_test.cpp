// The heap search against the planner's original table search, on many small
// random graphs whose weights are small integers, so that equally short
// routes are the rule: routes, costs and what is printed must be the same.
#include "shortest_path.h"

#include "dense_graph.h"
#include "table_shortest_path.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

struct Outcome {
    double cost = 0.0;
    std::vector<double> path;
    std::string printed;
};

bool operator==(const Outcome& a, const Outcome& b)
{
    return std::memcmp(&a.cost, &b.cost, sizeof a.cost) == 0 && a.path == b.path && a.printed == b.printed;
}

std::string describe(const Outcome& outcome)
{
    std::string text = "cost " + std::to_string(outcome.cost) + " path";
    for (double node : outcome.path)
        text += " " + std::to_string(static_cast<int>(node));
    return text + " printed '" + outcome.printed + "'";
}

template <typename Search>
Outcome run(Search search)
{
    Outcome outcome;
    ScopedMatrix path = makeScopedMatrix();
    testing::internal::CaptureStdout();
    search(&outcome.cost, path.get());
    outcome.printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(rows(path.get()), 1);
    outcome.path.assign(path->values, path->values + columns(path.get()));
    return outcome;
}

// A graph of n nodes in one of several shapes, weights drawn from `weights`.
void randomGraph(std::mt19937& engine, int n, const std::vector<double>& weights, RoadmapMatrix* dense)
{
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    std::uniform_int_distribution<size_t> pick(0, weights.size() - 1);
    const int shape = std::uniform_int_distribution<int>(0, 3)(engine);
    const double density = shape == 0 ? 0.9 : shape == 1 ? 0.3 : shape == 2 ? 2.5 / std::max(n, 1) : 0.1;
    setSize(dense, n, n);
    fillZero(dense);
    for (int r = 0; r < n; ++r) {
        for (int c = r + 1; c < n; ++c) {
            if (unit(engine) >= density)
                continue;
            const double w = weights[pick(engine)];
            at(dense, r, c) = w;
            at(dense, c, r) = w;
        }
    }
}

int compareOn(std::mt19937& engine, int graphs, const std::vector<double>& weights, int largestGraph)
{
    std::uniform_int_distribution<int> size(1, largestGraph);
    int compared = 0;
    for (int g = 0; g < graphs; ++g) {
        const int n = size(engine);
        ScopedMatrix dense = makeScopedMatrix();
        randomGraph(engine, n, weights, dense.get());
        RoadmapGraph graph;
        graphFromDense(dense.get(), &graph);

        std::uniform_int_distribution<int> node(1, n);
        std::vector<std::pair<int, int>> queries = {{1, n}, {n, 1}, {node(engine), 1}, {1, node(engine)}};
        for (int q = 0; q < 4; ++q)
            queries.push_back({node(engine), node(engine)});
        for (const auto& [source, destination] : queries) {
            const Outcome expected = run([&](double* cost, RoadmapMatrix* path) {
                tableShortestPath(dense.get(), source, destination, cost, path);
            });
            const Outcome found = run([&](double* cost, RoadmapMatrix* path) {
                shortestPath(&graph, source - 1, destination - 1, cost, path);
            });
            ++compared;
            if (!(found == expected)) {
                ADD_FAILURE() << "graph " << g << " of " << n << " nodes, " << source << " -> " << destination
                              << ": expected " << describe(expected) << ", found " << describe(found);
                return compared;
            }
        }
    }
    return compared;
}

}  // namespace

TEST(ShortestPathDifferential, SmallIntegerWeightsGiveTheTableSearchsRoutes)
{
    std::mt19937 engine(7001);
    EXPECT_GE(compareOn(engine, 6000, {1.0, 1.0, 2.0, 3.0}, 24), 48000);
}

TEST(ShortestPathDifferential, OneWeightEverywhereGivesTheTableSearchsRoutes)
{
    // Every route of equal length ties: only the order of the steps decides.
    std::mt19937 engine(7002);
    EXPECT_GE(compareOn(engine, 3000, {1.0}, 30), 24000);
}

TEST(ShortestPathDifferential, FractionalAndLargeGraphsGiveTheTableSearchsRoutes)
{
    std::mt19937 engine(7003);
    EXPECT_GE(compareOn(engine, 1000, {0.5, 1.0, 1.5, 2.0, 0.25}, 80), 8000);
}

TEST(ShortestPathDifferential, EdgesLongerThanNoPathGiveTheTableSearchsRoutes)
{
    // Lengths at and beyond 1e99, the table's "no edge", where the table
    // search also lowered nodes through missing edges.
    std::mt19937 engine(7004);
    EXPECT_GE(compareOn(engine, 2000, {1.0, 2.0, 1e99, 2e99, 5e99, 1e100, 3e120, 1e83}, 20), 16000);
}
