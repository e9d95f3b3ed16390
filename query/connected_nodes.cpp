// Whether two nodes of a graph are joined by any chain of edges.
#include "connected_nodes.h"

#include "roadmap_graph.h"

#include <vector>

bool nodesConnected(const RoadmapGraph* graph, int a, int b)
{
    const int n = graph->nodeCount();
    if (a < 0 || b < 0 || a >= n || b >= n)
        return false;
    if (a == b)
        return true;
    std::vector<char> seen(static_cast<size_t>(n), 0);
    std::vector<int> waiting{a};
    seen[static_cast<size_t>(a)] = 1;
    while (!waiting.empty()) {
        const int node = waiting.back();
        waiting.pop_back();
        for (const RoadmapGraph::Edge& edge : graph->edgesOf(node)) {
            if (edge.node == b)
                return true;
            if (!seen[static_cast<size_t>(edge.node)]) {
                seen[static_cast<size_t>(edge.node)] = 1;
                waiting.push_back(edge.node);
            }
        }
    }
    return false;
}
