#include "join_joints.h"

#include "log_capture.h"
#include "operation_test.h"

#include <QProgressDialog>

namespace {
const char* const FirstUnreachable =
    "The robot is unable to reach the first target. Try to add more targets or increase the number of samples "
    "and update the collision map.";
const char* const SecondUnreachable =
    "The robot is unable to reach the second target for program <strong>Link</strong>. Try to increase the "
    "number of samples and update the collision map.";
const char* const NotConnected =
    "It is not possible to connect the start and end targets for program <strong>Link</strong>. Try to "
    "increase the number of samples and update the collision map.";
}  // namespace

class JoinJointsTest : public UiTest {
protected:
    Item join(const Joints& start, const Joints& end, bool silent = false, const QString& name = "Link")
    {
        double first[JointVector::MaxJoints] = {};
        double second[JointVector::MaxJoints] = {};
        std::copy(start.begin(), start.end(), first);
        std::copy(end.begin(), end.end(), second);
        return linkJointValues(session, silent, JointVector(first, JointVector::MaxJoints),
                               JointVector(second, JointVector::MaxJoints), name);
    }

    // Joints of the targets a program moves through.
    static std::vector<Joints> movedJoints(HostItem* program)
    {
        std::vector<Joints> result;
        for (HostItem* target : static_cast<StationItem*>(program)->moves) {
            JointVector j;
            target->joints(j);
            result.push_back({j[0], j[1]});
        }
        return result;
    }

    static QStringList movedNames(HostItem* program)
    {
        QStringList names;
        for (HostItem* target : static_cast<StationItem*>(program)->moves)
            names << target->name();
        return names;
    }
};

TEST_F(JoinJointsTest, WithoutRobotOnlyTheRobotMessageIsShown)
{
    setLineMap(5);
    session.setRobot(nullptr);
    EXPECT_EQ(join({0, 0}, {40, 0}), nullptr);
    EXPECT_EQ(station.calls, QStringList{"showMessage Invalid robot: add a robot or load a project [popup]"});
    EXPECT_EQ(columns(session.samples()), 5);
    EXPECT_EQ(session.updateFormCount, 0);
    EXPECT_FALSE(session.settingsChanged());
}

TEST_F(JoinJointsTest, StartNearSampleTwelveAndNewEndNode)
{
    setLineMap(20);
    // L1 distance 2 from sample 12 (110, 0): within the robot step, so reused.
    // The end lies far from every sample: a new node 21 with five edges.
    HostItem* program = join({111, 1}, {305, 0});
    ASSERT_NE(program, nullptr);
    EXPECT_EQ(columns(session.samples()), 21);
    const QStringList names = movedNames(program);
    ASSERT_GE(names.size(), 2);
    EXPECT_EQ(names.first(), "Pt 1 (S12)");
    EXPECT_EQ(names.last(), QString("Pt %1 (S21)").arg(names.size()));
    int edgesOfEnd = 0;
    for (int k = 0; k < 20; ++k)
        edgesOfEnd += at(session.graph(), k, 20) > 0 ? 1 : 0;
    EXPECT_EQ(edgesOfEnd, 5);
    // Every consecutive pair of the route is an edge of the map.
    for (int i = 0; i + 1 < columns(session.route()); ++i) {
        const int a = static_cast<int>(at(session.route(), 0, i)) - 1;
        const int b = static_cast<int>(at(session.route(), 0, i + 1)) - 1;
        EXPECT_GT(at(session.graph(), a, b), 0.0) << "nodes " << a + 1 << " and " << b + 1;
    }
}

TEST_F(JoinJointsTest, RouteRunsFromStartToEndAndNamesTargetsByPlaceAndSample)
{
    setLineMap(5);
    // One edge per query node: the start hangs on sample 1, the end on sample 5.
    session.setSettings([](PlannerSettings& s) { s.newNodeEdges = 1; });
    HostItem* program = join({-20, 0}, {60, 0});
    ASSERT_NE(program, nullptr);
    EXPECT_EQ(program->name(), "Link");
    EXPECT_EQ(program->getLink(ItemType::Robot), robot);
    const std::vector<Joints> moved = movedJoints(program);
    ASSERT_GE(moved.size(), 2u);
    EXPECT_EQ(moved.front(), (Joints{-20, 0}));
    EXPECT_EQ(moved.back(), (Joints{60, 0}));
    // Start is node 6, end node 7; the route passes every sample.
    EXPECT_EQ(movedNames(program), (QStringList{"Pt 1 (S6)", "Pt 2 (S1)", "Pt 3 (S2)", "Pt 4 (S3)", "Pt 5 (S4)",
                                                "Pt 6 (S5)", "Pt 7 (S7)"}));
    EXPECT_EQ(rows(session.route()), 1);
    EXPECT_EQ(columns(session.route()), 7);
    EXPECT_TRUE(static_cast<StationItem*>(program)->finished);
}

TEST_F(JoinJointsTest, HostCallsComeInTheirOrder)
{
    setMap({{0, 0}, {10, 0}}, {{1, 2}});
    placeRobot({3, 4});
    station.FakeHost::setRenderMode(7);
    HostItem* program = join({0, 0}, {10, 0});
    ASSERT_NE(program, nullptr);
    // Both configurations are samples already: no collision test is needed.
    EXPECT_EQ(station.calls, (QStringList{
                                 "setRenderMode 1",
                                 "setRenderMode 7",
                                 "Arm setJoints 3.000, 4.000",
                                 "update 255",
                                 "addProgram Link",
                                 "Arm setJoints 0.000, 0.000",
                                 "addTarget Pt 1 (S1)",
                                 "Pt 1 (S1) setJoints 0.000, 0.000",
                                 "Pt 1 (S1) setAsJointTarget",
                                 "Link addJointMove Pt 1 (S1)",
                                 "addTarget Pt 2 (S2)",
                                 "Pt 2 (S2) setJoints 10.000, 0.000",
                                 "Pt 2 (S2) setAsJointTarget",
                                 "Link addJointMove Pt 2 (S2)",
                                 "Link setProgramOptionA false",
                                 "Link setProgramOptionB false",
                                 "update 1",
                                 "Link finishProgram \"\"",
                                 "UpdateForm",
                             }));
    // The render mode is back; the robot is left at the route's first configuration.
    EXPECT_EQ(station.renderMode(), 7);
    EXPECT_EQ(robot->currentJoints().toText(",", 1), "0.0,0.0");
    EXPECT_TRUE(session.settingsChanged());
    EXPECT_EQ(session.updateFormCount, 1);
}

TEST_F(JoinJointsTest, RenderModeIsOneWhileTheHostTestsMoves)
{
    setLineMap(5);
    station.FakeHost::setRenderMode(3);
    QList<int> modes;
    station.onCollisionTest = [&](int) { modes << station.renderMode(); };
    ASSERT_NE(join({-20, 0}, {60, 0}), nullptr);
    ASSERT_FALSE(modes.isEmpty());
    for (int mode : modes)
        EXPECT_EQ(mode, 1);
    EXPECT_EQ(station.renderMode(), 3);
}

TEST_F(JoinJointsTest, SecondIdenticalQueryReusesBothNodes)
{
    setLineMap(5);
    session.setSettings([](PlannerSettings& s) { s.newNodeEdges = 1; });
    ASSERT_NE(join({-20, 0}, {60, 0}), nullptr);
    EXPECT_EQ(columns(session.samples()), 7);
    const int testsAfterFirst = robot->jointMoveTests;
    HostItem* again = join({-20, 0}, {60, 0});
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(columns(session.samples()), 7);
    EXPECT_EQ(rows(session.graph()), 7);
    EXPECT_EQ(robot->jointMoveTests, testsAfterFirst) << "reused nodes need no new edge";
    EXPECT_EQ(movedNames(again).first(), "Pt 1 (S6)");
    EXPECT_EQ(movedNames(again).last(), "Pt 7 (S7)");
}

TEST_F(JoinJointsTest, ExistingProgramsOfThatNameAreDeletedFirst)
{
    setLineMap(3);
    StationItem* old1 = station.addStationProgram("Link", robot, {});
    StationItem* old2 = station.addStationProgram("Link", robot, {});
    StationItem* other = station.addStationProgram("Other", robot, {});
    HostItem* program = join({0, 0}, {20, 0});
    ASSERT_NE(program, nullptr);
    EXPECT_TRUE(old1->deleted);
    EXPECT_TRUE(old2->deleted);
    EXPECT_FALSE(other->deleted);
    const int firstDelete = station.calls.indexOf("deleteItem Link");
    const int secondDelete = station.calls.lastIndexOf("deleteItem Link");
    const int creation = station.calls.indexOf("addProgram Link");
    EXPECT_LT(firstDelete, secondDelete);
    EXPECT_LT(secondDelete, creation);
    EXPECT_EQ(station.getItem("Link", ItemType::Program), program);
}

TEST_F(JoinJointsTest, UnreachableStart)
{
    setLineMap(5);
    // The start lies inside an obstacle: every move from it collides.
    robot->boxes.push_back({{-30, -10}, {-10, 10}});
    EXPECT_EQ(join({-20, 0}, {60, 0}), nullptr);
    EXPECT_EQ(station.messageTexts(), QStringList{FirstUnreachable});
    EXPECT_TRUE(station.messages.first().second);
    // The isolated start node stays in the map; nothing was written.
    EXPECT_EQ(columns(session.samples()), 6);
    EXPECT_TRUE(callsStartingWith("addProgram").isEmpty());
    EXPECT_TRUE(session.settingsChanged());
    EXPECT_EQ(session.updateFormCount, 1);
}

TEST_F(JoinJointsTest, UnreachableEnd)
{
    setLineMap(5);
    robot->boxes.push_back({{50, -10}, {70, 10}});
    EXPECT_EQ(join({-20, 0}, {60, 0}), nullptr);
    EXPECT_EQ(station.messageTexts(), QStringList{SecondUnreachable});
    EXPECT_TRUE(station.messages.first().second);
    EXPECT_EQ(columns(session.samples()), 7);
    EXPECT_TRUE(callsStartingWith("addProgram").isEmpty());
}

TEST_F(JoinJointsTest, NoPathBetweenTheNodes)
{
    // Two parts of the map without an edge between them; each query node is
    // linked to its nearest sample only.
    setMap({{0, 0}, {10, 0}, {200, 0}, {210, 0}}, {{1, 2}, {3, 4}});
    session.setSettings([](PlannerSettings& s) { s.newNodeEdges = 1; });
    LogCapture log;
    EXPECT_EQ(join({-20, 0}, {230, 0}), nullptr);
    EXPECT_EQ(station.messageTexts(), QStringList{NotConnected});
    EXPECT_TRUE(station.messages.first().second);
    EXPECT_EQ(log.countStartingWith("Not possible to link nodes "), 1);
    EXPECT_TRUE(callsStartingWith("addProgram").isEmpty());
    EXPECT_EQ(session.updateFormCount, 1);
}

TEST_F(JoinJointsTest, SilentFailuresStayInTheStatusBar)
{
    setMap({{0, 0}, {10, 0}, {200, 0}, {210, 0}}, {{1, 2}, {3, 4}});
    session.setSettings([](PlannerSettings& s) { s.newNodeEdges = 1; });
    EXPECT_EQ(join({-20, 0}, {230, 0}, true), nullptr);
    robot->boxes.push_back({{90, -10}, {110, 10}});
    EXPECT_EQ(join({0, 0}, {100, 0}, true), nullptr);
    // Off the isolated end node (100, 0) by more than a robot step, inside the obstacle.
    EXPECT_EQ(join({95, 0}, {0, 0}, true), nullptr);
    session.setRobot(nullptr);
    EXPECT_EQ(join({0, 0}, {10, 0}, true), nullptr);
    EXPECT_EQ(station.messageTexts(), (QStringList{NotConnected, SecondUnreachable, FirstUnreachable,
                                                   "Invalid robot: add a robot or load a project"}));
    for (const auto& message : station.messages)
        EXPECT_FALSE(message.second) << message.first.toStdString();
}

TEST_F(JoinJointsTest, StartAndEndOnTheSameNodeWriteNothing)
{
    setLineMap(3);
    LogCapture log;
    EXPECT_EQ(join({10, 0}, {11, 1}), nullptr);
    EXPECT_EQ(log.countStartingWith("Something is wrong with the robot route!!"), 1);
    EXPECT_EQ(columns(session.route()), 1);
    EXPECT_TRUE(station.messages.isEmpty());
    EXPECT_TRUE(callsStartingWith("addProgram").isEmpty());
    EXPECT_TRUE(callsStartingWith("deleteItem").isEmpty());
    EXPECT_EQ(session.updateFormCount, 1);
}

TEST_F(JoinJointsTest, RouteThroughANodeWithoutSampleDeletesTheProgram)
{
    // The graph has one node more than there are samples, as a cancelled
    // insertion leaves it; the only way from sample 1 to 3 leads through it.
    setMap({{0, 0}, {10, 0}, {20, 0}}, {});
    session.editMap([](RobotMap& map) {
        map.roadmap().addNode();
        map.roadmap().join(0, 3, 1.0);
        map.roadmap().join(2, 3, 1.0);
    });
    StationItem* old = station.addStationProgram("Link", robot, {});

    EXPECT_EQ(join({0, 0}, {20, 0}), nullptr);
    EXPECT_EQ(station.messages, (QList<QPair<QString, bool>>{{"Something is wrong with the robot route!", true}}));
    EXPECT_TRUE(old->deleted);
    HostItem* written = nullptr;
    for (HostItem* item : station.itemsOfType(ItemType::Program))
        written = item;
    EXPECT_EQ(written, nullptr) << "the new program is deleted";
    // The target made before the broken node stays; the program gets no further call.
    EXPECT_EQ(station.itemsOfType(ItemType::Target).size(), 1);
    EXPECT_TRUE(callsStartingWith("Link setProgramOption").isEmpty());
    EXPECT_TRUE(callsStartingWith("Link finishProgram").isEmpty());
    EXPECT_EQ(station.calls.filter("deleteItem Link").size(), 2);
}

TEST_F(JoinJointsTest, CancelledFirstInsertionLeavesTheSecondDialogOpen)
{
    setLineMap(5);
    // The first candidate edge of the start is free; the cancel is seen
    // before the second candidate.
    cancelAtCollisionTest(1);
    EXPECT_EQ(join({-20, 0}, {60, 0}), nullptr);
    // The graph kept the start's slot without a sample, so the end node's
    // edges went to that slot and the end itself stayed unconnected.
    EXPECT_EQ(station.messageTexts(), QStringList{NotConnected});
    ASSERT_NE(resources.progress().dialog(), nullptr);
    EXPECT_TRUE(resources.progress().dialog()->isVisible());
    EXPECT_EQ(resources.progress().dialog()->windowTitle(), "Adding end node");
}

TEST_F(JoinJointsTest, UncancelledQueryClosesBothDialogs)
{
    setLineMap(5);
    recordProgressTitles();
    ASSERT_NE(join({-20, 0}, {60, 0}), nullptr);
    EXPECT_EQ(progressTitles, (QStringList{"Adding start node", "Adding end node"}));
    EXPECT_EQ(resources.progress().dialog(), nullptr);
}
