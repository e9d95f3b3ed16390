#pragma once

#include "configuration.h"
#include "planner_parameters.h"

class HostItem;
struct RoadmapMatrix;

// The original insertion: the dense graph bordered by a row and a column,
// candidates in the order of a stable merge sort of all distances.
void denseInsertNode(HostItem* robot, Configuration configuration, const RoadmapMatrix* samples,
                     const RoadmapMatrix* graph, const PlannerParameters& parameters, RoadmapMatrix* samplesOut,
                     RoadmapMatrix* graphOut, int* edgesMade, int* nodeIndex);
