// The text commands and their replies.
#include "plugin_fixture.h"
#include "dense_graph.h"

#include "log_capture.h"
#include "roadmap_matrix.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

class Commands : public LoadedPlugin {
protected:
    void SetUp() override { load(); }

    // A 3-joint robot with two targets a straight move can join.
    FakeRobot* cellWithTwoTargets()
    {
        FakeRobot* robot = addRobot("Arm1");
        for (const auto& [name, values] : {std::pair{"T1", std::vector<double>{-30, 10, 0}},
                                           std::pair{"T2", std::vector<double>{40, -20, 15}}}) {
            FakeItem* target = host.addItem(ItemType::Target, name, robot);
            target->setJoints(JointVector(values.data(), 3));
        }
        setSettings([](PlannerSettings& s) { s.samples = 12; });
        setSettings([](PlannerSettings& s) { s.edgesPerSample = 4; });
        return robot;
    }

    int updateFormCount()
    {
        return updates;
    }

    void countUpdates()
    {
        QObject::connect(plugin.get(), &PluginAutoPRM::UpdateForm, [this] { ++updates; });
    }

    int updates = 0;
};

TEST_F(Commands, PrologueLogsAndChoosesTheFirstRobot)
{
    FakeRobot* robot = addRobot("Arm1");
    LogCapture log;
    EXPECT_EQ(plugin->pluginCommand("Info", ""), "0-0-Arm1");
    EXPECT_EQ(session().robot(), robot);
    EXPECT_TRUE(log.messages().contains("Received command: Info"));
    EXPECT_TRUE(log.messages().contains("    With value: "));
}

TEST_F(Commands, InfoWithoutRobot)
{
    EXPECT_EQ(plugin->pluginCommand("Info", ""), "0-0-");
}

TEST_F(Commands, InfoCountsSamplesAndEdges)
{
    setRobot(addRobot("Arm1"));
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        setSize(samples, 3, 3);
        graph->clear();
        graph->resize(3);
        graph->setLength(0, 1, 2.0);
        graph->setLength(1, 2, 3.0);
    });
    EXPECT_EQ(plugin->pluginCommand("info", ""), "3-2-Arm1");
}

TEST_F(Commands, NumericSettingsAreTruncatedAndUnlimited)
{
    addRobot("Arm1");
    EXPECT_EQ(plugin->pluginCommand("Samples", "-3"), "OK");
    EXPECT_EQ(settings().samples, -3);
    EXPECT_EQ(plugin->pluginCommand("Edges", "2.9"), "OK");
    EXPECT_EQ(settings().edgesPerSample, 2);
    EXPECT_EQ(plugin->pluginCommand("NewNodeEdges", "7"), "OK");
    EXPECT_EQ(settings().newNodeEdges, 7);
    EXPECT_EQ(plugin->pluginCommand("Edgesfoo", "10"), "OK");
    EXPECT_EQ(settings().edgesPerSample, 10);
}

TEST_F(Commands, SettingsBeyondTheIntegerRangeStopAtItsEnds)
{
    addRobot("Arm1");
    EXPECT_EQ(plugin->pluginCommand("Samples", "1e10"), "OK");
    EXPECT_EQ(settings().samples, 2147483647);
    EXPECT_EQ(plugin->pluginCommand("Edges", "-1e12"), "OK");
    EXPECT_EQ(settings().edgesPerSample, -2147483647 - 1);
    EXPECT_EQ(plugin->pluginCommand("NewNodeEdges", "-7.9"), "OK");
    EXPECT_EQ(settings().newNodeEdges, -7);
}

TEST_F(Commands, NonNumericValueIsInvalidAndChangesNothing)
{
    addRobot("Arm1");
    plugin->pluginCommand("Info", "");  // the robot is chosen by now
    countUpdates();
    session().markSaved();
    EXPECT_EQ(plugin->pluginCommand("Samples", "abc"), "Invalid value");
    EXPECT_EQ(settings().samples, 100);
    EXPECT_FALSE(session().settingsChanged());
    QCoreApplication::processEvents();
    EXPECT_EQ(updateFormCount(), 0);
}

TEST_F(Commands, UnknownKeywordWithNumberOnlyRefreshesAndMarksChanged)
{
    addRobot("Arm1");
    plugin->pluginCommand("Info", "");  // the robot is chosen by now
    countUpdates();
    session().markSaved();
    EXPECT_EQ(plugin->pluginCommand("Foo", "3"), "OK");
    EXPECT_TRUE(session().settingsChanged());
    EXPECT_EQ(updateFormCount(), 1);
    EXPECT_EQ(settings().samples, 100);
    EXPECT_EQ(settings().edgesPerSample, 25);
    EXPECT_EQ(settings().newNodeEdges, 5);
    EXPECT_FALSE(settings().displaySamples);
}

TEST_F(Commands, DisplaySwitchesOnlyForPositiveValues)
{
    addRobot("Arm1");
    host.updates.clear();
    EXPECT_EQ(plugin->pluginCommand("Display", "0.5"), "OK");
    EXPECT_TRUE(settings().displaySamples);
    EXPECT_EQ(plugin->pluginCommand("Display", "0"), "OK");
    EXPECT_FALSE(settings().displaySamples);
    plugin->pluginCommand("Display", "1");
    EXPECT_EQ(plugin->pluginCommand("Display", "-1"), "OK");
    EXPECT_FALSE(settings().displaySamples);
    EXPECT_EQ(std::count(host.updates.begin(), host.updates.end(), 1), 4);
}

TEST_F(Commands, ClearOnEmptyMapKeepsSettingsAndRobot)
{
    FakeRobot* robot = addRobot("Arm1");
    plugin->pluginCommand("Samples", "42");
    session().markSaved();
    EXPECT_EQ(plugin->pluginCommand("Clear", ""), "Done");
    EXPECT_EQ(settings().samples, 42);
    EXPECT_EQ(session().robot(), robot);
    EXPECT_TRUE(session().settingsChanged());
}

TEST_F(Commands, ClearWithMapRestoresDefaultsAndForgetsRobot)
{
    addRobot("Arm1");
    plugin->pluginCommand("Samples", "42");
    plugin->pluginCommand("Display", "1");
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        setSize(samples, 3, 2);
        graph->resize(2);
        setSize(route, 1, 2);
    });
    EXPECT_EQ(plugin->pluginCommand("Clear", ""), "Done");
    EXPECT_EQ(settings().samples, 100);
    EXPECT_FALSE(settings().displaySamples);
    EXPECT_EQ(session().robot(), nullptr);
    EXPECT_EQ(columns(map().samples()), 0);
    EXPECT_EQ(columns(map().graph()), 0);
    EXPECT_EQ(columns(map().route()), 0);
}

TEST_F(Commands, SelectRobotRepliesTheChosenName)
{
    addRobot("Arm1");
    addRobot("Arm2");
    EXPECT_EQ(plugin->pluginCommand("SelectRobot", "Arm2"), "Arm2");
    EXPECT_EQ(plugin->pluginCommand("SelectRobot", "Nope"), "Arm1");
}

TEST_F(Commands, SelectRobotWithoutRobotsRepliesEmpty)
{
    EXPECT_EQ(plugin->pluginCommand("SelectRobot", "Arm1"), "");
}

TEST_F(Commands, SaveWritesSamplesAndSaveMapTheGraph)
{
    setRobot(addRobot("Arm1"));
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        setSize(samples, 2, 2);
        samples->values[0] = 1;
        samples->values[1] = 2;
        samples->values[2] = 3;
        samples->values[3] = 4.5;
        graph->clear();
        graph->resize(2);
        graph->setLength(0, 1, 3.25);
    });
    QTemporaryDir dir;
    const QString samplesPath = dir.filePath("samples.txt");
    const QString graphPath = dir.filePath("graph.txt");
    EXPECT_EQ(plugin->pluginCommand("Save", samplesPath), "Done");
    EXPECT_EQ(plugin->pluginCommand("savemap", graphPath), "Done");
    QFile samplesFile(samplesPath);
    ASSERT_TRUE(samplesFile.open(QIODevice::ReadOnly));
    EXPECT_EQ(samplesFile.readAll(), "1.00000000, 2.00000000, \n3.00000000, 4.50000000, \n");
    QFile graphFile(graphPath);
    ASSERT_TRUE(graphFile.open(QIODevice::ReadOnly));
    EXPECT_EQ(graphFile.readAll(), "0.00000000, 3.25000000, \n3.25000000, 0.00000000, \n");
}

TEST_F(Commands, SaveOfAnEmptyMapTruncatesTheFile)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("samples.txt");
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old content");
    old.close();
    EXPECT_EQ(plugin->pluginCommand("Save", path), "Done");
    EXPECT_EQ(QFileInfo(path).size(), 0);
}

TEST_F(Commands, SaveMapIntoMissingFolderFails)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("no/such/folder/map.txt");
    EXPECT_EQ(plugin->pluginCommand("SaveMap", path), "Unable to open file for writting: " + path);
}

TEST_F(Commands, JoinWithMissingProgramRunsNothing)
{
    FakeRobot* robot = addRobot("Arm1");
    host.addItem(ItemType::Program, "P1", robot);
    EXPECT_EQ(plugin->pluginCommand("Join", "P1|Missing"), "Failed. Invalid program: Missing");
    EXPECT_EQ(columns(map().samples()), 0);
    EXPECT_EQ(host.collisionTests, 0);
}

TEST_F(Commands, JoinWithEmptyValueLooksUpAnEmptyProgramName)
{
    addRobot("Arm1");
    EXPECT_EQ(plugin->pluginCommand("Join", ""), "Failed. Invalid program: ");
}

TEST_F(Commands, JoinNameInTheCommandWinsOverTheThirdName)
{
    cellWithTwoTargets();
    EXPECT_EQ(plugin->pluginCommand("join=Path1", "T1|T2"), "Success");
    EXPECT_NE(host.getItem("Path1", ItemType::Program), nullptr);
    EXPECT_EQ(plugin->pluginCommand("Join=Path2", "T1|T2|Other"), "Success");
    EXPECT_NE(host.getItem("Path2", ItemType::Program), nullptr);
    EXPECT_EQ(host.getItem("Other", ItemType::Program), nullptr);
}

TEST_F(Commands, JoinThirdNameNamesTheLinkWithoutACommandName)
{
    cellWithTwoTargets();
    EXPECT_EQ(plugin->pluginCommand("Join", "T1|T2|Other"), "Success");
    EXPECT_NE(host.getItem("Other", ItemType::Program), nullptr);
    EXPECT_EQ(host.getItem("T1ToT2", ItemType::Program), nullptr);
    EXPECT_EQ(plugin->pluginCommand("Join", "T1|T2"), "Success");
    EXPECT_NE(host.getItem("T1ToT2", ItemType::Program), nullptr);
}

TEST_F(Commands, CalculateMatchesCalc)
{
    cellWithTwoTargets();
    EXPECT_EQ(plugin->pluginCommand("CALCULATE", ""), "Done");
    EXPECT_EQ(columns(map().samples()), 12);
}

TEST_F(Commands, AddInsertsTheRobotPosition)
{
    FakeRobot* robot = cellWithTwoTargets();
    plugin->pluginCommand("Calc", "");
    const double far[] = {150, 150, 150};
    robot->setJoints(JointVector(far, 3));
    EXPECT_EQ(plugin->pluginCommand("Add", ""), "Done");
    EXPECT_EQ(columns(map().samples()), 13);
}

}  // namespace
