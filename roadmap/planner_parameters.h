// The settings as construction and node insertion read them.
#pragma once

#include <array>

// The settings handed to roadmap construction and node insertion, filled from
// the plug-in's settings just before each call. Entry 0 is always 0.0.
using PlannerParameters = std::array<double, 5>;

namespace PlannerParameter {
constexpr int Samples = 1;       // N, samples of a map
constexpr int Edges = 2;         // K, edges tried per new sample
constexpr int NewNodeEdges = 3;  // edges wanted for an inserted node
constexpr int RobotStep = 4;     // degrees; inserted nodes this close reuse a sample
}  // namespace PlannerParameter
