#pragma once

#include "planner_parameters.h"

class CollisionChecker;
class MersenneTwister;
class PlannerProgress;
struct RoadmapMatrix;

// The original construction into a dense N x N graph.
void denseBuildRoadmap(CollisionChecker& checker, PlannerProgress& progress, MersenneTwister& random,
                       const PlannerParameters& parameters, const RoadmapMatrix* seeds, RoadmapMatrix* samples,
                       RoadmapMatrix* graph);
