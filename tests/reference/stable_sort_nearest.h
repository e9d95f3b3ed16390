#pragma once

#include "neighbour_strategy.h"

#include <vector>

struct RoadmapMatrix;

// The nearest samples by the literal rule: every distance of samples 0 ..
// olderCount - 1 to the configuration, stably sorted, the first `count` taken.
std::vector<NeighbourStrategy::Candidate> stableSortNearest(const RoadmapMatrix* samples, int olderCount,
                                                            const double* configuration, int jointCount, int count);
