// The edge list of the graph, row by row of its upper triangle.
#include "edge_list.h"

#include "roadmap_graph.h"

void edgeListFromGraph(const RoadmapGraph* graph, RoadmapMatrix* edges)
{
    const int n = graph->nodeCount();
    setSize(edges, 2, graph->edgeCount());
    int written = 0;
    for (int i = 0; i < n; ++i) {
        for (const RoadmapGraph::Edge& edge : graph->upperNeighbours(i)) {
            at(edges, 0, written) = i + 1;
            at(edges, 1, written) = edge.node + 1;
            ++written;
        }
    }
}

int edgeCount(const RoadmapGraph* graph)
{
    return graph->edgeCount();
}
