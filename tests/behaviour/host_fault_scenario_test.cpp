// Faults that fuzzing through the host found, as scenarios: a slot another
// plug-in invokes, stored records of odd shapes, a map as large as a station
// may keep, another robot's targets, joint values far out of range, and maps
// left by cancelled insertions. The host runs each to its end, quickly, and
// (in the sanitizer build) without a report.
#include "planner_run.h"

#include "matrix_record.h"

#include <QFile>
#include <QPair>

namespace {

class HostFaultRun : public PlannerRun {
protected:
    // Ran to its end, without a word from a sanitizer.
    static void expectCleanEnd(const SimRun& done)
    {
        EXPECT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
        EXPECT_FALSE(done.errorOutput.contains("Sanitizer")) << done.errorOutput.toStdString();
        EXPECT_FALSE(done.errorOutput.contains("runtime error")) << done.errorOutput.toStdString();
    }

    static int count(const QStringList& texts, const QString& text) { return int(texts.count(text)); }
};

const char* const oneJointStation = R"({"robots": [{"name": "Arm1", "lower": [-90], "upper": [90]}]})";

TEST_F(HostFaultRun, TheFormOutlivesNoUnloadWhateverSlotWasInvoked)
{
    // The slot that says the dock was closed, invoked while it is open: the
    // plug-in forgets its dock, and unloading must still close it before the
    // host's window and status bar go.
    const SimRun done = run(R"([{"action": "Create collision-free map"}, {"invoke": "callback_robotpilot_closed"}])",
                            oneJointStation);
    expectCleanEnd(done);
    const QStringList said = messages(done);
    EXPECT_EQ(count(said, "Opening PRM form..."), 1);
    EXPECT_EQ(count(said, "Closed robot pilot"), 2) << "once by the slot, once as the unload closes the form\n"
                                                    << said.join('\n').toStdString();
    EXPECT_EQ(said.last(), "Closed robot pilot");
}

TEST_F(HostFaultRun, ARouteOfNoRowsIsRefusedAndTheLinkFailsAsUsual)
{
    // Samples 0 x 0, graph 0 x 0, route 0 x 3. The whole joint range
    // collides, so the map computation is cancelled and the link fails before
    // any search: the route is what the record held.
    const QByteArray station = R"({"robots": [{"name": "Arm1", "lower": [-90], "upper": [90],
                                               "jointBoxes": [{"lower": [-100], "upper": [100]}]}],
                                   "targets": [{"name": "T", "robot": "Arm1", "joints": [10]}],
                                   "data": {"Zelvane-Rob Arm1": "AAAAAgAAAAAAAAAAAAAAAgAAAAAAAAAAAAAAAgAAAAAAAAAD"}})";
    const SimRun done = run(R"([{"cancelAt": {"collisionTest": 1}}, {"command": "Join", "value": "T|T"}])", station);
    expectCleanEnd(done);
    EXPECT_EQ(replies(done), QStringList{"Failed"});
    bool told = false;
    for (const QString& text : messages(done))
        told = told || (text.startsWith("The map stored for robot Arm1 cannot be used (") &&
                        text.contains("the route has 0 rows instead of 1"));
    EXPECT_TRUE(told) << messages(done).join('\n').toStdString();
    EXPECT_TRUE(programs(done).empty());
}

TEST_F(HostFaultRun, AnotherRobotsTargetsGiveNoProgramThroughJointsBeyondTheLimits)
{
    const QByteArray station = R"({
      "robots": [{"name": "Arm1", "lower": [-90, -90], "upper": [90, 90]},
                 {"name": "Arm2", "lower": [500, 500, 500], "upper": [600, 600, 600], "joints": [550, 550, 550]}],
      "targets": [{"name": "A", "robot": "Arm2", "joints": [510, 520, 530]},
                  {"name": "B", "robot": "Arm2", "joints": [590, 580, 570]}]})";
    const SimRun done = run(R"([{"command": "Samples", "value": "20"}, {"command": "Join", "value": "A|B"},
                               {"invoke": "Join_Joints", "args": [true, [-10, 0], [200, 0], "Beyond"]},
                               {"invoke": "Join_Joints", "args": [true, [200, 0], [-10, 0], "Beyond"]},
                               {"command": "Info"}])",
                            station);
    expectCleanEnd(done);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 3);
    EXPECT_EQ(got[1], "Failed");
    for (const QJsonObject& result : done.ofType("result"))
        EXPECT_TRUE(result.value("value").isNull());
    EXPECT_TRUE(programs(done).empty());
    EXPECT_TRUE(got[2].endsWith("-Arm1")) << "Arm1's map, nothing of Arm2's";
}

TEST_F(HostFaultRun, JointValuesFarOutOfRangeAreAnsweredWithoutEndlessHostCalls)
{
    // One joint move to 1e15 at a step of 4 would be 2.5e14 points, and a
    // robot reaching down to -1e12 makes moves of 1e11 points: every step
    // below ends at once (the host is killed after a minute otherwise).
    const QByteArray station = R"({
      "robots": [{"name": "Arm1", "lower": [-90], "upper": [90], "joints": [50],
                  "jointBoxes": [{"lower": [-10], "upper": [10]}]},
                 {"name": "Deep", "lower": [-1e12], "upper": [90], "joints": [50],
                  "jointBoxes": [{"lower": [-10], "upper": [10]}]}],
      "targets": [{"name": "T", "robot": "Arm1", "joints": [1e15]}, {"name": "U", "robot": "Arm1", "joints": [50]}]})";
    const SimRun done = run(R"([{"command": "Samples", "value": "20"}, {"command": "Join", "value": "T|U"},
                               {"invoke": "Join_Joints", "args": [true, [50], [1e15], "P"]},
                               {"setJoints": {"robot": "Arm1", "joints": [-1e15]}}, {"command": "Add"},
                               {"command": "SelectRobot", "value": "Deep"}, {"command": "Calc"},
                               {"command": "Join=Across", "value": "U|T"}, {"command": "Info"}])",
                            station);
    expectCleanEnd(done);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 7);
    EXPECT_EQ(got[1], "Failed");
    EXPECT_EQ(got[5], "Failed") << "Deep's map does not reach Arm1's targets";
    // Deep's 20 samples and both ends of the failed link, which stay in the map.
    EXPECT_TRUE(got[6].startsWith("22-") && got[6].endsWith("-Deep")) << got[6].toStdString();
    EXPECT_TRUE(programs(done).empty());
}

TEST_F(HostFaultRun, AMapTwoCancelledInsertionsAheadOfItsSamplesReloads)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "5"}, {"command": "Calc"}, {"command": "Info"},
                               {"cancelAt": {"collisionTest": 2}}, {"command": "Add"},
                               {"command": "SelectRobot", "value": "Arm1"},
                               {"cancelAt": {"collisionTest": 2}}, {"command": "Add"},
                               {"command": "SelectRobot", "value": "Arm1"}, {"command": "Info"},
                               {"saveStation": "cancelled.json"}])",
                            oneJointStation);
    expectCleanEnd(done);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 8);
    EXPECT_EQ(got[2], "5-10-Arm1");
    EXPECT_EQ(got[7], "5-12-Arm1") << "the graph two nodes ahead, and the edges made before each cancel";
    for (const QString& text : messages(done))
        EXPECT_FALSE(text.startsWith("The map stored for robot Arm1 cannot be used")) << text.toStdString();

    // Opened again from the saved station, the map is the same.
    folder.write("cancelled-info.json", R"({"steps": [{"command": "Info"}]})");
    const SimRun again = folder.run("cancelled.json", "cancelled-info.json");
    expectCleanEnd(again);
    EXPECT_EQ(replies(again), QStringList{"5-12-Arm1"});
}

// The record a saved station holds for Arm1's map: where it is kept apart, and its size.
QPair<QString, qint64> recordFileOf(const QJsonObject& station)
{
    const QJsonObject reference = station.value("data").toObject().value("Zelvane-Rob Arm1").toObject();
    return {reference.value("file").toString(), qint64(reference.value("bytes").toDouble())};
}

// True when both files hold the same bytes; read a piece at a time, as they are large.
bool sameContents(const QString& a, const QString& b)
{
    QFile first(a);
    QFile second(b);
    if (!first.open(QIODevice::ReadOnly) || !second.open(QIODevice::ReadOnly) || first.size() != second.size())
        return false;
    while (!first.atEnd()) {
        if (first.read(64 << 20) != second.read(64 << 20))
            return false;
    }
    return true;
}

TEST_F(HostFaultRun, AMapAsLargeAsAStationKeepsIsSavedAndOpenedAgainByteForByte)
{
    // 16,000 samples of one joint: the record holds the graph as a dense
    // 16,000 x 16,000 matrix, 2 GB, more than the station file's text can.
    folder.setTimeLimit(900);
    const SimRun done = run(R"([{"command": "Samples", "value": "16000"}, {"command": "Edges", "value": "1"},
                               {"command": "Calc"}, {"command": "Info"}])",
                            oneJointStation);
    expectCleanEnd(done);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 4);
    ASSERT_TRUE(got[3].startsWith("16000-")) << got[3].toStdString();
    const auto [file, bytes] = recordFileOf(readJson(folder.read("after.json")));
    EXPECT_EQ(file, "after.json.records/Zelvane-Rob%20Arm1.1.bin");
    EXPECT_EQ(bytes, 36 + 8 * (16000 + 16000LL * 16000)) << "samples, graph and an empty route";
    EXPECT_EQ(QFile(folder.path(file)).size(), bytes);

    // Opened again, the map is the one computed; a setting changed, it is
    // stored again and saved to another station, with the same bytes.
    folder.write("reopen.json", R"({"steps": [{"command": "Info"}, {"command": "Display", "value": "1"}]})");
    const SimRun again = folder.run("after.json", "reopen.json", {"--save", folder.path("again.json")});
    expectCleanEnd(again);
    EXPECT_EQ(replies(again), (QStringList{got[3], "OK"}));
    const auto [againFile, againBytes] = recordFileOf(readJson(folder.read("again.json")));
    EXPECT_EQ(againFile, "again.json.records/Zelvane-Rob%20Arm1.1.bin");
    EXPECT_EQ(againBytes, bytes);
    EXPECT_TRUE(sameContents(folder.path(file), folder.path(againFile)));
}

}  // namespace
