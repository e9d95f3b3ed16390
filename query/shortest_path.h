// The shortest chain of samples between two nodes of the map.
#pragma once

class RoadmapGraph;
struct RoadmapMatrix;

// Path cost that means "no path".
constexpr double NoPathCost = 1e99;

// Dijkstra search over the roadmap graph between nodes `source` and
// `destination` (0-based). `path` becomes the route as a map stores it: a
// 1 x m row of nodes counted from 1, from destination back to source; cost >=
// NoPathCost means unreachable. Of equally short paths it returns the one the
// planner has always returned (see shortest_path.cpp).
void shortestPath(const RoadmapGraph* graph, int source, int destination, double* cost, RoadmapMatrix* path);
