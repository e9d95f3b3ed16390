// Opening and closing an operation on the session.
#include "operation_scope.h"

OperationScope::OperationScope(PlannerSession& session, bool silent) : session_(session.shared_from_this())
{
    if (session_->busy()) {
        session_->refuseWhileBusy(silent);
        return;
    }
    started_ = true;
    session_->operationStarted();
}

OperationScope::~OperationScope()
{
    if (started_)
        session_->operationEnded();
}
