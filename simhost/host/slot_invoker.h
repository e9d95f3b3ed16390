// Calls the plug-in's slots by name with values from a scenario.
#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QString>

class QObject;
class Station;

// Calls a public slot of the plug-in by name through the meta-object system,
// turning scenario values into the slot's parameter types: item names become
// items, arrays of numbers become joint values (12 doubles), arrays of names
// become item lists.
namespace slot_invoker {

// On success *result holds the slot's return value: an item's name, a bool, a
// text, a number, or null. On failure *problem says why nothing was called.
bool invoke(QObject* target, const QString& slot, const QJsonArray& args, const Station& station,
            QJsonValue* result, QString* problem);

}  // namespace slot_invoker
