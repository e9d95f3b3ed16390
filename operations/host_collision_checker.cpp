// The planner's questions about a robot, answered by the host.
#include "host_collision_checker.h"

#include "debug_line.h"
#include "joint_values_text.h"

#include "vorlik/host_api.h"
#include "vorlik/host_item.h"

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
    // Two lines for every configuration tried: written without the debug stream.
    debugLine(QLatin1String("Collision checking for: ") + robot_->name() + QLatin1Char(' ')
              + jointValuesText(configuration));
    robot_->setJoints(configuration);
    host_->update(RefreshAll);
    const int found = host_->collisions();
    debugLine((TextWithNumbers() << "Collisions found: " << found).text());
    return found;
}

int HostCollisionChecker::jointMove(const JointVector& a, const JointVector& b)
{
    return robot_->testJointMove(a, b, HostDefaultStep);
}
