// The edges of the graph as a 2 x K list, and their number.
#pragma once

#include "roadmap_matrix.h"

class RoadmapGraph;

// The 2 x K list of edges (1-based index pairs i < j), in the order of the
// graph's upper triangle read row by row.
void edgeListFromGraph(const RoadmapGraph* graph, RoadmapMatrix* edges);

// Number of edges of a graph, as shown to the user.
int edgeCount(const RoadmapGraph* graph);
