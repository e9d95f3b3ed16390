// The nearest older samples of a new one, in one pass with a bounded heap.
#include "nearest_samples.h"

#include "joint_distance.h"
#include "roadmap_matrix.h"

#include <algorithm>

namespace {
template <typename Distance>
void scan(NearestSoFar& chosen, const RoadmapMatrix* samples, int olderCount, const double* configuration,
          int jointCount)
{
    // Samples come in ascending index, so once the list is full a later one
    // gets in only when strictly nearer than the farthest kept.
    const long stride = samples->extents[0];
    const double* sample = samples->values;
    int p = 0;
    for (; p < olderCount && !chosen.full(); ++p, sample += stride)
        chosen.offer(p, Distance::of(configuration, sample, jointCount));
    double farthest = p > 0 ? chosen.farthest() : 0.0;
    for (; p < olderCount; ++p, sample += stride) {
        const double distance = Distance::of(configuration, sample, jointCount);
        if (distance < farthest) {
            chosen.offer(p, distance);
            farthest = chosen.farthest();
        }
    }
}
}  // namespace

const std::vector<NeighbourStrategy::Candidate>& NearestSamples::nearest(const RoadmapMatrix* samples, int olderCount,
                                                                        const double* configuration, int jointCount,
                                                                        int count)
{
    chosen_.start(std::min(count, olderCount));
    if (chosen_.wanted() == 0)
        return chosen_.finish();
    withJointDistance(jointCount, [&](auto distance) {
        scan<decltype(distance)>(chosen_, samples, olderCount, configuration, jointCount);
    });
    return chosen_.finish();
}
