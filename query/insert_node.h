// Making a configuration a node of the map.
#pragma once

#include "vorlik/joint_vector.h"
#include "planner_parameters.h"

#include <memory>

class CollisionChecker;
class NeighbourStrategy;
class PlannerProgress;
class Roadmap;

// What an insertion made: the node and how many edges joined it.
struct InsertedNode {
    int node = -1;       // 0-based; -1 for an empty roadmap
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

    // Makes `configuration` a node of the roadmap, in place. Within one robot
    // step (L1) of its nearest sample it reuses that sample; otherwise it is
    // appended and linked to the nearest samples whose joint move is free,
    // until NewNodeEdges edges are made. A cancel leaves the new node without
    // its sample (and so the graph a node ahead of the samples).
    // The configuration's first J values are taken, J the roadmap's joint count.
    InsertedNode insert(const JointVector& configuration, Roadmap& roadmap, const PlannerParameters& parameters);

private:
    CollisionChecker& checker_;  // the robot and its cell
    PlannerProgress& progress_;  // where each try is shown and a cancel heard
    std::unique_ptr<NeighbourStrategy> neighbours_;  // the candidates, nearest first
};
