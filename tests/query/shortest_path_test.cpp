#include "shortest_path.h"

#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include "dense_graph.h"

#include <gtest/gtest.h>

#include <vector>

namespace {
struct Edge {
    int a;  // 1-based
    int b;
    double weight;
};

ScopedGraph graphOf(int n, const std::vector<Edge>& edges)
{
    ScopedGraph g = makeScopedGraph();
    g->resize(n);
    for (const Edge& e : edges)
        g->setLength(e.a - 1, e.b - 1, e.weight);
    return g;
}

std::vector<int> nodesOf(const RoadmapMatrix* path)
{
    EXPECT_EQ(rows(path), 1);
    std::vector<int> nodes;
    for (int i = 0; i < columns(path); ++i)
        nodes.push_back(static_cast<int>(path->values[i]));
    return nodes;
}

class ShortestPathTest : public testing::Test {
protected:
    // Nodes counted from 1 here, as the route the search writes counts them.
    std::vector<int> search(const RoadmapGraph* graph, int source, int destination)
    {
        testing::internal::CaptureStdout();
        shortestPath(graph, source - 1, destination - 1, &cost, path.get());
        printed = testing::internal::GetCapturedStdout();
        return nodesOf(path.get());
    }

    double cost = -1.0;
    ScopedMatrix path = makeScopedMatrix();
    std::string printed;
};
}  // namespace

TEST_F(ShortestPathTest, SameSourceAndDestination)
{
    ScopedGraph g = graphOf(4, {{1, 2, 5.0}});
    EXPECT_EQ(search(g.get(), 2, 2), std::vector<int>({2}));
    EXPECT_EQ(cost, 0.0);
    EXPECT_EQ(search(g.get(), 4, 4), std::vector<int>({4})) << "a node without edges";
    EXPECT_EQ(cost, 0.0);
    EXPECT_EQ(printed, "");
}

TEST_F(ShortestPathTest, TwoNodesFromTwoToOne)
{
    ScopedGraph g = graphOf(2, {{1, 2, 3.0}});
    EXPECT_EQ(search(g.get(), 2, 1), std::vector<int>({1, 2}));
    EXPECT_EQ(cost, 3.0);
    EXPECT_EQ(search(g.get(), 1, 2), std::vector<int>({2, 1}));
    EXPECT_EQ(cost, 3.0);
}

TEST_F(ShortestPathTest, IndexBeyondTheGraphPrintsWithoutLineEnd)
{
    ScopedGraph g = graphOf(3, {{1, 2, 1.0}});
    EXPECT_TRUE(search(g.get(), 4, 1).empty());
    EXPECT_EQ(printed, "Internal problem: Index out of bounds!!");
    EXPECT_EQ(cost, 1e99);
    EXPECT_TRUE(search(g.get(), 1, 4).empty());
    EXPECT_EQ(printed, "Internal problem: Index out of bounds!!");
}

TEST_F(ShortestPathTest, DifferentComponentsHaveNoPath)
{
    ScopedGraph g = graphOf(5, {{1, 2, 1.0}, {3, 4, 1.0}, {4, 5, 2.0}});
    search(g.get(), 1, 5);
    EXPECT_GE(cost, 1e99);
    search(g.get(), 5, 2);
    EXPECT_GE(cost, 1e99);
    search(g.get(), 3, 5);
    EXPECT_EQ(cost, 3.0);
}

TEST_F(ShortestPathTest, ChainRunsFromDestinationBackToSource)
{
    ScopedGraph g = graphOf(5, {{1, 2, 1.0}, {2, 3, 2.0}, {3, 4, 3.0}, {4, 5, 4.0}, {1, 5, 20.0}});
    EXPECT_EQ(search(g.get(), 2, 5), std::vector<int>({5, 4, 3, 2}));
    EXPECT_EQ(cost, 9.0);
    EXPECT_EQ(search(g.get(), 5, 2), std::vector<int>({2, 3, 4, 5}));
    EXPECT_EQ(cost, 9.0);
}

TEST_F(ShortestPathTest, DestinationOneIsHandledByRelabelling)
{
    ScopedGraph g = graphOf(4, {{1, 2, 1.0}, {2, 3, 2.0}, {3, 4, 1.5}, {1, 4, 10.0}});
    EXPECT_EQ(search(g.get(), 4, 1), std::vector<int>({1, 2, 3, 4}));
    EXPECT_EQ(cost, 4.5);
    EXPECT_EQ(search(g.get(), 3, 1), std::vector<int>({1, 2, 3}));
    EXPECT_EQ(cost, 3.0);
}

TEST_F(ShortestPathTest, SourceOneReachingThroughTheRelabelledNode)
{
    // From node 3 the route passes node 1 on its way to node 4.
    ScopedGraph g = graphOf(4, {{3, 1, 1.0}, {1, 4, 1.0}, {3, 2, 5.0}, {2, 4, 5.0}});
    EXPECT_EQ(search(g.get(), 3, 4), std::vector<int>({4, 1, 3}));
    EXPECT_EQ(cost, 2.0);
    EXPECT_EQ(search(g.get(), 4, 3), std::vector<int>({3, 1, 4}));
}

TEST_F(ShortestPathTest, OfTwoEqualRoutesTheLowerLabelFixedFirstWins)
{
    // 1-2-4 and 1-3-4 both cost 2; 2 and 3 tie, and 2 comes first in label order.
    ScopedGraph g = graphOf(5, {{1, 2, 1.0}, {1, 3, 1.0}, {2, 4, 1.0}, {3, 4, 1.0}, {4, 5, 1.0}});
    EXPECT_EQ(search(g.get(), 1, 4), std::vector<int>({4, 2, 1}));
    EXPECT_EQ(cost, 2.0);
}

TEST_F(ShortestPathTest, OfTwoEqualRoutesTheOneFoundFirstIsKept)
{
    // 1-3-4 (0.5 + 2.5) and 1-2-4 (1 + 2) both cost 3. Node 3 is nearer, so it is
    // fixed first and reaches 4 first; node 2's equal offer does not replace it.
    ScopedGraph g = graphOf(4, {{1, 2, 1.0}, {1, 3, 0.5}, {2, 4, 2.0}, {3, 4, 2.5}});
    EXPECT_EQ(search(g.get(), 1, 4), std::vector<int>({4, 3, 1}));
    EXPECT_EQ(cost, 3.0);
}

TEST_F(ShortestPathTest, TiesKeepTheOrderOfThePreviousStep)
{
    // Node 5 is at distance 2 from the start; node 3 drops to 2 through node 2
    // later. In the open list 5 stays ahead of 3 although its label is higher,
    // so 5 is fixed first and its offer to 6 is the one kept.
    ScopedGraph g = graphOf(6, {{1, 2, 1.0}, {1, 5, 2.0}, {1, 3, 9.0}, {2, 3, 1.0}, {5, 6, 1.0}, {3, 6, 1.0}});
    EXPECT_EQ(search(g.get(), 1, 6), std::vector<int>({6, 5, 1}));
    EXPECT_EQ(cost, 3.0);
}

TEST_F(ShortestPathTest, InputGraphIsNotModified)
{
    ScopedGraph g = graphOf(4, {{1, 2, 1.0}, {2, 3, 2.0}, {3, 4, 1.5}});
    const RoadmapGraph copy = *g;
    search(g.get(), 3, 1);
    EXPECT_TRUE(*g == copy);
}
