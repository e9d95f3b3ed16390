#pragma once

#include "fake_host.h"

#include <QStringList>

#include <functional>

class ProgressReporter;

// What an operation under a progress dialog showed on its way: its debug log
// and, at every collision test the fake host answered, the dialog's label and
// value; optionally the dialog is cancelled at one of those tests. Two
// implementations of one operation must leave the same trace.
struct OperationTrace {
    QStringList log;
    QStringList labels;
    int collisionTests = 0;
    bool cancelled = false;
};

// Runs `operation` under a freshly started `progress` dialog on `host`,
// cancelling it at the `cancelAt`-th collision test (0: never), and finishes the dialog.
OperationTrace traceOperation(FakeHost& host, ProgressReporter& progress, int cancelAt,
                              const std::function<void()>& operation);
