#pragma once

#include <QPointer>
#include <QProgressDialog>
#include <QString>

class QWidget;

// The one modal progress dialog of the process, through which every long
// roadmap operation shows its state and learns of a cancel. Each update lets
// the event loop run once, which is how the Cancel button reaches the loops.
class ProgressReporter {
public:
    void start(QWidget* parent, const QString& title);
    // value 0..100, or -1 to leave the bar as it is; true when cancelled.
    bool update(int value);
    // Detail line for the n-th attempt of a sample search; true when cancelled.
    bool attempt(int attemptNumber);
    // Closes the dialog; true when the operation was cancelled.
    bool finish();

    void setHeadline(const QString& text) { headline_ = text; }
    void setDetail(const QString& text) { detail_ = text; }
    bool cancelled() const { return cancelled_; }
    QProgressDialog* dialog() const { return dialog_; }

private:
    QPointer<QProgressDialog> dialog_;
    bool cancelled_ = false;
    QString title_;
    QString headline_;
    QString detail_;
};

ProgressReporter& progressReporter();
