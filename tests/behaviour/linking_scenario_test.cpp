// Linking targets and programs through the map, read back from the saved station.
#include "planner_run.h"

#include <QRegularExpression>

#include <map>

namespace {

class LinkRun : public PlannerRun {
protected:
    // Items of the saved station by name (the last of that name wins).
    static std::map<QString, QJsonObject> byName(const QJsonObject& station, const char* kind)
    {
        std::map<QString, QJsonObject> items;
        for (const QJsonValue& item : station.value(kind).toArray())
            items[item.toObject().value("name").toString()] = item.toObject();
        return items;
    }

    static std::map<int, QJsonObject> byId(const QJsonObject& station, const char* kind)
    {
        std::map<int, QJsonObject> items;
        for (const QJsonValue& item : station.value(kind).toArray())
            items[item.toObject().value("id").toInt()] = item.toObject();
        return items;
    }

    // The targets a saved program moves through, in order.
    static std::vector<QJsonObject> routeTargets(const QJsonObject& station, const QString& program)
    {
        const auto targets = byId(station, "targets");
        std::vector<QJsonObject> route;
        for (const QJsonValue& instruction : byName(station, "programs")[program].value("instructions").toArray()) {
            const auto found = targets.find(instruction.toObject().value("id").toInt());
            EXPECT_NE(found, targets.end());
            if (found != targets.end())
                route.push_back(found->second);
        }
        return route;
    }

    static QStringList calls(const QJsonObject& station, const QString& program)
    {
        QStringList called;
        for (const QJsonValue& instruction : byName(station, "programs")[program].value("instructions").toArray())
            called << instruction.toObject().value("call").toString();
        return called;
    }
};

TEST_F(LinkRun, RouteAroundTheWallIsCollisionFreeThroughNamedTargets)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "60"}, {"command": "Calc"},
                               {"command": "Join=Route", "value": "Left|Right"}])");
    EXPECT_EQ(replies(done).last(), "Success");
    const QJsonObject station = readJson(folder.read("after.json"));
    const JointBoxes wall = JointBoxes::ofRobot(station["robots"].toArray()[0].toObject());
    const auto targets = byName(station, "targets");
    const std::vector<double> left = jointsOf(targets.at("Left")["joints"]);
    const std::vector<double> right = jointsOf(targets.at("Right")["joints"]);
    ASSERT_TRUE(wall.moveCollides(left, right, 4.0));

    const std::vector<QJsonObject> route = routeTargets(station, "Route");
    ASSERT_GE(route.size(), 3u);
    const QRegularExpression name("^Pt (\\d+) \\(S(\\d+)\\)$");
    for (size_t i = 0; i < route.size(); ++i) {
        const QRegularExpressionMatch match = name.match(route[i]["name"].toString());
        ASSERT_TRUE(match.hasMatch()) << route[i]["name"].toString().toStdString();
        EXPECT_EQ(match.captured(1).toInt(), int(i + 1));
        if (i > 0) {
            EXPECT_FALSE(wall.moveCollides(jointsOf(route[i - 1]["joints"]), jointsOf(route[i]["joints"]), 4.0))
                << "move " << i;
        }
    }
    EXPECT_EQ(jointsOf(route.front()["joints"]), left);
    EXPECT_EQ(jointsOf(route.back()["joints"]), right);
    // Left and Right seeded the map as samples 2 and 3.
    EXPECT_EQ(route.front()["name"].toString(), "Pt 1 (S2)");
    EXPECT_TRUE(route.back()["name"].toString().endsWith("(S3)"));
    // Written as "LeftToRight", then renamed by the command.
    const QJsonObject written = done.single("program");
    EXPECT_EQ(written.value("name"), QJsonValue("LeftToRight"));
    EXPECT_EQ(written.value("robot"), QJsonValue("Arm1"));
}

TEST_F(LinkRun, NewConfigurationsBecomeNodesOnceAndAreReused)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "40"}, {"command": "Calc"}, {"command": "Info"},
        {"invoke": "Join_Joints", "args": [true, [-70, 10, 20], [75, -15, 5], "Across"]}, {"command": "Info"},
        {"invoke": "Join_Joints", "args": [true, [-70, 10, 20], [75, -15, 5], "Across"]}, {"command": "Info"}])");
    const QStringList got = replies(done).mid(2);
    ASSERT_EQ(got.size(), 3);
    const int before = got[0].section('-', 0, 0).toInt();
    EXPECT_EQ(before, 40);
    EXPECT_EQ(got[1].section('-', 0, 0).toInt(), before + 2);
    EXPECT_EQ(got[2].section('-', 0, 0).toInt(), before + 2);
    EXPECT_EQ(got[2], got[1]);

    const auto results = done.ofType("result");
    ASSERT_EQ(results.size(), 2u);
    EXPECT_EQ(results[0].value("value"), QJsonValue("Across"));
    EXPECT_EQ(results[1].value("value"), QJsonValue("Across"));
    const auto written = programs(done);
    ASSERT_EQ(written.size(), 2u);
    const QJsonArray first = written[0]["instructions"].toArray();
    EXPECT_EQ(first.first().toObject()["moveJoint"].toString(), "Pt 1 (S41)");
    EXPECT_TRUE(first.last().toObject()["moveJoint"].toString().endsWith("(S42)"));
    EXPECT_EQ(written[1]["instructions"].toArray().size(), first.size());

    // The old program of the same name was deleted: one "Across" is left.
    const QJsonObject station = readJson(folder.read("after.json"));
    int across = 0;
    for (const QJsonValue& program : station["programs"].toArray())
        across += program.toObject()["name"].toString() == "Across" ? 1 : 0;
    EXPECT_EQ(across, 1);
}

TEST_F(LinkRun, UnreachableStartAndEndAreReportedByTheirMessages)
{
    // (0, 0, 0) lies inside the wall: no move from or to it is free.
    const SimRun done = run(R"([{"command": "Samples", "value": "20"}, {"command": "Calc"},
        {"invoke": "Join_Joints", "args": [false, [0, 0, 0], [60, 0, -10], "Bad"]},
        {"invoke": "Join_Joints", "args": [true, [-60, 0, 10], [10, 10, 10], "Bad"]}])");
    const QStringList shown = messages(done);
    EXPECT_TRUE(shown.contains("The robot is unable to reach the first target. Try to add more targets or increase the "
                               "number of samples and update the collision map. (popup)"));
    EXPECT_TRUE(shown.contains("The robot is unable to reach the second target for program <strong>Bad</strong>. Try "
                               "to increase the number of samples and update the collision map."));
    const auto results = done.ofType("result");
    ASSERT_EQ(results.size(), 2u);
    EXPECT_TRUE(results[0].value("value").isNull());
    EXPECT_TRUE(results[1].value("value").isNull());
    EXPECT_TRUE(programs(done).empty());
}

TEST_F(LinkRun, WithoutRobotOnlyTheRobotMessageIsShown)
{
    const SimRun done = run(R"([{"invoke": "Join_Joints", "args": [true, [0, 0], [1, 1], "P"]}])",
                            R"({"frames": [ { "name": "Cell", "parent": null } ]})");
    EXPECT_EQ(messages(done), QStringList{"Invalid robot: add a robot or load a project"});
    EXPECT_TRUE(done.ofType("progress").empty());
}

TEST_F(LinkRun, SelectedTargetsAreJoinedFirstTwoOnly)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "40"}, {"command": "Calc"},
        {"select": ["Left", "Right", "Home"]}, {"invoke": "Join_Selection_Smart", "args": [true]}])");
    const auto written = programs(done);
    ASSERT_EQ(written.size(), 1u);
    EXPECT_EQ(written[0]["name"], QJsonValue("LeftToRight"));
    EXPECT_TRUE(logLines(done).contains("Joining targets: Left & Right"));
}

TEST_F(LinkRun, TooFewTargetsComputesTheMapFirstButTooFewProgramsDoesNot)
{
    const SimRun targets = run(R"([{"command": "Samples", "value": "10"}, {"select": ["Left"]},
        {"invoke": "Join_Selected_Targets", "args": [false]}, {"command": "Info"}])");
    EXPECT_TRUE(messages(targets).contains("Creating map..."));
    EXPECT_TRUE(messages(targets).contains("Select 2 targets to automatically join the path (popup)"));
    EXPECT_TRUE(replies(targets).last().startsWith("10-"));

    const SimRun programsRun = run(R"([{"command": "Samples", "value": "10"}, {"select": ["Left"]},
        {"invoke": "Join_Programs", "args": [false, []]}, {"command": "Info"}])");
    EXPECT_TRUE(messages(programsRun).contains("Select 2 or more programs to automatically join them (popup)"));
    EXPECT_FALSE(messages(programsRun).contains("Creating map..."));
    EXPECT_EQ(replies(programsRun).last(), "0-0-Arm1");
}

TEST_F(LinkRun, ProgramsAreChainedThroughLinksByAMainProgram)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "60"}, {"command": "Calc"},
        {"command": "Join=P1", "value": "Left|Home"}, {"command": "Join=P2", "value": "Right|Home"},
        {"command": "Join", "value": "P1|P2"}, {"command": "Join", "value": "P1|Missing"}])");
    EXPECT_EQ(replies(done).mid(2), (QStringList{"Success", "Success", "Success", "Failed. Invalid program: Missing"}));
    const QJsonObject station = readJson(folder.read("after.json"));
    EXPECT_EQ(calls(station, "MainSafe"), (QStringList{"P1", "SP12P2", "P2"}));
    const std::vector<QJsonObject> link = routeTargets(station, "SP12P2");
    ASSERT_GE(link.size(), 2u);
    EXPECT_EQ(jointsOf(link.front()["joints"]), (std::vector<double>{0, 70, 0}));
    EXPECT_EQ(jointsOf(link.back()["joints"]), (std::vector<double>{60, 0, -10}));
}

TEST_F(LinkRun, AddingTheRobotPositionOnceAndThenNoMore)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "20"}, {"command": "Calc"}, {"command": "Add"},
        {"setJoints": {"robot": "Arm1", "joints": [80, 80, 80]}}, {"command": "Add"}, {"command": "Info"},
        {"command": "Add"}, {"command": "Info"}])");
    const QStringList shown = messages(done);
    EXPECT_TRUE(shown.contains("This target (or a nearby target) has already been added."));
    EXPECT_TRUE(shown.contains("Successfully added the current robot position"));
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 7);
    EXPECT_TRUE(got[4].startsWith("21-"));
    EXPECT_EQ(got[6], got[4]);
}

}  // namespace
