#include "add_targets.h"

#include "log_capture.h"
#include "operation_test.h"

class AddTargetsTest : public UiTest {
protected:
    AddTargetsTest()
    {
        setLineMap(4);  // samples (0, 0) ... (30, 0)
        placeRobot({50, 50});
        station.FakeHost::setRenderMode(6);
        recordProgressTitles();
    }

    StationItem* selectTarget(const QString& name, const Joints& values)
    {
        StationItem* target = station.addStationTarget(name, robot, values);
        station.selection << target;
        return target;
    }

    // Every message went to the status bar only.
    void expectNoPopUp() const
    {
        for (const auto& message : station.messages)
            EXPECT_FALSE(message.second) << message.first.toStdString();
    }

    // The robot, the render mode and the form are back as they were.
    void expectRestored()
    {
        EXPECT_EQ(station.renderMode(), 6);
        EXPECT_EQ(robot->currentJoints().toText(",", 1), "50.0,50.0");
        const int n = station.calls.size();
        ASSERT_GE(n, 4);
        EXPECT_EQ(station.calls.mid(n - 4),
                  (QStringList{"setRenderMode 6", "Arm setJoints 50.000, 50.000", "update 255", "UpdateForm"}));
        EXPECT_TRUE(session.settingsChanged());
        EXPECT_EQ(session.updateFormCount, 1);
        EXPECT_EQ(resources.progress().dialog(), nullptr);
    }
};

TEST_F(AddTargetsTest, WithoutRobotNothingHappens)
{
    session.setRobot(nullptr);
    selectTarget("T1", {100, 100});
    EXPECT_FALSE(addTargetsToMap(session, true, false));
    EXPECT_FALSE(addTargetsToMap(session, false, false));
    EXPECT_EQ(station.calls, (QStringList{"showMessage Invalid robot: add a robot or load a project",
                                          "showMessage Invalid robot: add a robot or load a project [popup]"}));
    EXPECT_EQ(columns(session.samples()), 4);
    EXPECT_FALSE(session.settingsChanged());
    EXPECT_EQ(session.updateFormCount, 0);
}

TEST_F(AddTargetsTest, SelectedTargetsBecomeNodesOneAfterTheOther)
{
    selectTarget("T1", {100, 100});
    selectTarget("T2", {-100, -100});
    LogCapture log;
    EXPECT_TRUE(addTargetsToMap(session, false, false));
    EXPECT_EQ(station.messageTexts(),
              (QStringList{"Successfully added target: T1", "Successfully added target: T2"}));
    EXPECT_EQ(progressTitles, (QStringList{"Adding T1 (1/2)", "Adding T2 (2/2)"}));
    ASSERT_EQ(columns(session.samples()), 6);
    EXPECT_EQ(sample(5), (Joints{100, 100}));
    EXPECT_EQ(sample(6), (Joints{-100, -100}));
    EXPECT_EQ(rows(session.graph()), 6);
    EXPECT_GT(at(session.graph(), 4, 5), 0.0) << "T2 was inserted into the map that already held T1";
    EXPECT_EQ(log.countStartingWith("Done adding first node"), 2);
    expectNoPopUp();
    expectRestored();
}

TEST_F(AddTargetsTest, ProgramsAndFramesOnlyAddTheRobotPosition)
{
    station.selection << station.addStationProgram("P", robot, {}) << station.addItem(3, "Frame");
    EXPECT_TRUE(addTargetsToMap(session, false, false));
    EXPECT_EQ(station.messageTexts(), QStringList{"Successfully added the current robot position"});
    EXPECT_EQ(progressTitles, QStringList{"Adding current robot position"});
    ASSERT_EQ(columns(session.samples()), 5);
    EXPECT_EQ(sample(5), (Joints{50, 50}));
    expectNoPopUp();
    expectRestored();
}

TEST_F(AddTargetsTest, RobotPositionOnlyIgnoresTheSelection)
{
    selectTarget("T1", {100, 100});
    EXPECT_TRUE(addTargetsToMap(session, true, true));
    EXPECT_EQ(station.messageTexts(), QStringList{"Successfully added the current robot position"});
    ASSERT_EQ(columns(session.samples()), 5);
    EXPECT_EQ(sample(5), (Joints{50, 50}));
}

TEST_F(AddTargetsTest, SameTargetTwiceIsAddedOnce)
{
    selectTarget("T1", {100, 100});
    EXPECT_TRUE(addTargetsToMap(session, false, false));
    EXPECT_TRUE(addTargetsToMap(session, false, false));
    EXPECT_EQ(station.messageTexts(), (QStringList{"Successfully added target: T1",
                                                   "Target T1 (or a nearby target) has already been added."}));
    EXPECT_EQ(columns(session.samples()), 5);
    EXPECT_EQ(rows(session.graph()), 5);
}

TEST_F(AddTargetsTest, TargetOfAnotherJointCountIsSkippedButCounted)
{
    selectTarget("W", {1, 2, 3});
    selectTarget("T", {100, 100});
    EXPECT_TRUE(addTargetsToMap(session, false, false));
    EXPECT_EQ(station.messageTexts(), QStringList{"Successfully added target: T"});
    EXPECT_EQ(progressTitles, QStringList{"Adding T (2/2)"});
    EXPECT_EQ(columns(session.samples()), 5);
}

TEST_F(AddTargetsTest, PlaceholdersInATargetNameStayInTheTitle)
{
    selectTarget("T%1 %2", {100, 100});
    selectTarget("U", {-100, -100});
    EXPECT_TRUE(addTargetsToMap(session, false, false));
    EXPECT_EQ(progressTitles, (QStringList{"Adding T%1 %2 (1/2)", "Adding U (2/2)"}));
    EXPECT_EQ(station.messageTexts().first(), "Successfully added target: T%1 %2");
}

TEST_F(AddTargetsTest, OnlySkippedTargetsAddNothing)
{
    selectTarget("W", {1, 2, 3});
    EXPECT_TRUE(addTargetsToMap(session, false, false));
    EXPECT_TRUE(station.messages.isEmpty());
    EXPECT_TRUE(progressTitles.isEmpty());
    EXPECT_EQ(columns(session.samples()), 4);
    expectRestored();
}

TEST_F(AddTargetsTest, RobotPositionAlreadyInTheMap)
{
    placeRobot({10, 1});
    EXPECT_TRUE(addTargetsToMap(session, false, true));
    EXPECT_EQ(station.messageTexts(), QStringList{"This target (or a nearby target) has already been added."});
    EXPECT_EQ(columns(session.samples()), 4);
}

TEST_F(AddTargetsTest, ResultIsTrueEvenWhenEveryTargetFails)
{
    robot->boxes.push_back({{90, 90}, {110, 110}});
    robot->boxes.push_back({{-110, -110}, {-90, -90}});
    selectTarget("T1", {100, 100});
    selectTarget("T2", {-100, -100.5});
    EXPECT_TRUE(addTargetsToMap(session, false, false));
    EXPECT_EQ(station.messageTexts(), (QStringList{"Unable to add target: T1 (100.000, 100.000)",
                                                   "Unable to add target: T2 (-100.000, -100.500)"}));
    // Both stay in the map as isolated nodes.
    EXPECT_EQ(columns(session.samples()), 6);
    expectNoPopUp();
    expectRestored();
}

TEST_F(AddTargetsTest, UnconnectedRobotPositionFails)
{
    robot->boxes.push_back({{40, 40}, {60, 60}});
    EXPECT_FALSE(addTargetsToMap(session, false, true));
    // The closing parenthesis without an opening one belongs to the message.
    EXPECT_EQ(station.messageTexts(), QStringList{"Unable to add current robot position: 50.000, 50.000)"});
    EXPECT_EQ(columns(session.samples()), 5);
    expectNoPopUp();
    expectRestored();
}

TEST_F(AddTargetsTest, CancelledInsertionReadsAsAlreadyAddedAndTheLoopGoesOn)
{
    selectTarget("T1", {100, 100});
    selectTarget("T2", {-100, -100});
    // T1's first candidate edge is free; the cancel is seen before the second.
    cancelAtCollisionTest(1);
    EXPECT_TRUE(addTargetsToMap(session, false, false));
    EXPECT_EQ(station.messageTexts(), (QStringList{"Target T1 (or a nearby target) has already been added.",
                                                   "Successfully added target: T2"}));
    // The cancelled outputs were kept: T1's slot in the graph without a sample.
    EXPECT_EQ(columns(session.samples()), 5);
    EXPECT_EQ(rows(session.graph()), 6);
    EXPECT_EQ(resources.progress().dialog(), nullptr);
}
