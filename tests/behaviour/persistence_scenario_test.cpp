// The map and settings saved inside the station and read back.
#include "planner_run.h"

#include <QJsonDocument>

namespace {

using PersistenceRun = PlannerRun;

QByteArray mapRecord(const QJsonObject& station, const QString& robot)
{
    return QByteArray::fromBase64(
        station.value("data").toObject().value("Zelvane-Rob " + robot).toString().toLatin1());
}

TEST_F(PersistenceRun, MapSavedOnEvent5IsReadBackOnEvent4ElementByElement)
{
    // The second save happens only because a setting changed after reopening,
    // so its map record is the map as read back, written anew.
    const SimRun done = run(R"([{"command": "Samples", "value": "30"}, {"command": "Calc"}, {"command": "Info"},
                               {"saveStation": "first.json"}, {"openStation": "first.json"}, {"command": "Info"},
                               {"command": "Samples", "value": "30"}, {"saveStation": "second.json"}])");
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 5);
    EXPECT_TRUE(got[2].startsWith("30-"));
    EXPECT_EQ(got[2], got[3]);
    const QByteArray first = mapRecord(readJson(folder.read("first.json")), "Arm1");
    const QByteArray second = mapRecord(readJson(folder.read("second.json")), "Arm1");
    // 30 samples of 3 joints and a 30 x 30 graph, each behind 12 bytes of sizes, and an empty route.
    EXPECT_EQ(first.size(), 12 + 90 * 8 + 12 + 900 * 8 + 12);
    EXPECT_EQ(first, second);
    EXPECT_EQ(logLines(done).count("Loading robot settings..."), 1);
}

TEST_F(PersistenceRun, SwitchingRobotsBackAndForthKeepsOneMapPerRobot)
{
    const QByteArray twoRobots = R"({
      "frames": [ { "name": "Cell", "parent": null } ],
      "robots": [ { "name": "A", "parent": "Cell", "lower": [-90, -90], "upper": [90, 90], "joints": [0, 0] },
                  { "name": "B", "parent": "Cell", "lower": [-90, -90, -90], "upper": [90, 90, 90],
                    "joints": [0, 0, 0] } ]
    })";
    const SimRun done = run(R"([
        {"command": "SelectRobot", "value": "A"}, {"command": "Samples", "value": "12"}, {"command": "Calc"},
        {"command": "Info"},
        {"command": "SelectRobot", "value": "B"}, {"command": "Info"}, {"command": "Samples", "value": "17"},
        {"command": "Calc"}, {"command": "Info"},
        {"command": "SelectRobot", "value": "A"}, {"command": "Info"},
        {"command": "SelectRobot", "value": "B"}, {"command": "Info"},
        {"saveStation": "saved.json"}])", twoRobots);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 13);
    EXPECT_TRUE(got[3].startsWith("12-"));
    EXPECT_EQ(got[5], "0-0-B");
    EXPECT_TRUE(got[8].startsWith("17-"));
    EXPECT_EQ(got[10], got[3]);
    EXPECT_EQ(got[12], got[8]);
    const QJsonObject saved = readJson(folder.read("saved.json"));
    EXPECT_FALSE(mapRecord(saved, "A").isEmpty());
    EXPECT_FALSE(mapRecord(saved, "B").isEmpty());
}


TEST_F(PersistenceRun, SettingsOfAFutureVersionAreIgnored)
{
    QJsonObject station = readJson(wallStation);
    // nSamples = -1, then whatever a later version wrote.
    station["data"] = QJsonObject{{"Zelvane", QString::fromLatin1(QByteArray::fromHex("ffffffff00000003").toBase64())}};
    const SimRun done = run(R"([{"command": "Info"}])", QJsonDocument(station).toJson());
    EXPECT_TRUE(logLines(done).contains("Warning: Settings not loaded. Future version?"));
    EXPECT_EQ(replies(done), QStringList{"0-0-Arm1"});
}

}  // namespace
