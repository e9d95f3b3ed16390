#include "edge_list.h"

#include <gtest/gtest.h>

namespace {
std::string edgeListOutput(int rowCount, int columnCount, RoadmapMatrix* edges)
{
    ScopedMatrix graph = makeScopedMatrix();
    setSize(graph.get(), rowCount, columnCount);
    fillZero(graph.get());
    testing::internal::CaptureStdout();
    edgeListFromGraph(graph.get(), edges);
    return testing::internal::GetCapturedStdout();
}
}  // namespace

TEST(EdgeList, EmptyGraphYieldsNoEdgesAndNoMessage)
{
    ScopedMatrix edges = makeScopedMatrix();
    EXPECT_EQ(edgeListOutput(0, 0, edges.get()), "");
    EXPECT_EQ(rows(edges.get()), 2);
    EXPECT_EQ(columns(edges.get()), 0);
}

TEST(EdgeList, SingleNodeGraphYieldsNoEdgesAndNoMessage)
{
    ScopedMatrix edges = makeScopedMatrix();
    EXPECT_EQ(edgeListOutput(1, 1, edges.get()), "");
    EXPECT_EQ(rows(edges.get()), 2);
    EXPECT_EQ(columns(edges.get()), 0);
}

TEST(EdgeList, NonSquareGraphPrintsTheMessage)
{
    ScopedMatrix edges = makeScopedMatrix();
    setSize(edges.get(), 2, 5);
    EXPECT_EQ(edgeListOutput(3, 4, edges.get()), "Something is wrong! G matrix is not square!\n");
    EXPECT_EQ(rows(edges.get()), 2);
    EXPECT_EQ(columns(edges.get()), 0);
}

TEST(EdgeList, LowerTriangleIsIgnored)
{
    ScopedMatrix graph = makeScopedMatrix();
    setSize(graph.get(), 3, 3);
    fillZero(graph.get());
    at(graph.get(), 1, 0) = 2.0;
    at(graph.get(), 2, 0) = 3.0;
    at(graph.get(), 2, 1) = 4.0;
    ScopedMatrix edges = makeScopedMatrix();
    edgeListFromGraph(graph.get(), edges.get());
    EXPECT_EQ(columns(edges.get()), 0);
    EXPECT_EQ(edgeCount(graph.get()), 0);
}

TEST(EdgeList, UpperTriangleRowByRowWithOneBasedPairs)
{
    ScopedMatrix graph = makeScopedMatrix();
    setSize(graph.get(), 4, 4);
    fillZero(graph.get());
    const int pairs[][2] = {{2, 3}, {0, 3}, {0, 1}};
    for (const auto& p : pairs) {
        at(graph.get(), p[0], p[1]) = 1.0;
        at(graph.get(), p[1], p[0]) = 1.0;
    }
    ScopedMatrix edges = makeScopedMatrix();
    edgeListFromGraph(graph.get(), edges.get());
    ASSERT_EQ(rows(edges.get()), 2);
    ASSERT_EQ(columns(edges.get()), 3);
    const double expected[3][2] = {{1, 2}, {1, 4}, {3, 4}};
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(at(edges.get(), 0, k), expected[k][0]);
        EXPECT_EQ(at(edges.get(), 1, k), expected[k][1]);
    }
    EXPECT_EQ(edgeCount(graph.get()), 3);
}
