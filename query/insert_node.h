// Making a configuration a node of the map.
#pragma once

#include "configuration.h"
#include "planner_parameters.h"

class HostItem;
class RoadmapGraph;
struct RoadmapMatrix;

// Makes `configuration` a node of the roadmap. Within one robot step (L1) of
// its nearest sample it reuses that sample; otherwise it is appended and linked
// to the nearest samples whose joint move the host reports free, until
// NewNodeEdges edges are made. Results go to samplesOut/graphOut, which may be
// the input map itself: the node is then appended in place, in time linear in
// the samples and without copying the map. nodeIndex is 1-based (-1 for an
// empty roadmap). A progress dialog must be open.
void insertNode(HostItem* robot, Configuration configuration, const RoadmapMatrix* samples, const RoadmapGraph* graph,
                const PlannerParameters& parameters, RoadmapMatrix* samplesOut, RoadmapGraph* graphOut, int* edgesMade,
                int* nodeIndex);
