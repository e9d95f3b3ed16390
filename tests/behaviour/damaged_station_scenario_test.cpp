// Stations whose stored map is damaged, and maps too large to keep, as a user
// meets them in the host: the host runs on, a message says what is wrong, the
// stored record stays as it was until a new map is computed, and a new map
// and a link then work.
#include "planner_run.h"

#include "matrix_record.h"

#include <QDataStream>
#include <QJsonDocument>

#include <vector>

namespace {

class DamagedStationRun : public PlannerRun {
protected:
    // The wall station with the planner's settings naming Arm1 and `record` as Arm1's map.
    static QByteArray stationWithMap(const QByteArray& record)
    {
        QByteArray settings;
        {
            QDataStream stream(&settings, QIODevice::WriteOnly);
            stream << qint32(100) << qint32(25) << 4.0 << qint32(3) << false << QString("Arm1");
        }
        QJsonObject station = readJson(wallStation);
        station["data"] = QJsonObject{{"Zelvane", QString::fromLatin1(settings.toBase64())},
                                      {"Zelvane-Rob Arm1", QString::fromLatin1(record.toBase64())}};
        return QJsonDocument(station).toJson();
    }

    QByteArray storedMap(const QString& file)
    {
        const QJsonObject station = readJson(folder.read(file));
        return QByteArray::fromBase64(
            station.value("data").toObject().value("Zelvane-Rob Arm1").toString().toLatin1());
    }

    static bool toldCannotBeUsed(const SimRun& done)
    {
        for (const QString& text : messages(done)) {
            if (text.startsWith("The map stored for robot Arm1 cannot be used ("))
                return true;
        }
        return false;
    }

    // Opens the station, changes a setting and saves (the record must survive
    // that), then computes a map, links Left to Right and saves again.
    void expectRefusedThenRepaired(const QByteArray& record)
    {
        const SimRun done = run(R"([{"command": "Info"}, {"command": "Display", "value": "1"},
                                   {"saveStation": "opened.json"},
                                   {"command": "Samples", "value": "30"}, {"command": "Calc"},
                                   {"command": "Join=Link", "value": "Left|Right"}, {"command": "Info"},
                                   {"saveStation": "planned.json"}])",
                                stationWithMap(record));
        const QStringList got = replies(done);
        ASSERT_EQ(got.size(), 6);
        EXPECT_EQ(got[0], "0-0-Arm1") << "the damaged map is not used";
        EXPECT_TRUE(toldCannotBeUsed(done)) << messages(done).join('\n').toStdString();
        EXPECT_EQ(storedMap("opened.json"), record) << "opening and saving leaves the stored record alone";
        EXPECT_EQ(got[4], "Success");
        const int samples = got[5].section('-', 0, 0).toInt();
        EXPECT_GE(samples, 30) << got[5].toStdString();
        ASSERT_EQ(programs(done).size(), 1u);
        const QByteArray planned = storedMap("planned.json");
        EXPECT_NE(planned, record);
        // The samples matrix of the new map heads the new record.
        QDataStream header(planned);
        qint32 dimensions = 0, rows = 0, columns = 0;
        header >> dimensions >> rows >> columns;
        EXPECT_EQ(dimensions, 2);
        EXPECT_EQ(rows, 3);
        EXPECT_EQ(columns, samples);
    }
};

// Three samples of Arm1 on a line, joined 1-2 and 2-3, and an empty route.
const QByteArray goodSamples = matrixRecord(2, {3, 3}, {-60, 0, 10, 0, 70, 0, 60, 0, -10});
const QByteArray goodGraph = matrixRecord(2, {3, 3}, {0, 10, 0, 10, 0, 10, 0, 10, 0});
const QByteArray emptyRoute = matrixRecord(2, {0, 0}, {});

TEST_F(DamagedStationRun, SamplesClaimingSixTimesTwoBillionElements)
{
    expectRefusedThenRepaired(matrixRecord(2, {6, 2147483647}, {}));
}

TEST_F(DamagedStationRun, AMillionDimensions)
{
    expectRefusedThenRepaired(matrixRecord(1000000, {}, {}));
}

TEST_F(DamagedStationRun, NegativeSizes)
{
    expectRefusedThenRepaired(matrixRecord(2, {-7, 0}, {}) + goodGraph + emptyRoute);
}

TEST_F(DamagedStationRun, NegativeDimensionCount)
{
    expectRefusedThenRepaired(matrixRecord(-1, {}, {}) + goodGraph + emptyRoute);
}

TEST_F(DamagedStationRun, GraphThatDoesNotMatchTheSamples)
{
    // Cancelled insertions leave the graph ahead of the samples; behind them it is no map.
    expectRefusedThenRepaired(goodSamples + matrixRecord(2, {2, 2}, {0, 10, 10, 0}) + emptyRoute);
}

TEST_F(DamagedStationRun, SamplesOfAnotherJointCount)
{
    expectRefusedThenRepaired(matrixRecord(2, {2, 3}, {0, 0, 10, 0, 20, 0}) + goodGraph + emptyRoute);
}

TEST_F(DamagedStationRun, RouteThroughNodesThatCannotBe)
{
    // Node numbers start at 1. (A route past the last node is a route kept from
    // before a smaller map was computed, and stays.)
    expectRefusedThenRepaired(goodSamples + goodGraph + matrixRecord(2, {1, 2}, {0, 2}));
    expectRefusedThenRepaired(goodSamples + goodGraph + matrixRecord(2, {1, 2}, {1, 2.5}));
}

TEST_F(DamagedStationRun, HugeSampleCountsLeaveTheMapAndAFreshMapLinks)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "30"}, {"command": "Calc"}, {"command": "Info"},
                               {"command": "Samples", "value": "30000"}, {"command": "Calc"}, {"command": "Info"},
                               {"command": "Samples", "value": "46341"}, {"command": "Calc"}, {"command": "Info"},
                               {"command": "Samples", "value": "2147483647"}, {"command": "Calc"},
                               {"command": "Info"},
                               {"command": "Samples", "value": "40"}, {"command": "Calc"},
                               {"command": "Join=Link", "value": "Left|Right"}, {"saveStation": "planned.json"}])");
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 15);
    EXPECT_TRUE(got[2].startsWith("30-")) << got[2].toStdString();
    for (int i : {5, 8, 11}) {
        EXPECT_EQ(got[i - 1], "Done");
        EXPECT_EQ(got[i], got[2]) << "the map is as it was";
    }
    int tooLarge = 0;
    for (const QString& text : messages(done))
        tooLarge += text.contains("is too large to be kept in the station. The largest map of this robot has ");
    EXPECT_EQ(tooLarge, 3);
    EXPECT_EQ(got[14], "Success");
    EXPECT_EQ(programs(done).size(), 1u);
    EXPECT_FALSE(storedMap("planned.json").isEmpty());
}

}  // namespace
