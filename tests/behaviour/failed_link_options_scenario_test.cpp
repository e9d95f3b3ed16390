// The options of a failed link, through vorlik-sim: growing the map until two
// targets connect, and checking a found route against a cell that changed
// since the map was computed; both stored with the station.
#include "planner_run.h"

#include <QDataStream>
#include <QJsonDocument>

namespace {

// Two joints; a wall at joint 1 between -10 and 10 with a passage at joint 2
// between 40 and 50. Left and Right lie on either side.
const char* const narrowStation = R"({
  "params": {"PathStepCollisionDeg": "2.0"},
  "robots": [{"name": "Arm1", "lower": [-90, -90], "upper": [90, 90], "joints": [-60, 0],
              "jointBoxes": [{"lower": [-10, -91], "upper": [10, 40]}, {"lower": [-10, 50], "upper": [10, 91]}]}],
  "targets": [{"name": "Left", "robot": "Arm1", "joints": [-60, 0]},
              {"name": "Right", "robot": "Arm1", "joints": [60, 0]}]})";

// The same robot and targets in an empty cell.
const char* const openStation = R"({
  "params": {"PathStepCollisionDeg": "2.0"},
  "robots": [{"name": "Arm1", "lower": [-90, -90], "upper": [90, 90], "joints": [-60, 0]}],
  "targets": [{"name": "Left", "robot": "Arm1", "joints": [-60, 0]},
              {"name": "Right", "robot": "Arm1", "joints": [60, 0]}]})";

class FailedLinkOptions : public PlannerRun {
protected:
    // Every move of the program, checked against the station's boxes at the map's step.
    static void expectFreeMoves(const QJsonObject& program, const QByteArray& station)
    {
        const JointBoxes boxes = JointBoxes::ofRobot(readJson(station).value("robots").toArray()[0].toObject());
        const QJsonArray moves = program.value("instructions").toArray();
        ASSERT_GE(moves.size(), 2);
        for (int i = 0; i + 1 < moves.size(); ++i) {
            const std::vector<double> a = jointsOf(moves[i].toObject().value("joints"));
            const std::vector<double> b = jointsOf(moves[i + 1].toObject().value("joints"));
            EXPECT_FALSE(boxes.collides(a)) << "point " << i + 1;
            EXPECT_FALSE(boxes.moveCollides(a, b, 2.0)) << "move " << i + 1;
        }
    }

    static int samplesOf(const QString& info) { return info.section('-', 0, 0).toInt(); }

    // The open station with a map computed in it, then a wall put across, as
    // a person moves a fixture into a cell whose map is kept.
    QByteArray storedMapThenWall(const QJsonArray& boxes)
    {
        const SimRun computed = run(R"([{"command": "Samples", "value": "60"}, {"command": "Edges", "value": "10"},
                                        {"command": "Calc"}, {"saveStation": "mapped.json"}])",
                                    openStation);
        EXPECT_EQ(computed.exitCode, 0);
        QJsonObject station = readJson(folder.read("mapped.json"));
        QJsonArray robots = station.value("robots").toArray();
        QJsonObject robot = robots[0].toObject();
        robot.insert("jointBoxes", boxes);
        robots[0] = robot;
        station.insert("robots", robots);
        return QJsonDocument(station).toJson();
    }

    static const QString noConnection;
};

const QString FailedLinkOptions::noConnection = "It is not possible to connect the start and end targets for program "
                                                "<strong>LeftToRight</strong>. Try to increase the number of samples and "
                                                "update the collision map.";

TEST_F(FailedLinkOptions, GrowingTheMapLinksWhatTheDefaultMapCannot)
{
    const QByteArray steps = R"([{"command": "Samples", "value": "40"}, {"command": "Edges", "value": "10"},
                                 {"command": "Calc"}, {"command": "Join", "value": "Left|Right"}, {"command": "Info"},
                                 {"command": "GrowMap", "value": "3000"},
                                 {"command": "Join", "value": "Left|Right"}, {"command": "Info"}])";
    const SimRun done = run(steps, narrowStation);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 8);
    EXPECT_EQ(got[3], "Failed") << "the map of 40 samples does not find the passage";
    EXPECT_TRUE(messages(done).contains(noConnection));
    EXPECT_EQ(got[6], "Success");
    ASSERT_EQ(programs(done).size(), 1u);
    expectFreeMoves(programs(done).front(), narrowStation);
    const int before = samplesOf(got[4]);
    const int after = samplesOf(got[7]);
    EXPECT_GT(after, before) << "it grew";
    EXPECT_LE(after - before, 3000) << "by no more than the limit";
    EXPECT_TRUE(logLines(done).contains(QStringLiteral("The map grew by %1 samples").arg(after - before)));
}

TEST_F(FailedLinkOptions, AGrowthThatReachesItsLimitFailsAsUsualAndLeavesAMapThatWorks)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "40"}, {"command": "Edges", "value": "10"},
                               {"command": "Calc"}, {"command": "GrowMap", "value": "25"},
                               {"command": "Join", "value": "Left|Right"}, {"command": "Info"},
                               {"saveStation": "grown.json"},
                               {"command": "GrowMap", "value": "0"},
                               {"setJoints": {"robot": "Arm1", "joints": [-70, 30]}}, {"command": "Add"},
                               {"command": "Info"}, {"command": "Samples", "value": "30"}, {"command": "Calc"}, {"command": "Info"},
                               {"command": "Join", "value": "Left|Right"}])",
                            narrowStation);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 13);
    EXPECT_EQ(got[4], "Failed");
    EXPECT_EQ(messages(done).count(noConnection), 2) << "once for each failed link: the grown one after its last round";
    const int grown = samplesOf(got[5]);
    EXPECT_LE(grown, 40 + 2 + 25) << "the map, the link's two ends and the limit";
    EXPECT_GT(grown, 40 + 2);
    EXPECT_EQ(samplesOf(got[8]), grown + 1) << "Add adds to the grown map";
    EXPECT_TRUE(got[11].startsWith("30-"));
    // The grown map reads back as it was written.
    folder.write("info.json", R"({"steps": [{"command": "Info"}]})");
    const SimRun again = folder.run("grown.json", "info.json");
    EXPECT_EQ(replies(again), QStringList{got[5]});
}

TEST_F(FailedLinkOptions, ACancelledGrowthKeepsWhatItAddedAndTheMapWorks)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "40"}, {"command": "Edges", "value": "10"},
                               {"command": "Calc"}, {"command": "GrowMap", "value": "3000"},
                               {"cancelAt": {"collisionTest": 400}}, {"command": "Join", "value": "Left|Right"},
                               {"command": "Info"}, {"saveStation": "cancelled.json"}, {"command": "GrowMap", "value": "0"},
                               {"setJoints": {"robot": "Arm1", "joints": [-70, 30]}}, {"command": "Add"},
                               {"command": "Join", "value": "Left|Right"}, {"command": "Info"}])",
                            narrowStation);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 10);
    EXPECT_EQ(got[4], "Failed");
    EXPECT_TRUE(messages(done).contains(noConnection));
    const int kept = samplesOf(got[5]);
    EXPECT_GT(kept, 42) << "the samples added before the cancel stay";
    EXPECT_LT(kept, 42 + 3000);
    folder.write("info.json", R"({"steps": [{"command": "Info"}]})");
    const SimRun again = folder.run("cancelled.json", "info.json");
    EXPECT_EQ(replies(again), QStringList{got[5]}) << "stored and read back whole";
    EXPECT_EQ(samplesOf(got[9]), kept + 1) << "Add adds to it, and the link finds its ends in it";
}

TEST_F(FailedLinkOptions, WithoutCheckingARouteThroughANewWallIsWrittenAsBefore)
{
    const QByteArray walled = storedMapThenWall(QJsonArray{QJsonObject{{"lower", QJsonArray{-10, -91}},
                                                                       {"upper", QJsonArray{10, 91}}}});
    const SimRun done = run(R"([{"command": "Join", "value": "Left|Right"}])", walled);
    ASSERT_EQ(replies(done), QStringList{"Success"}) << "the stored map's edges are not tested again";
    const JointBoxes boxes = JointBoxes::ofRobot(readJson(walled).value("robots").toArray()[0].toObject());
    const QJsonArray moves = programs(done).front().value("instructions").toArray();
    bool through = false;
    for (int i = 0; i + 1 < moves.size(); ++i)
        through = through || boxes.moveCollides(jointsOf(moves[i].toObject().value("joints")),
                                                jointsOf(moves[i + 1].toObject().value("joints")), 2.0);
    EXPECT_TRUE(through) << "a move of the program runs through the wall";
}

TEST_F(FailedLinkOptions, CheckingRoutesWritesOnlyFreeMovesAroundAPartialWall)
{
    const QByteArray walled = storedMapThenWall(QJsonArray{QJsonObject{{"lower", QJsonArray{-10, -91}},
                                                                       {"upper", QJsonArray{10, 20}}}});
    const SimRun done = run(R"([{"command": "CheckRoutes", "value": "1"}, {"command": "Join", "value": "Left|Right"},
                               {"command": "Info"}])",
                            walled);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 3);
    if (got[1] == "Success") {
        ASSERT_EQ(programs(done).size(), 1u);
        expectFreeMoves(programs(done).front(), walled);
    } else {
        EXPECT_TRUE(messages(done).contains(noConnection));
    }
    bool toldRemoved = false;
    for (const QString& text : messages(done))
        toldRemoved = toldRemoved || text.contains("not free in the cell as it is now");
    EXPECT_TRUE(toldRemoved) << "the map had edges through the wall";
}

TEST_F(FailedLinkOptions, ARepairThatTakesOutEveryRouteFailsWithBothMessagesAndTheMapWorks)
{
    const QByteArray walled = storedMapThenWall(QJsonArray{QJsonObject{{"lower", QJsonArray{-10, -91}},
                                                                       {"upper", QJsonArray{10, 91}}}});
    const SimRun done = run(R"([{"command": "CheckRoutes", "value": "1"}, {"command": "Join", "value": "Left|Right"},
                               {"command": "Info"}, {"saveStation": "repaired.json"},
                               {"command": "Add"}, {"command": "Join", "value": "Left|Right"},
                               {"command": "Samples", "value": "40"}, {"command": "Calc"}, {"command": "Info"}])",
                            walled);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 8);
    EXPECT_EQ(got[1], "Failed");
    const QStringList said = messages(done);
    const int failure = said.indexOf(noConnection);
    ASSERT_GE(failure, 0);
    ASSERT_LT(failure + 1, said.size());
    EXPECT_TRUE(said[failure + 1].contains("of the map") && said[failure + 1].contains("Update the map"))
        << said[failure + 1].toStdString();
    EXPECT_TRUE(programs(done).empty());
    EXPECT_EQ(got[4], "Failed") << "no way through a whole wall";
    EXPECT_TRUE(got[7].startsWith("40-"));
    folder.write("info.json", R"({"steps": [{"command": "Info"}]})");
    const SimRun again = folder.run("repaired.json", "info.json");
    EXPECT_EQ(replies(again), QStringList{got[2]}) << "the repaired map is stored and reads back";
}

TEST_F(FailedLinkOptions, ALinkThatSucceedsAtOnceWritesTodaysProgramWithTheOptionsOn)
{
    const QByteArray link = R"({"command": "Samples", "value": "40"}, {"command": "Calc"},
                               {"command": "Join=Link", "value": "Left|Right"}, {"command": "Info"}])";
    const SimRun plain = run("[" + link);
    const SimRun withOptions = run(R"([{"command": "GrowMap", "value": "1000"}, {"command": "CheckRoutes", "value": "1"},
                                       )" + link);
    ASSERT_EQ(programs(plain).size(), 1u);
    ASSERT_EQ(programs(withOptions).size(), 1u);
    EXPECT_EQ(programs(withOptions).front(), programs(plain).front());
    EXPECT_EQ(replies(withOptions).mid(2), replies(plain));
    EXPECT_EQ(messages(withOptions), messages(plain));
}

TEST_F(FailedLinkOptions, TheCommandsTakeOnlyWhatTheOptionsMean)
{
    const SimRun done = run(R"([{"command": "GrowMap", "value": "500"}, {"command": "GrowMap", "value": "0"},
                               {"command": "GrowMap", "value": "-1"}, {"command": "GrowMap", "value": "2.5"},
                               {"command": "GrowMap", "value": "lots"}, {"command": "CheckRoutes", "value": "1"},
                               {"command": "CheckRoutes", "value": "0"}, {"command": "CheckRoutes", "value": "2"},
                               {"command": "CheckRoutes", "value": "yes"}])");
    EXPECT_EQ(replies(done), (QStringList{"OK", "OK", "Invalid value", "Invalid value", "Invalid value", "OK", "OK",
                                          "Invalid value", "Invalid value"}));
}

}  // namespace
