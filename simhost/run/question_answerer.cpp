// Answers the plug-in's message boxes when nobody sits at the host.
#include "question_answerer.h"

#include "host_monitor.h"

#include <QAbstractButton>
#include <QEvent>
#include <QJsonObject>
#include <QMessageBox>
#include <QMetaEnum>
#include <QPointer>
#include <QTimer>

namespace {

const char* const answeredProperty = "vorlikAnswered";

int buttonCode(const QString& name)
{
    bool ok = false;
    const QMetaObject& meta = QMessageBox::staticMetaObject;
    const QMetaEnum buttons = meta.enumerator(meta.indexOfEnumerator("StandardButtons"));
    const int code = buttons.keyToValue(name.toLatin1().constData(), &ok);
    return ok && code != QMessageBox::NoButton && code != QMessageBox::FlagMask ? code : 0;
}

}  // namespace

QuestionAnswerer::QuestionAnswerer(HostMonitor* monitor, QObject* parent) : QObject(parent), monitor_(monitor)
{
}

bool QuestionAnswerer::isButtonName(const QString& text)
{
    return buttonCode(text) != 0;
}

bool QuestionAnswerer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        auto* box = qobject_cast<QMessageBox*>(watched);
        if (box && !box->property(answeredProperty).toBool()) {
            box->setProperty(answeredProperty, true);
            answer(box);
        }
    }
    return QObject::eventFilter(watched, event);
}

void QuestionAnswerer::answer(QMessageBox* box)
{
    QString given = QStringLiteral("closed");
    QAbstractButton* button = nullptr;
    if (!answers_.empty()) {
        button = box->button(QMessageBox::StandardButton(buttonCode(answers_.front())));
        if (button)
            given = answers_.front();
        answers_.pop_front();
    }
    monitor_->record(QJsonObject{{QStringLiteral("type"), QStringLiteral("question")},
                                 {QStringLiteral("title"), box->windowTitle()},
                                 {QStringLiteral("text"), box->text()},
                                 {QStringLiteral("answer"), given}});
    // The box answers from inside its own event loop, which starts after it is shown.
    QPointer<QMessageBox> guard(box);
    QPointer<QAbstractButton> chosen(button);
    QTimer::singleShot(0, box, [guard, chosen]() {
        if (!guard)
            return;
        if (chosen) {
            chosen->click();
            return;
        }
        guard->close();
        if (guard && guard->isVisible())
            guard->reject();
    });
}
