// Turning the host's redrawing off while an operation tests, and back.
#include "display_guard.h"

#include "vorlik/host_api.h"
#include "vorlik/host_item.h"

namespace {
// Render mode in which the host does not redraw while the robot is moved.
constexpr int NoRedraws = 1;
// Refresh flags that make the host recompute and redraw everything.
constexpr int RefreshAll = 255;
}  // namespace

DisplayGuard::DisplayGuard(HostApi* host, HostItem* robot)
    : host_(host), robot_(robot), renderMode_(host->renderMode())
{
    robot_->joints(joints_);
    host_->setRenderMode(NoRedraws);
}

DisplayGuard::DisplayGuard(HostApi* host, HostItem* robot, const JointVector& joints)
    : host_(host), robot_(robot), renderMode_(host->renderMode()), joints_(joints)
{
    host_->setRenderMode(NoRedraws);
}

void DisplayGuard::restore(bool robotToo)
{
    host_->setRenderMode(renderMode_);
    if (robotToo)
        robot_->setJoints(joints_);
    host_->update(RefreshAll);
}
