#include "operation_trace.h"

#include "log_capture.h"
#include "progress_reporter.h"

#include <QCoreApplication>
#include <QProgressDialog>

OperationTrace traceOperation(FakeHost& host, ProgressReporter& progress, int cancelAt,
                              const std::function<void()>& operation)
{
    OperationTrace trace;
    const int testsBefore = host.collisionTests;
    host.onCollisionTest = [&trace, &host, &progress, cancelAt, testsBefore](int) {
        QProgressDialog* dialog = progress.dialog();
        if (dialog)
            trace.labels << dialog->labelText() + " | " + QString::number(dialog->value());
        if (cancelAt > 0 && host.collisionTests - testsBefore == cancelAt && dialog)
            dialog->cancel();
    };
    progress.start(nullptr, "Operation");
    {
        LogCapture log;
        operation();
        trace.log = log.messages();
    }
    trace.cancelled = progress.finish();
    // Finished dialogs go with the event loop's deferred deletions; none runs here.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    host.onCollisionTest = nullptr;
    trace.collisionTests = host.collisionTests - testsBefore;
    return trace;
}
