// The roadmap graph's adjacency lists.
#include "roadmap_graph.h"

#include <algorithm>

namespace {
bool byNode(const RoadmapGraph::Edge& a, const RoadmapGraph::Edge& b)
{
    return a.node < b.node;
}
}  // namespace

void RoadmapGraph::clear()
{
    adjacency_.clear();
    adjacency_.shrink_to_fit();
    edgeCount_ = 0;
}

void RoadmapGraph::resize(int nodeCount)
{
    const int count = std::max(nodeCount, 0);
    if (count < this->nodeCount()) {
        for (int node = 0; node < count; ++node) {
            std::vector<Edge>& edges = adjacency_[static_cast<size_t>(node)];
            const auto kept =
                std::remove_if(edges.begin(), edges.end(), [count](const Edge& e) { return e.node >= count; });
            edges.erase(kept, edges.end());
        }
        int remaining = 0;
        for (int node = 0; node < count; ++node)
            remaining += static_cast<int>(adjacency_[static_cast<size_t>(node)].size());
        edgeCount_ = remaining / 2;
    }
    adjacency_.resize(static_cast<size_t>(count));
}

int RoadmapGraph::addNode()
{
    adjacency_.emplace_back();
    return nodeCount() - 1;
}

void RoadmapGraph::setLength(int a, int b, double length)
{
    const bool existed = eraseHalf(a, b);
    eraseHalf(b, a);
    if (existed)
        --edgeCount_;
    // Only a positive entry is an edge; anything else reads as none.
    if (!(length > 0.0))
        return;
    insertHalf(a, b, length);
    insertHalf(b, a, length);
    ++edgeCount_;
}

double RoadmapGraph::length(int a, int b) const
{
    for (const Edge& edge : adjacency_[static_cast<size_t>(a)])
        if (edge.node == b)
            return edge.length;
    return 0.0;
}

std::vector<RoadmapGraph::Edge> RoadmapGraph::upperNeighbours(int node) const
{
    std::vector<Edge> above;
    for (const Edge& edge : adjacency_[static_cast<size_t>(node)])
        if (edge.node > node)
            above.push_back(edge);
    std::sort(above.begin(), above.end(), byNode);
    return above;
}

bool RoadmapGraph::operator==(const RoadmapGraph& other) const
{
    if (nodeCount() != other.nodeCount() || edgeCount_ != other.edgeCount_)
        return false;
    for (size_t node = 0; node < adjacency_.size(); ++node) {
        std::vector<Edge> mine = adjacency_[node];
        std::vector<Edge> theirs = other.adjacency_[node];
        if (mine.size() != theirs.size())
            return false;
        std::sort(mine.begin(), mine.end(), byNode);
        std::sort(theirs.begin(), theirs.end(), byNode);
        for (size_t i = 0; i < mine.size(); ++i)
            if (mine[i].node != theirs[i].node || mine[i].length != theirs[i].length)
                return false;
    }
    return true;
}

void RoadmapGraph::insertHalf(int from, int to, double length)
{
    adjacency_[static_cast<size_t>(from)].push_back({to, length});
}

bool RoadmapGraph::eraseHalf(int from, int to)
{
    std::vector<Edge>& edges = adjacency_[static_cast<size_t>(from)];
    const auto found = std::find_if(edges.begin(), edges.end(), [to](const Edge& e) { return e.node == to; });
    if (found == edges.end())
        return false;
    edges.erase(found);
    return true;
}
