// An edge budget per sample above the number of older samples tries them all.
#include "host_planning.h"
#include "roadmap_builder.h"
#include "roadmap_matrix.h"

#include "dense_graph.h"

#include "fake_host.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace {

// 0-based column of `samples` holding this configuration, or -1.
int columnOf(const RoadmapMatrix* samples, const JointVector& q)
{
    for (int c = 0; c < columns(samples); ++c) {
        bool same = true;
        for (int r = 0; r < rows(samples); ++r)
            same = same && at(samples, r, c) == q[r];
        if (same)
            return c;
    }
    return -1;
}

TEST(RoadmapEdgeBudget, BudgetAboveTheOlderSamplesTestsEveryOlderSampleOnce)
{
    FakeHost host;
    PlannerResources resources;  // the generator and the progress dialog
    FakeRobot* robot = host.addRobot("Arm", {-100, -100, -100}, {100, 100, 100});
    ScopedMatrix samples = makeScopedMatrix();
    ScopedGraph graph = makeScopedGraph();
    // 25 edges per sample, 7 samples: never more than 6 older samples to try.
    const PlannerParameters parameters = {7, 25, 5, 4.0};
    hostBuildRoadmap(resources, host, robot, parameters, nullptr, samples.get(), graph.get());
    ASSERT_EQ(columns(samples.get()), 7);
    EXPECT_EQ(robot->jointMoveTests, 21) << "1 + 2 + ... + 6 candidate edges";

    // Each move goes from a new sample to an older one, every pair exactly once.
    std::set<std::pair<int, int>> pairs;
    for (const auto& move : robot->moves) {
        const int from = columnOf(samples.get(), move.first);
        const int to = columnOf(samples.get(), move.second);
        ASSERT_GE(from, 0);
        ASSERT_GE(to, 0);
        EXPECT_LT(to, from) << "tested from the new sample to an older one";
        EXPECT_TRUE(pairs.insert({from, to}).second) << "pair tested twice: " << from << ", " << to;
    }
    EXPECT_EQ(pairs.size(), 21u);
    // Free space: every pair is an edge of the graph.
    for (int r = 0; r < 7; ++r)
        for (int c = 0; c < 7; ++c)
            EXPECT_EQ(at(graph.get(), r, c) > 0.0, r != c) << r << ", " << c;
}

}  // namespace
