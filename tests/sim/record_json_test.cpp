// Records written straight from their fields are byte for byte what Qt's JSON
// writer makes of the same record.
#include "record_json.h"

#include <QJsonObject>

#include <gtest/gtest.h>

#include <random>

namespace {

QByteArray byQt(const QJsonObject& record)
{
    QByteArray out;
    record_json::append(out, record);
    return out;
}

// Texts heavy in what a writer could get wrong: quotes, backslashes, control
// characters, the ends of ASCII, accents, symbols outside the BMP.
QString randomText(std::mt19937& random)
{
    static const QString pieces[] = {QStringLiteral("\""), QStringLiteral("\\"), QStringLiteral("/"),
                                     QStringLiteral("<br>"), QStringLiteral(" "), QStringLiteral("~"),
                                     QString(QChar(0x7f)), QString(QChar(0x1f)), QStringLiteral("\n"),
                                     QStringLiteral("\t"), QString(QChar(0)), QStringLiteral("é"),
                                     QStringLiteral("\u2028"), QString::fromUtf8("\xF0\x9F\x98\x80"),
                                     QString(QChar(0xd800)), QStringLiteral("Calculating PRM 12 / 40")};
    std::uniform_int_distribution<int> length(0, 8);
    std::uniform_int_distribution<int> kind(0, 2);
    std::uniform_int_distribution<int> piece(0, int(std::size(pieces)) - 1);
    std::uniform_int_distribution<int> ascii(0x20, 0x7e);
    QString text;
    for (int i = length(random); i > 0; --i) {
        if (kind(random) == 0)
            text += pieces[piece(random)];
        else
            text += QChar(ascii(random));
    }
    return text;
}

TEST(RecordJson, LogRecordsAreWhatQtWrites)
{
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        const QString text = randomText(random);
        QByteArray fast;
        record_json::appendLog(fast, text);
        ASSERT_EQ(fast, byQt(QJsonObject{{"type", "log"}, {"text", text}})) << qPrintable(text);
    }
}

TEST(RecordJson, ProgressRecordsAreWhatQtWrites)
{
    std::mt19937 random(11);
    std::uniform_int_distribution<int> values(-5, 120);
    const int extremes[] = {0, -1, 100, 2147483647, -2147483647 - 1};
    for (int i = 0; i < 20000; ++i) {
        const QString title = randomText(random);
        const QString label = randomText(random);
        const int value = i < int(std::size(extremes)) ? extremes[i] : values(random);
        QByteArray fast;
        record_json::appendProgress(fast, title, label, value);
        ASSERT_EQ(fast, byQt(QJsonObject{{"type", "progress"}, {"title", title}, {"label", label}, {"value", value}}))
            << qPrintable(title) << " / " << qPrintable(label) << " / " << value;
    }
}

TEST(RecordJson, RecordsFollowOneAnother)
{
    QByteArray out;
    record_json::appendLog(out, QStringLiteral("one"));
    record_json::appendProgress(out, QStringLiteral("T"), QStringLiteral("L"), 3);
    EXPECT_EQ(out, QByteArray("{\"text\":\"one\",\"type\":\"log\"}\n"
                              "{\"label\":\"L\",\"title\":\"T\",\"type\":\"progress\",\"value\":3}\n"));
}

TEST(RecordJson, ARecordQtMustWriteLeavesTheRecordsBeforeItAsTheyWere)
{
    // A text found not to be plain halfway is given back to Qt's writer: what
    // was written of it goes, and nothing before it.
    std::mt19937 random(13);
    QByteArray fast;
    QByteArray qt;
    for (int i = 0; i < 5000; ++i) {
        const QString text = randomText(random);
        const QString label = randomText(random);
        record_json::appendLog(fast, text);
        record_json::appendProgress(fast, text, label, i);
        qt += byQt(QJsonObject{{"type", "log"}, {"text", text}});
        qt += byQt(QJsonObject{{"type", "progress"}, {"title", text}, {"label", label}, {"value", i}});
    }
    EXPECT_EQ(fast, qt);
}

}  // namespace
