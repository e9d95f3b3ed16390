// A robot's map: emptying it.
#include "robot_map.h"

RobotMap::RobotMap() : route_(makeScopedMatrix()) {}

void RobotMap::clear()
{
    roadmap_.clear();
    setSize(route_.get(), 0, 0);
}
