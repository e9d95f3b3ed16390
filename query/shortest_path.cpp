// Dijkstra's search over the roadmap with a binary heap, made to choose
// exactly what the planner's original table search chose, so that routes
// already planned and stored stay the same.
//
// The table search kept every open node in a list that it re-sorted, stably,
// by tentative distance at every step; equal distances kept their order from
// the step before, and at the start that order was the node label. Its choice
// among equal distances is therefore history: a node that reached a distance
// earlier goes before one that reached it later, and nodes that reached it in
// the same step keep the order they had before that step. Each node here
// carries a sequence number that encodes just that: the initial ones are the
// labels, and the nodes lowered in one step get the next numbers in the order
// of their previous (distance, sequence). The heap then orders by
// (distance, sequence).
//
// A missing edge weighed 1e99 in the table search, so a fixed node could
// "lower" a node through a missing edge to its own distance plus 1e99. That
// only happens to nodes whose distance is above 1e99, which only edges longer
// than 1e99 produce; those few nodes are kept aside and treated the same way.
// The table's walk back found, for each node, the step that last lowered it:
// the predecessor kept here.
#include "shortest_path.h"

#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include <algorithm>
#include <cstdio>
#include <queue>
#include <set>
#include <utility>
#include <vector>

namespace {

void report(const char* text)
{
    std::fputs(text, stdout);
    std::fflush(stdout);
}

struct HeapEntry {
    double distance;
    long long sequence;
    int node;
};

struct Later {
    bool operator()(const HeapEntry& a, const HeapEntry& b) const
    {
        if (a.distance != b.distance)
            return a.distance > b.distance;
        return a.sequence > b.sequence;
    }
};

// The search in the relabelled numbering: label 1 is the source and label
// `source` stands for the caller's node 1; all other labels are unchanged.
class LabelledSearch {
public:
    LabelledSearch(const RoadmapGraph& graph, int source)
        : graph_(graph), source_(source), n_(graph.nodeCount()), distance_(static_cast<size_t>(n_) + 1, NoPathCost),
          sequence_(static_cast<size_t>(n_) + 1, 0), predecessor_(static_cast<size_t>(n_) + 1, 0),
          fixed_(static_cast<size_t>(n_) + 1, false)
    {
    }

    // Runs until `destination` is fixed or no step is left. The distance of
    // the destination is then final.
    void run(int destination)
    {
        for (int label = 2; label <= n_; ++label)
            sequence_[static_cast<size_t>(label)] = label;
        forEachEdge(1, [this](int label, double length) { distance_[static_cast<size_t>(label)] = length; });
        nextSequence_ = n_ + 1;
        // The source is never open: nothing lowers it, nothing fixes it.
        fixed_[1] = true;

        std::vector<HeapEntry> entries;
        entries.reserve(static_cast<size_t>(n_));
        for (int label = 2; label <= n_; ++label) {
            entries.push_back({distance_[static_cast<size_t>(label)], label, label});
            noteIfAboveInfinity(label);
        }
        open_ = std::priority_queue<HeapEntry, std::vector<HeapEntry>, Later>(Later(), std::move(entries));

        // The table search took n - 2 steps; the node left last was never fixed.
        for (int step = 3; step <= n_; ++step) {
            const int k = popNearest();
            if (k == destination)
                return;
            relaxFrom(k);
        }
    }

    double distance(int label) const { return distance_[static_cast<size_t>(label)]; }
    // The fixed node whose step last lowered `label`; 0 when it never was.
    int predecessor(int label) const { return predecessor_[static_cast<size_t>(label)]; }

private:
    int relabel(int node) const
    {
        if (node == 1)
            return source_;
        if (node == source_)
            return 1;
        return node;
    }

    template <typename Visit> void forEachEdge(int label, Visit visit) const
    {
        for (const RoadmapGraph::Edge& edge : graph_.edgesOf(relabel(label) - 1))
            visit(relabel(edge.node + 1), edge.length);
    }

    int popNearest()
    {
        for (;;) {
            const HeapEntry top = open_.top();
            open_.pop();
            const size_t node = static_cast<size_t>(top.node);
            if (fixed_[node] || top.sequence != sequence_[node])
                continue;  // an older entry of a node lowered since
            fixed_[node] = true;
            aboveInfinity_.erase({top.distance, top.node});
            return top.node;
        }
    }

    struct Lowering {
        int label;
        double oldDistance;
        long long oldSequence;
        double newDistance;
    };

    void relaxFrom(int k)
    {
        const double base = distance_[static_cast<size_t>(k)];
        lowered_.clear();
        touched_.clear();
        forEachEdge(k, [&](int label, double length) {
            touched_.push_back(label);
            consider(label, base + length);
        });
        if (!aboveInfinity_.empty())
            lowerThroughMissingEdges(k, base + NoPathCost);
        if (lowered_.empty())
            return;

        // Nodes lowered together keep the order they had before this step.
        std::sort(lowered_.begin(), lowered_.end(), [](const Lowering& a, const Lowering& b) {
            if (a.oldDistance != b.oldDistance)
                return a.oldDistance < b.oldDistance;
            return a.oldSequence < b.oldSequence;
        });
        for (const Lowering& change : lowered_) {
            const size_t node = static_cast<size_t>(change.label);
            aboveInfinity_.erase({change.oldDistance, change.label});
            distance_[node] = change.newDistance;
            sequence_[node] = nextSequence_++;
            predecessor_[node] = k;
            open_.push({change.newDistance, sequence_[node], change.label});
            noteIfAboveInfinity(change.label);
        }
    }

    void consider(int label, double candidate)
    {
        const size_t node = static_cast<size_t>(label);
        if (fixed_[node] || !(candidate < distance_[node]))
            return;
        lowered_.push_back({label, distance_[node], sequence_[node], candidate});
    }

    // Every open node not joined to k weighs k's distance + 1e99 from k. Only
    // nodes still above that are lowered, and they are all above 1e99.
    void lowerThroughMissingEdges(int k, double throughMissingEdge)
    {
        std::sort(touched_.begin(), touched_.end());
        for (auto it = aboveInfinity_.rbegin(); it != aboveInfinity_.rend() && it->first > throughMissingEdge; ++it) {
            const int label = it->second;
            if (label == k || std::binary_search(touched_.begin(), touched_.end(), label))
                continue;
            consider(label, throughMissingEdge);
        }
    }

    void noteIfAboveInfinity(int label)
    {
        const double d = distance_[static_cast<size_t>(label)];
        if (d > NoPathCost)
            aboveInfinity_.insert({d, label});
    }

    const RoadmapGraph& graph_;
    const int source_;
    const int n_;
    std::vector<double> distance_;
    std::vector<long long> sequence_;
    std::vector<int> predecessor_;
    std::vector<bool> fixed_;
    long long nextSequence_ = 0;
    std::priority_queue<HeapEntry, std::vector<HeapEntry>, Later> open_;
    std::set<std::pair<double, int>> aboveInfinity_;  // open nodes farther than 1e99
    std::vector<Lowering> lowered_;
    std::vector<int> touched_;
};

void append(RoadmapMatrix* path, int node)
{
    const int length = columns(path);
    setSize(path, 1, length + 1);
    path->values[length] = node;
}

}  // namespace

void shortestPath(const RoadmapGraph* graph, int sourceNode, int destinationNode, double* cost, RoadmapMatrix* path)
{
    *cost = NoPathCost;
    setSize(path, 1, 0);

    const int n = graph->nodeCount();
    if (sourceNode >= n || destinationNode >= n || sourceNode < 0 || destinationNode < 0) {
        report("Internal problem: Index out of bounds!!");
        return;
    }
    // The search counts from 1, as the route it writes does.
    int source = sourceNode + 1;
    int destination = destinationNode + 1;
    if (source == destination) {
        *cost = 0.0;
        append(path, source);
        return;
    }

    // In the relabelled numbering the caller's node 1 is label `source`.
    if (destination == 1)
        destination = source;
    LabelledSearch search(*graph, source);
    search.run(destination);

    *cost = search.distance(destination);
    append(path, destination == source ? 1 : destination);
    for (int p = search.predecessor(destination); p != 0; p = search.predecessor(p))
        append(path, p == source ? 1 : p);
    append(path, source);
}
