#include "edge_list.h"

#include "roadmap_graph.h"

#include <gtest/gtest.h>

namespace {

// A graph of that many nodes and no edges gives an empty 2 x 0 list, silently.
void expectNoEdgesAndNoMessage(int nodes)
{
    RoadmapGraph graph;
    graph.resize(nodes);
    ScopedMatrix edges = makeScopedMatrix();
    testing::internal::CaptureStdout();
    edgeListFromGraph(&graph, edges.get());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(rows(edges.get()), 2);
    EXPECT_EQ(columns(edges.get()), 0);
}

}  // namespace

TEST(EdgeList, EmptyGraphYieldsNoEdgesAndNoMessage)
{
    expectNoEdgesAndNoMessage(0);
}

TEST(EdgeList, SingleNodeGraphYieldsNoEdgesAndNoMessage)
{
    expectNoEdgesAndNoMessage(1);
}

TEST(EdgeList, UpperTriangleRowByRowWithOneBasedPairs)
{
    RoadmapGraph graph;
    graph.resize(4);
    const int pairs[][2] = {{2, 3}, {3, 0}, {0, 1}};
    for (const auto& p : pairs)
        graph.setLength(p[0], p[1], 1.0);
    ScopedMatrix edges = makeScopedMatrix();
    edgeListFromGraph(&graph, edges.get());
    ASSERT_EQ(rows(edges.get()), 2);
    ASSERT_EQ(columns(edges.get()), 3);
    const double expected[3][2] = {{1, 2}, {1, 4}, {3, 4}};
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(at(edges.get(), 0, k), expected[k][0]);
        EXPECT_EQ(at(edges.get(), 1, k), expected[k][1]);
    }
    EXPECT_EQ(edgeCount(&graph), 3);
}

TEST(EdgeList, ListHoldsOnlyTheEdgesNotEveryPair)
{
    // A map of many samples and few edges: the list is sized by its edges.
    RoadmapGraph graph;
    graph.resize(3000);
    graph.setLength(10, 2999, 4.5);
    ScopedMatrix edges = makeScopedMatrix();
    edgeListFromGraph(&graph, edges.get());
    ASSERT_EQ(columns(edges.get()), 1);
    EXPECT_EQ(at(edges.get(), 0, 0), 11);
    EXPECT_EQ(at(edges.get(), 1, 0), 3000);
    EXPECT_LT(edges->capacity, 3000) << "no room for every pair";
}
