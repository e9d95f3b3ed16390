// Scenario steps that work the window's widgets as a person would.
#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

class HostWindow;

// Scenario steps that work the window as a person would: trigger a menu or
// toolbar action by its text, click a button, set an editor, and read the
// plug-in's control form.
namespace widget_steps {

// Triggers the enabled action with that text (mnemonic "&" ignored) in the window's menus and toolbars.
bool triggerAction(HostWindow& window, const QString& text, QString* problem);
// Clicks the enabled button with that object name.
bool click(HostWindow& window, const QString& name, QString* problem);
// Sets a spin box to a number or a check box to true/false; `taken` is the value the widget shows after.
bool setValue(HostWindow& window, const QJsonObject& change, QJsonValue* taken, QString* problem);
// Every named widget of the open "FormPRM" form: name, kind, text, value, checked, enabled, visible.
QJsonObject formRecord(HostWindow& window);

}  // namespace widget_steps
