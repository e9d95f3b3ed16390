// The nearest older samples of a new one, in one pass with a bounded heap.
#include "nearest_samples.h"

#include "roadmap_matrix.h"
#include "vorlik/joint_vector.h"

#include <algorithm>
#include <cmath>

namespace {
// The scan for a joint count known when compiled (the common robots'): the
// same sums in the same order, with the loop over the joints unrolled.
template <int Joints>
struct FixedJoints {
    static double distance(const double* a, const double* b, int)
    {
        double sum = 0.0;
        for (int i = 0; i < Joints; ++i)
            sum += std::fabs(a[i] - b[i]);
        return sum;
    }
};
// Any joint count.
struct AnyJoints {
    static double distance(const double* a, const double* b, int count) { return JointVector::distance(a, b, count); }
};

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
        chosen.offer(p, Distance::distance(configuration, sample, jointCount));
    double farthest = p > 0 ? chosen.farthest() : 0.0;
    for (; p < olderCount; ++p, sample += stride) {
        const double distance = Distance::distance(configuration, sample, jointCount);
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
    switch (jointCount) {
    case 6:
        scan<FixedJoints<6>>(chosen_, samples, olderCount, configuration, jointCount);
        break;
    case 7:
        scan<FixedJoints<7>>(chosen_, samples, olderCount, configuration, jointCount);
        break;
    default:
        scan<AnyJoints>(chosen_, samples, olderCount, configuration, jointCount);
        break;
    }
    return chosen_.finish();
}
