// The modal progress dialog of long operations.
#pragma once

#include "planner_progress.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QProgressBar>
#include <QProgressDialog>
#include <QString>

#include <functional>

class QLabel;
class QWidget;

// The modal progress dialog through which every long roadmap operation shows
// its state and learns of a cancel.
//
// An operation updates it once per collision test, thousands of times a
// second, while laying out its rich-text label and painting it takes a good
// fraction of a millisecond. So every update keeps the dialog's text and
// value current (labelText() and value() answer them at once) and checks for
// a cancel, but the dialog is laid out, painted and the event loop run (which
// is how the Cancel button and the rest of the user interface reach the
// operation) only at the first update after it is shown and then at most
// every RefreshInterval.
class ProgressReporter : public PlannerProgress {
public:
    void start(QWidget* parent, const QString& title);
    // value 0..100, or -1 to leave the bar as it is; true when cancelled.
    bool update(int value) override;
    // Closes the dialog; true when the operation was cancelled.
    bool finish();

    void setHeadline(const QString& text) override { headline_ = text; }
    void setDetail(const QString& text) override { detail_ = text; }
    bool cancelled() const { return cancelled_; }
    // The operation must stop and call the host no more (its robot or station
    // is gone): cancels, and stays so across starts until endAbandonment().
    void abandon();
    bool abandoned() const override { return abandoned_; }
    void endAbandonment() { abandoned_ = false; }
    // Called after the event loop ran, where a person's click takes effect: how
    // a running operation learns that its robot is gone when nobody tells it.
    // Empty: nothing is called.
    void setWatch(std::function<void()> watch) { watch_ = std::move(watch); }
    QProgressDialog* dialog() const { return dialog_; }

    static constexpr int RefreshIntervalMs = 30;

private:
    // Lays the dialog out and paints it with its current text and value,
    // then lets the event loop run once.
    void refresh();
    // A rich-text label lays its text out anew at every new text, which
    // costs more than a collision test: between refreshes, when nobody sees
    // it, the label keeps its text as plain text (labelText() answers it all
    // the same) and does not repaint; it takes its own format back to be shown.
    void keepLabelPlain(bool plain);

    QPointer<QProgressDialog> dialog_;
    QPointer<QLabel> label_;
    Qt::TextFormat labelFormat_ = Qt::AutoText;  // the label's own, shown at each refresh
    QPointer<QProgressBar> bar_;
    QElapsedTimer sinceRefresh_;
    bool refreshDue_ = false;
    bool abandoned_ = false;
    std::function<void()> watch_;
    bool cancelled_ = false;
    QString title_;
    QString headline_;
    QString detail_;
};
