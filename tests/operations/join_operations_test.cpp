#include "join_operations.h"

#include "log_capture.h"
#include "operation_test.h"

namespace {
const char* const SelectTwoTargets = "Select 2 targets to automatically join the path";
const char* const SelectTwoPrograms = "Select 2 or more programs to automatically join them";
}  // namespace

class JoinOperationsTest : public UiTest {
protected:
    JoinOperationsTest()
    {
        setLineMap(20);  // samples (0, 0) ... (190, 0), each joined to the next
        session.setSettings([](PlannerSettings& s) { s.samples = 5; });
    }

    StationItem* target(const QString& name, const Joints& values)
    {
        return station.addStationTarget(name, robot, values);
    }

    // A program moving from `start` to `end` through two targets of its own.
    StationItem* program(const QString& name, const Joints& start, const Joints& end)
    {
        return station.addStationProgram(name, robot, {target(name + "-a", start), target(name + "-b", end)});
    }

    StationItem* programNamed(const QString& name)
    {
        return static_cast<StationItem*>(station.getItem(name, ItemType::Program));
    }

    QStringList programNames()
    {
        QStringList names;
        for (HostItem* item : station.itemsOfType(ItemType::Program))
            names << item->name();
        return names;
    }

    static Joints movedJoints(StationItem* program, int index)
    {
        JointVector j;
        program->moves.at(index)->joints(j);
        return {j[0], j[1]};
    }
};

TEST_F(JoinOperationsTest, SmartJoinOfProgramsWhenTheFirstSelectedIsAProgram)
{
    station.selection << program("A", {0, 0}, {50, 0}) << program("B", {150, 0}, {190, 0});
    linkSelection(session, false);
    EXPECT_EQ(programNames(), (QStringList{"A", "B", "SA2B", "MainSafe"}));
    EXPECT_EQ(programNamed("MainSafe")->instructions, (QStringList{"call A", "call SA2B", "call B"}));
    StationItem* link = programNamed("SA2B");
    EXPECT_EQ(movedJoints(link, 0), (Joints{50, 0}));
    EXPECT_EQ(movedJoints(link, link->moves.size() - 1), (Joints{150, 0}));
}

TEST_F(JoinOperationsTest, SmartJoinOfTargetsWhenTheFirstSelectedIsATarget)
{
    StationItem* p = program("P", {0, 0}, {10, 0});
    station.selection << target("T1", {20, 0}) << p << target("T2", {100, 0});
    linkSelection(session, false);
    EXPECT_EQ(programNames(), (QStringList{"P", "T1ToT2"}));
}

TEST_F(JoinOperationsTest, SmartJoinOfAnEmptySelectionAsksForTargets)
{
    linkSelection(session, false);
    EXPECT_EQ(station.messages, (QList<QPair<QString, bool>>{{SelectTwoTargets, true}}));
}

TEST_F(JoinOperationsTest, SmartJoinPassesSilentOn)
{
    linkSelection(session, true);
    EXPECT_EQ(station.messages, (QList<QPair<QString, bool>>{{SelectTwoTargets, false}}));
}

TEST_F(JoinOperationsTest, MissingRobotIsAlwaysAPopUp)
{
    session.setRobot(nullptr);
    StationItem* a = target("A", {0, 0});
    StationItem* b = target("B", {100, 0});
    EXPECT_EQ(linkTargets(session, true, a, b), nullptr);
    EXPECT_FALSE(linkPrograms(session, true, {program("P", {0, 0}, {1, 0}), program("Q", {5, 0}, {9, 0})}, "M"));
    EXPECT_EQ(station.messages, (QList<QPair<QString, bool>>{{"Invalid robot: add a robot or load a project", true},
                                                             {"Invalid robot: add a robot or load a project", true}}));
    EXPECT_TRUE(programNames().filter("To").isEmpty());
}

TEST_F(JoinOperationsTest, TargetsWithoutMapComputeTheMapBeforeCountingTargets)
{
    setMap({}, {});
    station.selection << target("Only", {0, 0});
    EXPECT_EQ(linkTargets(session, true, nullptr, nullptr), nullptr);
    EXPECT_EQ(columns(session.samples()), 5);
    const QStringList messages = callsStartingWith("showMessage");
    EXPECT_EQ(messages, (QStringList{"showMessage Creating map...", QString("showMessage ") + SelectTwoTargets}));
    // The computation finished (its UpdateForm) before the targets were counted.
    const int creating = station.calls.indexOf("showMessage Creating map...");
    const int computed = station.calls.indexOf("UpdateForm");
    const int counted = station.calls.indexOf(QString("showMessage ") + SelectTwoTargets);
    EXPECT_LT(creating, computed);
    EXPECT_LT(computed, counted);
}

TEST_F(JoinOperationsTest, TargetCountMessageIsAPopUpUnlessSilent)
{
    EXPECT_EQ(linkTargets(session, false, target("A", {0, 0}), nullptr), nullptr);
    EXPECT_EQ(station.messages, (QList<QPair<QString, bool>>{{SelectTwoTargets, true}}));
}

TEST_F(JoinOperationsTest, ProgramsAreCountedBeforeAnyMapIsComputed)
{
    setMap({}, {});
    station.selection << program("A", {0, 0}, {50, 0}) << target("T", {1, 1});
    EXPECT_FALSE(linkPrograms(session, false, station.selection, QString()));
    EXPECT_FALSE(linkPrograms(session, true, station.selection, QString()));
    EXPECT_EQ(station.messages,
              (QList<QPair<QString, bool>>{{SelectTwoPrograms, true}, {SelectTwoPrograms, false}}));
    EXPECT_EQ(columns(session.samples()), 0);
    EXPECT_EQ(station.collisionTests, 0);
    EXPECT_EQ(session.updateFormCount, 0);
}

TEST_F(JoinOperationsTest, ProgramsWithoutMapComputeItBeforeLinking)
{
    setMap({}, {});
    session.setSettings([](PlannerSettings& s) { s.samples = 8; });
    EXPECT_TRUE(linkPrograms(session, true, {program("A", {0, 0}, {50, 0}), program("B", {150, 0}, {190, 0})},
                              QString()));
    EXPECT_EQ(station.messages.first(), qMakePair(QString("Creating map..."), false));
    EXPECT_GE(columns(session.samples()), 8);
    EXPECT_EQ(programNamed("MainSafe")->instructions, (QStringList{"call A", "call SA2B", "call B"}));
}

TEST_F(JoinOperationsTest, OnlyTheFirstTwoOfThreeTargetsAreJoined)
{
    station.selection << target("T1", {20, 0}) << target("T2", {100, 0}) << target("T3", {180, 0});
    LogCapture log;
    Item joined = linkTargets(session, false, nullptr, nullptr);
    ASSERT_NE(joined, nullptr);
    EXPECT_EQ(joined->name(), "T1ToT2");
    auto* program = static_cast<StationItem*>(joined);
    EXPECT_EQ(movedJoints(program, 0), (Joints{20, 0}));
    EXPECT_EQ(movedJoints(program, program->moves.size() - 1), (Joints{100, 0}));
    EXPECT_EQ(log.countStartingWith("Trying to join targets..."), 1);
    EXPECT_EQ(log.countStartingWith("Joining targets: T1 & T2"), 1);
    EXPECT_EQ(log.countStartingWith("20.000, 0.000"), 1);
    EXPECT_EQ(log.countStartingWith("100.000, 0.000"), 1);
}

TEST_F(JoinOperationsTest, GivenTargetIsCompletedFromTheSelection)
{
    StationItem* a = target("A", {20, 0});
    station.selection << target("B", {100, 0});
    Item joined = linkTargets(session, true, a, nullptr);
    ASSERT_NE(joined, nullptr);
    EXPECT_EQ(joined->name(), "AToB");
}

TEST_F(JoinOperationsTest, GivenTargetThatIsAlsoSelectedFirstIsJoinedWithItself)
{
    StationItem* a = target("A", {20, 0});
    station.selection << a << target("B", {100, 0});
    LogCapture log;
    EXPECT_EQ(linkTargets(session, true, a, nullptr), nullptr);
    EXPECT_EQ(log.countStartingWith("Joining targets: A & A"), 1);
    EXPECT_EQ(log.countStartingWith("Something is wrong with the robot route!!"), 1);
    EXPECT_TRUE(programNames().isEmpty());
}

TEST_F(JoinOperationsTest, ProgramsFirstInSelectionDropTheTargets)
{
    station.selection << program("A", {0, 0}, {50, 0}) << target("T", {120, 0}) << program("B", {150, 0}, {190, 0});
    linkSelection(session, false);
    EXPECT_EQ(programNames(), (QStringList{"A", "B", "SA2B", "MainSafe"}));
    EXPECT_EQ(programNamed("MainSafe")->instructions, (QStringList{"call A", "call SA2B", "call B"}));
}

TEST_F(JoinOperationsTest, ProgramsThatMeetNeedNoLink)
{
    // End of A and start of B are 1.0 apart (L1).
    EXPECT_TRUE(linkPrograms(session, false, {program("A", {0, 0}, {50, 0}), program("B", {50.5, 0.5}, {90, 0})},
                              QString()));
    EXPECT_EQ(programNames(), (QStringList{"A", "B", "MainSafe"}));
    EXPECT_EQ(programNamed("MainSafe")->instructions, (QStringList{"call A", "call B"}));
    EXPECT_EQ(robot->jointMoveTests, 0);
}

TEST_F(JoinOperationsTest, ProgramWithoutMovesIsCalledAndBridged)
{
    StationItem* empty = station.addStationProgram("E", robot, {});
    EXPECT_TRUE(linkPrograms(session, false, {program("A", {0, 0}, {50, 0}), empty, program("B", {150, 0}, {190, 0})},
                              QString()));
    EXPECT_EQ(station.messages,
              (QList<QPair<QString, bool>>{{"Program E does not contain any movements", false}}));
    EXPECT_EQ(programNamed("MainSafe")->instructions, (QStringList{"call A", "call E", "call SA2B", "call B"}));
}

TEST_F(JoinOperationsTest, FailedLinkStopsWithoutMainProgram)
{
    // B starts inside an obstacle, off every sample: no edge reaches it.
    robot->boxes.push_back({{140, -10}, {160, 10}});
    EXPECT_FALSE(linkPrograms(session, true,
                               {program("A", {0, 0}, {50, 0}), program("B", {145, 5}, {190, 0}),
                                program("C", {300, 0}, {310, 0})},
                               "Main"));
    const QStringList texts = station.messageTexts();
    ASSERT_EQ(texts.size(), 2);
    EXPECT_TRUE(texts[0].startsWith("The robot is unable to reach the second target for program <strong>SA2B"));
    EXPECT_EQ(texts[1], "Unable to create program: SA2B");
    for (const auto& message : station.messages)
        EXPECT_FALSE(message.second);
    EXPECT_EQ(programNamed("Main"), nullptr);
    EXPECT_EQ(programNamed("SB2C"), nullptr);
}

TEST_F(JoinOperationsTest, ChainOfThreeProgramsUnderAGivenName)
{
    LogCapture log;
    EXPECT_TRUE(linkPrograms(session, false,
                              {program("A", {0, 0}, {30, 0}), program("B", {80, 0}, {120, 0}),
                               program("C", {170, 0}, {190, 0})},
                              "Main 1"));
    EXPECT_EQ(programNames(), (QStringList{"A", "B", "C", "SA2B", "SB2C", "Main 1"}));
    EXPECT_EQ(programNamed("Main 1")->instructions,
              (QStringList{"call A", "call SA2B", "call B", "call SB2C", "call C"}));
    EXPECT_EQ(callsStartingWith("Main 1 addProgramCall"),
              (QStringList{"Main 1 addProgramCall A 0", "Main 1 addProgramCall SA2B 0", "Main 1 addProgramCall B 0",
                           "Main 1 addProgramCall SB2C 0", "Main 1 addProgramCall C 0"}));
    EXPECT_EQ(log.countStartingWith("Trying to join programs..."), 1);
    EXPECT_EQ(log.countStartingWith("Joining programs: A & B"), 1);
    EXPECT_EQ(log.countStartingWith("Joining programs: B & C"), 1);
}

TEST_F(JoinOperationsTest, GeneratedNamesAreSanitised)
{
    station.selection << target("P-1", {20, 0}) << target("Pt 2", {100, 0});
    Item joined = linkTargets(session, false, nullptr, nullptr);
    ASSERT_NE(joined, nullptr);
    EXPECT_EQ(joined->name(), "P1ToPt2");

    EXPECT_TRUE(linkPrograms(session, false,
                              {program("Prog-A", {0, 0}, {30, 0}), program("Prog (B)", {80, 0}, {120, 0})},
                              QString()));
    EXPECT_NE(programNamed("SProgA2ProgB"), nullptr);
    EXPECT_EQ(programNamed("MainSafe")->instructions,
              (QStringList{"call Prog-A", "call SProgA2ProgB", "call Prog (B)"}));
}
