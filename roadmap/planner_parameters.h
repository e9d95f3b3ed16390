// The settings as construction and node insertion read them.
#pragma once

// The settings handed to roadmap construction and node insertion, taken from
// the plug-in's settings just before each call.
struct PlannerParameters {
    int samples = 100;          // N, samples of a map
    int edgesPerSample = 25;    // K, nearest older samples each new one is tried against
    int newNodeEdges = 5;       // edges wanted for an inserted node
    double robotStepDeg = 4.0;  // an inserted configuration this close (L1) to a sample is that sample
};
