// The planner core on its own: a map built, two nodes inserted and a route
// found with a checker and a progress display kept in memory. No host, no
// widgets, no plug-in object: this program links the core and Qt Core only.
#include "collision_checker.h"
#include "insert_node.h"
#include "planner_progress.h"
#include "random_generator.h"
#include "roadmap.h"
#include "roadmap_builder.h"
#include "shortest_path.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// A two-joint robot in [-100, 100]^2 and a wall in joint space across the
// middle, open above 40 on the second joint. Moves are tested every degree.
class WallChecker : public CollisionChecker {
public:
    void jointLimits(JointVector& lower, JointVector& upper) override
    {
        const double low[2] = {-100, -100};
        const double high[2] = {100, 100};
        lower = JointVector(low, 2);
        upper = JointVector(high, 2);
    }
    bool accepts(const JointVector& q) override
    {
        return q.count() == 2 && std::fabs(q[0]) <= 100 && std::fabs(q[1]) <= 100;
    }
    int collisionCount(const JointVector& q) override
    {
        ++collisionTests;
        return inWall(q[0], q[1]) ? 1 : 0;
    }
    int jointMove(const JointVector& a, const JointVector& b) override
    {
        ++moveTests;
        return moveHitsWall(a[0], a[1], b[0], b[1], 1.0) ? 1 : 0;
    }

    static bool inWall(double x, double y) { return x >= -20 && x <= 20 && y <= 40; }
    static bool moveHitsWall(double ax, double ay, double bx, double by, double step)
    {
        const int steps = std::max(1, int(std::ceil(std::max(std::fabs(bx - ax), std::fabs(by - ay)) / step)));
        for (int i = 0; i <= steps; ++i) {
            const double t = double(i) / steps;
            if (inWall(ax + (bx - ax) * t, ay + (by - ay) * t))
                return true;
        }
        return false;
    }

    int collisionTests = 0;
    int moveTests = 0;
};

// Keeps every headline it is shown and the last value; never cancels.
class ProgressRecorder : public PlannerProgress {
public:
    void setHeadline(const QString& text) override { headline_ = text; }
    void setDetail(const QString& text) override { detail_ = text; }
    bool update(int value) override
    {
        if (headlines.isEmpty() || headlines.last() != headline_)
            headlines << headline_;
        if (value >= 0)
            lastValue = value;
        ++updates;
        return false;
    }
    bool abandoned() const override { return false; }

    QStringList headlines;
    int lastValue = -1;
    int updates = 0;

private:
    QString headline_;
    QString detail_;
};

JointVector configuration(double a, double b)
{
    JointVector q(2);
    q[0] = a;
    q[1] = b;
    return q;
}

}  // namespace

TEST(PlannerCore, BuildsInsertsTwoNodesAndFindsARouteWithoutAHost)
{
    WallChecker checker;
    ProgressRecorder progress;
    MersenneTwister random;
    // N = 80 samples, K = 8 edges each, 3 edges for an inserted node, robot step 4.
    const PlannerParameters parameters = {80, 8, 3, 4.0};

    Roadmap roadmap;
    RoadmapBuilder(checker, progress, random).build(parameters, nullptr, roadmap);
    const RoadmapMatrix* samples = roadmap.samples();
    const RoadmapGraph* graph = &roadmap.graph();
    ASSERT_EQ(rows(samples), 2);
    ASSERT_EQ(columns(samples), 80);
    EXPECT_EQ(graph->nodeCount(), 80);
    EXPECT_GT(graph->edgeCount(), 80);
    for (int c = 0; c < 80; ++c)
        EXPECT_FALSE(WallChecker::inWall(at(samples, 0, c), at(samples, 1, c))) << "sample " << c;
    EXPECT_GT(random.outputsDrawn(), 0u);
    EXPECT_GE(checker.collisionTests, 80);
    EXPECT_EQ(progress.lastValue, 100);
    ASSERT_FALSE(progress.headlines.isEmpty());
    EXPECT_TRUE(progress.headlines.last().startsWith("Calculating collision map:<br>Samples: 80/80 Edges: "));

    NodeInserter inserter(checker, progress);
    const InsertedNode start = inserter.insert(configuration(-80, -60), roadmap, parameters);
    const InsertedNode goal = inserter.insert(configuration(80, -60), roadmap, parameters);
    EXPECT_EQ(start.node, 80);
    EXPECT_EQ(goal.node, 81);
    EXPECT_GT(start.edgesMade, 0);
    EXPECT_GT(goal.edgesMade, 0);
    EXPECT_EQ(columns(samples), 82);
    EXPECT_TRUE(progress.headlines.last().startsWith("Connecting robot position: "));

    double cost = NoPathCost;
    ScopedMatrix route = makeScopedMatrix();
    // The route counts nodes from 1, as a stored route does.
    shortestPath(graph, start.node, goal.node, &cost, route.get());
    ASSERT_LT(cost, NoPathCost);
    ASSERT_EQ(rows(route.get()), 1);
    const int length = columns(route.get());
    ASSERT_TRUE(WallChecker::moveHitsWall(-80, -60, 80, -60, 0.1));
    ASSERT_GE(length, 3) << "the wall is in the way of the straight move";
    // From the destination back to the source, every move free when tested
    // ten times finer than the checker did.
    EXPECT_EQ(int(at(route.get(), 0, 0)), goal.node + 1);
    EXPECT_EQ(int(at(route.get(), 0, length - 1)), start.node + 1);
    double travelled = 0.0;
    for (int i = 0; i + 1 < length; ++i) {
        const int a = int(at(route.get(), 0, i)) - 1;
        const int b = int(at(route.get(), 0, i + 1)) - 1;
        const double* p = column(samples, a);
        const double* q = column(samples, b);
        EXPECT_FALSE(WallChecker::moveHitsWall(p[0], p[1], q[0], q[1], 0.1)) << "move " << i;
        EXPECT_GT(graph->length(a, b), 0.0);
        travelled += graph->length(a, b);
    }
    EXPECT_DOUBLE_EQ(travelled, cost);
}

TEST(PlannerCore, TheSameGeneratorPointGivesTheSameMap)
{
    const PlannerParameters parameters = {40, 6, 3, 4.0};
    MersenneTwister random;
    random.next32();  // not the first map of a generator
    const MersenneTwister start = random;

    WallChecker firstChecker;
    ProgressRecorder firstProgress;
    Roadmap first;
    RoadmapBuilder(firstChecker, firstProgress, random).build(parameters, nullptr, first);

    MersenneTwister again = start;
    WallChecker secondChecker;
    ProgressRecorder secondProgress;
    Roadmap second;
    RoadmapBuilder(secondChecker, secondProgress, again).build(parameters, nullptr, second);

    ASSERT_EQ(elementCount(first.samples()), elementCount(second.samples()));
    for (int i = 0; i < elementCount(first.samples()); ++i)
        EXPECT_EQ(first.samples()->values[i], second.samples()->values[i]);
    EXPECT_TRUE(first.graph() == second.graph());
    EXPECT_EQ(again.outputsDrawn(), random.outputsDrawn());
    EXPECT_EQ(firstProgress.headlines, secondProgress.headlines);
}

TEST(PlannerCore, AMapStoredWithSamplesOnlyTakesAnInsertedSampleWithoutEdges)
{
    // Such a map has no graph: the node inserted is its graph's first, and no
    // edge joins it, as always; the sample goes after the others.
    WallChecker checker;
    ProgressRecorder progress;
    ScopedMatrix samples = makeScopedMatrix();
    setSize(samples.get(), 2, 3);
    const double values[6] = {-80, -80, 80, -80, 0, 80};
    std::copy(values, values + 6, samples->values);
    Roadmap roadmap;
    ASSERT_TRUE(roadmap.assign(std::move(samples), RoadmapGraph()));
    const PlannerParameters parameters = {80, 8, 3, 4.0};
    const InsertedNode inserted = NodeInserter(checker, progress).insert(configuration(-70, -70), roadmap, parameters);
    EXPECT_EQ(inserted.node, 0);
    EXPECT_EQ(inserted.edgesMade, 1) << "the move to the nearest sample is free, though no edge can be kept";
    EXPECT_EQ(roadmap.sampleCount(), 4);
    EXPECT_EQ(roadmap.sample(3)[0], -70.0);
    EXPECT_EQ(roadmap.nodeCount(), 1);
    EXPECT_EQ(roadmap.edgeCount(), 0);
}
