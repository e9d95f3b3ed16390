#pragma once

#include "roadmap_graph.h"
#include "roadmap_matrix.h"

// The dense N x N matrix the planner once kept its graph in, and still stores
// in stations, beside the sparse working graph: conversions both ways, and
// matrix-style reads of a graph so that tests can state what they expect the
// way users see a map.

// The graph of a square, symmetric matrix (0 = no edge).
void graphFromDense(const RoadmapMatrix* dense, RoadmapGraph* graph);
// The dense matrix of a graph.
void denseFromGraph(const RoadmapGraph* graph, RoadmapMatrix* dense);
// True when the graph and the matrix hold the same entries, bit for bit.
bool sameAsDense(const RoadmapGraph* graph, const RoadmapMatrix* dense);

inline int rows(const RoadmapGraph* graph) { return graph->nodeCount(); }
inline int columns(const RoadmapGraph* graph) { return graph->nodeCount(); }
inline double at(const RoadmapGraph* graph, int row, int column) { return graph->length(row, column); }

#include <memory>

// Owner of a graph in a test.
using ScopedGraph = std::unique_ptr<RoadmapGraph>;
inline ScopedGraph makeScopedGraph() { return std::make_unique<RoadmapGraph>(); }
