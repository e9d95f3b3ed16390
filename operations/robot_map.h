// A robot's map: samples, graph and route, and the robot it belongs to.
#pragma once

#include "roadmap_graph.h"
#include "roadmap_matrix.h"

class HostItem;

// A robot's roadmap: its samples (J x N, one configuration per column), the
// graph between them and the last route found (1-based nodes), together with
// the robot it was built or loaded for, so that it is only ever stored under
// that robot.
class RobotMap {
public:
    RobotMap();
    RobotMap(const RobotMap&) = delete;
    RobotMap& operator=(const RobotMap&) = delete;

    RoadmapMatrix* samples() { return samples_.get(); }
    const RoadmapMatrix* samples() const { return samples_.get(); }
    RoadmapGraph* graph() { return &graph_; }
    const RoadmapGraph* graph() const { return &graph_; }
    RoadmapMatrix* route() { return route_.get(); }
    const RoadmapMatrix* route() const { return route_.get(); }

    int sampleCount() const { return columns(samples_.get()); }
    int edgeCount() const { return graph_.edgeCount(); }
    bool hasSamples() const { return sampleCount() >= 1; }

    // The robot the map belongs to (null: none yet).
    HostItem* robot() const { return robot_; }
    void setRobot(HostItem* robot) { robot_ = robot; }

    // Samples, graph and route emptied (0 x 0); the robot is kept.
    void clear();
    // Takes the samples and graph of another map (the route stays).
    void takeSamplesAndGraph(const RoadmapMatrix* samples, const RoadmapGraph& graph);

private:
    ScopedMatrix samples_;
    RoadmapGraph graph_;
    ScopedMatrix route_;
    HostItem* robot_ = nullptr;
};
