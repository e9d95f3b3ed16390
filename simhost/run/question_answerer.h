// Answers the plug-in's message boxes when nobody sits at the host.
#pragma once

#include <QObject>
#include <QString>

#include <deque>

class HostMonitor;
class QMessageBox;

// Answers message boxes when nobody sits at the host: each box that is shown
// takes the next queued answer (a standard button such as "Yes"), or is closed
// when none is queued, and the question is recorded.
class QuestionAnswerer final : public QObject {
    Q_OBJECT
public:
    explicit QuestionAnswerer(HostMonitor* monitor, QObject* parent = nullptr);

    void queueAnswer(const QString& button) { answers_.push_back(button); }
    // True when the text names a standard message box button ("Yes", "No", "Cancel"...).
    static bool isButtonName(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void answer(QMessageBox* box);

    HostMonitor* monitor_;
    std::deque<QString> answers_;
};
