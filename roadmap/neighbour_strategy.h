// How the nearest older samples of a configuration are found.
#pragma once

#include <vector>

struct RoadmapMatrix;

// Finds the nearest samples of a configuration in L1 joint distance, nearest
// first and equal distances by ascending index: the order a stable sort of
// all the distances gives, which every map and route depends on. The map's
// construction and the insertion of nodes ask it; a faster structure may
// replace the linear scan if it gives exactly that order.
class NeighbourStrategy {
public:
    struct Candidate {
        int index;        // 0-based sample
        double distance;  // L1 distance to the configuration
    };

    virtual ~NeighbourStrategy() = default;

    // The min(count, olderCount) nearest of samples 0 .. olderCount - 1 (J x
    // olderCount or more, column-major) to `configuration` (J values), in
    // order. The result stays valid until the next call. A strategy may keep
    // what it learnt of the samples it was asked about: until forget(), they
    // must not change.
    virtual const std::vector<Candidate>& nearest(const RoadmapMatrix* samples, int olderCount,
                                                  const double* configuration, int jointCount, int count) = 0;
    // The samples asked about so far may change (a new map is built).
    virtual void forget() {}
};
