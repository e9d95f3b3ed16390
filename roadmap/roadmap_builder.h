// Building and growing the roadmap of a robot.
#pragma once

#include "planner_parameters.h"

#include <functional>
#include <memory>

class CollisionChecker;
class MersenneTwister;
class NeighbourStrategy;
class PlannerProgress;
class RoadmapGraph;
struct RoadmapMatrix;

// Builds and grows the roadmap of one robot: free samples, each joined to up
// to K of the nearest older ones whose joint move is free. It asks the checker
// about the robot and its cell, draws from the generator it is given (which
// goes on across maps) and shows its state on the progress display, whose
// cancel it obeys. The caller opens and closes that display.
class RoadmapBuilder {
public:
    // The nearest samples are found by a linear scan unless another strategy is set.
    RoadmapBuilder(CollisionChecker& checker, PlannerProgress& progress, MersenneTwister& random);
    ~RoadmapBuilder();
    RoadmapBuilder(const RoadmapBuilder&) = delete;
    RoadmapBuilder& operator=(const RoadmapBuilder&) = delete;

    // Replaces how the nearest older samples are found (the same order, faster).
    void setNeighbourStrategy(std::unique_ptr<NeighbourStrategy> strategy);

    // Builds N samples (parameters[Samples]) into `samples` (J x N), the
    // seeds (J x S, may be null) first, and links each new sample to up to K
    // (parameters[Edges]) nearest older ones in `graph` (N nodes). A cancel
    // leaves the completed samples and their edges.
    void build(const PlannerParameters& parameters, const RoadmapMatrix* seeds, RoadmapMatrix* samples,
               RoadmapGraph* graph);

    // Adds up to `count` samples to a map of N samples whose graph has N
    // nodes, by the same rule (the random sequence continuing; no seeds).
    // `added(n)` is asked before each candidate edge of the n-th new sample;
    // true cancels, and the samples added so far stay with their edges. The
    // samples added; 0 when the graph does not match the samples (nodes of a
    // cancelled insertion beyond them) or the joint count is not the robot's.
    int grow(const PlannerParameters& parameters, int count, RoadmapMatrix* samples, RoadmapGraph* graph,
             const std::function<bool(int added)>& added);

private:
    CollisionChecker& checker_;  // the robot and its cell
    PlannerProgress& progress_;  // where the state is shown and a cancel heard
    MersenneTwister& random_;    // the random sequence samples are drawn from
    std::unique_ptr<NeighbourStrategy> neighbours_;  // finds each new sample's candidates

    // Joins the new sample k to up to K of samples 0 .. k - 1 whose joint move
    // is free; `stop` is asked before each candidate, and true ends it. True
    // when stopped.
    bool joinToOlder(const PlannerParameters& parameters, RoadmapMatrix* samples, RoadmapGraph* graph, int k,
                     const std::function<bool()>& stop, long long* edgeCount);
};
