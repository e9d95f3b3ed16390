#pragma once

struct RoadmapMatrix;

// The original table search over a dense graph (0 = no edge): the reference
// for routes and costs.
void tableShortestPath(const RoadmapMatrix* graph, int source, int destination, double* cost, RoadmapMatrix* path);
