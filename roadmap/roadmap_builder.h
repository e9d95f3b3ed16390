// Building and growing the roadmap of a robot.
#pragma once

#include "planner_parameters.h"

#include <functional>
#include <memory>

class CollisionChecker;
class MersenneTwister;
class NeighbourStrategy;
class PlannerProgress;
class Roadmap;
struct RoadmapMatrix;

// Builds and grows the roadmap of one robot: free samples, each joined to up
// to K of the nearest older ones whose joint move is free. It asks the checker
// about the robot and its cell, draws from the generator it is given (which
// goes on across maps) and shows its state on the progress display, whose
// cancel it obeys. The caller opens and closes that display.
class RoadmapBuilder {
public:
    // The nearest samples are found through a tree grown with the map unless another strategy is set.
    RoadmapBuilder(CollisionChecker& checker, PlannerProgress& progress, MersenneTwister& random);
    ~RoadmapBuilder();
    RoadmapBuilder(const RoadmapBuilder&) = delete;
    RoadmapBuilder& operator=(const RoadmapBuilder&) = delete;

    // Replaces how the nearest older samples are found (the same order, faster).
    void setNeighbourStrategy(std::unique_ptr<NeighbourStrategy> strategy);

    // Builds `roadmap` anew: N samples (parameters[Samples]), the seeds (J x
    // S, may be null) first, each new one joined to up to K (parameters[Edges])
    // nearest older ones. A cancel leaves the completed samples and their edges.
    void build(const PlannerParameters& parameters, const RoadmapMatrix* seeds, Roadmap& roadmap);

    // Adds up to `count` samples to a roadmap of N samples and N nodes, by
    // the same rule (the random sequence continuing; no seeds). `added(n)` is
    // asked before each candidate edge of the n-th new sample; true cancels,
    // and the samples added so far stay with their edges. The samples added;
    // 0 when the graph has nodes beyond the samples (cancelled insertions'),
    // the roadmap is empty, or its joint count is not the robot's.
    int grow(const PlannerParameters& parameters, int count, Roadmap& roadmap,
             const std::function<bool(int added)>& added);

private:
    CollisionChecker& checker_;  // the robot and its cell
    PlannerProgress& progress_;  // where the state is shown and a cancel heard
    MersenneTwister& random_;    // the random sequence samples are drawn from
    std::unique_ptr<NeighbourStrategy> neighbours_;  // finds each new sample's candidates

    // Joins the new sample k to up to K of samples 0 .. k - 1 whose joint move
    // is free; `stop` is asked before each candidate, and true ends it. True
    // when stopped.
    bool joinToOlder(const PlannerParameters& parameters, Roadmap& roadmap, int k, const std::function<bool()>& stop,
                     long long* edgeCount);
};
