#pragma once

#include "roadmap_matrix.h"

// Derives the 2 x K list of edges (1-based index pairs i < j) from the strict
// upper triangle of the graph. A graph that is not square yields 2 x 0 and a
// message on the standard output.
void edgeListFromGraph(const RoadmapMatrix* graph, RoadmapMatrix* edges);

// Number of edges of a graph, as shown to the user.
int edgeCount(const RoadmapMatrix* graph);
