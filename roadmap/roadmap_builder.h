// Building the roadmap of a robot.
#pragma once

#include "planner_parameters.h"

class HostItem;
class RoadmapGraph;
struct RoadmapMatrix;

// Builds N samples (parameters[Samples]) into `samples` (J x N) and links each
// new sample to up to K (parameters[Edges]) nearest older ones in `graph` (N nodes).
// The caller opens and closes the progress dialog; a cancel leaves the
// completed samples and their edges.
void buildRoadmap(HostItem* robot, const PlannerParameters& parameters, const RoadmapMatrix* seeds,
                  RoadmapMatrix* samples, RoadmapGraph* graph);

// Shows "samples done i of N, E edges"; true when cancelled.
bool prmProgress(int samplesDone, int sampleTotal, double edgeCount);
