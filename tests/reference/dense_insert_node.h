#pragma once

#include "vorlik/joint_vector.h"
#include "planner_parameters.h"

class CollisionChecker;
class PlannerProgress;
struct RoadmapMatrix;

// The original insertion: the dense graph bordered by a row and a column,
// candidates in the order of a stable merge sort of all distances.
void denseInsertNode(CollisionChecker& checker, PlannerProgress& progress, const JointVector& configuration, const RoadmapMatrix* samples,
                     const RoadmapMatrix* graph, const PlannerParameters& parameters, RoadmapMatrix* samplesOut,
                     RoadmapMatrix* graphOut, int* edgesMade, int* nodeIndex);
