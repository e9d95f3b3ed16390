// What the user (or another plug-in) can do while Calc or Join runs: the
// progress dialog lets events through, so every entry point can be reached.
// Each run below is compared with the same run left undisturbed.
#include "planner_run.h"

#include <QFile>
#include <QJsonDocument>

namespace {

// The wall cell with a second robot that shares the first one's targets' cell.
const char* const twoRobotStation = R"({
  "params":   { "PathStepCollisionDeg": "4.0" },
  "frames":   [ { "name": "Cell", "parent": null } ],
  "robots":   [ { "name": "Arm1", "parent": "Cell", "lower": [-90, -60, -90], "upper": [90, 90, 90],
                  "joints": [0, 70, 0],
                  "jointBoxes": [ { "lower": [-20, -61, -91], "upper": [20, 40, 91] } ],
                  "carries": null },
                { "name": "Arm2", "parent": "Cell", "lower": [-90, -60, -90], "upper": [90, 90, 90],
                  "joints": [0, 70, 0], "jointBoxes": [], "carries": null } ],
  "targets":  [ { "name": "Home", "robot": "Arm1", "parent": "Cell", "joints": [0, 70, 0] },
                { "name": "Left", "robot": "Arm1", "parent": "Cell", "joints": [-60, 0, 10] },
                { "name": "Right", "robot": "Arm1", "parent": "Cell", "joints": [60, 0, -10] } ],
  "programs": []
})";

const QString busy = QStringLiteral(
    "The collision-free planner is busy with another operation. Wait for it to finish or cancel it.");

class ConcurrentEntry : public PlannerRun {
protected:
    // The station's stored records after a run of the steps.
    QJsonObject storedData(const QByteArray& steps, SimRun* done = nullptr)
    {
        const SimRun finished = run(steps, twoRobotStation);
        if (done)
            *done = finished;
        return readJson(folder.read(QStringLiteral("after.json"))).value(QStringLiteral("data")).toObject();
    }

    // The steps with a "during" step in front of the K-th step's operation.
    static QByteArray withDuring(const QByteArray& before, int collisionTest, const QByteArray& nested,
                                 const QByteArray& operationAndAfter)
    {
        return "[" + before + R"({"during": {"collisionTest": )" + QByteArray::number(collisionTest) +
               R"(, "steps": )" + nested + "}}, " + operationAndAfter + "]";
    }

    static int nestedReplies(const SimRun& done, const QString& reply)
    {
        int count = 0;
        for (const QJsonObject& record : done.ofType(QStringLiteral("reply")))
            if (record.contains(QStringLiteral("nested")) && record.value(QStringLiteral("reply")).toString() == reply)
                ++count;
        return count;
    }
};

const QByteArray calcSteps = R"({"command": "Samples", "value": "40"}, )";
// Joints that are not samples of the map: the join inserts both and checks their moves.
const QByteArray joinJoints = R"({"invoke": "Join_Joints", "args": [true, [-50, 5, 10], [50, 5, -10], "P1"]})";
const QByteArray calcAndLink = R"({"command": "Calc"}, {"command": "Info"}, {"command": "Join=P1", "value": "Left|Right"})";

TEST_F(ConcurrentEntry, SettingsAndMapCommandsDuringCalcAreRefusedAndTheMapIsTheUndisturbedOne)
{
    SimRun plain;
    const QJsonObject undisturbed = storedData("[" + calcSteps + calcAndLink + "]", &plain);
    ASSERT_TRUE(undisturbed.contains(QStringLiteral("Zelvane-Rob Arm1")));

    SimRun disturbed;
    const QByteArray nested = R"([{"command": "Calc"}, {"command": "Clear"}, {"command": "Samples", "value": "90"},
                                  {"command": "Edges", "value": "3"}, {"command": "SelectRobot", "value": "Arm2"},
                                  {"command": "Join=P9", "value": "Left|Right"}])";
    const QJsonObject data = storedData(withDuring(calcSteps, 12, nested, calcAndLink), &disturbed);

    EXPECT_EQ(data, undisturbed);
    EXPECT_EQ(replies(disturbed).filter(QRegularExpression("^\\d+-\\d+-Arm1$")),
              replies(plain).filter(QRegularExpression("^\\d+-\\d+-Arm1$")));
    EXPECT_EQ(nestedReplies(disturbed, busy), 3);  // Clear, Samples, Edges
    EXPECT_GE(messages(disturbed).filter(busy).size(), 6);
    EXPECT_EQ(programs(disturbed).size(), programs(plain).size());
    EXPECT_TRUE(disturbed.ofType(QStringLiteral("error")).empty());
}

TEST_F(ConcurrentEntry, SlotsAndFormDuringCalcAreRefusedAndTheMapIsTheUndisturbedOne)
{
    const QJsonObject undisturbed = storedData("[" + calcSteps + calcAndLink + "]");

    SimRun disturbed;
    const QByteArray nested = R"([{"invoke": "Join_Joints", "args": [true, [-60, 0, 10], [60, 0, -10], "Q"]},
                                  {"select": ["Left", "Right"]}, {"invoke": "Join_Selection_Smart", "args": [true]},
                                  {"invoke": "callback_robotpilot"}, {"invoke": "ShowSamples"}])";
    const QJsonObject data = storedData(withDuring(calcSteps, 7, nested, calcAndLink), &disturbed);

    EXPECT_EQ(data, undisturbed);
    const auto results = disturbed.ofType(QStringLiteral("result"));
    int joins = 0;
    for (const QJsonObject& result : results) {
        if (result.value(QStringLiteral("slot")).toString() == QLatin1String("Join_Joints")) {
            EXPECT_TRUE(result.value(QStringLiteral("value")).isNull());
            ++joins;
        }
    }
    EXPECT_EQ(joins, 1);
    EXPECT_TRUE(disturbed.ofType(QStringLiteral("error")).empty());
}

TEST_F(ConcurrentEntry, DeletingTheRobotDuringCalcStopsItAndStoresNothingForIt)
{
    SimRun done;
    const QJsonObject data = storedData(
        withDuring(calcSteps, 9, R"([{"deleteItem": "Arm1"}])", R"({"command": "Calc"}, {"command": "Info"})"), &done);

    EXPECT_FALSE(data.contains(QStringLiteral("Zelvane-Rob Arm1")));
    EXPECT_TRUE(messages(done).contains(QStringLiteral(
        "The robot was deleted: the running operation was stopped and nothing it computed was kept.")));
    // The fallback robot is chosen once the operation has unwound; it has no map yet.
    EXPECT_EQ(replies(done).last(), QStringLiteral("0-0-Arm2"));
    EXPECT_TRUE(logLines(done).contains(QStringLiteral("Operation aborted!")));
}

TEST_F(ConcurrentEntry, DeletingTheRobotDuringJoinWritesNoProgramAndKeepsTheMapOnDisk)
{
    const QByteArray calc = "[" + calcSteps + R"({"command": "Calc"}, {"saveStation": "mapped.json"}])";
    SimRun first = run(calc, twoRobotStation);
    ASSERT_EQ(first.exitCode, 0);
    const QJsonObject mapped =
        readJson(folder.read(QStringLiteral("mapped.json"))).value(QStringLiteral("data")).toObject();
    ASSERT_TRUE(mapped.contains(QStringLiteral("Zelvane-Rob Arm1")));

    // The stored map is loaded with the station; the robot goes while a join uses it.
    const SimRun done = run(withDuring("", 3, R"([{"deleteItem": "Arm1"}])", joinJoints),
                            folder.read(QStringLiteral("mapped.json")));
    const QJsonObject data =
        readJson(folder.read(QStringLiteral("after.json"))).value(QStringLiteral("data")).toObject();
    EXPECT_TRUE(programs(done).empty());
    EXPECT_TRUE(done.single(QStringLiteral("result")).value(QStringLiteral("value")).isNull());
    // The deleted robot's record is neither rewritten nor removed by the plug-in.
    EXPECT_EQ(data.value(QStringLiteral("Zelvane-Rob Arm1")), mapped.value(QStringLiteral("Zelvane-Rob Arm1")));
    EXPECT_TRUE(done.ofType(QStringLiteral("error")).empty());
}

TEST_F(ConcurrentEntry, CommandsDuringJoinAreRefusedAndTheProgramAndMapAreTheUndisturbedOnes)
{
    const QByteArray calc = calcSteps + R"({"command": "Calc"}, )";
    const QByteArray join = joinJoints + R"(, {"command": "Info"})";
    SimRun plain;
    const QJsonObject undisturbed = storedData("[" + calc + join + "]", &plain);

    SimRun disturbed;
    const QByteArray nested = R"([{"command": "Calc"}, {"command": "Clear"}, {"command": "SelectRobot", "value": "Arm2"},
                                  {"command": "Join=P2", "value": "Left|Home"}])";
    const QJsonObject data = storedData(withDuring(calc, 2, nested, join), &disturbed);

    EXPECT_EQ(data, undisturbed);
    ASSERT_EQ(programs(plain).size(), 1u);
    ASSERT_EQ(programs(disturbed).size(), 1u);
    EXPECT_EQ(programs(disturbed).front(), programs(plain).front());
    EXPECT_EQ(replies(disturbed).last(), replies(plain).last());
    EXPECT_EQ(nestedReplies(disturbed, busy), 1);  // Clear
}

TEST_F(ConcurrentEntry, UnloadingDuringCalcStopsItAndTheHostCarriesOn)
{
    SimRun done;
    const QJsonObject data = storedData(withDuring(calcSteps, 10, R"([{"unload": true}])",
                                                   R"({"command": "Calc"}, {"load": true}, {"command": "Info"})"),
                                        &done);
    EXPECT_EQ(done.exitCode, 0);
    EXPECT_FALSE(data.contains(QStringLiteral("Zelvane-Rob Arm1")));
    EXPECT_TRUE(logLines(done).contains(QStringLiteral("Unloading plugin Zelvane")));
    // Loaded again, the plug-in starts from the station as it was: no map.
    EXPECT_EQ(replies(done).last(), QStringLiteral("0-0-Arm1"));
}

TEST_F(ConcurrentEntry, UnloadingDuringJoinStopsItWritesNoProgramAndTheHostCarriesOn)
{
    const QByteArray calc =
        "[" + calcSteps + R"({"command": "Calc"}, {"command": "Info"}, {"saveStation": "mapped.json"}])";
    const SimRun first = run(calc, twoRobotStation);
    ASSERT_EQ(first.exitCode, 0);
    const QString mappedInfo = replies(first).last();
    const QJsonObject mapped =
        readJson(folder.read(QStringLiteral("mapped.json"))).value(QStringLiteral("data")).toObject();

    const SimRun done = run(withDuring("", 3, R"([{"unload": true}])", joinJoints + R"(, {"load": true},
                                       {"command": "Info"})"),
                            folder.read(QStringLiteral("mapped.json")));
    EXPECT_TRUE(programs(done).empty());
    EXPECT_TRUE(done.single(QStringLiteral("result")).value(QStringLiteral("value")).isNull());
    // Loaded again, the plug-in reads the stored map, which the join did not touch.
    EXPECT_EQ(replies(done).last(), mappedInfo);
    const QJsonObject data =
        readJson(folder.read(QStringLiteral("after.json"))).value(QStringLiteral("data")).toObject();
    EXPECT_EQ(data.value(QStringLiteral("Zelvane-Rob Arm1")), mapped.value(QStringLiteral("Zelvane-Rob Arm1")));
}

TEST_F(ConcurrentEntry, ReplacingTheStationDuringCalcStopsItAndLeavesBothStationsAlone)
{
    folder.write(QStringLiteral("other.json"), twoRobotStation);
    SimRun done;
    const QJsonObject data = storedData(
        withDuring(calcSteps, 10, "[{\"openStation\": \"" + folder.path("other.json").toUtf8() + "\"}]",
                   R"({"command": "Calc"}, {"command": "Info"})"),
        &done);
    EXPECT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
    EXPECT_FALSE(data.contains(QStringLiteral("Zelvane-Rob Arm1")));
    EXPECT_EQ(replies(done).last(), QStringLiteral("0-0-Arm1"));
    EXPECT_FALSE(readJson(folder.read(QStringLiteral("other.json")))
                     .value(QStringLiteral("data"))
                     .toObject()
                     .contains(QStringLiteral("Zelvane-Rob Arm1")));
}

}  // namespace
