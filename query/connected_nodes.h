// Whether two nodes of a graph are joined by any chain of edges.
#pragma once

class RoadmapGraph;

// True when a chain of edges joins nodes a and b (0-based), or a is b: the
// one question a search answers, at the cost of a walk over the edges, where
// the search itself costs the square of the nodes.
bool nodesConnected(const RoadmapGraph* graph, int a, int b);
