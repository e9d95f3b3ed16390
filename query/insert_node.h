// Making a configuration a node of the map.
#pragma once

#include "configuration.h"
#include "planner_parameters.h"

#include <memory>

class CollisionChecker;
class NeighbourStrategy;
class PlannerProgress;
class RoadmapGraph;
struct RoadmapMatrix;

// What an insertion made: the node and how many edges joined it.
struct InsertedNode {
    int nodeNumber = -1;  // 1-based node, as the stored route counts; -1 for an empty roadmap
    int edgesMade = 0;    // edges joining a new node; K when an existing sample was reused
};

// Makes configurations nodes of a roadmap, asking the checker which joint
// moves to the nearest samples are free and showing each try on the progress
// display, whose cancel it obeys. The caller opens and closes that display.
class NodeInserter {
public:
    // The nearest samples are found by a linear scan unless another strategy is set.
    NodeInserter(CollisionChecker& checker, PlannerProgress& progress);
    ~NodeInserter();
    NodeInserter(const NodeInserter&) = delete;
    NodeInserter& operator=(const NodeInserter&) = delete;

    // Replaces how the nearest samples are found (the same order, faster).
    void setNeighbourStrategy(std::unique_ptr<NeighbourStrategy> strategy);

    // Makes `configuration` a node of the roadmap. Within one robot step (L1)
    // of its nearest sample it reuses that sample; otherwise it is appended and
    // linked to the nearest samples whose joint move is free, until
    // NewNodeEdges edges are made. Results go to samplesOut/graphOut, which may
    // be the input map itself: the node is then appended in place, in time
    // linear in the samples and without copying the map.
    InsertedNode insert(Configuration configuration, const RoadmapMatrix* samples, const RoadmapGraph* graph,
                        const PlannerParameters& parameters, RoadmapMatrix* samplesOut, RoadmapGraph* graphOut);

private:
    CollisionChecker& checker_;  // the robot and its cell
    PlannerProgress& progress_;  // where each try is shown and a cancel heard
    std::unique_ptr<NeighbourStrategy> neighbours_;  // the candidates, nearest first
};
