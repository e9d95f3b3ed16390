// What an entry point does with an exception: tell the user, close the operation.
#include "entry_guard.h"

#include "planner_resources.h"
#include "translate.h"

#include "vorlik/host_api.h"

#include <QDebug>

namespace {
const char* const OutOfMemory = QT_TRANSLATE_NOOP("PluginAutoPRM",
                                                  "The collision-free planner ran out of memory: the operation was "
                                                  "stopped.");
const char* const Failed = QT_TRANSLATE_NOOP("PluginAutoPRM", "The collision-free planner stopped an operation: %1");
}  // namespace

void reportEntryFailure(PlannerResources& resources, HostApi* host, const char* what)
{
    qDebug().noquote().nospace() << "Entry point failed: " << (what ? what : "out of memory");
    // The operation that threw has unwound; its dialog must not stay open.
    if (!resources.operationRunning())
        resources.progress().finish();
    if (!host)
        return;
    try {
        host->showMessage(what ? planTr(Failed).arg(QString::fromUtf8(what)) : planTr(OutOfMemory), false);
    } catch (...) {
        // Not even the message could be made: nothing more can be done.
    }
}
