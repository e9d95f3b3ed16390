// Growing a built map by more samples, as its construction adds them.
#include "host_planning.h"
#include "progress_reporter.h"
#include "random_generator.h"
#include "roadmap_builder.h"
#include "roadmap_matrix.h"

#include "dense_graph.h"

#include "fake_host.h"

#include <gtest/gtest.h>

namespace {

class RoadmapGrowthTest : public testing::Test {
protected:
    void SetUp() override
    {
        robot = host.addRobot("Arm", {-100, -100, -100}, {100, 100, 100});
        robot->boxes.push_back({{-20, -101, -101}, {20, 101, 101}});
        resources.progress().start(nullptr, "Map");
        hostBuildRoadmap(resources, host, robot, parameters, nullptr, samples.get(), graph.get());
    }
    void TearDown() override
    {
        resources.progress().finish();
    }

    int grow(int count, const std::function<bool(int)>& progress = [](int) { return false; })
    {
        return hostGrowRoadmap(resources, host, robot, parameters, count, samples.get(), graph.get(), progress);
    }

    const PlannerParameters parameters = {20, 4, 5, 4.0};
    FakeHost host;
    PlannerResources resources;  // the generator and the progress dialog
    FakeRobot* robot = nullptr;
    ScopedMatrix samples = makeScopedMatrix();
    ScopedGraph graph = makeScopedGraph();
};

TEST_F(RoadmapGrowthTest, NewSamplesAreFreeAndJoinedToTheirNearestOlderOnesAsTheConstructionDoes)
{
    ASSERT_EQ(columns(samples.get()), 20);
    const RoadmapGraph before = *graph;
    EXPECT_EQ(grow(15), 15);
    ASSERT_EQ(columns(samples.get()), 35);
    ASSERT_EQ(graph->nodeCount(), 35);
    // The old part of the map is as it was, but for edges from new samples.
    for (int a = 0; a < 20; ++a) {
        for (int b = 0; b < 20; ++b)
            EXPECT_EQ(graph->length(a, b), before.length(a, b));
    }
    for (int k = 20; k < 35; ++k) {
        const double* sample = column(samples.get(), k);
        EXPECT_FALSE(robot->collides(sample)) << "sample " << k;
        int older = 0;
        for (const RoadmapGraph::Edge& edge : graph->edgesOf(k))
            older += edge.node < k;
        EXPECT_LE(older, 4) << "at most K edges to older samples";
    }
}

TEST_F(RoadmapGrowthTest, TheSameGrowthAsBuildingTheLargerMapFromTheSameSequence)
{
    // Built in one go, 20 + 15 samples draw the same random numbers as 20 and
    // then 15 more, when no seeds come first: the two maps are the same.
    resources.random() = MersenneTwister();
    hostBuildRoadmap(resources, host, robot, parameters, nullptr, samples.get(), graph.get());
    grow(15);
    RoadmapGraph grown = *graph;
    ScopedMatrix grownSamples = makeScopedMatrix();
    copyMatrix(samples.get(), grownSamples.get());
    resources.random() = MersenneTwister();
    const PlannerParameters larger = {35, 4, 5, 4.0};
    hostBuildRoadmap(resources, host, robot, larger, nullptr, samples.get(), graph.get());
    EXPECT_TRUE(*graph == grown);
    for (int i = 0; i < 3 * 35; ++i)
        EXPECT_EQ(samples->values[i], grownSamples->values[i]);
}

TEST_F(RoadmapGrowthTest, ACancelKeepsTheSamplesAddedWithTheirEdges)
{
    int asked = 0;
    const int added = grow(15, [&asked](int sample) { return ++asked > 10 && sample >= 3; });
    EXPECT_GE(added, 3);
    EXPECT_LT(added, 15);
    EXPECT_EQ(columns(samples.get()), 20 + added);
    EXPECT_EQ(graph->nodeCount(), 20 + added) << "the samples and the graph still match";
}

TEST_F(RoadmapGrowthTest, AGraphAheadOfItsSamplesIsNotGrown)
{
    graph->addNode();  // as a cancelled insertion leaves it
    EXPECT_EQ(grow(5), 0);
    EXPECT_EQ(columns(samples.get()), 20);
    EXPECT_EQ(graph->nodeCount(), 21);
}

}  // namespace
