// The nearest samples through a k-d tree grown as the samples come.
#include "nearest_samples_tree.h"

#include "roadmap_matrix.h"
#include "vorlik/joint_vector.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
// Samples a leaf holds before it is split: scanning a few dozen samples
// costs less than deciding about more, smaller boxes.
constexpr size_t LeafCapacity = 64;

bool allFinite(const double* values, int count)
{
    for (int i = 0; i < count; ++i)
        if (!std::isfinite(values[i]))
            return false;
    return true;
}
}  // namespace

const std::vector<NeighbourStrategy::Candidate>& NearestSamplesTree::nearest(const RoadmapMatrix* samples,
                                                                            int olderCount,
                                                                            const double* configuration,
                                                                            int jointCount, int count)
{
    if (samples != samples_ || jointCount != jointCount_ || olderCount < indexed_)
        startOver(samples, jointCount);
    if (olderCount < fewest_ || jointCount < 1 || !finite_ || !allFinite(configuration, jointCount))
        return scan_.nearest(samples, olderCount, configuration, jointCount, count);
    while (indexed_ < olderCount && finite_)
        index(indexed_++);
    if (!finite_)
        return scan_.nearest(samples, olderCount, configuration, jointCount, count);

    chosen_.start(std::min(count, olderCount));
    if (chosen_.wanted() > 0)
        search(0, configuration);
    return chosen_.finish();
}

void NearestSamplesTree::startOver(const RoadmapMatrix* samples, int jointCount)
{
    samples_ = samples;
    jointCount_ = jointCount;
    indexed_ = 0;
    finite_ = true;
    nodes_.clear();
    lower_.clear();
    upper_.clear();
    leaves_.clear();
    addNode();
    nodes_[0].leaf = 0;
    leaves_.push_back(Leaf{{}, {}, LeafCapacity + 1});
}

int NearestSamplesTree::addNode()
{
    nodes_.emplace_back();
    // An empty box: the first sample widens it to itself.
    lower_.resize(lower_.size() + size_t(jointCount_), std::numeric_limits<double>::infinity());
    upper_.resize(upper_.size() + size_t(jointCount_), -std::numeric_limits<double>::infinity());
    return static_cast<int>(nodes_.size()) - 1;
}

void NearestSamplesTree::widen(int node, const double* point)
{
    double* lower = &lower_[size_t(node) * size_t(jointCount_)];
    double* upper = &upper_[size_t(node) * size_t(jointCount_)];
    for (int i = 0; i < jointCount_; ++i) {
        lower[i] = std::min(lower[i], point[i]);
        upper[i] = std::max(upper[i], point[i]);
    }
}

void NearestSamplesTree::addToLeaf(int leaf, int sampleIndex, const double* point)
{
    Leaf& l = leaves_[size_t(leaf)];
    l.indices.push_back(sampleIndex);
    l.values.insert(l.values.end(), point, point + jointCount_);
}

void NearestSamplesTree::index(int sampleIndex)
{
    const double* point = column(samples_, sampleIndex);
    if (!allFinite(point, jointCount_)) {
        finite_ = false;  // a box could not hold it: the scan answers from now on
        return;
    }
    int node = 0;
    for (;;) {
        widen(node, point);
        if (nodes_[size_t(node)].axis < 0)
            break;
        const Node& inner = nodes_[size_t(node)];
        node = point[inner.axis] < inner.split ? inner.low : inner.low + 1;
    }
    const int leaf = nodes_[size_t(node)].leaf;
    addToLeaf(leaf, sampleIndex, point);
    if (leaves_[size_t(leaf)].indices.size() >= leaves_[size_t(leaf)].splitAt)
        split(node);
}

void NearestSamplesTree::split(int node)
{
    // Along the widest side of the box, at the median value; when more than
    // half the samples share the lowest value, at the next higher one.
    const size_t box = size_t(node) * size_t(jointCount_);
    int axis = 0;
    for (int i = 1; i < jointCount_; ++i)
        if (upper_[box + size_t(i)] - lower_[box + size_t(i)] > upper_[box + size_t(axis)] - lower_[box + size_t(axis)])
            axis = i;
    const int leafIndex = nodes_[size_t(node)].leaf;
    Leaf held = std::move(leaves_[size_t(leafIndex)]);
    const size_t count = held.indices.size();
    std::vector<double> values(count);
    for (size_t s = 0; s < count; ++s)
        values[s] = held.values[s * size_t(jointCount_) + size_t(axis)];
    std::sort(values.begin(), values.end());
    double at = values[count / 2];
    if (at == values.front()) {
        const auto higher = std::upper_bound(values.begin(), values.end(), at);
        if (higher == values.end()) {
            // Every sample here is one and the same configuration: a leaf it stays, tried again when twice as full.
            held.splitAt = 2 * count;
            leaves_[size_t(leafIndex)] = std::move(held);
            return;
        }
        at = *higher;
    }

    const int low = addNode();
    addNode();
    Node& inner = nodes_[size_t(node)];
    inner.axis = axis;
    inner.split = at;
    inner.low = low;
    inner.leaf = -1;
    // The lower child takes the leaf's place; the upper one a new leaf.
    leaves_[size_t(leafIndex)] = Leaf{{}, {}, LeafCapacity + 1};
    nodes_[size_t(low)].leaf = leafIndex;
    nodes_[size_t(low) + 1].leaf = static_cast<int>(leaves_.size());
    leaves_.push_back(Leaf{{}, {}, LeafCapacity + 1});
    // In the order they came: a leaf keeps ascending indices.
    for (size_t s = 0; s < count; ++s) {
        const double* point = &held.values[s * size_t(jointCount_)];
        const int child = point[axis] < at ? low : low + 1;
        widen(child, point);
        addToLeaf(nodes_[size_t(child)].leaf, held.indices[s], point);
    }
}

double NearestSamplesTree::lowerBound(int node, const double* configuration) const
{
    // Each term is at most that joint's |q - x| for every sample x in the box
    // (rounding keeps the order of differences), summed in the distance's own
    // order from 0: the bound never exceeds a distance it stands for.
    const double* lower = &lower_[size_t(node) * size_t(jointCount_)];
    const double* upper = &upper_[size_t(node) * size_t(jointCount_)];
    double bound = 0.0;
    for (int i = 0; i < jointCount_; ++i) {
        const double q = configuration[i];
        if (q < lower[i])
            bound += lower[i] - q;
        else if (q > upper[i])
            bound += q - upper[i];
    }
    return bound;
}

void NearestSamplesTree::search(int node, const double* configuration)
{
    const Node& here = nodes_[size_t(node)];
    if (here.axis < 0) {
        const Leaf& leaf = leaves_[size_t(here.leaf)];
        const double* values = leaf.values.data();
        for (size_t s = 0; s < leaf.indices.size(); ++s, values += jointCount_) {
            const double distance = JointVector::distance(configuration, values, jointCount_);
            if (!chosen_.full() || distance <= chosen_.farthest())
                chosen_.offer(leaf.indices[s], distance);
        }
        return;
    }
    // The child whose box is nearer first: its samples tighten the bound sooner.
    int first = here.low;
    int second = here.low + 1;
    double firstBound = lowerBound(first, configuration);
    double secondBound = lowerBound(second, configuration);
    if (secondBound < firstBound) {
        std::swap(first, second);
        std::swap(firstBound, secondBound);
    }
    // Only a box all of whose samples are strictly farther is passed over: an
    // equal distance may still win by its index.
    if (!chosen_.full() || firstBound <= chosen_.farthest())
        search(first, configuration);
    if (!chosen_.full() || secondBound <= chosen_.farthest())
        search(second, configuration);
}
