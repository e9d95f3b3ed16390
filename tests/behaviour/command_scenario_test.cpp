// Every keyword of the text command language, through the host.
#include "planner_run.h"

namespace {

using CommandRun = PlannerRun;

TEST_F(CommandRun, EveryKeywordReplies)
{
    const QByteArray steps = R"([
        {"command": "Info"},
        {"command": "Samples", "value": "abc"},
        {"command": "Samples", "value": "25"},
        {"command": "Edges", "value": "6.7"},
        {"command": "NewNodeEdges", "value": "4"},
        {"command": "Display", "value": "0.5"},
        {"command": "Foo", "value": "3"},
        {"command": "Calculate"},
        {"command": "Info"},
        {"command": "Join", "value": "Missing|Left"},
        {"command": "Join", "value": ""},
        {"command": "Join=Path1", "value": "Left|Right|Other"},
        {"command": "Add"},
        {"command": "Save", "value": "samples.txt"},
        {"command": "SaveMap", "value": "graph.txt"},
        {"command": "SaveMap", "value": "/no/such/folder/graph.txt"},
        {"command": "SelectRobot", "value": "Nobody"},
        {"command": "Clear"},
        {"command": "Info"}
    ])";
    // Relative paths of "Save" are the plug-in's business: give absolute ones.
    QByteArray withPaths = steps;
    withPaths.replace("\"samples.txt\"", ("\"" + folder.path("samples.txt") + "\"").toUtf8());
    withPaths.replace("\"graph.txt\"", ("\"" + folder.path("graph.txt") + "\"").toUtf8());
    const SimRun done = run(withPaths);
    const QStringList got = replies(done);
    ASSERT_EQ(got.size(), 19) << got.join(" | ").toStdString();
    EXPECT_EQ(got[0], "0-0-Arm1");
    EXPECT_EQ(got[1], "Invalid value");
    for (int i : {2, 3, 4, 5, 6})
        EXPECT_EQ(got[i], "OK") << i;
    EXPECT_EQ(got[7], "Done");
    EXPECT_TRUE(got[8].startsWith("25-")) << got[8].toStdString();
    EXPECT_TRUE(got[8].endsWith("-Arm1"));
    EXPECT_EQ(got[9], "Failed. Invalid program: Missing");
    EXPECT_EQ(got[10], "Failed. Invalid program: ");
    EXPECT_EQ(got[11], "Success");
    EXPECT_EQ(got[12], "Done");
    EXPECT_EQ(got[13], "Done");
    EXPECT_EQ(got[14], "Done");
    EXPECT_EQ(got[15], "Unable to open file for writting: /no/such/folder/graph.txt");
    EXPECT_EQ(got[16], "Arm1");
    EXPECT_EQ(got[17], "Done");
    // "Clear" forgot the robot and the map, but choosing the robot again saved
    // its map into the station, so the next command's robot choice reloads it.
    EXPECT_EQ(got[18], got[8]);

    // "Path1" named the link, not the third name.
    const auto made = programs(done);
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(readJson(folder.read("after.json")).value("programs").toArray().first().toObject().value("name"),
              QJsonValue("Path1"));

    // One line per sample with three joints, one per sample with every distance.
    const QList<QByteArray> sampleLines = folder.read("samples.txt").split('\n');
    EXPECT_GE(sampleLines.size(), 26);
    EXPECT_EQ(sampleLines.first().count(", "), 3);
    const QList<QByteArray> graphLines = folder.read("graph.txt").split('\n');
    EXPECT_EQ(graphLines.first().count(", "), sampleLines.size() - 1);
}

TEST_F(CommandRun, SettingsCommandsAreSavedWithTheStation)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "33"}, {"saveStation": "saved.json"},
                               {"command": "Samples", "value": "44"}, {"openStation": "saved.json"},
                               {"command": "Foo", "value": "1"}])");
    ASSERT_EQ(replies(done).size(), 3);
    EXPECT_TRUE(logLines(done).contains("Saving PRM plugin settings..."));
    EXPECT_TRUE(logLines(done).contains("Loading PRM plugin settings..."));
    const QJsonObject saved = readJson(folder.read("saved.json"));
    EXPECT_TRUE(saved.value("data").toObject().contains("Zelvane"));
    EXPECT_TRUE(saved.value("data").toObject().contains("Zelvane-Rob Arm1"));
}

TEST_F(CommandRun, DisplayDrawsTheMapOnRedraw)
{
    const SimRun done = run(R"([{"command": "Samples", "value": "20"}, {"command": "Calc"},
                               {"command": "Display", "value": "1"}, {"event": 1}])");
    const auto draws = done.ofType("draw");
    ASSERT_EQ(draws.size(), 1u);
    EXPECT_EQ(draws[0].value("primitive"), QJsonValue(2));
    EXPECT_EQ(draws[0].value("width"), QJsonValue(1.0));
    EXPECT_GT(draws[0].value("count").toInt(), 0);
    EXPECT_EQ(draws[0].value("count").toInt() % 2, 0);
}

}  // namespace
