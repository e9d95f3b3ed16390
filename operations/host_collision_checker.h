// The host's tests of one robot, as the planner asks them.
#pragma once

#include "collision_checker.h"

class HostApi;
class HostItem;

// Answers the planner's questions about one robot with the host's own tests:
// its joint limits and joint check, its collision count after moving the
// robot and refreshing the station, and its joint-move test at the host's
// own step ("PathStepCollisionDeg"). Each collision test is logged.
class HostCollisionChecker : public CollisionChecker {
public:
    HostCollisionChecker(HostApi* host, HostItem* robot) : host_(host), robot_(robot) {}

    void jointLimits(JointVector& lower, JointVector& upper) override;
    bool accepts(const JointVector& configuration) override;
    int collisionCount(const JointVector& configuration) override;
    int jointMove(const JointVector& a, const JointVector& b) override;

private:
    HostApi* host_;    // refreshes the station and counts collisions
    HostItem* robot_;  // the robot moved and asked about
};
