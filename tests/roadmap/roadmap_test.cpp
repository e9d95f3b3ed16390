// The roadmap keeps its samples and graph together as maps are built, grown,
// given nodes and read back.
#include "roadmap.h"

#include <gtest/gtest.h>

#include <utility>

namespace {
ScopedMatrix samplesOf(int jointCount, int sampleCount)
{
    ScopedMatrix samples = makeScopedMatrix();
    setSize(samples.get(), jointCount, sampleCount);
    for (int i = 0; i < jointCount * sampleCount; ++i)
        samples->values[i] = i;
    return samples;
}

RoadmapGraph graphOf(int nodeCount)
{
    RoadmapGraph graph;
    graph.resize(nodeCount);
    return graph;
}
}  // namespace

TEST(Roadmap, ResetGivesZeroSamplesAndANodeForEach)
{
    Roadmap roadmap;
    roadmap.reset(3, 4);
    EXPECT_EQ(roadmap.jointCount(), 3);
    EXPECT_EQ(roadmap.sampleCount(), 4);
    EXPECT_EQ(roadmap.nodeCount(), 4);
    EXPECT_EQ(roadmap.edgeCount(), 0);
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(roadmap.samples()->values[i], 0.0);
    const double q[3] = {1, 2, 3};
    roadmap.setSample(2, q);
    EXPECT_EQ(roadmap.sample(2)[1], 2.0);
}

TEST(Roadmap, TruncateKeepsTheFirstSamplesNodesAndTheirEdges)
{
    Roadmap roadmap;
    roadmap.reset(2, 5);
    roadmap.join(0, 1, 1.5);
    roadmap.join(1, 4, 2.5);
    roadmap.truncate(3);
    EXPECT_EQ(roadmap.sampleCount(), 3);
    EXPECT_EQ(roadmap.nodeCount(), 3);
    EXPECT_EQ(roadmap.edgeCount(), 1);
    EXPECT_EQ(roadmap.graph().length(0, 1), 1.5);
}

TEST(Roadmap, ACancelledInsertionLeavesANodeWithoutSample)
{
    Roadmap roadmap;
    roadmap.reset(2, 3);
    EXPECT_EQ(roadmap.addNode(), 3);
    EXPECT_EQ(roadmap.sampleCount(), 3);
    EXPECT_EQ(roadmap.nodeCount(), 4);
    // The next insertion's node comes after it; its sample takes the first free place.
    EXPECT_EQ(roadmap.addNode(), 4);
    const double q[2] = {7, 8};
    roadmap.appendSample(q);
    EXPECT_EQ(roadmap.sampleCount(), 4);
    EXPECT_EQ(roadmap.sample(3)[0], 7.0);
    EXPECT_EQ(roadmap.nodeCount(), 5);
}

TEST(Roadmap, AssignTakesWhatAStoredMapMayHold)
{
    Roadmap roadmap;
    EXPECT_TRUE(roadmap.assign(samplesOf(2, 3), graphOf(3)));
    EXPECT_EQ(roadmap.sampleCount(), 3);
    EXPECT_TRUE(roadmap.assign(samplesOf(2, 3), graphOf(5))) << "nodes of cancelled insertions";
    EXPECT_EQ(roadmap.nodeCount(), 5);
    EXPECT_TRUE(roadmap.assign(samplesOf(2, 3), graphOf(0))) << "a map stored with its samples only";
    EXPECT_EQ(roadmap.sampleCount(), 3);
    EXPECT_EQ(roadmap.nodeCount(), 0);

    EXPECT_FALSE(roadmap.assign(samplesOf(2, 3), graphOf(2))) << "a sample without its node";
    EXPECT_EQ(roadmap.sampleCount(), 0);
    EXPECT_EQ(roadmap.nodeCount(), 0);
}

TEST(Roadmap, CopiesAreDeepAndEqual)
{
    Roadmap roadmap;
    roadmap.reset(2, 2);
    roadmap.join(0, 1, 3.0);
    Roadmap copy(roadmap);
    const double q[2] = {9, 9};
    roadmap.setSample(0, q);
    EXPECT_EQ(copy.sample(0)[0], 0.0);
    EXPECT_TRUE(copy.graph() == roadmap.graph());
    Roadmap assigned;
    assigned = roadmap;
    EXPECT_EQ(assigned.sample(0)[0], 9.0);
}
