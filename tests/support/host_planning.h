// The planner's objects driven through a host, as the plug-in's operations drive them.
#pragma once

#include "host_collision_checker.h"
#include "insert_node.h"
#include "planner_random.h"
#include "progress_reporter.h"
#include "roadmap_builder.h"

#include <functional>

// Builds the robot's map with the host's tests, under the progress dialog,
// from the plug-in's generator.
inline void hostBuildRoadmap(HostApi& host, HostItem* robot, const PlannerParameters& parameters,
                             const RoadmapMatrix* seeds, RoadmapMatrix* samples, RoadmapGraph* graph)
{
    HostCollisionChecker checker(&host, robot);
    RoadmapBuilder(checker, progressReporter(), processRandom()).build(parameters, seeds, samples, graph);
}

// Grows the robot's map the same way; the samples added.
inline int hostGrowRoadmap(HostApi& host, HostItem* robot, const PlannerParameters& parameters, int count,
                           RoadmapMatrix* samples, RoadmapGraph* graph, const std::function<bool(int)>& added)
{
    HostCollisionChecker checker(&host, robot);
    return RoadmapBuilder(checker, progressReporter(), processRandom())
        .grow(parameters, count, samples, graph, added);
}

// Inserts a configuration into the robot's map with the host's tests.
inline void hostInsertNode(HostApi& host, HostItem* robot, const Configuration& configuration,
                           const RoadmapMatrix* samples, const RoadmapGraph* graph, const PlannerParameters& parameters,
                           RoadmapMatrix* samplesOut, RoadmapGraph* graphOut, int* edgesMade, int* nodeNumber)
{
    HostCollisionChecker checker(&host, robot);
    const InsertedNode inserted =
        NodeInserter(checker, progressReporter()).insert(configuration, samples, graph, parameters, samplesOut, graphOut);
    *edgesMade = inserted.edgesMade;
    *nodeNumber = inserted.nodeNumber;
}
