// The texts and log lines of the planning steps' progress.
#include "progress_steps.h"

#include "debug_line.h"

#include "planner_progress.h"
#include "translate.h"

#include <QCoreApplication>

namespace {
const char* const AttemptText =
    QT_TRANSLATE_NOOP("PluginAutoPRM", "Looking for a collision-free robot position (attempt %1)");
const char* const StuckWarning =
    QT_TRANSLATE_NOOP("PluginAutoPRM",
                      "<strong>Warning: You may need to cancel this operation and change your settings</strong><br>"
                      "It looks like the robot unable to find a collision-free position.<br>"
                      "Check that robot joint limits are valid and properly define the collision map in "
                      "<i>Tools-Collision Map</i>.");
// The warning appears from this attempt of one search on.
constexpr int FirstWarnedAttempt = 101;

// "<logPrefix>i / n - Edges: e" in the log, and on the display a new headline
// (i, n and e in that order), no detail, and the share of i in n.
bool showCount(PlannerProgress& progress, const char* logPrefix, const char* headline, int done, int total,
               long long edgeCount)
{
    debugLine((TextWithNumbers() << logPrefix << done << " / " << total << " - Edges: " << edgeCount).text());
    progress.setHeadline(planTr(headline).arg((TextWithNumbers() << done).text(), (TextWithNumbers() << total).text(),
                                                 (TextWithNumbers() << edgeCount).text()));
    progress.setDetail(QString());
    return progress.update(static_cast<int>(done * 100LL / total));
}
}  // namespace

bool showSampleProgress(PlannerProgress& progress, int samplesDone, int sampleTotal, long long edgeCount)
{
    return showCount(progress, "Calculating PRM ",
                     QT_TRANSLATE_NOOP("PluginAutoPRM", "Calculating collision map:<br>Samples: %1/%2 Edges: %3"),
                     samplesDone, sampleTotal, edgeCount);
}

bool showAttempt(PlannerProgress& progress, int attemptNumber)
{
    debugLine((TextWithNumbers() << "Adding joints. Attempt: " << attemptNumber).text());
    QString detail = planTr(AttemptText).arg(attemptNumber);
    if (attemptNumber >= FirstWarnedAttempt)
        detail += "<br><br>" + planTr(StuckWarning);
    progress.setDetail(detail);
    return progress.update(-1);
}

bool showConnectProgress(PlannerProgress& progress, int candidate, int candidateTotal, int edgeCount)
{
    return showCount(progress, "Adding node ",
                     QT_TRANSLATE_NOOP("PluginAutoPRM", "Connecting robot position: %1/%2 - Edges: %3"), candidate,
                     candidateTotal, edgeCount);
}
