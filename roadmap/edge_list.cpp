#include "edge_list.h"

#include <cstdio>

namespace {
// Changes the extents only: the storage is left as it is.
void setEmptyEdgeList(RoadmapMatrix* edges)
{
    edges->extents[0] = 2;
    edges->extents[1] = 0;
}
}  // namespace

void edgeListFromGraph(const RoadmapMatrix* graph, RoadmapMatrix* edges)
{
    if (dimensionSize(graph, 1) != dimensionSize(graph, 2)) {
        std::fputs("Something is wrong! G matrix is not square!\n", stdout);
        std::fflush(stdout);
        setEmptyEdgeList(edges);
        return;
    }
    const int n = dimensionSize(graph, 1);
    const double m = (n - 1.0) * n / 2.0;
    if (m < 1) {
        setEmptyEdgeList(edges);
        return;
    }
    setSize(edges, 2, static_cast<int>(m));
    fillZero(edges);
    int written = 0;
    for (int i = 0; i < n; ++i) {
        for (int j = i + 1; j < n; ++j) {
            if (at(graph, i, j) > 0) {
                at(edges, 0, written) = i + 1;
                at(edges, 1, written) = j + 1;
                ++written;
            }
        }
    }
    setSize(edges, 2, written);
}

int edgeCount(const RoadmapMatrix* graph)
{
    ScopedMatrix edges = makeScopedMatrix();
    edgeListFromGraph(graph, edges.get());
    return columns(edges.get());
}
