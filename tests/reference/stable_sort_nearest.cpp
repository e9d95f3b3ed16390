#include "stable_sort_nearest.h"

#include "roadmap_matrix.h"
#include "vorlik/joint_vector.h"

#include <algorithm>

std::vector<NeighbourStrategy::Candidate> stableSortNearest(const RoadmapMatrix* samples, int olderCount,
                                                            const double* configuration, int jointCount, int count)
{
    std::vector<NeighbourStrategy::Candidate> all;
    for (int p = 0; p < olderCount; ++p)
        all.push_back({p, JointVector::distance(configuration, column(samples, p), jointCount)});
    std::stable_sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.distance < b.distance; });
    all.resize(static_cast<size_t>(std::max(0, std::min(count, olderCount))));
    return all;
}
