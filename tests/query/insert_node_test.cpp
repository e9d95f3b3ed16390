#include "insert_node.h"

#include "host_planning.h"
#include "progress_reporter.h"
#include "roadmap_matrix.h"

#include "dense_graph.h"

#include "fake_host.h"
#include "log_capture.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace {
constexpr int SampleCount = 10;
constexpr int Joints = 3;

// Sample j (0-based) sits at (10 j, 5 (j mod 3), -2 j): all pairwise distances differ.
double sampleValue(int joint, int j)
{
    const double values[Joints] = {10.0 * j, 5.0 * (j % 3), -2.0 * j};
    return values[joint];
}

class InsertNodeTest : public testing::Test {
protected:
    void SetUp() override
    {
        robot = host.addRobot("Arm", {-500, -500, -500}, {500, 500, 500});
        setSize(samples.get(), Joints, SampleCount);
        for (int j = 0; j < SampleCount; ++j)
            for (int r = 0; r < Joints; ++r)
                at(samples.get(), r, j) = sampleValue(r, j);
        graph->resize(SampleCount);
        for (int j = 0; j + 1 < SampleCount; ++j)
            graph->setLength(j, j + 1, 1.0 + j);
        resources.progress().start(nullptr, "Insert");
    }
    void TearDown() override
    {
        resources.progress().finish();
    }

    JointVector at3(double a, double b, double c) const
    {
        JointVector q(3);
        q[0] = a;
        q[1] = b;
        q[2] = c;
        return q;
    }

    double distanceTo(const JointVector& q, int j) const
    {
        double d = 0.0;
        for (int r = 0; r < Joints; ++r)
            d += std::fabs(q[r] - sampleValue(r, j));
        return d;
    }

    void insert(const JointVector& q)
    {
        hostInsertNode(resources, host, robot, q, samples.get(), graph.get(), parameters, samplesOut.get(), graphOut.get(), &edgesMade,
                   &nodeIndex);
    }

    void expectInputsUnchanged()
    {
        ASSERT_EQ(columns(samples.get()), SampleCount);
        ASSERT_EQ(columns(graph.get()), SampleCount);
        for (int j = 0; j < SampleCount; ++j)
            for (int r = 0; r < Joints; ++r)
                ASSERT_EQ(at(samples.get(), r, j), sampleValue(r, j));
    }

    void expectSamplesOutIsInputPlus(int extraColumns)
    {
        ASSERT_EQ(rows(samplesOut.get()), Joints);
        ASSERT_EQ(columns(samplesOut.get()), SampleCount + extraColumns);
        for (int j = 0; j < SampleCount; ++j)
            for (int r = 0; r < Joints; ++r)
                ASSERT_EQ(at(samplesOut.get(), r, j), sampleValue(r, j));
    }

    FakeHost host;

    PlannerResources resources;  // the generator and the progress dialog
    FakeRobot* robot = nullptr;
    ScopedMatrix samples = makeScopedMatrix();
    ScopedGraph graph = makeScopedGraph();
    ScopedMatrix samplesOut = makeScopedMatrix();
    ScopedGraph graphOut = makeScopedGraph();
    PlannerParameters parameters = {100, 25, 5, 4.0};
    int edgesMade = -7;
    int nodeIndex = -7;
};
}  // namespace

TEST_F(InsertNodeTest, JointVectorOfSampleSevenReusesIt)
{
    insert(at3(sampleValue(0, 6), sampleValue(1, 6), sampleValue(2, 6)));
    EXPECT_EQ(nodeIndex, 7);
    EXPECT_EQ(edgesMade, 25);
    expectSamplesOutIsInputPlus(0);
    ASSERT_EQ(rows(graphOut.get()), SampleCount);
    ASSERT_EQ(columns(graphOut.get()), SampleCount);
    EXPECT_TRUE(*graphOut == *graph);
    EXPECT_EQ(host.collisionTests, 0);
    expectInputsUnchanged();
}

TEST_F(InsertNodeTest, ExactlyOneStepAwayIsReused)
{
    insert(at3(30.0 + 1.5, 0.0 + 2.5, -6.0));  // L1 4.0 from sample 4 (index 3)
    EXPECT_EQ(nodeIndex, 4);
    EXPECT_EQ(columns(samplesOut.get()), SampleCount);
}

TEST_F(InsertNodeTest, JustBeyondOneStepIsInserted)
{
    insert(at3(30.0 + 4.0000001, 0.0, -6.0));
    EXPECT_EQ(nodeIndex, SampleCount + 1);
    EXPECT_EQ(columns(samplesOut.get()), SampleCount + 1);
    EXPECT_EQ(rows(graphOut.get()), SampleCount + 1);
}

// The edges-per-sample setting is a whole number; a reused sample reports it as it is.
TEST_F(InsertNodeTest, ReuseReportsEdgesPerSample)
{
    const int cases[] = {25, 3, -3, 2, 0, INT_MAX, INT_MIN};
    for (const int setting : cases) {
        parameters.edgesPerSample = setting;
        insert(at3(0, 0, 0));
        EXPECT_EQ(edgesMade, setting) << "setting " << setting;
        EXPECT_EQ(nodeIndex, 1);
    }
}

TEST_F(InsertNodeTest, FiveNearestReceiveEdgesNearestFirst)
{
    const JointVector q = at3(41.0, 7.0, -3.0);
    insert(q);
    EXPECT_EQ(nodeIndex, 11);
    EXPECT_EQ(edgesMade, 5);

    // The five nearest samples, by an independent ordering of the distances.
    std::vector<int> byDistance(SampleCount);
    for (int j = 0; j < SampleCount; ++j)
        byDistance[j] = j;
    std::stable_sort(byDistance.begin(), byDistance.end(),
                     [&](int a, int b) { return distanceTo(q, a) < distanceTo(q, b); });

    ASSERT_EQ(robot->moves.size(), 5u);
    for (int m = 0; m < 5; ++m) {
        EXPECT_EQ(robot->moves[m].first[0], 41.0) << "moves start at the new configuration";
        EXPECT_EQ(robot->moves[m].second[0], sampleValue(0, byDistance[m])) << "candidate " << m;
        EXPECT_EQ(robot->lastStep[m], -1.0);
    }
    ASSERT_EQ(rows(graphOut.get()), 11);
    ASSERT_EQ(columns(graphOut.get()), 11);
    for (int r = 0; r < 11; ++r)
        for (int c = 0; c < 11; ++c)
            ASSERT_EQ(at(graphOut.get(), r, c), at(graphOut.get(), c, r));
    for (int m = 0; m < SampleCount; ++m) {
        const int j = byDistance[m];
        EXPECT_EQ(at(graphOut.get(), j, 10), m < 5 ? distanceTo(q, j) : 0.0) << "sample " << j;
    }
    for (int r = 0; r < SampleCount; ++r)
        for (int c = 0; c < SampleCount; ++c)
            ASSERT_EQ(at(graphOut.get(), r, c), at(graph.get(), r, c));
    expectSamplesOutIsInputPlus(1);
    EXPECT_EQ(at(samplesOut.get(), 0, 10), 41.0);
    EXPECT_EQ(at(samplesOut.get(), 2, 10), -3.0);
    expectInputsUnchanged();
}

TEST_F(InsertNodeTest, EveryMoveCollidingTriesAllAndStillAppends)
{
    robot->boxes.push_back({{-501, -501, -501}, {501, 501, 501}});
    insert(at3(41.0, 7.0, -3.0));
    EXPECT_EQ(robot->jointMoveTests, SampleCount);
    EXPECT_EQ(edgesMade, 0);
    EXPECT_EQ(nodeIndex, 11);
    expectSamplesOutIsInputPlus(1);
    EXPECT_EQ(at(samplesOut.get(), 1, 10), 7.0);
    for (int i = 0; i < 11; ++i) {
        EXPECT_EQ(at(graphOut.get(), i, 10), 0.0);
        EXPECT_EQ(at(graphOut.get(), 10, i), 0.0);
    }
}

TEST_F(InsertNodeTest, EqualDistancesAreTriedInIndexOrder)
{
    // The samples at -10 and +10 are equally far from the origin.
    setSize(samples.get(), Joints, 3);
    const double values[3][3] = {{50, 0, 0}, {-10, 0, 0}, {10, 0, 0}};
    for (int j = 0; j < 3; ++j)
        for (int r = 0; r < 3; ++r)
            at(samples.get(), r, j) = values[j][r];
    graph->clear();
    graph->resize(3);
    parameters.newNodeEdges = 3;
    insert(at3(0, 0, 0));
    ASSERT_EQ(robot->moves.size(), 3u);
    EXPECT_EQ(robot->moves[0].second[0], -10.0);
    EXPECT_EQ(robot->moves[1].second[0], 10.0);
    EXPECT_EQ(robot->moves[2].second[0], 50.0);
}

TEST_F(InsertNodeTest, NoNewNodeEdgesStillMakesOneEdge)
{
    parameters.newNodeEdges = 0;
    insert(at3(41.0, 7.0, -3.0));
    EXPECT_EQ(edgesMade, 1);
    EXPECT_EQ(robot->jointMoveTests, 1);
    EXPECT_EQ(columns(samplesOut.get()), 11);
}

TEST_F(InsertNodeTest, BlockedCandidatesAreSkippedUntilEnoughEdges)
{
    // A wall on joint 0 between 35 and 43 hides the samples below it; nearest
    // first the order is samples 4 and 3 (blocked), then 5 and 6 (free).
    robot->boxes.push_back({{35, -501, -501}, {43, 501, 501}});
    parameters.newNodeEdges = 2;
    insert(at3(44.0, 0.0, -8.0));
    EXPECT_EQ(edgesMade, 2);
    EXPECT_EQ(robot->jointMoveTests, 4);
    for (int j = 0; j < SampleCount; ++j) {
        const bool linked = j == 5 || j == 6;
        EXPECT_EQ(at(graphOut.get(), j, 10) > 0, linked) << "sample " << j;
    }
}

TEST_F(InsertNodeTest, EmptyRoadmapNeedsNoHost)
{
    setSize(samples.get(), Joints, 0);
    graph->clear();
    setSize(samplesOut.get(), 3, 3);
    insert(at3(1, 2, 3));
    EXPECT_EQ(nodeIndex, -1);
    EXPECT_EQ(edgesMade, 0);
    EXPECT_EQ(rows(samplesOut.get()), 0);
    EXPECT_EQ(columns(samplesOut.get()), 0);
    EXPECT_EQ(rows(graphOut.get()), 0);
    EXPECT_EQ(host.collisionTests, 0);
    EXPECT_EQ(robot->validityChecks, 0);
}

TEST_F(InsertNodeTest, ProgressShowsEachCandidate)
{
    robot->boxes.push_back({{-501, -501, -501}, {501, 501, 501}});
    std::vector<QString> labels;
    std::vector<int> values;
    host.onCollisionTest = [&](int) {
        labels.push_back(resources.progress().dialog()->labelText());
        values.push_back(resources.progress().dialog()->value());
    };
    LogCapture log;
    insert(at3(41.0, 7.0, -3.0));
    ASSERT_EQ(labels.size(), 10u);
    EXPECT_EQ(labels[0], QString("Connecting robot position: 1/10 - Edges: 0<br>"));
    EXPECT_EQ(labels[9], QString("Connecting robot position: 10/10 - Edges: 0<br>"));
    EXPECT_EQ(values[0], 10);
    EXPECT_EQ(values[2], 30);
    EXPECT_EQ(log.countStartingWith("Adding node"), 10);
}

TEST_F(InsertNodeTest, CancelLeavesGrownGraphAndUnchangedSamples)
{
    // Candidate 2's move is the cancelled test; candidate 3's progress sees it.
    host.onCollisionTest = [this](int test) {
        if (test == 2)
            resources.progress().dialog()->cancel();
    };
    parameters.newNodeEdges = 5;
    insert(at3(41.0, 7.0, -3.0));
    EXPECT_TRUE(resources.progress().cancelled());
    EXPECT_EQ(edgesMade, 2);
    EXPECT_EQ(nodeIndex, 11);
    expectSamplesOutIsInputPlus(0);
    EXPECT_EQ(rows(graphOut.get()), 11);
    EXPECT_EQ(columns(graphOut.get()), 11);
    int edgesInLastColumn = 0;
    for (int j = 0; j < SampleCount; ++j)
        edgesInLastColumn += at(graphOut.get(), j, 10) > 0;
    EXPECT_EQ(edgesInLastColumn, 2);
    EXPECT_EQ(robot->jointMoveTests, 2);
}
