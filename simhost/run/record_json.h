// Transcript records as JSON text: the two a run writes by the ten thousand,
// debug lines and progress, written straight from their fields when that
// gives exactly what Qt's JSON writer gives; anything else goes through it.
#pragma once

#include <QByteArray>
#include <QString>

class QJsonObject;

namespace record_json {

// One record as one compact line of JSON, with its line end.
void append(QByteArray& out, const QJsonObject& record);
// {"text": text, "type": "log"}
void appendLog(QByteArray& out, const QString& text);
// {"label": label, "title": title, "type": "progress", "value": value}
void appendProgress(QByteArray& out, const QString& title, const QString& label, int value);

}  // namespace record_json
