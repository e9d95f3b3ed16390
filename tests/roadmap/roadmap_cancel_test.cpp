#include "host_planning.h"
#include "progress_reporter.h"
#include "roadmap_builder.h"
#include "roadmap_matrix.h"

#include "dense_graph.h"

#include "fake_host.h"

#include <gtest/gtest.h>

namespace {
// Two joints, an obstacle around the origin, and seeds that make the order of
// collision tests known: sample k's search is one test, then k edge tests.
class RoadmapCancelTest : public testing::Test {
protected:
    void SetUp() override
    {
        robot = host.addRobot("Arm", {-100, -100}, {100, 100});
        robot->boxes.push_back({{-10, -10}, {10, 10}});
        resources.progress().start(nullptr, "Map");
    }
    void TearDown() override
    {
        resources.progress().finish();
    }

    void cancelAtTest(int number)
    {
        host.onCollisionTest = [this, number](int test) {
            if (test == number)
                resources.progress().dialog()->cancel();
        };
    }

    void build(const std::vector<std::vector<double>>& seedColumns)
    {
        ScopedMatrix seeds = makeScopedMatrix();
        setSize(seeds.get(), 2, static_cast<int>(seedColumns.size()));
        for (size_t c = 0; c < seedColumns.size(); ++c)
            for (int r = 0; r < 2; ++r)
                at(seeds.get(), r, static_cast<int>(c)) = seedColumns[c][r];
        const PlannerParameters parameters = {6, 5, 5, 4.0};
        hostBuildRoadmap(resources, host, robot, parameters, seeds.get(), samples.get(), graph.get());
    }

    FakeHost host;

    PlannerResources resources;  // the generator and the progress dialog
    FakeRobot* robot = nullptr;
    ScopedMatrix samples = makeScopedMatrix();
    ScopedGraph graph = makeScopedGraph();
};
}  // namespace

TEST_F(RoadmapCancelTest, DuringTheSearchForSampleThreeKeepsThreeSamples)
{
    // Tests: #1 sample 0, #2-#3 sample 1, #4-#6 sample 2, #7 a colliding seed.
    cancelAtTest(7);
    build({{50, 50}, {-50, 50}, {50, -50}, {0, 0}});
    EXPECT_TRUE(resources.progress().cancelled());
    ASSERT_EQ(rows(samples.get()), 2);
    ASSERT_EQ(columns(samples.get()), 3);
    ASSERT_EQ(rows(graph.get()), 3);
    ASSERT_EQ(columns(graph.get()), 3);
    EXPECT_EQ(at(samples.get(), 0, 2), 50.0);
    EXPECT_EQ(at(samples.get(), 1, 2), -50.0);
    // Entries keep their row and column after the truncation.
    const double expected[3][3] = {{0, 100, 100}, {100, 0, 0}, {100, 0, 0}};
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(at(graph.get(), r, c), expected[r][c]) << r << ", " << c;
}

TEST_F(RoadmapCancelTest, DuringTheEdgesOfSampleThreeKeepsFourSamples)
{
    // #7 finds sample 3 at (-50, -50); #8 tests its edge to sample 1, then the
    // next progress update sees the cancel.
    cancelAtTest(8);
    build({{50, 50}, {-50, 50}, {50, -50}, {-50, -50}});
    EXPECT_TRUE(resources.progress().cancelled());
    ASSERT_EQ(columns(samples.get()), 4);
    ASSERT_EQ(rows(graph.get()), 4);
    ASSERT_EQ(columns(graph.get()), 4);
    EXPECT_EQ(at(samples.get(), 0, 3), -50.0);
    EXPECT_EQ(at(graph.get(), 3, 1), 100.0) << "the edge found before the cancel stays";
    EXPECT_EQ(at(graph.get(), 1, 3), 100.0);
    EXPECT_EQ(at(graph.get(), 3, 2), 0.0) << "not tested";
    EXPECT_EQ(at(graph.get(), 0, 1), 100.0);
    EXPECT_EQ(robot->jointMoveTests, 4);
}

TEST_F(RoadmapCancelTest, DuringSampleZeroLeavesEmptyOutputs)
{
    cancelAtTest(1);
    setSize(samples.get(), 2, 2);
    graph->resize(2);
    build({{0, 0}, {50, 50}});
    EXPECT_TRUE(resources.progress().cancelled());
    EXPECT_EQ(rows(samples.get()), 0);
    EXPECT_EQ(columns(samples.get()), 0);
    EXPECT_EQ(rows(graph.get()), 0);
    EXPECT_EQ(columns(graph.get()), 0);
}

TEST_F(RoadmapCancelTest, WithoutCancelTheMapIsComplete)
{
    build({{50, 50}, {-50, 50}, {50, -50}, {-50, -50}});
    EXPECT_FALSE(resources.progress().cancelled());
    EXPECT_EQ(columns(samples.get()), 6);
    EXPECT_EQ(rows(graph.get()), 6);
}
