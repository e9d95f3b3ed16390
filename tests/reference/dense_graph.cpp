#include "dense_graph.h"

#include <cstring>

void graphFromDense(const RoadmapMatrix* dense, RoadmapGraph* graph)
{
    const int n = rows(dense);
    graph->clear();
    graph->resize(n);
    for (int c = 0; c < n; ++c)
        for (int r = 0; r < c; ++r)
            if (at(dense, r, c) != 0.0)
                graph->setLength(r, c, at(dense, r, c));
}

void denseFromGraph(const RoadmapGraph* graph, RoadmapMatrix* dense)
{
    const int n = graph->nodeCount();
    setSize(dense, n, n);
    fillZero(dense);
    for (int c = 0; c < n; ++c)
        for (const RoadmapGraph::Edge& edge : graph->edgesOf(c))
            at(dense, edge.node, c) = edge.length;
}

bool sameAsDense(const RoadmapGraph* graph, const RoadmapMatrix* dense)
{
    if (dense->dimensionCount != 2 || rows(dense) != columns(dense) || rows(dense) != graph->nodeCount())
        return false;
    const int n = graph->nodeCount();
    int nonZero = 0;
    for (int c = 0; c < n; ++c) {
        for (int r = 0; r < n; ++r) {
            const double entry = at(dense, r, c);
            const double length = graph->length(r, c);
            if (std::memcmp(&entry, &length, sizeof entry) != 0)
                return false;
            nonZero += entry != 0.0 ? 1 : 0;
        }
    }
    return nonZero == 2 * graph->edgeCount();
}
