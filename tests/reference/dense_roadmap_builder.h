#pragma once

#include "planner_parameters.h"

class HostItem;
struct RoadmapMatrix;

// The original construction into a dense N x N graph.
void denseBuildRoadmap(HostItem* robot, const PlannerParameters& parameters, const RoadmapMatrix* seeds,
                       RoadmapMatrix* samples, RoadmapMatrix* graph);
