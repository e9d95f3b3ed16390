// One operation at a time on the planner session.
#pragma once

#include "planner_session.h"

#include <memory>

// One operation on the session: a map computation, adding targets, a link.
// Opening it refuses (and says why) when another operation runs, so that a
// click handled while a progress dialog is open cannot start a second one or
// change the map under the first. It keeps the session alive to its end even
// when the plug-in lets go of it (an unload), and when it closes, what waited
// for the operation (an unload, a station replacement) happens.
class OperationScope {
public:
    OperationScope(PlannerSession& session, bool silent);
    ~OperationScope();
    OperationScope(const OperationScope&) = delete;
    OperationScope& operator=(const OperationScope&) = delete;

    // False when another operation runs: then nothing may be done.
    bool started() const { return started_; }

    PlannerSession& session() { return *session_; }
    RobotMap& map() { return session_->editMap(MapKey()); }
    RobotMap& workMap() { return session_->editWorkMap(MapKey()); }

    // True once the robot was deleted, the station replaced or the plug-in
    // unloaded: the operation stops, keeps nothing and calls the host no more.
    bool abandoned() const { return session_->abandonment() != Abandonment::None; }

private:
    std::shared_ptr<PlannerSession> session_;
    bool started_ = false;
};
