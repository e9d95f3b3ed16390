#include "edge_list.h"
#include "host_planning.h"
#include "progress_reporter.h"
#include "progress_steps.h"
#include "roadmap_builder.h"
#include "roadmap_matrix.h"

#include "dense_graph.h"

#include "fake_host.h"
#include "log_capture.h"

#include <gtest/gtest.h>

namespace {
class RoadmapBuilderTest : public testing::Test {
protected:
    void SetUp() override
    {
        robot = host.addRobot("Arm", {-100, -100, -100}, {100, 100, 100});
        resources.progress().start(nullptr, "Map");
    }
    void TearDown() override
    {
        resources.progress().finish();
    }

    void build(int sampleCount, int edgesPerSample, const RoadmapMatrix* seeds = nullptr)
    {
        const PlannerParameters parameters = {sampleCount, edgesPerSample, 5, 4.0};
        hostBuildRoadmap(resources, host, robot, parameters, seeds, samples.get(), graph.get());
    }

    FakeHost host;

    PlannerResources resources;  // the generator and the progress dialog
    FakeRobot* robot = nullptr;
    ScopedMatrix samples = makeScopedMatrix();
    ScopedGraph graph = makeScopedGraph();
};
}  // namespace

TEST_F(RoadmapBuilderTest, OneSampleHasNoProgressLineAndNoEdge)
{
    LogCapture log;
    build(1, 25);
    EXPECT_EQ(rows(samples.get()), 3);
    EXPECT_EQ(columns(samples.get()), 1);
    ASSERT_EQ(rows(graph.get()), 1);
    ASSERT_EQ(columns(graph.get()), 1);
    EXPECT_EQ(at(graph.get(), 0, 0), 0.0);
    EXPECT_EQ(robot->jointMoveTests, 0);
    EXPECT_EQ(log.countStartingWith("Calculating PRM"), 0);
    EXPECT_EQ(resources.progress().dialog()->labelText(), QString("Map"));
}

TEST_F(RoadmapBuilderTest, NoEdgesPerSampleTestsNoEdgeAndNeverUpdatesTheSampleLine)
{
    // Half of the space collides, so that attempt lines do appear.
    robot->boxes.push_back({{-101, -101, -101}, {0, 101, 101}});
    const int barBefore = resources.progress().dialog()->value();
    LogCapture log;
    build(10, 0);
    EXPECT_EQ(columns(samples.get()), 10);
    EXPECT_EQ(robot->jointMoveTests, 0);
    EXPECT_EQ(graph->nodeCount(), 10);
    EXPECT_EQ(graph->edgeCount(), 0) << "the graph stays all zero";
    EXPECT_EQ(log.countStartingWith("Calculating PRM"), 0);
    EXPECT_GT(log.countStartingWith("Adding joints. Attempt: "), 0);
    EXPECT_EQ(resources.progress().dialog()->value(), barBefore);
    EXPECT_TRUE(resources.progress().dialog()->labelText().startsWith("Map<br>Looking for a collision-free"));
}

TEST_F(RoadmapBuilderTest, EnoughEdgesPerSampleTestsEveryOlderSample)
{
    build(6, 5);
    EXPECT_EQ(robot->jointMoveTests, 15);
    EXPECT_EQ(edgeCount(graph.get()), 15);
    for (int r = 0; r < 6; ++r)
        for (int c = 0; c < 6; ++c) {
            EXPECT_EQ(at(graph.get(), r, c), at(graph.get(), c, r));
            EXPECT_EQ(at(graph.get(), r, c) > 0, r != c);
        }
}

TEST_F(RoadmapBuilderTest, ProgressLineAndBarValue)
{
    LogCapture log;
    EXPECT_FALSE(showSampleProgress(resources.progress(), 2, 3, 7));
    EXPECT_EQ(resources.progress().dialog()->value(), 66);
    EXPECT_EQ(resources.progress().dialog()->labelText(), QString("Calculating collision map:<br>Samples: 2/3 Edges: 7<br>"));
    ASSERT_EQ(log.messages().size(), 1);
    EXPECT_EQ(log.messages()[0], QString("Calculating PRM 2 / 3 - Edges: 7"));
}

TEST_F(RoadmapBuilderTest, SampleLineClearsTheAttemptLine)
{
    showAttempt(resources.progress(), 4);
    showSampleProgress(resources.progress(), 1, 4, 0);
    EXPECT_FALSE(resources.progress().dialog()->labelText().contains("attempt"));
}

TEST_F(RoadmapBuilderTest, AnEdgeBetweenIdenticalSamplesIsNotInTheGraph)
{
    ScopedMatrix seeds = makeScopedMatrix();
    setSize(seeds.get(), 3, 3);
    const double columnsOfSeeds[3][3] = {{10, 20, 30}, {10, 20, 30}, {-10, 20, 30}};
    for (int c = 0; c < 3; ++c)
        for (int r = 0; r < 3; ++r)
            at(seeds.get(), r, c) = columnsOfSeeds[c][r];
    LogCapture log;
    build(3, 2, seeds.get());
    EXPECT_EQ(at(graph.get(), 0, 1), 0.0);
    EXPECT_EQ(at(graph.get(), 1, 0), 0.0);
    EXPECT_EQ(at(graph.get(), 2, 0), 20.0);
    EXPECT_EQ(at(graph.get(), 2, 1), 20.0);
    EXPECT_EQ(edgeCount(graph.get()), 2);
    // The free move was still counted as an edge while building.
    EXPECT_EQ(log.countStartingWith("Calculating PRM 3 / 3 - Edges: 1"), 1);
}

TEST_F(RoadmapBuilderTest, BlockedNearestIsNotReplacedByTheNextNearest)
{
    // A wall at joint 0 between 1 and 2 on the way to the nearest older sample.
    robot->boxes.push_back({{1, -101, -101}, {2, 101, 101}});
    ScopedMatrix seeds = makeScopedMatrix();
    setSize(seeds.get(), 3, 3);
    const double columnsOfSeeds[3][3] = {{5, 0, 0}, {-50, 0, 0}, {-5, 0, 0}};
    for (int c = 0; c < 3; ++c)
        for (int r = 0; r < 3; ++r)
            at(seeds.get(), r, c) = columnsOfSeeds[c][r];
    build(3, 1, seeds.get());
    EXPECT_EQ(at(graph.get(), 2, 0), 0.0) << "nearest (10 away) is behind the wall";
    EXPECT_EQ(at(graph.get(), 2, 1), 0.0) << "the second nearest is not tried when K = 1";
    EXPECT_EQ(robot->jointMoveTests, 2);
}
