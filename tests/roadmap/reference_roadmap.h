#pragma once

#include "fake_host.h"
#include "reference_random.h"

#include <vector>

// An independent model of roadmap construction, written from the rules and
// using only the fake host's oracle: seeds in order (refused ones skipped),
// then random draws inside the limits until one is in no box; each new sample
// linked to its K nearest older samples (L1, ties to the older one) whose
// straight move is free.
struct ReferenceRoadmap {
    std::vector<std::vector<double>> samples;          // one per sample
    std::vector<std::vector<double>> graph;            // N x N
    int attempts = 0;       // configurations checked for collisions
    int skippedDraws = 0;   // random draws that collided
    int edgeTests = 0;
    int blockedEdges = 0;
};

ReferenceRoadmap referenceRoadmap(const FakeRobot& robot, const std::vector<double>& lower,
                                  const std::vector<double>& upper, int sampleCount, int edgesPerSample,
                                  const std::vector<std::vector<double>>& seeds, ReferenceRandom& random,
                                  double step);
