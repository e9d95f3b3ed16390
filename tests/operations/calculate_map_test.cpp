#include "calculate_map.h"

#include "log_capture.h"
#include "question_answerer.h"
#include "operation_test.h"

#include <memory>

namespace {
const char* const ReplaceQuestion =
    "Operation cancelled:<br>Do you want to replace the previous map even if the operation didn't complete?";
}  // namespace

class CalculateMapTest : public UiTest {
protected:
    CalculateMapTest()
    {
        session.setSettings([](PlannerSettings& s) { s.samples = 10; });
        session.setSettings([](PlannerSettings& s) { s.edgesPerSample = 3; });
    }

    // The robot's moves to configurations under test, in order (the last
    // move of a run puts the robot back).
    QStringList robotMoves() const { return callsStartingWith("Arm setJoints "); }

    // A stored map of two samples, far from anything drawn later.
    void setPreviousMap() { setMap({{-300, -300}, {-290, -300}}, {{1, 2}}); }

    // Runs a computation that is cancelled while sample 4 tests its edges,
    // and answers the question, if one comes, with `answer`. Collision tests
    // 1, 2, 4 and 7 search samples 1 to 4, the others test edges; the cancel
    // at the 8th is seen before the next edge.
    std::unique_ptr<QuestionAnswerer> calculateCancelledLate(QMessageBox::StandardButton answer)
    {
        cancelAtCollisionTest(station.collisionTests + 8);
        auto answerer = std::make_unique<QuestionAnswerer>(answer);
        calculateMap(session);
        return answerer;
    }
};

TEST_F(CalculateMapTest, WithoutRobotOnlyThePopUpIsShown)
{
    session.setRobot(nullptr);
    calculateMap(session);
    EXPECT_EQ(station.calls, QStringList{"showMessage Invalid robot: add a robot or load a project [popup]"});
    EXPECT_EQ(station.collisionTests, 0);
    EXPECT_FALSE(session.settingsChanged());
    EXPECT_EQ(session.updateFormCount, 0);
    EXPECT_EQ(resources.progress().dialog(), nullptr);
}

TEST_F(CalculateMapTest, CompleteMapReplacesTheStoredOneAndIsShown)
{
    setPreviousMap();
    placeRobot({5, 6});
    station.FakeHost::setRenderMode(4);
    QStringList titles;
    QList<int> modes;
    station.onCollisionTest = [&](int) {
        titles << (resources.progress().dialog() ? resources.progress().dialog()->windowTitle() : QString());
        modes << station.renderMode();
    };
    LogCapture log;
    calculateMap(session);

    EXPECT_EQ(rows(session.samples()), 2);
    EXPECT_EQ(columns(session.samples()), 10);
    EXPECT_EQ(rows(session.graph()), 10);
    EXPECT_EQ(columns(session.graph()), 10);
    EXPECT_GT(at(session.graph(), 1, 0), 0.0) << "sample 2 is linked to sample 1 in free space";
    EXPECT_EQ(robot->shownColumns, 10);
    EXPECT_EQ(robot->shownRows, 2);
    ASSERT_FALSE(titles.isEmpty());
    for (const QString& title : titles)
        EXPECT_EQ(title, "Calculating collision Map...");
    for (int mode : modes)
        EXPECT_EQ(mode, 1);

    // Restored afterwards: render mode first, then the robot, then the refresh.
    const int restoreMode = station.calls.lastIndexOf("setRenderMode 4");
    const int restoreRobot = station.calls.lastIndexOf("Arm setJoints 5.000, 6.000");
    const int refresh = station.calls.lastIndexOf("update 255");
    EXPECT_LT(restoreMode, restoreRobot);
    EXPECT_LT(restoreRobot, refresh);
    EXPECT_EQ(station.calls.last(), "UpdateForm");
    EXPECT_EQ(station.renderMode(), 4);
    EXPECT_EQ(robot->currentJoints().toText(",", 1), "5.0,6.0");
    EXPECT_EQ(resources.progress().dialog(), nullptr);
    EXPECT_TRUE(session.settingsChanged());
    EXPECT_EQ(session.updateFormCount, 1);
    EXPECT_EQ(log.countStartingWith("Done calculating PRM"), 1);
    EXPECT_EQ(log.countStartingWith("Operation aborted!"), 0);
}

TEST_F(CalculateMapTest, SeedsAreTheRobotsTargetsAtTheirStationPositions)
{
    // A (this robot), B (another robot), C (this robot): two seeds counted,
    // columns 0 and 1 kept, so A's joints and B's empty column.
    FakeRobot* other = station.addRobot("Other", {-360, -360}, {360, 360});
    station.addStationTarget("A", robot, {11, 12});
    station.addStationTarget("B", other, {21, 22});
    station.addStationTarget("C", robot, {31, 32});
    session.setSettings([](PlannerSettings& s) { s.samples = 3; });
    calculateMap(session);
    ASSERT_EQ(columns(session.samples()), 3);
    EXPECT_EQ(sample(1), (Joints{11, 12}));
    EXPECT_EQ(sample(2), (Joints{0, 0}));
    const QStringList moves = robotMoves();
    ASSERT_GE(moves.size(), 3);
    EXPECT_EQ(moves[0], "Arm setJoints 11.000, 12.000");
    EXPECT_EQ(moves[1], "Arm setJoints 0.000, 0.000");
    EXPECT_NE(moves[2], "Arm setJoints 31.000, 32.000") << "C's joints fell off the end";
    EXPECT_NE(sample(3), (Joints{31, 32}));
}

TEST_F(CalculateMapTest, TargetsOfOtherRobotsOrJointCountsAreNoSeeds)
{
    FakeRobot* other = station.addRobot("Other", {-360, -360}, {360, 360});
    FakeRobot* bigger = station.addRobot("Bigger", {-360, -360, -360}, {360, 360, 360});
    station.addStationTarget("O", other, {21, 22});
    station.addStationTarget("W", bigger, {41, 42, 43});
    station.addStationTarget("X", robot, {51, 52, 53});  // this robot, but three joints
    session.setSettings([](PlannerSettings& s) { s.samples = 2; });
    calculateMap(session);
    ASSERT_EQ(columns(session.samples()), 2);
    EXPECT_NE(sample(1), (Joints{21, 22}));
    EXPECT_NE(sample(1), (Joints{41, 42}));
    EXPECT_NE(sample(1), (Joints{51, 52}));
    EXPECT_NE(sample(1), (Joints{0, 0})) << "no seed at all: the first sample is drawn at random";
}

TEST_F(CalculateMapTest, SkippedTargetBeforeAnAcceptedOneGivesAZeroSeed)
{
    station.addStationTarget("X", robot, {51, 52, 53});
    station.addStationTarget("A", robot, {11, 12});
    session.setSettings([](PlannerSettings& s) { s.samples = 2; });
    calculateMap(session);
    ASSERT_EQ(columns(session.samples()), 2);
    EXPECT_EQ(sample(1), (Joints{0, 0}));
    EXPECT_NE(sample(2), (Joints{11, 12}));
}

TEST_F(CalculateMapTest, CancelBeforeTheFirstSampleKeepsThePreviousMap)
{
    setPreviousMap();
    // The only seed collides, so the first search reports an attempt, and
    // the cancel is seen there.
    robot->boxes.push_back({{0, 0}, {20, 20}});
    station.addStationTarget("Blocked", robot, {10, 10});
    cancelAtCollisionTest(1);
    QuestionAnswerer answerer(QMessageBox::Yes);
    LogCapture log;
    calculateMap(session);

    EXPECT_FALSE(answerer.asked);
    EXPECT_EQ(rows(session.workGraph()), 0);
    EXPECT_EQ(columns(session.samples()), 2);
    EXPECT_EQ(sample(1), (Joints{-300, -300}));
    EXPECT_EQ(robot->shownColumns, -1);
    EXPECT_EQ(log.countStartingWith("Operation aborted!"), 1);
    EXPECT_TRUE(session.settingsChanged());
    EXPECT_EQ(session.updateFormCount, 1);
}

TEST_F(CalculateMapTest, CancelWithoutPreviousMapKeepsThePartialOneWithoutAsking)
{
    const auto answerer = calculateCancelledLate(QMessageBox::No);

    EXPECT_FALSE(answerer->asked);
    EXPECT_EQ(columns(session.samples()), 4);
    EXPECT_EQ(rows(session.graph()), 4);
    EXPECT_EQ(columns(session.graph()), 4);
    EXPECT_EQ(robot->shownColumns, -1) << "a partial map is not displayed";
    EXPECT_TRUE(session.settingsChanged());
    EXPECT_EQ(session.updateFormCount, 1);
}

TEST_F(CalculateMapTest, CancelWithPreviousMapAsksAndNoKeepsIt)
{
    setPreviousMap();
    const auto answerer = calculateCancelledLate(QMessageBox::No);

    ASSERT_TRUE(answerer->asked);
    EXPECT_EQ(answerer->title, "Replace map");
    EXPECT_EQ(answerer->text, ReplaceQuestion);
    EXPECT_EQ(answerer->buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    EXPECT_EQ(columns(session.samples()), 2);
    EXPECT_EQ(sample(1), (Joints{-300, -300}));
    EXPECT_EQ(columns(session.workSamples()), 4);
    EXPECT_EQ(rows(session.workGraph()), 4);
    EXPECT_TRUE(session.settingsChanged());
    EXPECT_EQ(session.updateFormCount, 1);
    EXPECT_EQ(station.calls.last(), "UpdateForm");
}

TEST_F(CalculateMapTest, CancelWithPreviousMapAndYesReplacesWithoutShowing)
{
    setPreviousMap();
    const auto answerer = calculateCancelledLate(QMessageBox::Yes);

    ASSERT_TRUE(answerer->asked);
    EXPECT_EQ(columns(session.samples()), 4);
    EXPECT_EQ(rows(session.graph()), 4);
    EXPECT_EQ(sample(1), (Joints{at(session.workSamples(), 0, 0), at(session.workSamples(), 1, 0)}));
    EXPECT_EQ(robot->shownColumns, -1);
}

TEST_F(CalculateMapTest, CancelOrClosingTheQuestionKeepsThePreviousMap)
{
    for (QMessageBox::StandardButton answer : {QMessageBox::Cancel, QMessageBox::NoButton}) {
        setPreviousMap();
        const auto answerer = calculateCancelledLate(answer);
        ASSERT_TRUE(answerer->asked);
        EXPECT_EQ(columns(session.samples()), 2) << "answer " << answer;
        EXPECT_EQ(sample(1), (Joints{-300, -300}));
    }
}

TEST_F(CalculateMapTest, TheQuestionHasNoDefaultButton)
{
    setPreviousMap();
    const auto answerer = calculateCancelledLate(QMessageBox::No);
    ASSERT_TRUE(answerer->asked);
    EXPECT_EQ(answerer->defaultButton, nullptr);
}
