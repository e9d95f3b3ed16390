// The planner's objects driven through a host, as the plug-in's operations
// drive them, with the map in the separate sample and graph matrices that
// the tests and the reference algorithms compare.
#pragma once

#include "host_collision_checker.h"
#include "insert_node.h"
#include "planner_resources.h"
#include "roadmap.h"
#include "roadmap_builder.h"

#include <functional>

// The roadmap of these samples and this graph (as they are: the graph may be ahead).
inline Roadmap roadmapOf(const RoadmapMatrix* samples, const RoadmapGraph* graph)
{
    ScopedMatrix copy = makeScopedMatrix();
    copyMatrix(samples, copy.get());
    Roadmap roadmap;
    roadmap.assign(std::move(copy), *graph);
    return roadmap;
}

// Writes the roadmap out to separate samples and graph.
inline void copyOut(const Roadmap& roadmap, RoadmapMatrix* samples, RoadmapGraph* graph)
{
    copyMatrix(roadmap.samples(), samples);
    *graph = roadmap.graph();
}

// Builds the robot's map with the host's tests, under the resources' progress
// dialog, from their generator.
inline void hostBuildRoadmap(PlannerResources& resources, HostApi& host, HostItem* robot,
                             const PlannerParameters& parameters, const RoadmapMatrix* seeds, RoadmapMatrix* samples,
                             RoadmapGraph* graph)
{
    HostCollisionChecker checker(&host, robot);
    Roadmap roadmap;
    RoadmapBuilder(checker, resources.progress(), resources.random()).build(parameters, seeds, roadmap);
    copyOut(roadmap, samples, graph);
}

// Grows the robot's map the same way; the samples added.
inline int hostGrowRoadmap(PlannerResources& resources, HostApi& host, HostItem* robot,
                           const PlannerParameters& parameters, int count, RoadmapMatrix* samples, RoadmapGraph* graph,
                           const std::function<bool(int)>& added)
{
    HostCollisionChecker checker(&host, robot);
    Roadmap roadmap = roadmapOf(samples, graph);
    const int grown = RoadmapBuilder(checker, resources.progress(), resources.random())
                          .grow(parameters, count, roadmap, added);
    copyOut(roadmap, samples, graph);
    return grown;
}

// Inserts a configuration into the robot's map with the host's tests; the
// result goes to samplesOut and graphOut (which may be the map's own). The
// node is counted from 1, as the stored route counts it.
inline void hostInsertNode(PlannerResources& resources, HostApi& host, HostItem* robot,
                           const JointVector& configuration, const RoadmapMatrix* samples, const RoadmapGraph* graph,
                           const PlannerParameters& parameters, RoadmapMatrix* samplesOut, RoadmapGraph* graphOut,
                           int* edgesMade, int* nodeNumber)
{
    HostCollisionChecker checker(&host, robot);
    Roadmap roadmap = roadmapOf(samples, graph);
    const InsertedNode inserted = NodeInserter(checker, resources.progress()).insert(configuration, roadmap, parameters);
    copyOut(roadmap, samplesOut, graphOut);
    *edgesMade = inserted.edgesMade;
    *nodeNumber = inserted.node < 0 ? -1 : inserted.node + 1;
}
