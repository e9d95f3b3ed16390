// A robot's map: emptying it, taking a computed one.
#include "robot_map.h"

RobotMap::RobotMap() : samples_(makeScopedMatrix()), route_(makeScopedMatrix()) {}

void RobotMap::clear()
{
    setSize(samples_.get(), 0, 0);
    graph_.clear();
    setSize(route_.get(), 0, 0);
}

void RobotMap::takeSamplesAndGraph(const RoadmapMatrix* samples, const RoadmapGraph& graph)
{
    graph_ = graph;
    copyMatrix(samples, samples_.get());
}
