#include "run_monitor.h"

#include "transcript.h"

#include <QApplication>
#include <QJsonObject>
#include <QProgressDialog>

void RunMonitor::collisionTested()
{
    if (cancelAt_ <= 0 || ++testsSeen_ < cancelAt_)
        return;
    // Without an open dialog the cancel waits for the next test that has one.
    QProgressDialog* dialog = visibleProgressDialog();
    if (!dialog)
        return;
    record(QJsonObject{{QStringLiteral("type"), QStringLiteral("cancel")},
                       {QStringLiteral("collisionTest"), testsSeen_},
                       {QStringLiteral("title"), dialog->windowTitle()}});
    cancelAt_ = 0;
    dialog->cancel();
}

void RunMonitor::record(const QJsonObject& record)
{
    transcript_.write(record);
}

void RunMonitor::checkProgress()
{
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
    record(QJsonObject{{QStringLiteral("type"), QStringLiteral("progress")},
                       {QStringLiteral("title"), title},
                       {QStringLiteral("label"), label},
                       {QStringLiteral("value"), value}});
}

void RunMonitor::cancelAtCollisionTest(int count)
{
    cancelAt_ = count;
    testsSeen_ = 0;
}

QProgressDialog* RunMonitor::visibleProgressDialog()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QProgressDialog*>(widget);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}
