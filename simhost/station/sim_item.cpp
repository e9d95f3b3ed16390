// A station item: its data and how a program's instructions are written out.
#include "sim_item.h"

#include <QJsonObject>


SimItem::SimItem(Station* station, int type, const QString& name, int id)
    : station_(station), type_(type), name_(name), id_(id)
{
}

QJsonArray SimItem::instructionsJson(bool withKeptFields) const
{
    QJsonArray list;
    for (const Instruction& instruction : instructions) {
        // A move to a target that no longer exists cannot be written back.
        if (instruction.target && instruction.target->deleted)
            continue;
        QJsonObject written = withKeptFields ? instruction.keptFields : QJsonObject();
        if (instruction.target) {
            written.insert(QStringLiteral("moveJoint"), instruction.target->itemName());
            written.insert(QStringLiteral("id"), instruction.target->id());
        } else {
            written.insert(QStringLiteral("call"), instruction.call);
        }
        list.append(written);
    }
    return list;
}
