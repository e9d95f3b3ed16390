// A robot's roadmap: its samples and the graph between them.
#pragma once

#include "roadmap_graph.h"
#include "roadmap_matrix.h"

// A robot's roadmap: the samples (J x N, one configuration per column) and
// the sparse graph between them, node i standing for sample i (0-based).
// A map the planner builds has a node for every sample, and keeps one more
// for every insertion that was cancelled (a node without a sample); maps
// users keep hold such nodes. Maps stored with their samples only (an
// absent or empty graph) are kept as they are: their graph has no node, and
// a node inserted there gets none to its sample. Nothing else is taken.
class Roadmap {
public:
    Roadmap();
    Roadmap(const Roadmap& other);
    Roadmap& operator=(const Roadmap& other);

    int jointCount() const { return rows(samples_.get()); }
    int sampleCount() const { return columns(samples_.get()); }
    int nodeCount() const { return graph_.nodeCount(); }
    int edgeCount() const { return graph_.edgeCount(); }
    bool hasSamples() const { return sampleCount() >= 1; }

    const RoadmapMatrix* samples() const { return samples_.get(); }
    const RoadmapGraph& graph() const { return graph_; }
    // Sample `index` (0-based): J consecutive joint values.
    const double* sample(int index) const { return column(samples_.get(), index); }

    // No samples, no nodes (0 x 0).
    void clear();
    // `sampleCount` samples of `jointCount` joints, all 0, and as many nodes
    // without edges: a map about to be built.
    void reset(int jointCount, int sampleCount);
    // Sets sample `index` to the first J values of `configuration`.
    void setSample(int index, const double* configuration);
    // Keeps the first `keep` samples and nodes and the edges among them.
    void truncate(int keep);
    // A node without a sample, beyond the others; its index.
    int addNode();
    // A sample after the others: the configuration of the first node
    // without one (after addNode()).
    void appendSample(const double* configuration);
    // An edge of this length between nodes a and b; a length of 0 removes it.
    void join(int a, int b, double length) { graph_.setLength(a, b, length); }

    // Takes samples and graph as they were read; false, and the roadmap is
    // empty, when the graph has nodes but fewer than there are samples.
    bool assign(ScopedMatrix samples, RoadmapGraph graph);

private:
    ScopedMatrix samples_;
    RoadmapGraph graph_;
};
