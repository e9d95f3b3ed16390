#pragma once

struct RoadmapMatrix;

// Path cost that means "no path".
constexpr double NoPathCost = 1e99;

// Dijkstra search over the dense graph (0 = no edge) between 1-based nodes.
// `path` becomes a 1 x m row of 1-based nodes from destination back to source;
// cost >= NoPathCost means unreachable.
void shortestPath(const RoadmapMatrix* graph, int source, int destination, double* cost, RoadmapMatrix* path);
