#include "record_json.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <charconv>
#include <cstring>

namespace record_json {

namespace {

// Writes one record into room made for it at the end of `out`, in one pass
// over its texts; these are the records a run writes by the ten thousand.
class RecordText {
public:
    // Room for `fixedBytes` of fixed text and quoted texts of `textLength` characters in all.
    RecordText(QByteArray& out, int fixedBytes, int textLength) : out_(out), start_(out.size())
    {
        out_.resize(start_ + fixedBytes + 2 * textLength);  // every character escaped at most
        at_ = out_.data() + start_;
    }

    void put(const char* text, size_t length)
    {
        std::memcpy(at_, text, length);
        at_ += length;
    }
    template <size_t N>
    void put(const char (&text)[N])
    {
        put(text, N - 1);
    }
    // Printable ASCII is the one text Qt's writer copies as it is, escaping
    // only the quote and the backslash: false at any other character.
    bool putQuoted(const QString& text)
    {
        *at_++ = '"';
        for (const QChar c : text) {
            const ushort u = c.unicode();
            if (u < 0x20 || u > 0x7e)
                return false;
            if (u == '"' || u == '\\')
                *at_++ = '\\';
            *at_++ = char(u);
        }
        *at_++ = '"';
        return true;
    }
    void putNumber(int value) { at_ = std::to_chars(at_, at_ + 12, value).ptr; }

    // Keeps what was written; or nothing of it.
    void finish() { out_.resize(int(at_ - out_.constData())); }
    void undo() { out_.resize(start_); }

private:
    QByteArray& out_;
    int start_;
    char* at_;
};

}  // namespace

void append(QByteArray& out, const QJsonObject& record)
{
    out += QJsonDocument(record).toJson(QJsonDocument::Compact);
    out += '\n';
}

void appendLog(QByteArray& out, const QString& text)
{
    RecordText record(out, 32, text.size());
    record.put("{\"text\":");
    if (!record.putQuoted(text)) {
        record.undo();
        append(out, QJsonObject{{QStringLiteral("type"), QStringLiteral("log")}, {QStringLiteral("text"), text}});
        return;
    }
    record.put(",\"type\":\"log\"}\n");
    record.finish();
}

void appendProgress(QByteArray& out, const QString& title, const QString& label, int value)
{
    RecordText record(out, 80, title.size() + label.size());
    record.put("{\"label\":");
    bool plain = record.putQuoted(label);
    if (plain) {
        record.put(",\"title\":");
        plain = record.putQuoted(title);
    }
    if (!plain) {
        record.undo();
        append(out, QJsonObject{{QStringLiteral("type"), QStringLiteral("progress")},
                                {QStringLiteral("title"), title},
                                {QStringLiteral("label"), label},
                                {QStringLiteral("value"), value}});
        return;
    }
    record.put(",\"type\":\"progress\",\"value\":");
    record.putNumber(value);
    record.put("}\n");
    record.finish();
}

}  // namespace record_json
