// Choosing the robot, guarding robot-bound operations, and drawing the map.
#include "plugin_fixture.h"
#include "dense_graph.h"

#include "log_capture.h"
#include "roadmap_matrix.h"

namespace {

const QString NoRobot = "Invalid robot: add a robot or load a project";

class RobotSelection : public LoadedPlugin {
protected:
    void SetUp() override { load(); }
};

// A mechanism placed somewhere in the station, carrying a robot.
class PlacedRail : public FakeItem {
public:
    PlacedRail(FakeHost* host, const QVector3D& offset) : FakeItem(host, ItemType::Robot, "Rail"), offset_(offset) {}
    HostPose& poseAbs(HostPose& out) override
    {
        out.setToIdentity();
        out.translate(offset_);
        return out;
    }

private:
    QVector3D offset_;
};

TEST_F(RobotSelection, UnknownNameWithAutomaticChoiceTakesTheFirstRobot)
{
    FakeRobot* a = addRobot("A");
    addRobot("B");
    EXPECT_TRUE(plugin->selectRobot(true, "Missing"));
    EXPECT_EQ(session().robot(), a);
    EXPECT_EQ(plugin->robotName(), "A");
    EXPECT_TRUE(hasMessage("Selected robot for PRM: A", false));
}

TEST_F(RobotSelection, NamedRobotIsChosen)
{
    addRobot("A");
    FakeRobot* b = addRobot("B");
    EXPECT_TRUE(plugin->selectRobot(true, "B"));
    EXPECT_EQ(session().robot(), b);
}

TEST_F(RobotSelection, CancelledPickLeavesNoRobotAndAnEmptyMap)
{
    addRobot("A");
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        setSize(samples, 3, 5);
    });
    host.pickAnswers = {nullptr};
    EXPECT_FALSE(plugin->selectRobot(false, QString()));
    EXPECT_EQ(session().robot(), nullptr);
    EXPECT_EQ(columns(map().samples()), 0);
    EXPECT_TRUE(hasMessage("Robot not available to calculate PRM", false));
}

TEST_F(RobotSelection, PickedMechanismStandsForItsRobot)
{
    FakeRobot* robot = addRobot("A");
    FakeItem* rail = host.addItem(ItemType::Robot, "Rail", robot);
    host.pickAnswers = {rail};
    EXPECT_TRUE(plugin->selectRobot(false, QString()));
    EXPECT_EQ(session().robot(), robot);
}

TEST_F(RobotSelection, EmptyStationAsksToOpenOne)
{
    EXPECT_FALSE(plugin->selectRobot(true, QString()));
    EXPECT_EQ(session().robot(), nullptr);
    EXPECT_TRUE(hasMessage("Select File-Open to load a robot or a Vorlik station", false));
}

TEST_F(RobotSelection, RequireRobotPopsUpOnlyWhenNotSilent)
{
    EXPECT_FALSE(plugin->requireRobot(true));
    EXPECT_FALSE(plugin->requireRobot(false));
    EXPECT_EQ(host.messages, (QList<QPair<QString, bool>>{{NoRobot, false}, {NoRobot, true}}));
    setRobot(addRobot("A"));
    host.messages.clear();
    EXPECT_TRUE(plugin->requireRobot(false));
    EXPECT_TRUE(host.messages.isEmpty());
}

TEST_F(RobotSelection, DisplayWithoutRobotReportsInStatusBarOnEveryRedraw)
{
    setSettings([](PlannerSettings& s) { s.displaySamples = true; });
    plugin->pluginEvent(1);
    plugin->pluginEvent(1);
    EXPECT_EQ(host.messages, (QList<QPair<QString, bool>>{{NoRobot, false}, {NoRobot, false}}));
    EXPECT_EQ(host.drawCalls, 0);
}

TEST_F(RobotSelection, DisplayOffDrawsNothing)
{
    setRobot(addRobot("A"));
    plugin->pluginEvent(1);
    EXPECT_EQ(host.drawCalls, 0);
    EXPECT_TRUE(host.messages.isEmpty());
}

TEST_F(RobotSelection, MapWithoutEdgesDrawsNoSegmentsButFillsPositions)
{
    setRobot(addRobot("A"));
    setSettings([](PlannerSettings& s) { s.displaySamples = true; });
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        setSize(samples, 3, 2);
    });
    const double values[] = {1, 2, 3, 4, 5, 6};
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        std::copy(values, values + 6, samples->values);
        graph->clear();
        graph->resize(2);
    });
    plugin->RenderMap();
    EXPECT_EQ(host.drawCalls, 1);
    EXPECT_EQ(host.lastDrawPointCount, 0);
    ASSERT_EQ(rows(plugin->samplePositions()), 3);
    ASSERT_EQ(columns(plugin->samplePositions()), 2);
    for (int i = 0; i < 6; ++i)
        EXPECT_DOUBLE_EQ(plugin->samplePositions()->values[i], values[i]);
}

TEST_F(RobotSelection, EdgesBecomeSegmentsBetweenToolPositions)
{
    setRobot(addRobot("A"));
    setSettings([](PlannerSettings& s) { s.displaySamples = true; });
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        setSize(samples, 3, 3);
    });
    for (int i = 0; i < 9; ++i)
        editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
            samples->values[i] = i;
        graph->clear();
        graph->resize(3);
        graph->setLength(0, 2, 5.0);
        graph->setLength(1, 2, 4.0);
        });
    plugin->RenderMap();
    EXPECT_EQ(host.lastDrawPointCount, 4);
}

TEST_F(RobotSelection, RobotOnRailIsDrawnFromTheRailsPlacement)
{
    FakeRobot* robot = addRobot("A");
    PlacedRail rail(&host, QVector3D(100, -50, 25));
    rail.robot = robot;
    robot->setParent(&rail);
    setRobot(robot);
    setSettings([](PlannerSettings& s) { s.displaySamples = true; });
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        setSize(samples, 3, 1);
        samples->values[0] = 1;
        samples->values[1] = 2;
        samples->values[2] = 3;
        graph->clear();
        graph->resize(1);
    });

    LogCapture log;
    plugin->RenderMap();
    EXPECT_EQ(log.countStartingWith("Rail found: "), 1);
    EXPECT_TRUE(log.messages().contains("Rail found: Rail"));
    EXPECT_DOUBLE_EQ(at(plugin->samplePositions(), 0, 0), 101.0);
    EXPECT_DOUBLE_EQ(at(plugin->samplePositions(), 1, 0), -48.0);
    EXPECT_DOUBLE_EQ(at(plugin->samplePositions(), 2, 0), 28.0);
    plugin->RenderMap();
    EXPECT_EQ(log.countStartingWith("Rail found: "), 2);
}

}  // namespace
