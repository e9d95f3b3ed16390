#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

// Answers the next message box question the way a user would: waits until a
// QMessageBox is the active modal widget (a progress dialog may be modal
// before it), remembers what it showed, and clicks the chosen button, or
// closes the box when the answer is NoButton.
class QuestionAnswerer {
public:
    explicit QuestionAnswerer(QMessageBox::StandardButton answer) : answer_(answer)
    {
        QObject::connect(&timer_, &QTimer::timeout, [this] { poll(); });
        timer_.start(5);
    }

    bool asked = false;
    QString title;
    QString text;
    QMessageBox::StandardButtons buttons;
    QAbstractButton* defaultButton = nullptr;

private:
    void poll()
    {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        timer_.stop();
        asked = true;
        title = box->windowTitle();
        text = box->text();
        buttons = box->standardButtons();
        defaultButton = box->defaultButton();
        if (answer_ == QMessageBox::NoButton)
            box->close();
        else
            box->button(answer_)->click();
    }

    QMessageBox::StandardButton answer_;
    QTimer timer_;
};
