// The nearest samples by one pass over all of them.
#pragma once

#include "neighbour_strategy.h"

#include <vector>

// The nearest samples by one pass over all of them that keeps the nearest so
// far in a bounded heap: time linear in the samples, without sorting them all.
class NearestSamples : public NeighbourStrategy {
public:
    const std::vector<Candidate>& nearest(const RoadmapMatrix* samples, int olderCount, const double* configuration,
                                          int jointCount, int count) override;

private:
    std::vector<Candidate> chosen_;  // the heap, then the answer
};
