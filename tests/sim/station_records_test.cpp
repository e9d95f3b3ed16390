// Records too large for the station file, kept in files beside it: which go
// apart, how the file names them, how they read back, and what a damaged or
// missing record file gives.
#include "station.h"
#include "station_file.h"
#include "station_records.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QByteArray fileContents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

// Bytes of every value, so that a shifted or cut record shows.
QByteArray pattern(qint64 size)
{
    QByteArray bytes(int(size), Qt::Uninitialized);
    char* data = bytes.data();
    for (qint64 i = 0; i < size; ++i)
        data[i] = char((i * 7 + i / 251) & 0xff);
    return bytes;
}

// Bytes whose base64 text is exactly `text` long.
QByteArray ofText(qint64 text)
{
    return QByteArray(int(text / 4 * 3), '\x5a');
}

TEST(StationRecords, RecordsGoApartInKeyOrderOnceTheTextWouldPassTheBudget)
{
    using station_records::InlineTextBudget;
    QMap<QString, QByteArray> data;
    data.insert("A", ofText(InlineTextBudget / 2));
    data.insert("B", ofText(InlineTextBudget / 2 + 4));
    data.insert("C", ofText(InlineTextBudget / 2 - 4));
    data.insert("D", QByteArray(3, 'x'));
    // A fits, B would pass the budget, C fits beside A, D beside A and C: four characters left.
    EXPECT_EQ(station_records::keptApart(data), QSet<QString>{"B"});
    data.insert("E", QByteArray(1, 'x'));
    EXPECT_EQ(station_records::keptApart(data), (QSet<QString>{"B", "E"}));
    EXPECT_TRUE(station_records::keptApart({{"Small", QByteArray(100, 'x')}}).isEmpty());
}

class RecordsOnDisk : public ::testing::Test {
protected:
    std::unique_ptr<Station> readStation(const QByteArray& data, QString* error)
    {
        const QString path = folder.filePath("station.json");
        writeFile(path, "{\"data\": " + data + "}");
        return station_file::read(path, error);
    }

    QString problemReading(const QByteArray& data)
    {
        QString error;
        EXPECT_EQ(readStation(data, &error), nullptr);
        return error;
    }

    QTemporaryDir folder;
};

TEST_F(RecordsOnDisk, AReferencedRecordIsReadByteForByte)
{
    QDir(folder.path()).mkpath("station.json.records");
    const QByteArray record = pattern(100000);
    writeFile(folder.filePath("station.json.records/Zelvane-Rob%20Arm1.1.bin"), record);
    QString error;
    const auto station = readStation(
        R"({"Zelvane-Rob Arm1": {"file": "station.json.records/Zelvane-Rob%20Arm1.1.bin", "bytes": 100000},
            "Zelvane": "AAECAw=="})",
        &error);
    ASSERT_TRUE(station) << error.toStdString();
    EXPECT_EQ(station->data.value("Zelvane-Rob Arm1"), record);
    EXPECT_EQ(station->data.value("Zelvane"), QByteArray("\x00\x01\x02\x03", 4));
}

TEST_F(RecordsOnDisk, AReferenceThatCannotBeHadIsRefusedWithTheReason)
{
    QDir(folder.path()).mkpath("r");
    writeFile(folder.filePath("r/a.bin"), pattern(10));
    EXPECT_TRUE(problemReading(R"({"K": {"file": "r/missing.bin", "bytes": 10}})").contains("cannot be read"));
    EXPECT_TRUE(problemReading(R"({"K": {"file": "r/a.bin", "bytes": 11}})")
                    .contains("which holds 10 bytes instead of 11"));
    EXPECT_TRUE(problemReading(R"({"K": {"file": "r", "bytes": 0}})").contains("cannot be read")) << "a folder";
    EXPECT_TRUE(problemReading(R"({"K": {"file": "/etc/passwd", "bytes": 10}})").contains("not in the station's folder"));
    EXPECT_TRUE(problemReading(R"({"K": {"file": "r/../../a.bin", "bytes": 10}})").contains("not in the station's folder"));
    // Sizes no record can have are refused before anything is looked at.
    for (const char* data : {R"({"K": {"file": "r/a.bin", "bytes": -1}})", R"({"K": {"file": "r/a.bin", "bytes": 2.5}})",
                             R"({"K": {"file": "r/a.bin", "bytes": 3000000000}})", R"({"K": {"file": "r/a.bin"}})",
                             R"({"K": {"file": 7, "bytes": 10}})", R"({"K": {"file": "r/a.bin", "bytes": 10, "x": 1}})"})
        EXPECT_TRUE(problemReading(data).startsWith(folder.filePath("station.json") + ": data \"K\" must be base64 text or"))
            << data;
    // A station given as text has no folder to hold such a file.
    QString problem;
    EXPECT_EQ(station_file::parse(R"({"data": {"K": {"file": "r/a.bin", "bytes": 10}}})", &problem), nullptr);
    EXPECT_TRUE(problem.contains("beside a station file, and there is none")) << problem.toStdString();
}

TEST_F(RecordsOnDisk, ALargeRecordIsSavedApartAndReadBackAsItWas)
{
    Station station;
    const QByteArray large = pattern(station_records::InlineTextBudget / 4 * 3 + 3);
    station.data.insert("Zelvane-Rob Arm/1", large);
    station.data.insert("Zelvane", QByteArray("settings"));
    const QString path = folder.filePath("planned.json");
    QString error;
    ASSERT_TRUE(station_file::write(station, path, &error)) << error.toStdString();

    const QJsonObject saved = QJsonDocument::fromJson(fileContents(path)).object();
    const QJsonObject data = saved.value("data").toObject();
    EXPECT_EQ(data.value("Zelvane").toString(), QString::fromLatin1(QByteArray("settings").toBase64()));
    const QJsonObject reference = data.value("Zelvane-Rob Arm/1").toObject();
    EXPECT_EQ(reference.value("file").toString(), "planned.json.records/Zelvane-Rob%20Arm%2F1.1.bin");
    EXPECT_EQ(reference.value("bytes").toDouble(), double(large.size()));
    EXPECT_EQ(fileContents(folder.filePath(reference.value("file").toString())), large);

    const auto again = station_file::read(path, &error);
    ASSERT_TRUE(again) << error.toStdString();
    EXPECT_EQ(again->data, station.data);

    // Saved again to the same place: a new file, and the old one goes.
    ASSERT_TRUE(station_file::write(*again, path, &error)) << error.toStdString();
    EXPECT_EQ(QDir(folder.filePath("planned.json.records")).entryList(QDir::Files),
              QStringList{"Zelvane-Rob%20Arm%2F1.2.bin"});
    const auto third = station_file::read(path, &error);
    ASSERT_TRUE(third) << error.toStdString();
    EXPECT_EQ(third->data, station.data);

    // Once the record is small again, the folder goes too.
    third->data.insert("Zelvane-Rob Arm/1", QByteArray("small"));
    ASSERT_TRUE(station_file::write(*third, path, &error)) << error.toStdString();
    EXPECT_FALSE(QDir(folder.filePath("planned.json.records")).exists());
    EXPECT_EQ(station_file::read(path, &error)->data.value("Zelvane-Rob Arm/1"), QByteArray("small"));
}

TEST_F(RecordsOnDisk, ASaveThatFailsLeavesNoRecordFileBehind)
{
    Station station;
    station.data.insert("Big", pattern(station_records::InlineTextBudget / 4 * 3 + 3));
    // The station file cannot be put in place: a folder of that name stands there.
    QDir(folder.path()).mkpath("planned.json");
    QString error;
    EXPECT_FALSE(station_file::write(station, folder.filePath("planned.json"), &error));
    EXPECT_TRUE(error.contains("cannot write the station")) << error.toStdString();
    EXPECT_FALSE(QDir(folder.filePath("planned.json.records")).exists()) << "the record written first is gone";
}

}  // namespace
