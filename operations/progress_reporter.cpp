// The modal progress dialog of long operations, and how often it is brought up to date.
#include "progress_reporter.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QProgressBar>
#include <QProgressDialog>

namespace {
void discard(QProgressDialog* dialog)
{
    dialog->hide();
    dialog->deleteLater();
}

// Whoever paints the label between two refreshes (a host that runs the event
// loop in its calls) sees it with its own format, not as the plain text it
// is kept in meanwhile.
class OwnFormatWhenPainted : public QObject {
public:
    OwnFormatWhenPainted(QLabel* label, Qt::TextFormat format) : QObject(label), format_(format)
    {
        label->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* label = static_cast<QLabel*>(watched);
        if (event->type() == QEvent::Paint && label->textFormat() != format_)
            label->setTextFormat(format_);
        return false;
    }

private:
    Qt::TextFormat format_;
};
}  // namespace

void ProgressReporter::start(QWidget* parent, const QString& title)
{
    if (dialog_)
        discard(dialog_);
    cancelled_ = abandoned_;
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
    label_ = dialog->findChild<QLabel*>();
    bar_ = dialog->findChild<QProgressBar*>();
    // The bar would repaint itself at every new value; it waits for refresh().
    if (bar_)
        bar_->setUpdatesEnabled(false);
    if (label_) {
        labelFormat_ = label_->textFormat();
        new OwnFormatWhenPainted(label_, labelFormat_);
        keepLabelPlain(true);
    }
    refreshDue_ = true;
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
    // The label alone takes the text at once; the dialog's own setter would
    // also lay it out and resize the dialog.
    const QString text = headline_ + "<br>" + detail_;
    if (label_)
        label_->setText(text);
    else
        dialog_->setLabelText(text);
    if (value >= 0 && bar_) {
        // Set through the bar: QProgressDialog::setValue would run the event loop on its own.
        bar_->setValue(value);
    }
    if (refreshDue_ || sinceRefresh_.elapsed() >= RefreshIntervalMs)
        refresh();
    return false;
}

void ProgressReporter::abandon()
{
    abandoned_ = true;
    cancelled_ = true;
    if (dialog_)
        dialog_->cancel();
}

void ProgressReporter::refresh()
{
    refreshDue_ = false;
    keepLabelPlain(false);
    // The text is the label's already: this only fits the dialog to it.
    dialog_->setLabelText(dialog_->labelText());
    if (bar_) {
        bar_->setUpdatesEnabled(true);
        bar_->update();
    }
    QCoreApplication::processEvents();
    // The event loop may have closed the dialog or started another operation.
    if (bar_)
        bar_->setUpdatesEnabled(false);
    keepLabelPlain(true);
    sinceRefresh_.start();
    if (watch_)
        watch_();
}

void ProgressReporter::keepLabelPlain(bool plain)
{
    if (!label_)
        return;
    label_->setTextFormat(plain ? Qt::PlainText : labelFormat_);
    label_->setUpdatesEnabled(!plain);
}

bool ProgressReporter::finish()
{
    if (dialog_)
        discard(dialog_);
    dialog_ = nullptr;
    return cancelled_;
}
