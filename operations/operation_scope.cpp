#include "operation_scope.h"

namespace {
// One operation at a time in the process: the progress dialog is one too.
int running = 0;
}  // namespace

bool OperationScope::anyRunning()
{
    return running > 0;
}

OperationScope::OperationScope(PlannerSession& session, bool silent) : session_(session.shared_from_this())
{
    if (running > 0) {
        session_->refuseWhileBusy(silent);
        return;
    }
    started_ = true;
    ++running;
    session_->operationStarted();
}

OperationScope::~OperationScope()
{
    if (!started_)
        return;
    --running;
    session_->operationEnded();
}
