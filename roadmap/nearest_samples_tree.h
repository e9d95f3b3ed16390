// The nearest samples through a k-d tree grown as the samples come.
#pragma once

#include "nearest_samples.h"
#include "nearest_so_far.h"
#include "neighbour_strategy.h"

#include <vector>

// The nearest samples through a k-d tree over them, for the map's
// construction, which asks about every new sample: each question looks at the
// samples of the few boxes that may hold a nearer one instead of at all of
// them. The answer is the linear scan's, ties by index included: a box is
// passed over only when every sample in it is strictly farther than the
// farthest candidate kept, and the distances are the scan's own.
//
// The tree indexes samples 0 .. olderCount - 1 as questions reach them and
// trusts that an indexed sample does not change until forget(); it also starts
// over when asked about another matrix, another joint count or fewer samples
// than it holds. Below `fewest` samples, without
// joints, and with a value that is not a finite number anywhere, the linear
// scan answers.
class NearestSamplesTree : public NeighbourStrategy {
public:
    static constexpr int DefaultFewest = 3000;
    explicit NearestSamplesTree(int fewest = DefaultFewest) : fewest_(fewest) {}

    const std::vector<Candidate>& nearest(const RoadmapMatrix* samples, int olderCount, const double* configuration,
                                          int jointCount, int count) override;
    void forget() override { samples_ = nullptr; }

private:
    // A node: a leaf holds samples; an inner node splits its box in two
    // children (at `low` and `low + 1`) along `axis` at `split`.
    struct Node {
        int axis = -1;      // -1: a leaf
        double split = 0.0;  // samples below go to the lower child
        int low = -1;       // the lower child; the upper one follows it
        int leaf = -1;      // the leaf's place in leaves_
    };
    // The samples of a leaf: their indices and, beside them, their values.
    struct Leaf {
        std::vector<int> indices;
        std::vector<double> values;  // jointCount_ a sample
        size_t splitAt;              // the size at which it is split next
    };

    void startOver(const RoadmapMatrix* samples, int jointCount);
    void index(int sampleIndex);
    int addNode();
    void widen(int node, const double* point);
    void addToLeaf(int leaf, int sampleIndex, const double* point);
    void split(int node);
    double lowerBound(int node, const double* configuration) const;
    void search(int node, const double* configuration);

    int fewest_;                         // below this many samples the scan answers
    NearestSamples scan_;                // the answer for few samples
    const RoadmapMatrix* samples_ = nullptr;  // the matrix indexed
    int jointCount_ = 0;
    int indexed_ = 0;                    // samples 0 .. indexed_ - 1 are in the tree
    bool finite_ = true;                 // false: a value was not finite, the scan answers
    std::vector<Node> nodes_;            // the root first
    std::vector<double> lower_;          // each node's box: jointCount_ lowest values
    std::vector<double> upper_;          // and highest values of its samples
    std::vector<Leaf> leaves_;
    NearestSoFar chosen_;                // the search's candidates, then its answer
};
