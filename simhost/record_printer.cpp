#include "record_printer.h"

#include <QJsonArray>
#include <QStringList>

namespace {
QString text(const QJsonObject& record, const char* key)
{
    return record.value(QLatin1String(key)).toVariant().toString();
}

QString describeInstruction(const QJsonObject& instruction)
{
    if (instruction.contains(QStringLiteral("moveJoint")))
        return QStringLiteral("    move joints to %1").arg(text(instruction, "moveJoint"));
    if (instruction.contains(QStringLiteral("call")))
        return QStringLiteral("    call %1").arg(text(instruction, "call"));
    return QStringLiteral("    (instruction)");
}
}  // namespace

QString describeRecord(const QJsonObject& record)
{
    const QString type = text(record, "type");
    if (type == QLatin1String("reply"))
        return QStringLiteral("command %1 \"%2\" -> %3").arg(text(record, "command"), text(record, "value"), text(record, "reply"));
    if (type == QLatin1String("result"))
        return QStringLiteral("%1 -> %2").arg(text(record, "slot"), text(record, "value"));
    if (type == QLatin1String("message"))
        return (record.value(QStringLiteral("popup")).toBool() ? QStringLiteral("message box: ") : QStringLiteral("status: ")) +
               text(record, "text");
    if (type == QLatin1String("question"))
        return QStringLiteral("question \"%1\": %2 -> %3").arg(text(record, "title"), text(record, "text"), text(record, "answer"));
    if (type == QLatin1String("error"))
        return QStringLiteral("error: ") + text(record, "text");
    if (type == QLatin1String("param"))
        return QStringLiteral("parameter %1 = %2").arg(text(record, "name"), text(record, "value"));
    if (type == QLatin1String("program")) {
        QStringList lines{QStringLiteral("program %1 for %2:").arg(text(record, "name"), text(record, "robot"))};
        for (const QJsonValue& instruction : record.value(QStringLiteral("instructions")).toArray())
            lines << describeInstruction(instruction.toObject());
        return lines.join('\n');
    }
    return QString();
}
