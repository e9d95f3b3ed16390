// The nearest older samples of a new one, in one pass with a bounded heap.
#include "nearest_samples.h"

#include "roadmap_matrix.h"
#include "vorlik/joint_vector.h"

#include <algorithm>

const std::vector<NeighbourStrategy::Candidate>& NearestSamples::nearest(const RoadmapMatrix* samples, int olderCount,
                                                                        const double* configuration, int jointCount,
                                                                        int count)
{
    chosen_.start(std::min(count, olderCount));
    if (chosen_.wanted() == 0)
        return chosen_.finish();
    // Samples come in ascending index, so once the list is full a later one
    // gets in only when strictly nearer than the farthest kept.
    const long stride = samples->extents[0];
    const double* sample = samples->values;
    int p = 0;
    for (; p < olderCount && !chosen_.full(); ++p, sample += stride)
        chosen_.offer(p, JointVector::distance(configuration, sample, jointCount));
    double farthest = chosen_.farthest();
    for (; p < olderCount; ++p, sample += stride) {
        const double distance = JointVector::distance(configuration, sample, jointCount);
        if (distance < farthest) {
            chosen_.offer(p, distance);
            farthest = chosen_.farthest();
        }
    }
    return chosen_.finish();
}
