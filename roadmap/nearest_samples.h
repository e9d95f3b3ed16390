// The nearest samples by one pass over all of them.
#pragma once

#include "nearest_so_far.h"
#include "neighbour_strategy.h"

#include <vector>

// The nearest samples by one pass over all of them that keeps the nearest so
// far in a bounded heap: time linear in the samples, without sorting them all.
// No set-up: the strategy for a few questions about a whole map.
class NearestSamples : public NeighbourStrategy {
public:
    const std::vector<Candidate>& nearest(const RoadmapMatrix* samples, int olderCount, const double* configuration,
                                          int jointCount, int count) override;

private:
    NearestSoFar chosen_;  // the search's candidates, then its answer
};
