// The lines --print shows for transcript records.
#include "record_printer.h"

#include <QJsonArray>
#include <QStringList>

namespace {
QString text(const QJsonObject& record, const char* key)
{
    return record.value(QLatin1String(key)).toVariant().toString();
}

// "  (12.3 ms)" for a record that tells how long its step took.
QString duration(const QJsonObject& record)
{
    const QJsonValue ms = record.value(QStringLiteral("ms"));
    return ms.isDouble() ? QStringLiteral("  (%1 ms)").arg(ms.toDouble(), 0, 'f', 1) : QString();
}

QString describeInstruction(const QJsonObject& instruction)
{
    if (instruction.contains(QStringLiteral("moveJoint"))) {
        QStringList joints;
        for (const QJsonValue& value : instruction.value(QStringLiteral("joints")).toArray())
            joints << QString::number(value.toDouble(), 'f', 2);
        const QString line = QStringLiteral("    move joints to %1").arg(text(instruction, "moveJoint"));
        return joints.isEmpty() ? line : QStringLiteral("%1  [%2]").arg(line.leftJustified(36), joints.join(QStringLiteral(", ")));
    }
    if (instruction.contains(QStringLiteral("call")))
        return QStringLiteral("    call %1").arg(text(instruction, "call"));
    return QStringLiteral("    (instruction)");
}
}  // namespace

QString describeRecord(const QJsonObject& record)
{
    const QString type = text(record, "type");
    if (type == QLatin1String("reply"))
        return QStringLiteral("command %1 \"%2\" -> %3").arg(text(record, "command"), text(record, "value"), text(record, "reply"))
            + duration(record);
    if (type == QLatin1String("result"))
        return QStringLiteral("%1 -> %2").arg(text(record, "slot"), text(record, "value")) + duration(record);
    if (type == QLatin1String("message"))
        return (record.value(QStringLiteral("popup")).toBool() ? QStringLiteral("message box: ") : QStringLiteral("status: ")) +
               text(record, "text");
    if (type == QLatin1String("question"))
        return QStringLiteral("question \"%1\": %2 -> %3").arg(text(record, "title"), text(record, "text"), text(record, "answer"));
    if (type == QLatin1String("error"))
        return QStringLiteral("error: ") + text(record, "text");
    if (type == QLatin1String("param"))
        return QStringLiteral("parameter %1 = %2").arg(text(record, "name"), text(record, "value"));
    if (type == QLatin1String("summary")) {
        const auto number = [&](const char* key) { return record.value(QLatin1String(key)).toDouble(); };
        return QStringLiteral("run: %1 s, %2 collision tests (%3 configurations, %4 joint moves); "
                              "3D model: %5 configurations checked in %6 s (%7 a second)")
            .arg(number("seconds"), 0, 'f', 2)
            .arg(qint64(number("collisionTests")))
            .arg(qint64(number("configurationTests")))
            .arg(qint64(number("moveTests")))
            .arg(qint64(number("cellConfigurations")))
            .arg(number("cellSeconds"), 0, 'f', 2)
            .arg(qint64(number("cellConfigurationsPerSecond")));
    }
    if (type == QLatin1String("program")) {
        QStringList lines{QStringLiteral("program %1 for %2:").arg(text(record, "name"), text(record, "robot"))};
        for (const QJsonValue& instruction : record.value(QStringLiteral("instructions")).toArray())
            lines << describeInstruction(instruction.toObject());
        return lines.join('\n');
    }
    return QString();
}
