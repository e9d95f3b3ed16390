// The host's display and the robot's joints, kept while an operation tests.
#pragma once

#include "vorlik/joint_vector.h"

class HostApi;
class HostItem;

// An operation moves the robot through every configuration it tests. This
// keeps the host's render mode and the robot's joints when it is made, and
// turns the host's redrawing off (render mode 1) until restore() puts both
// back. An operation whose station went away restores nothing: its items
// are gone.
class DisplayGuard {
public:
    DisplayGuard(HostApi* host, HostItem* robot);
    // The same with the robot's joints as the operation has just read them.
    DisplayGuard(HostApi* host, HostItem* robot, const JointVector& joints);

    // The robot's joints when the operation began.
    const JointVector& keptJoints() const { return joints_; }

    // The render mode back, the robot's joints back when `robotToo` (not when
    // the robot is gone), then the whole station refreshed.
    void restore(bool robotToo);

private:
    HostApi* host_;
    HostItem* robot_;
    int renderMode_;    // as the host had it
    JointVector joints_;  // as the robot had them
};
