// The planner's questions about a robot, answered by the host.
#include "host_collision_checker.h"

#include "vorlik/host_api.h"
#include "vorlik/host_item.h"

#include <QDebug>

namespace {
// Refresh flags that make the host recompute collisions for the new joints.
constexpr int RefreshAll = 255;
// Asks the host for its own "PathStepCollisionDeg".
constexpr double HostDefaultStep = -1.0;
}  // namespace

void HostCollisionChecker::jointLimits(JointVector& lower, JointVector& upper)
{
    lower = JointVector(0);
    upper = JointVector(0);
    robot_->jointLimits(lower, upper);
}

bool HostCollisionChecker::accepts(const JointVector& configuration)
{
    return robot_->jointsValid(configuration);
}

int HostCollisionChecker::collisionCount(const JointVector& configuration)
{
    qDebug().noquote().nospace() << "Collision checking for: " << robot_->name() << " "
                                 << configuration.toText(", ", 3);
    robot_->setJoints(configuration);
    host_->update(RefreshAll);
    const int found = host_->collisions();
    qDebug().nospace() << "Collisions found: " << found;
    return found;
}

int HostCollisionChecker::jointMove(const JointVector& a, const JointVector& b)
{
    return robot_->testJointMove(a, b, HostDefaultStep);
}
