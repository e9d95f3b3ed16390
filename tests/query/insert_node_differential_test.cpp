// In-place insertion into the sparse graph against the planner's original
// insertion into a dense graph followed by copying the outputs back, as the
// operations used to do: sequences of insertions into random maps whose
// samples and configurations lie on a coarse grid, so that equal distances
// and reused nodes are common, with blocked moves and cancels on the way.
#include "insert_node.h"

#include "dense_graph.h"
#include "dense_insert_node.h"
#include "fake_host.h"
#include "host_planning.h"
#include "operation_trace.h"

#include <gtest/gtest.h>

#include <random>

namespace {

class InsertionSequence {
public:
    explicit InsertionSequence(unsigned seed) : engine_(seed) {}

    void run()
    {
        FakeHost host;
        PlannerResources resources;  // the generator and the progress dialog
        const int joints = pick(1, 4);
        robot_ = host.addRobot("Arm", std::vector<double>(size_t(joints), -100.0),
                               std::vector<double>(size_t(joints), 100.0));
        for (int b = pick(0, 3); b > 0; --b) {
            JointBox box;
            for (int j = 0; j < joints; ++j) {
                const double low = pick(-4, 3) * 10.0 - 5.0;
                box.lower.push_back(low);
                box.upper.push_back(low + pick(1, 6) * 10.0);
            }
            robot_->boxes.push_back(box);
        }
        host.params["PathStepCollisionDeg"] = pick(0, 1) ? "4.0" : "7.5";

        // The starting map: samples on a grid, edges between random pairs.
        const int n = pick(1, 25);
        ScopedMatrix samples = makeScopedMatrix();
        setSize(samples.get(), joints, n);
        for (int i = 0; i < joints * n; ++i)
            samples->values[i] = pick(-5, 5) * 10.0;
        ScopedMatrix dense = makeScopedMatrix();
        setSize(dense.get(), n, n);
        fillZero(dense.get());
        for (int r = 0; r < n; ++r)
            for (int c = r + 1; c < n; ++c)
                if (pick(0, 3) == 0)
                    at(dense.get(), r, c) = at(dense.get(), c, r) = pick(1, 9);
        ScopedMatrix referenceSamples = makeScopedMatrix();
        copyMatrix(samples.get(), referenceSamples.get());
        RoadmapGraph graph;
        graphFromDense(dense.get(), &graph);

        for (int step = 0; step < 12; ++step) {
            JointVector q(joints);
            for (int j = 0; j < joints; ++j)
                q[j] = pick(-5, 5) * 10.0 + (pick(0, 2) == 0 ? pick(-3, 3) : 0);
            const PlannerParameters parameters{100, pick(-2, 30), pick(0, 6), double(pick(0, 3)) * 4.0};
            const int cancelAt = pick(0, 3) == 0 ? pick(1, 6) : 0;

            ScopedMatrix samplesOut = makeScopedMatrix();
            ScopedMatrix graphOut = makeScopedMatrix();
            int expectedEdges = 0;
            int expectedNode = 0;
            const OperationTrace expected = traceOperation(host, resources.progress(), cancelAt, [&] {
                HostCollisionChecker checker(&host, robot_);
                denseInsertNode(checker, resources.progress(), q, referenceSamples.get(), dense.get(), parameters, samplesOut.get(),
                                graphOut.get(), &expectedEdges, &expectedNode);
                copyMatrix(samplesOut.get(), referenceSamples.get());
                copyMatrix(graphOut.get(), dense.get());
            });
            int foundEdges = 0;
            int foundNode = 0;
            const OperationTrace found = traceOperation(host, resources.progress(), cancelAt, [&] {
                hostInsertNode(resources, host, robot_, q, samples.get(), &graph, parameters, samples.get(), &graph,
                               &foundEdges, &foundNode);
            });

            ASSERT_EQ(foundEdges, expectedEdges) << where(step);
            ASSERT_EQ(foundNode, expectedNode) << where(step);
            ASSERT_EQ(found.cancelled, expected.cancelled) << where(step);
            ASSERT_EQ(found.collisionTests, expected.collisionTests) << where(step);
            ASSERT_EQ(found.log, expected.log) << where(step);
            ASSERT_EQ(found.labels, expected.labels) << where(step);
            ASSERT_EQ(rows(samples.get()), rows(referenceSamples.get())) << where(step);
            ASSERT_EQ(columns(samples.get()), columns(referenceSamples.get())) << where(step);
            for (int i = 0; i < elementCount(samples.get()); ++i)
                ASSERT_EQ(samples->values[i], referenceSamples->values[i]) << where(step);
            ASSERT_TRUE(sameAsDense(&graph, dense.get())) << where(step);
            insertions_ += 1;
            cancels_ += expected.cancelled ? 1 : 0;
        }
    }

    int insertions_ = 0;
    int cancels_ = 0;

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }

    std::string where(int step) const { return "insertion " + std::to_string(step); }

    std::mt19937 engine_;
    FakeRobot* robot_ = nullptr;
};

}  // namespace

TEST(InsertNodeDifferential, SequencesOfInsertionsGiveTheDenseInsertionsMaps)
{
    int insertions = 0;
    int cancels = 0;
    for (unsigned seed = 1; seed <= 400; ++seed) {
        InsertionSequence sequence(seed);
        sequence.run();
        if (testing::Test::HasFatalFailure()) {
            ADD_FAILURE() << "sequence " << seed;
            return;
        }
        insertions += sequence.insertions_;
        cancels += sequence.cancels_;
    }
    EXPECT_EQ(insertions, 400 * 12);
    EXPECT_GT(cancels, 100) << "cancelled insertions, which leave the graph a node ahead, are part of the mix";
}
