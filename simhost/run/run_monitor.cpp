// Records and steers a scripted run through the plug-in's host calls.
#include "run_monitor.h"

#include "transcript.h"

#include <QApplication>
#include <QJsonObject>
#include <QProgressDialog>

#include <algorithm>
#include <utility>

void RunMonitor::collisionTested()
{
    runScheduled();
    if (armed_.cancelAt <= 0 || ++armed_.cancelSeen < armed_.cancelAt)
        return;
    // Without an open dialog the cancel waits for the next test that has one.
    QProgressDialog* dialog = visibleProgressDialog();
    if (!dialog)
        return;
    record(QJsonObject{{QStringLiteral("type"), QStringLiteral("cancel")},
                       {QStringLiteral("collisionTest"), armed_.cancelSeen},
                       {QStringLiteral("title"), dialog->windowTitle()}});
    armed_.cancelAt = 0;
    dialog->cancel();
}

void RunMonitor::runScheduled()
{
    for (Scheduled& scheduled : armed_.work)
        ++scheduled.seen;
    for (;;) {
        const auto due = std::find_if(armed_.work.begin(), armed_.work.end(),
                                      [](const Scheduled& scheduled) { return scheduled.seen >= scheduled.at; });
        if (due == armed_.work.end())
            return;
        const std::function<void()> work = std::move(due->work);
        armed_.work.erase(due);
        // The work is an operation of its own: what it asks for its collision
        // tests is its own, and the tests it makes are not the outer operation's.
        Armed outer = std::move(armed_);
        armed_ = Armed();
        work();
        armed_ = std::move(outer);
    }
}

void RunMonitor::record(const QJsonObject& record)
{
    transcript_.write(record);
}

bool RunMonitor::recording() const
{
    return transcript_.recording();
}

void RunMonitor::checkProgress()
{
    if (!transcript_.recording())
        return;
    QProgressDialog* dialog = visibleProgressDialog();
    if (!dialog) {
        haveLast_ = false;
        return;
    }
    const QString title = dialog->windowTitle();
    const QString label = dialog->labelText();
    const int value = dialog->value();
    if (haveLast_ && title == lastTitle_ && label == lastLabel_ && value == lastValue_)
        return;
    haveLast_ = true;
    lastTitle_ = title;
    lastLabel_ = label;
    lastValue_ = value;
    transcript_.writeProgress(title, label, value);
}

void RunMonitor::cancelAtCollisionTest(int count)
{
    armed_.cancelAt = count;
    armed_.cancelSeen = 0;
}

void RunMonitor::runAtCollisionTest(int count, const QString& what, std::function<void()> work)
{
    armed_.work.push_back(Scheduled{what, count, 0, std::move(work)});
}

void RunMonitor::disarm()
{
    armed_ = Armed();
}

std::vector<RunMonitor::Pending> RunMonitor::pendingWork() const
{
    std::vector<Pending> pending;
    for (const Scheduled& scheduled : armed_.work)
        pending.push_back(Pending{scheduled.what, scheduled.at, scheduled.seen});
    return pending;
}

QProgressDialog* RunMonitor::visibleProgressDialog()
{
    // Progress dialogs are modal (the planner's is): with no modal window up,
    // none is showing, and this is asked at every call of the plug-in.
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal)
        return nullptr;
    // A dialog opened while another one is busy (from inside its operation) is the one in front.
    auto* front = qobject_cast<QProgressDialog*>(modal);
    if (front && front->isVisible())
        return front;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QProgressDialog*>(widget);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}
