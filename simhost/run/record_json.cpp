#include "record_json.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace record_json {

namespace {

// Printable ASCII is the one text Qt's writer copies as it is, escaping only
// the quote and the backslash: any other character takes the long way.
bool plain(const QString& text)
{
    for (const QChar c : text) {
        const ushort u = c.unicode();
        if (u < 0x20 || u > 0x7e)
            return false;
    }
    return true;
}

// Written straight into the room made for it: these are the records a run writes by the ten thousand.
void appendString(QByteArray& out, const QString& text)
{
    const int start = out.size();
    out.resize(start + 2 + 2 * text.size());  // room for every character escaped
    char* p = out.data() + start;
    *p++ = '"';
    for (const QChar c : text) {
        const char ascii = char(c.unicode());
        if (ascii == '"' || ascii == '\\')
            *p++ = '\\';
        *p++ = ascii;
    }
    *p++ = '"';
    out.resize(int(p - out.constData()));
}

}  // namespace

void append(QByteArray& out, const QJsonObject& record)
{
    out += QJsonDocument(record).toJson(QJsonDocument::Compact);
    out += '\n';
}

void appendLog(QByteArray& out, const QString& text)
{
    if (!plain(text)) {
        append(out, QJsonObject{{QStringLiteral("type"), QStringLiteral("log")}, {QStringLiteral("text"), text}});
        return;
    }
    out += "{\"text\":";
    appendString(out, text);
    out += ",\"type\":\"log\"}\n";
}

void appendProgress(QByteArray& out, const QString& title, const QString& label, int value)
{
    if (!plain(title) || !plain(label)) {
        append(out, QJsonObject{{QStringLiteral("type"), QStringLiteral("progress")},
                                {QStringLiteral("title"), title},
                                {QStringLiteral("label"), label},
                                {QStringLiteral("value"), value}});
        return;
    }
    out += "{\"label\":";
    appendString(out, label);
    out += ",\"title\":";
    appendString(out, title);
    out += ",\"type\":\"progress\",\"value\":";
    out += QByteArray::number(value);
    out += "}\n";
}

}  // namespace record_json
