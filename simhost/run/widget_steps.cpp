// Scenario steps that work the window's widgets as a person would.
#include "widget_steps.h"

#include "host_window.h"

#include <QAbstractButton>
#include <QAction>
#include <QDoubleSpinBox>
#include <QJsonArray>
#include <QLabel>
#include <QSpinBox>

namespace {

QWidget* findEnabled(HostWindow& window, const QString& name, QString* problem)
{
    auto* widget = window.findChild<QWidget*>(name);
    if (!widget)
        *problem = QStringLiteral("no widget \"%1\" in the window").arg(name);
    else if (!widget->isEnabled())
        *problem = QStringLiteral("widget \"%1\" is disabled").arg(name);
    return widget && widget->isEnabled() ? widget : nullptr;
}

QJsonValue textOf(const QWidget* widget)
{
    if (auto* label = qobject_cast<const QLabel*>(widget))
        return label->text();
    if (auto* button = qobject_cast<const QAbstractButton*>(widget))
        return button->text();
    return QJsonValue();
}

QJsonValue valueOf(const QWidget* widget)
{
    if (auto* box = qobject_cast<const QSpinBox*>(widget))
        return box->value();
    if (auto* box = qobject_cast<const QDoubleSpinBox*>(widget))
        return box->value();
    return QJsonValue();
}

QJsonValue checkedOf(const QWidget* widget)
{
    auto* button = qobject_cast<const QAbstractButton*>(widget);
    return button && button->isCheckable() ? QJsonValue(button->isChecked()) : QJsonValue();
}

bool isWhole(double value)
{
    return value == double(int(value));
}

}  // namespace

namespace widget_steps {

bool triggerAction(HostWindow& window, const QString& text, QString* problem)
{
    QStringList known;
    for (QAction* action : window.allActions()) {
        const QString plain = action->text().remove(QLatin1Char('&'));
        if (action->text() != text && plain != text) {
            known << plain;
            continue;
        }
        if (!action->isEnabled()) {
            *problem = QStringLiteral("action \"%1\" is disabled").arg(text);
            return false;
        }
        action->trigger();
        return true;
    }
    *problem = QStringLiteral("no action \"%1\"; the window has: \"%2\"").arg(text, known.join(QStringLiteral("\", \"")));
    return false;
}

bool click(HostWindow& window, const QString& name, QString* problem)
{
    QWidget* widget = findEnabled(window, name, problem);
    if (!widget)
        return false;
    auto* button = qobject_cast<QAbstractButton*>(widget);
    if (!button) {
        *problem = QStringLiteral("widget \"%1\" is a %2, not a button").arg(name, widget->metaObject()->className());
        return false;
    }
    button->click();
    return true;
}

bool setValue(HostWindow& window, const QJsonObject& change, QJsonValue* taken, QString* problem)
{
    const QString name = change.value(QStringLiteral("widget")).toString();
    const QJsonValue value = change.value(QStringLiteral("value"));
    QWidget* widget = findEnabled(window, name, problem);
    if (!widget)
        return false;
    auto* whole = qobject_cast<QSpinBox*>(widget);
    auto* decimal = qobject_cast<QDoubleSpinBox*>(widget);
    auto* button = qobject_cast<QAbstractButton*>(widget);
    if (whole && value.isDouble() && isWhole(value.toDouble())) {
        whole->setValue(value.toInt());
    } else if (decimal && value.isDouble()) {
        decimal->setValue(value.toDouble());
    } else if (button && button->isCheckable() && value.isBool()) {
        // A click, as a person would change it, so that clicked() is emitted.
        if (button->isChecked() != value.toBool())
            button->click();
    } else {
        *problem = QStringLiteral("widget \"%1\" (a %2) cannot take the value %3")
                       .arg(name, widget->metaObject()->className(),
                            value.isBool() ? (value.toBool() ? "true" : "false") : QString::number(value.toDouble()));
        return false;
    }
    const QJsonValue shown = valueOf(widget);
    *taken = shown.isNull() ? checkedOf(widget) : shown;
    return true;
}

QJsonObject formRecord(HostWindow& window)
{
    auto* form = window.findChild<QWidget*>(QStringLiteral("FormPRM"));
    QJsonArray widgets;
    if (form) {
        for (QWidget* widget : form->findChildren<QWidget*>()) {
            const QString name = widget->objectName();
            // Spin boxes carry Qt's own inner line edits; they are not the form's.
            if (name.isEmpty() || name.startsWith(QLatin1String("qt_")))
                continue;
            widgets.append(QJsonObject{{QStringLiteral("name"), name},
                                       {QStringLiteral("kind"), QString::fromLatin1(widget->metaObject()->className())},
                                       {QStringLiteral("text"), textOf(widget)},
                                       {QStringLiteral("value"), valueOf(widget)},
                                       {QStringLiteral("checked"), checkedOf(widget)},
                                       {QStringLiteral("enabled"), widget->isEnabled()},
                                       {QStringLiteral("visible"), widget->isVisibleTo(form)}});
        }
    }
    return QJsonObject{{QStringLiteral("type"), QStringLiteral("form")},
                       {QStringLiteral("open"), form != nullptr},
                       {QStringLiteral("widgets"), widgets}};
}

}  // namespace widget_steps
