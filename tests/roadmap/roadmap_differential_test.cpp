// The sparse construction against the planner's original dense one, on random
// stations: both build from the same point of the random sequence and must
// give the same samples, the same graph, the same collision tests, the same
// log and the same dialog texts. Seeds lie on a coarse grid, so that many
// distances are equal and the order among them decides which edges are tried.
#include "roadmap_builder.h"

#include "dense_graph.h"
#include "dense_roadmap_builder.h"
#include "fake_host.h"
#include "host_planning.h"
#include "operation_trace.h"
#include "random_generator.h"

#include <gtest/gtest.h>

#include <random>

namespace {

class RandomStation {
public:
    explicit RandomStation(unsigned seed) : engine_(seed) {}

    // Builds the same map both ways; a failure when they differ.
    void compare()
    {
        FakeHost host;
        PlannerResources resources;  // the generator and the progress dialog
        const int joints = pick(1, 6);
        std::vector<double> lower;
        std::vector<double> upper;
        for (int j = 0; j < joints; ++j) {
            const double low = pick(-18, 0) * 10.0;
            lower.push_back(low);
            // Now and then a joint that cannot move.
            upper.push_back(pick(0, 5) == 0 ? low : low + pick(1, 36) * 10.0);
        }
        FakeRobot* robot = host.addRobot("Arm", lower, upper);
        for (int b = pick(0, 4); b > 0; --b) {
            JointBox box;
            for (int j = 0; j < joints; ++j) {
                const double a = pick(-20, 20) * 10.0 + 5.0;
                box.lower.push_back(a);
                box.upper.push_back(a + pick(1, 20) * 10.0);
            }
            robot->boxes.push_back(box);
        }
        host.params["PathStepCollisionDeg"] = QString::number(pick(2, 20));

        const int sampleCount = pick(1, 60);
        ScopedMatrix seeds = makeScopedMatrix();
        const int seedCount = pick(0, 1) ? pick(sampleCount, sampleCount + 10) : pick(0, 8);
        setSize(seeds.get(), pick(0, 8) == 0 ? joints - 1 : joints, seedCount);
        for (int i = 0; i < elementCount(seeds.get()); ++i)
            seeds->values[i] = pick(-3, 3) * 20.0;
        const PlannerParameters parameters{sampleCount, pick(0, 3) == 0 ? pick(60, 80) : pick(0, 8), 5, 4.0};
        // A station without free configurations is searched until a cancel:
        // both builds are cancelled at the same late test at the latest.
        const int cancelAt = pick(0, 3) == 0 ? pick(1, 200) : 3000;

        const MersenneTwister start = resources.random();
        ScopedMatrix denseSamples = makeScopedMatrix();
        ScopedMatrix dense = makeScopedMatrix();
        const OperationTrace expected = traceOperation(host, resources.progress(), cancelAt, [&] {
            HostCollisionChecker checker(&host, robot);
            denseBuildRoadmap(checker, resources.progress(), resources.random(), parameters, seeds.get(),
                              denseSamples.get(), dense.get());
        });
        const MersenneTwister afterReference = resources.random();
        resources.random() = start;
        ScopedMatrix samples = makeScopedMatrix();
        RoadmapGraph graph;
        const OperationTrace found = traceOperation(host, resources.progress(), cancelAt, [&] {
            hostBuildRoadmap(resources, host, robot, parameters, seeds.get(), samples.get(), &graph);
        });

        EXPECT_EQ(resources.random().outputsDrawn(), afterReference.outputsDrawn());
        EXPECT_EQ(found.collisionTests, expected.collisionTests);
        EXPECT_EQ(found.cancelled, expected.cancelled);
        EXPECT_EQ(found.log, expected.log);
        EXPECT_EQ(found.labels, expected.labels);
        ASSERT_EQ(rows(samples.get()), rows(denseSamples.get()));
        ASSERT_EQ(columns(samples.get()), columns(denseSamples.get()));
        for (int i = 0; i < elementCount(samples.get()); ++i)
            ASSERT_EQ(samples->values[i], denseSamples->values[i]) << "element " << i;
        EXPECT_TRUE(sameAsDense(&graph, dense.get()));
        edges = graph.edgeCount();
        cancelled = found.cancelled;
    }

    int edges = 0;
    bool cancelled = false;

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }

    std::mt19937 engine_;
};

}  // namespace

TEST(RoadmapDifferential, RandomStationsGiveTheDenseConstructionsMaps)
{
    int edges = 0;
    int cancelled = 0;
    constexpr int Stations = 600;
    for (unsigned seed = 1; seed <= Stations; ++seed) {
        RandomStation station(seed);
        station.compare();
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "station " << seed;
            return;
        }
        edges += station.edges;
        cancelled += station.cancelled ? 1 : 0;
    }
    EXPECT_GT(edges, Stations * 10) << "maps with edges, not only empty ones";
    EXPECT_GT(cancelled, Stations / 10) << "cancelled constructions are part of the mix";
}
