// The nearest older samples of a new one, in one pass with a bounded heap.
#include "nearest_samples.h"

#include "vorlik/joint_vector.h"
#include "roadmap_matrix.h"

#include <algorithm>

namespace {
// Ascending (distance, index): the place a stable sort gives a sample.
bool nearer(const NeighbourStrategy::Candidate& a, const NeighbourStrategy::Candidate& b)
{
    if (a.distance != b.distance)
        return a.distance < b.distance;
    return a.index < b.index;
}
}  // namespace

const std::vector<NeighbourStrategy::Candidate>& NearestSamples::nearest(const RoadmapMatrix* samples, int olderCount,
                                                                        const double* configuration, int jointCount,
                                                                        int count)
{
    chosen_.clear();
    const int wanted = std::min(count, olderCount);
    if (wanted <= 0)
        return chosen_;
    chosen_.reserve(static_cast<size_t>(wanted));

    // The heap's top is the farthest kept. Samples come in ascending index,
    // so a later one displaces it only when strictly nearer.
    for (int p = 0; p < olderCount; ++p) {
        const double distance = JointVector::distance(configuration, column(samples, p), jointCount);
        if (static_cast<int>(chosen_.size()) < wanted) {
            chosen_.push_back({p, distance});
            std::push_heap(chosen_.begin(), chosen_.end(), nearer);
        } else if (distance < chosen_.front().distance) {
            std::pop_heap(chosen_.begin(), chosen_.end(), nearer);
            chosen_.back() = {p, distance};
            std::push_heap(chosen_.begin(), chosen_.end(), nearer);
        }
    }
    std::sort_heap(chosen_.begin(), chosen_.end(), nearer);
    return chosen_;
}
