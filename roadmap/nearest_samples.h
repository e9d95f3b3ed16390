// Which older samples a new sample is tried against.
#pragma once

#include <vector>

struct RoadmapMatrix;

// Which older samples a new sample is tried against: the nearest ones in L1
// joint distance, nearest first, equal distances by ascending index. That is
// the order a stable sort of all the distances gives, found here without
// sorting them all: one pass keeps the nearest so far in a bounded heap.
class NearestSamples {
public:
    struct Candidate {
        int index;        // 0-based sample
        double distance;  // L1 distance to the new sample
    };

    // How many of the nearest older samples a new sample is tried against:
    // every m with m < min(K, olderCount), K the edges-per-sample setting.
    static int candidateCount(double edgesPerSample, int olderCount);

    // The min(count, olderCount) nearest of samples 0 .. olderCount - 1 to
    // `sample`, nearest first. The result stays valid until the next call.
    const std::vector<Candidate>& find(const RoadmapMatrix* samples, int olderCount, const double* sample,
                                       int jointCount, int count);

private:
    std::vector<Candidate> chosen_;
};
