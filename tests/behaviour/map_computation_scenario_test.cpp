// Computing the map from the host: seeds, progress, cancel and the "Replace map" question.
#include "planner_run.h"

#include <QJsonDocument>

namespace {

const QString ReplaceText =
    "Operation cancelled:<br>Do you want to replace the previous map even if the operation didn't complete?";

class MapRun : public PlannerRun {
protected:
    // A station whose map of 10 samples was computed and saved before, with
    // `blocked` adding a box that makes every configuration collide.
    QByteArray stationWithMap(bool blocked)
    {
        run(R"([{"command": "Samples", "value": "10"}, {"command": "Calc"}, {"saveStation": "with-map.json"}])");
        QJsonObject station = readJson(folder.read("with-map.json"));
        if (blocked) {
            QJsonArray robots = station["robots"].toArray();
            QJsonObject robot = robots[0].toObject();
            QJsonArray boxes = robot["jointBoxes"].toArray();
            boxes.append(QJsonObject{{"lower", QJsonArray{-91, -61, -91}}, {"upper", QJsonArray{91, 91, 91}}});
            robot["jointBoxes"] = boxes;
            robots[0] = robot;
            station["robots"] = robots;
        }
        return QJsonDocument(station).toJson();
    }
};

TEST_F(MapRun, CompletedMapIsShownAndTheRobotPutBack)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "15"}, {"command": "Calc"}])");
    const QJsonObject shown = done.single("sequence");
    EXPECT_EQ(shown.value("robot"), QJsonValue("Arm1"));
    EXPECT_EQ(shown.value("rows"), QJsonValue(3));
    EXPECT_EQ(shown.value("cols"), QJsonValue(15));
    EXPECT_TRUE(logLines(done).contains("Done calculating PRM"));
    const QJsonObject after = readJson(folder.read("after.json"));
    EXPECT_EQ(jointsOf(after["robots"].toArray()[0].toObject()["joints"]), (std::vector<double>{0, 70, 0}));
    // The dialog showed the sample line and reached the end of its bar.
    bool sawLastSample = false;
    for (const QJsonObject& progress : done.ofType("progress")) {
        EXPECT_EQ(progress.value("title"), QJsonValue("Calculating collision Map..."));
        sawLastSample = sawLastSample || (progress.value("label").toString().startsWith(
                                              "Calculating collision map:<br>Samples: 15/15 Edges: ") &&
                                          progress.value("value").toInt() == 100);
    }
    EXPECT_TRUE(sawLastSample);
}

TEST_F(MapRun, SeedsAreTheRobotsTargetsByStationPosition)
{
    // A (this robot), B (another robot), C (this robot): the seeds are A and an
    // all-zero configuration, which collides with the wall; C is never tried.
    const QByteArray station = R"({
      "frames": [ { "name": "Cell", "parent": null } ],
      "robots": [ { "name": "Arm1", "parent": "Cell", "lower": [-90, -60, -90], "upper": [90, 90, 90],
                    "joints": [0, 70, 0], "jointBoxes": [ { "lower": [-20, -61, -91], "upper": [20, 40, 91] } ] },
                  { "name": "Arm2", "parent": "Cell", "lower": [-90, -90, -90], "upper": [90, 90, 90],
                    "joints": [0, 0, 0] } ],
      "targets": [ { "name": "A", "robot": "Arm1", "parent": "Cell", "joints": [10, 50, 5] },
                   { "name": "B", "robot": "Arm2", "parent": "Cell", "joints": [1, 2, 3] },
                   { "name": "C", "robot": "Arm1", "parent": "Cell", "joints": [30, 60, 7] } ]
    })";
    const SimRun done = run(R"([{"command": "SelectRobot", "value": "Arm1"}, {"command": "Samples", "value": "5"},
                               {"command": "Calc"}])", station);
    const QStringList checks = logLines(done).filter(QRegularExpression("^Collision checking for: "));
    ASSERT_GE(checks.size(), 3);
    EXPECT_EQ(checks[0], "Collision checking for: Arm1 10.000, 50.000, 5.000");
    EXPECT_EQ(checks[1], "Collision checking for: Arm1 0.000, 0.000, 0.000");
    EXPECT_TRUE(checks.filter("30.000, 60.000, 7.000").isEmpty());
    EXPECT_TRUE(checks.filter("1.000, 2.000, 3.000").isEmpty());
}

TEST_F(MapRun, FirstMapAfterLoadingIsTheSameEveryTime)
{
    const QByteArray steps = R"([{"command": "Samples", "value": "8"}, {"command": "Calc"},
                                 {"command": "Save", "value": "SAMPLES"}, {"command": "Calc"},
                                 {"command": "Save", "value": "AGAIN"}])";
    QByteArray withPaths = steps;
    withPaths.replace("SAMPLES", folder.path("first.txt").toUtf8()).replace("AGAIN", folder.path("second.txt").toUtf8());
    run(withPaths);
    const QByteArray first = folder.read("first.txt");
    const QByteArray second = folder.read("second.txt");
    run(withPaths);
    EXPECT_EQ(folder.read("first.txt"), first);
    EXPECT_EQ(folder.read("second.txt"), second);
    // The second map of a run continues the sequence: other random samples.
    EXPECT_NE(first, second);
}

TEST_F(MapRun, CancelBeforeTheFirstSampleKeepsThePreviousMapWithoutAsking)
{
    const QByteArray station = stationWithMap(true);
    const SimRun done = run(R"([{"command": "Info"}, {"cancelAt": {"collisionTest": 1}}, {"command": "Calc"},
                               {"command": "Info"}])", station);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 3);
    EXPECT_TRUE(got[0].startsWith("10-"));
    EXPECT_EQ(got[2], got[0]);
    EXPECT_TRUE(done.ofType("question").empty());
    EXPECT_TRUE(logLines(done).contains("Operation aborted!"));
    EXPECT_TRUE(logLines(done).contains("Done calculating PRM"));
}

TEST_F(MapRun, CancelWithoutPreviousMapKeepsThePartialMapUnshown)
{
    // Tests 1, 2 and 4 check the seeds Home, Left and Right; 3 and 5 are edges.
    // The cancel at test 5 is seen before the next edge of sample 3.
    const SimRun done = run(R"([{"cancelAt": {"collisionTest": 5}}, {"command": "Calc"}, {"command": "Info"}])");
    EXPECT_TRUE(replies(done).at(1).startsWith("3-")) << replies(done).at(1).toStdString();
    EXPECT_TRUE(done.ofType("question").empty());
    EXPECT_TRUE(done.ofType("sequence").empty());
}

TEST_F(MapRun, CancelWithPreviousMapAnsweredNoKeepsIt)
{
    const SimRun done = run(R"([{"command": "Info"}, {"cancelAt": {"collisionTest": 5}},
                               {"answer": {"question": "No"}}, {"command": "Calc"}, {"command": "Info"}])",
                            stationWithMap(false));
    const QStringList got = replies(done);
    EXPECT_TRUE(got[0].startsWith("10-"));
    EXPECT_EQ(got[2], got[0]);
    const QJsonObject question = done.single("question");
    EXPECT_EQ(question.value("title"), QJsonValue("Replace map"));
    EXPECT_EQ(question.value("text"), QJsonValue(ReplaceText));
    EXPECT_EQ(question.value("answer"), QJsonValue("No"));
}

TEST_F(MapRun, CancelWithPreviousMapAnsweredYesReplacesIt)
{
    const SimRun done = run(R"([{"cancelAt": {"collisionTest": 5}}, {"answer": {"question": "Yes"}},
                               {"command": "Calc"}, {"command": "Info"}])",
                            stationWithMap(false));
    EXPECT_TRUE(replies(done).at(1).startsWith("3-"));
    EXPECT_EQ(done.single("question").value("answer"), QJsonValue("Yes"));
    EXPECT_TRUE(done.ofType("sequence").empty());
}

TEST_F(MapRun, CancelWithPreviousMapAndTheBoxClosedKeepsIt)
{
    const SimRun done = run(R"([{"command": "Info"}, {"cancelAt": {"collisionTest": 5}}, {"command": "Calc"},
                               {"command": "Info"}])",
                            stationWithMap(false));
    EXPECT_EQ(replies(done).at(2), replies(done).at(0));
    EXPECT_EQ(done.single("question").value("answer"), QJsonValue("closed"));
}

TEST_F(MapRun, WithoutRobotTheComputationOnlyComplains)
{
    const SimRun done = run(R"([{"command": "Calc"}])", R"({"frames": [ { "name": "Cell", "parent": null } ]})");
    EXPECT_TRUE(messages(done).contains("Invalid robot: add a robot or load a project (popup)"));
    EXPECT_TRUE(done.ofType("progress").empty());
}

}  // namespace
