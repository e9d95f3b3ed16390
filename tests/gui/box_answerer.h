#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>

// Answers the message boxes the window asks while it runs, as a person would:
// each one that comes up is answered with the given button, and its text kept.
class BoxAnswerer {
public:
    explicit BoxAnswerer(QMessageBox::StandardButton button) : button_(button)
    {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box || !box->button(button_))
                return;
            asked << box->text();
            box->button(button_)->click();
        });
        timer_.start(10);
    }

    QStringList asked;

private:
    QMessageBox::StandardButton button_;
    QTimer timer_;
};
