// What the planner asks of the cell it plans in.
#pragma once

#include "vorlik/joint_vector.h"

// What the planner asks of the cell it plans in, for one robot: its joint
// limits, whether it accepts a configuration, how many pairs collide there,
// and whether a straight joint move is free. The host adapter answers with the
// host's own tests; unit tests answer from a cell kept in memory.
class CollisionChecker {
public:
    virtual ~CollisionChecker() = default;

    // The robot's lower and upper joint limits; their count is its joint count.
    virtual void jointLimits(JointVector& lower, JointVector& upper) = 0;
    // True when the robot accepts the configuration at all.
    virtual bool accepts(const JointVector& configuration) = 0;
    // Colliding pairs with the robot at the configuration (0 = free).
    virtual int collisionCount(const JointVector& configuration) = 0;
    // 0 when the straight joint move from a to b is free; anything else when
    // it collides or cannot be checked.
    virtual int jointMove(const JointVector& a, const JointVector& b) = 0;
};
