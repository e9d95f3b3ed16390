// The plug-in loaded, placed and unloaded by the host.
#include "planner_run.h"

namespace {

using Lifecycle = PlannerRun;

TEST_F(Lifecycle, LoadLinesMenuPlacementAndCleanUnloadAreInTheTranscript)
{
    const SimRun done = run("[]");
    const QStringList lines = logLines(done);
    const QStringList expected = {"Loading plugin Zelvane", "Setting up the status bar",
                                  "Inserting menu at the end of the utilities menu", "Setting up the menu bar"};
    int previous = -1;
    for (const QString& line : expected) {
        const int at = lines.indexOf(line);
        EXPECT_GT(at, previous) << line.toStdString();
        previous = at;
    }
    EXPECT_EQ(lines.filter(QRegularExpression("^Using settings: ")).size(), 1);
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_EQ(lines.last(), "Unloading plugin Zelvane");
    EXPECT_TRUE(done.ofType("error").empty());
}

TEST_F(Lifecycle, FullUtilitiesMenuGetsTheMenuAtPosition99)
{
    const SimRun at99 = run("[]", wallStation, R"({"utilitiesActions": 99})");
    EXPECT_TRUE(logLines(at99).contains("Inserting menu at the end of the utilities menu"));
    const SimRun at100 = run("[]", wallStation, R"({"utilitiesActions": 100})");
    EXPECT_TRUE(logLines(at100).contains("Inserting menu at location 99"));
    EXPECT_FALSE(logLines(at100).contains("Inserting menu at the end of the utilities menu"));
}

TEST_F(Lifecycle, WithoutUtilitiesMenuTheMenuGoesToTheMenuBar)
{
    const SimRun done = run("[]", wallStation, R"({"utilitiesActions": -1, "collisionMenu": false})");
    EXPECT_TRUE(logLines(done).contains("Adding menu in the main menu"));
}

TEST_F(Lifecycle, ContextMenuAnswersByTheFirstItemsType)
{
    const SimRun done = run(R"([{"contextMenu": ["Left", "Right"]}, {"contextMenu": ["Arm1", "Left"]},
                                {"contextMenu": ["Cell"]}])");
    const auto menus = done.ofType("contextMenu");
    ASSERT_EQ(menus.size(), 3u);
    EXPECT_EQ(menus[0].value("result"), QJsonValue(true));
    EXPECT_EQ(menus[0].value("actions"), QJsonArray({"Link selected targets"}));
    EXPECT_EQ(menus[1].value("result"), QJsonValue(false));
    EXPECT_EQ(menus[1].value("actions"), QJsonArray());
    EXPECT_EQ(menus[2].value("result"), QJsonValue(false));
}

TEST_F(Lifecycle, ProgramsGetTheProgramLinkAction)
{
    const SimRun first = run(R"([{"command": "Samples", "value": "30"}, {"command": "Join=P1", "value": "Left|Home"},
                                 {"contextMenu": ["P1", "Left"]}])");
    const QJsonObject menu = first.single("contextMenu");
    EXPECT_EQ(menu.value("result"), QJsonValue(true));
    EXPECT_EQ(menu.value("actions"), QJsonArray({"Link selected programs"}));
}

TEST_F(Lifecycle, UnloadAndLoadAgainRestoresDefaults)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "12"}, {"unload": true}, {"load": true},
                               {"command": "Info"}, {"command": "Foo", "value": "1"}])");
    EXPECT_EQ(replies(done), (QStringList{"OK", "0-0-Arm1", "OK"}));
    EXPECT_EQ(logLines(done).count("Loading plugin Zelvane"), 2);
}

TEST_F(Lifecycle, StationChangedAfterTheRobotWasDeletedChoosesAnother)
{
    const QByteArray twoRobots = R"({
      "frames": [ { "name": "Cell", "parent": null } ],
      "robots": [ { "name": "A", "parent": "Cell", "lower": [-90, -90], "upper": [90, 90], "joints": [0, 0] },
                  { "name": "B", "parent": "Cell", "lower": [-90, -90], "upper": [90, 90], "joints": [0, 0] } ]
    })";
    const SimRun done = run(R"([{"command": "SelectRobot", "value": "B"}, {"deleteItem": "B"}, {"event": 3},
                               {"command": "Info"}])", twoRobots);
    EXPECT_EQ(replies(done), (QStringList{"B", "0-0-A"}));
    EXPECT_TRUE(messages(done).contains("Selected robot for PRM: A"));
}

}  // namespace

namespace {

using HostAnswers = PlannerRun;

TEST_F(HostAnswers, EmptyStationAsksToOpenOne)
{
    const SimRun done = run(R"([{"command": "SelectRobot", "value": ""}, {"command": "Info"}])",
                            R"({"frames": [ { "name": "Cell", "parent": null } ]})");
    EXPECT_EQ(replies(done), (QStringList{"", "0-0-"}));
    EXPECT_TRUE(messages(done).contains("Select File-Open to load a robot or a Vorlik station"));
}

TEST_F(HostAnswers, EmptyRobotNameFallsBackToTheFirstRobot)
{
    const SimRun done = run(R"([{"command": "SelectRobot", "value": ""}])");
    EXPECT_EQ(replies(done), QStringList{"Arm1"});
}

TEST_F(HostAnswers, UnknownDataParameterLeavesTheDefaults)
{
    const SimRun done = run(R"([{"event": 4}, {"command": "Info"}])");
    EXPECT_FALSE(logLines(done).contains("Loading PRM plugin settings..."));
    EXPECT_FALSE(logLines(done).contains("Loading robot settings..."));
    EXPECT_EQ(replies(done), QStringList{"0-0-Arm1"});
}

}  // namespace
