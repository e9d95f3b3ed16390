#include "progress_reporter.h"

#include "translate.h"

#include <QCoreApplication>
#include <QDebug>
#include <QProgressBar>
#include <QProgressDialog>

namespace {
const char* const AttemptText = "Looking for a collision-free robot position (attempt %1)";
const char* const StuckWarning =
    "<strong>Warning: You may need to cancel this operation and change your settings</strong><br>"
    "It looks like the robot unable to find a collision-free position.<br>"
    "Check that robot joint limits are valid and properly define the collision map in "
    "<i>Tools-Collision Map</i>.";
// The warning appears from this attempt of one search on.
constexpr int FirstWarnedAttempt = 101;

void discard(QProgressDialog* dialog)
{
    dialog->hide();
    dialog->deleteLater();
}
}  // namespace

void ProgressReporter::start(QWidget* parent, const QString& title)
{
    if (dialog_)
        discard(dialog_);
    cancelled_ = false;
    title_ = title;
    headline_ = title;
    detail_.clear();
    auto* dialog = new QProgressDialog(parent);
    dialog->setWindowTitle(title);
    dialog->setLabelText(title);
    dialog->setRange(0, 100);
    dialog->setModal(true);
    dialog->show();
    dialog_ = dialog;
}

bool ProgressReporter::update(int value)
{
    if (cancelled_)
        return true;
    if (!dialog_)
        return false;
    if (dialog_->wasCanceled()) {
        cancelled_ = true;
        return true;
    }
    dialog_->setLabelText(headline_ + "<br>" + detail_);
    if (value >= 0) {
        // Set through the bar: QProgressDialog::setValue would run the event
        // loop on its own, and each update must process events exactly once.
        if (auto* bar = dialog_->findChild<QProgressBar*>())
            bar->setValue(value);
    }
    QCoreApplication::processEvents();
    return false;
}

bool ProgressReporter::attempt(int attemptNumber)
{
    qDebug().nospace() << "Adding joints. Attempt: " << attemptNumber;
    detail_ = planTr(AttemptText).arg(attemptNumber);
    if (attemptNumber >= FirstWarnedAttempt)
        detail_ += "<br><br>" + planTr(StuckWarning);
    return update(-1);
}

bool ProgressReporter::finish()
{
    if (dialog_)
        discard(dialog_);
    dialog_ = nullptr;
    return cancelled_;
}

ProgressReporter& progressReporter()
{
    static ProgressReporter reporter;
    return reporter;
}
