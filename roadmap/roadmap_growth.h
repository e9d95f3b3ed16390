// Growing a roadmap by more samples, as its construction adds them.
#pragma once

#include "planner_parameters.h"

#include <functional>

class HostItem;
class RoadmapGraph;
struct RoadmapMatrix;

// Adds up to `count` samples to a map of N samples whose graph has N nodes, by
// the construction's rule: each a collision-free random configuration (the
// random sequence continuing; no seeds), joined to up to K (parameters[Edges])
// of the nearest older samples whose joint move is free. `progress(added)` is
// asked before each candidate edge; true cancels, and the samples added so far
// stay with their edges. The samples added; 0 when the graph does not match
// the samples (nodes of a cancelled insertion beyond them) or the joint count
// is not the robot's.
int growRoadmap(HostItem* robot, const PlannerParameters& parameters, int count, RoadmapMatrix* samples,
                RoadmapGraph* graph, const std::function<bool(int added)>& progress);
