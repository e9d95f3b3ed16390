#include "host_planning.h"
#include "random_generator.h"
#include "roadmap_builder.h"
#include "roadmap_matrix.h"

#include "dense_graph.h"

#include "fake_host.h"
#include "reference_roadmap.h"

#include <gtest/gtest.h>


namespace {
const std::vector<double> Lower6 = {-170, -120, -170, -190, -120, -360};
const std::vector<double> Upper6 = {170, 120, 170, 190, 120, 360};

class GoldenMapTest : public testing::Test {
protected:

    // Builds with the code under test and with the reference model, both from
    // the point of the random sequence where the process generator stands.
    ReferenceRoadmap buildBoth(FakeRobot* robot, int sampleCount, int edgesPerSample,
                               const std::vector<std::vector<double>>& seedColumns = {})
    {
        ScopedMatrix seeds = makeScopedMatrix();
        const int joints = robot->jointCount();
        setSize(seeds.get(), joints, static_cast<int>(seedColumns.size()));
        for (size_t c = 0; c < seedColumns.size(); ++c)
            for (int r = 0; r < joints; ++r)
                at(seeds.get(), r, static_cast<int>(c)) = seedColumns[c][r];

        ReferenceRandom random(resources.random().outputsDrawn());
        const ReferenceRoadmap expected = referenceRoadmap(*robot, Lower6, Upper6, sampleCount, edgesPerSample,
                                                           seedColumns, random, host.collisionStep());
        const PlannerParameters parameters = {sampleCount, edgesPerSample, 5, 4.0};
        hostBuildRoadmap(resources, host, robot, parameters, seeds.get(), samples.get(), graph.get());
        return expected;
    }

    void expectEqualMaps(const ReferenceRoadmap& expected)
    {
        const int n = static_cast<int>(expected.samples.size());
        ASSERT_EQ(columns(samples.get()), n);
        ASSERT_EQ(rows(samples.get()), static_cast<int>(expected.samples[0].size()));
        ASSERT_EQ(rows(graph.get()), n);
        ASSERT_EQ(columns(graph.get()), n);
        for (int c = 0; c < n; ++c)
            for (int r = 0; r < rows(samples.get()); ++r)
                EXPECT_EQ(at(samples.get(), r, c), expected.samples[c][r]) << "sample " << c << " joint " << r;
        for (int c = 0; c < n; ++c)
            for (int r = 0; r < n; ++r)
                EXPECT_EQ(at(graph.get(), r, c), expected.graph[r][c]) << "G(" << r << ", " << c << ")";
    }

    FakeHost host;

    PlannerResources resources;  // the generator and the progress dialog
    ScopedMatrix samples = makeScopedMatrix();
    ScopedGraph graph = makeScopedGraph();
};
}  // namespace

TEST_F(GoldenMapTest, SixJointsNoObstacles)
{
    FakeRobot* robot = host.addRobot("Arm", Lower6, Upper6);
    const ReferenceRoadmap expected = buildBoth(robot, 12, 4);
    expectEqualMaps(expected);
    EXPECT_EQ(robot->jointMoveTests, expected.edgeTests);
    EXPECT_EQ(expected.edgeTests, 1 + 2 + 3 + 4 * 8);
    EXPECT_EQ(host.collisionTests, expected.attempts + expected.edgeTests);
}

TEST_F(GoldenMapTest, CollidingDrawsAreSkippedAndBlockedEdgesLeftOut)
{
    FakeRobot* robot = host.addRobot("Arm", Lower6, Upper6);
    // A slab across joint 0 and a block in joints 1 and 2.
    robot->boxes.push_back({{-40, -121, -171, -191, -121, -361}, {40, 121, 171, 191, 121, 361}});
    robot->boxes.push_back({{-171, 0, 0, -191, -121, -361}, {171, 121, 171, 191, 121, 361}});
    const ReferenceRoadmap expected = buildBoth(robot, 12, 4);
    expectEqualMaps(expected);
    EXPECT_GT(expected.skippedDraws, 0) << "the scene must make some draws collide";
    EXPECT_GT(expected.blockedEdges, 0) << "the scene must block some edges";
    EXPECT_EQ(host.collisionTests, expected.attempts + expected.edgeTests);
}

TEST_F(GoldenMapTest, SeedTargetsComeFirst)
{
    FakeRobot* robot = host.addRobot("Arm", Lower6, Upper6);
    robot->boxes.push_back({{-40, -121, -171, -191, -121, -361}, {40, 121, 171, 191, 121, 361}});
    const std::vector<std::vector<double>> seeds = {
        {90, 0, 0, 0, 0, 0},       // free
        {500, 0, 0, 0, 0, 0},      // refused: beyond the limits
        {0, 10, 10, 10, 10, 10},   // collides
        {-90, 30, 0, 0, 0, 0},     // free
        {100, -30, 20, 10, 0, 45}, // free
    };
    const ReferenceRoadmap expected = buildBoth(robot, 8, 3, seeds);
    expectEqualMaps(expected);
    EXPECT_EQ(at(samples.get(), 0, 0), 90.0);
    EXPECT_EQ(at(samples.get(), 0, 1), -90.0);
    EXPECT_EQ(at(samples.get(), 5, 2), 45.0);
}

TEST_F(GoldenMapTest, SecondBuildContinuesTheSequence)
{
    FakeRobot* robot = host.addRobot("Arm", Lower6, Upper6);
    buildBoth(robot, 4, 2);
    ScopedMatrix first = makeScopedMatrix();
    copyMatrix(samples.get(), first.get());
    const ReferenceRoadmap expected = buildBoth(robot, 4, 2);
    expectEqualMaps(expected);
    for (int i = 0; i < elementCount(first.get()); ++i)
        EXPECT_NE(first->values[i], samples->values[i]);
}

namespace {
// Builds the first map of fresh resources (those of a plug-in object just
// made); true when it equals the map of the standard engine at seed 5489.
bool firstMapIsTheStandardEngines()
{
    FakeHost host;
    PlannerResources resources;  // the generator and the progress dialog
    FakeRobot* robot = host.addRobot("Arm", Lower6, Upper6);
    ScopedMatrix samples = makeScopedMatrix();
    ScopedGraph graph = makeScopedGraph();
    const PlannerParameters parameters = {6, 3, 5, 4.0};
    hostBuildRoadmap(resources, host, robot, parameters, nullptr, samples.get(), graph.get());
    ReferenceRandom random;  // seed 5489, nothing drawn yet
    const ReferenceRoadmap expected = referenceRoadmap(*robot, Lower6, Upper6, 6, 3, {}, random, 4.0);
    for (int c = 0; c < 6; ++c)
        for (int r = 0; r < 6; ++r)
            if (at(samples.get(), r, c) != expected.samples[c][r])
                return false;
    return true;
}
}  // namespace

TEST(FirstMapOfFreshResources, IsTheSameEveryTime)
{
    EXPECT_TRUE(firstMapIsTheStandardEngines());
    EXPECT_TRUE(firstMapIsTheStandardEngines());
}
