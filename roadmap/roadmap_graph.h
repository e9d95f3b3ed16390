// The roadmap graph in its working, sparse form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// The roadmap's graph "G" in its working form: adjacency lists, because a
// roadmap of N samples has about K N edges, not N^2. It stands for the
// symmetric N x N matrix users know from the stored map: length(a, b) is the
// entry (a, b), 0 where there is no edge; the diagonal is always 0.
// Nodes are 0-based here; the planner's stored indices are 1-based.
class RoadmapGraph {
public:
    struct Edge {
        int32_t node;   // the neighbour
        double length;  // L1 joint distance, > 0
    };

    int nodeCount() const { return static_cast<int>(adjacency_.size()); }
    // Pairs a < b joined by an edge, as the user is told.
    int edgeCount() const { return edgeCount_; }
    bool isEmpty() const { return adjacency_.empty(); }

    // All nodes gone.
    void clear();
    // New nodes come without edges; dropped nodes take their edges with them.
    void resize(int nodeCount);
    // Appends a node without edges; its index.
    int addNode();
    // Sets the entries (a, b) and (b, a); a length of 0 (or less) removes the
    // edge. a and b differ and are both nodes.
    void setLength(int a, int b, double length);
    // The entry (a, b): the edge's length, or 0 without an edge.
    double length(int a, int b) const;
    const std::vector<Edge>& edgesOf(int node) const { return adjacency_[static_cast<size_t>(node)]; }
    // Neighbours above `node`, ascending: one row of the upper triangle.
    std::vector<Edge> upperNeighbours(int node) const;

    bool operator==(const RoadmapGraph& other) const;
    bool operator!=(const RoadmapGraph& other) const { return !(*this == other); }

private:
    void insertHalf(int from, int to, double length);
    bool eraseHalf(int from, int to);

    std::vector<std::vector<Edge>> adjacency_;
    int edgeCount_ = 0;
};
