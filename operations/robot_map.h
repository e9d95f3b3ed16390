// A robot's map: its roadmap and route, and the robot it belongs to.
#pragma once

#include "roadmap.h"
#include "roadmap_matrix.h"

class HostItem;

// A robot's map: its roadmap (samples and graph), the last route found
// (1-based nodes, as stored), and the robot it was built or loaded for, so
// that it is only ever stored under that robot.
class RobotMap {
public:
    RobotMap();
    RobotMap(const RobotMap&) = delete;
    RobotMap& operator=(const RobotMap&) = delete;

    const Roadmap& roadmap() const { return roadmap_; }
    Roadmap& roadmap() { return roadmap_; }
    const RoadmapMatrix* samples() const { return roadmap_.samples(); }
    const RoadmapGraph* graph() const { return &roadmap_.graph(); }
    RoadmapMatrix* route() { return route_.get(); }
    const RoadmapMatrix* route() const { return route_.get(); }

    int sampleCount() const { return roadmap_.sampleCount(); }
    int edgeCount() const { return roadmap_.edgeCount(); }
    bool hasSamples() const { return roadmap_.hasSamples(); }

    // The robot the map belongs to (null: none yet).
    HostItem* robot() const { return robot_; }
    void setRobot(HostItem* robot) { robot_ = robot; }

    // Samples, graph and route emptied (0 x 0); the robot is kept.
    void clear();

private:
    Roadmap roadmap_;
    ScopedMatrix route_;
    HostItem* robot_ = nullptr;
};
