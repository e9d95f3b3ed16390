// Opening and closing an operation on the session.
#include "operation_scope.h"

#include "progress_reporter.h"

OperationScope::OperationScope(PlannerSession& session, bool silent) : session_(session.shared_from_this())
{
    if (session_->busy()) {
        session_->refuseWhileBusy(silent);
        return;
    }
    started_ = true;
    session_->operationStarted();
    // The robot may go while the dialog lets the user act; then the operation stops.
    PlannerSession* watched = session_.get();
    session_->progress().setWatch([watched] { watched->robotStillThere(); });
}

OperationScope::~OperationScope()
{
    if (!started_)
        return;
    session_->progress().setWatch(nullptr);
    session_->operationEnded();
}
