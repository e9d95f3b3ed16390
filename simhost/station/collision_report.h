// What a robot at some joints collides with, in words.
#pragma once

#include <QStringList>

#include <vector>

class SimItem;
class Station;

// What the robot at these joints collides with, one entry per colliding
// pair, as the host's check finds them: "joint box 2 (joint space)", "link 3
// with object Wall", "link 2 with link 5", "the base with object Table",
// "the tool with object Fixture". Empty when it is free; also when the joints
// are not the robot's (another count).
QStringList collisionReport(const Station& station, const SimItem* robot, const std::vector<double>& joints);

// True when a target's joints make its robot collide (the same check).
bool targetCollides(const Station& station, const SimItem* target);
