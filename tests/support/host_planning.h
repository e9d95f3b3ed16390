// The planner's objects driven through a host, as the plug-in's operations drive them.
#pragma once

#include "host_collision_checker.h"
#include "insert_node.h"
#include "planner_resources.h"
#include "roadmap_builder.h"

#include <functional>

// Builds the robot's map with the host's tests, under the resources' progress
// dialog, from their generator.
inline void hostBuildRoadmap(PlannerResources& resources, HostApi& host, HostItem* robot, const PlannerParameters& parameters,
                             const RoadmapMatrix* seeds, RoadmapMatrix* samples, RoadmapGraph* graph)
{
    HostCollisionChecker checker(&host, robot);
    RoadmapBuilder(checker, resources.progress(), resources.random()).build(parameters, seeds, samples, graph);
}

// Grows the robot's map the same way; the samples added.
inline int hostGrowRoadmap(PlannerResources& resources, HostApi& host, HostItem* robot, const PlannerParameters& parameters, int count,
                           RoadmapMatrix* samples, RoadmapGraph* graph, const std::function<bool(int)>& added)
{
    HostCollisionChecker checker(&host, robot);
    return RoadmapBuilder(checker, resources.progress(), resources.random())
        .grow(parameters, count, samples, graph, added);
}

// Inserts a configuration into the robot's map with the host's tests.
inline void hostInsertNode(PlannerResources& resources, HostApi& host, HostItem* robot, const Configuration& configuration,
                           const RoadmapMatrix* samples, const RoadmapGraph* graph, const PlannerParameters& parameters,
                           RoadmapMatrix* samplesOut, RoadmapGraph* graphOut, int* edgesMade, int* nodeNumber)
{
    HostCollisionChecker checker(&host, robot);
    const InsertedNode inserted =
        NodeInserter(checker, resources.progress()).insert(configuration, samples, graph, parameters, samplesOut, graphOut);
    *edgesMade = inserted.edgesMade;
    *nodeNumber = inserted.nodeNumber;
}
