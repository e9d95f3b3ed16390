// What the window says of changes, its title, and what a robot collides with.
#include "collision_report.h"
#include "program_playback.h"
#include "station.h"
#include "station_document.h"
#include "station_news.h"

#include "vorlik/item_types.h"

#include <gtest/gtest.h>

namespace {

TEST(StationNews, SaysWhatCameAndWentByKind)
{
    Station station;
    SimItem* robot = station.create(ItemType::Robot, "Arm1");
    SimItem* a = station.create(ItemType::Target, "A");
    SimItem* b = station.create(ItemType::Target, "B");
    SimItem* p = station.create(ItemType::Program, "P");
    const station_news::Items before{{robot, ItemType::Robot}, {a, ItemType::Target}};
    const station_news::Items after{{robot, ItemType::Robot}, {b, ItemType::Target}, {p, ItemType::Program}};
    EXPECT_EQ(station_news::itemsAddedOrDeleted(before, after), "Added 1 target and 1 program; Deleted 1 target");
    EXPECT_EQ(station_news::itemsAddedOrDeleted(after, after), "");
    const station_news::Items three{{a, ItemType::Target}, {b, ItemType::Target}, {p, ItemType::Program},
                                    {robot, ItemType::Robot}};
    EXPECT_EQ(station_news::itemsAddedOrDeleted({}, three), "Added 1 robot, 2 targets and 1 program");
    EXPECT_EQ(station_news::programWritten("Main", 1, 2), "Program Main written: 1 joint move, 2 calls");
    EXPECT_EQ(station_news::programWritten("PickToPlace", 4, 0), "Program PickToPlace written: 4 joint moves");
}

TEST(StationDocument, TitleNamesTheFileAndLeavesRoomForTheModifiedMark)
{
    StationDocument document;
    EXPECT_EQ(document.windowTitle(), "untitled[*] - Vorlik");
    document.stored("/cells/planned.json", 7);
    EXPECT_EQ(document.windowTitle(), "planned.json[*] - Vorlik");
    EXPECT_FALSE(document.modified(7));
    EXPECT_TRUE(document.modified(8));
    document.stored("/cells/odd[*].json", 0);
    EXPECT_EQ(document.windowTitle(), "odd[*][*].json[*] - Vorlik") << "a mark in the name is no mark";
}

TEST(StationRevision, EveryChangeAStationFileHoldsCounts)
{
    Station station;
    SimItem* robot = station.create(ItemType::Robot, "Arm1");
    robot->lower = {-10};
    robot->upper = {10};
    const auto at = station.revision();
    robot->setName("Arm2");
    EXPECT_GT(station.revision(), at);
    const auto named = station.revision();
    const double q = 5;
    robot->setJoints(JointVector(&q, 1));
    EXPECT_GT(station.revision(), named);
    const auto moved = station.revision();
    robot->name();
    JointVector joints;
    robot->joints(joints);
    EXPECT_EQ(station.revision(), moved) << "questions change nothing";
    station.forgetChanges();
    EXPECT_EQ(station.revision(), 0u);
}

TEST(CollisionReport, NamesTheJointBoxesThatHoldTheConfiguration)
{
    Station station;
    SimItem* robot = station.create(ItemType::Robot, "Arm1");
    robot->lower = {-90, -90};
    robot->upper = {90, 90};
    robot->boxes = {{{-10, -10}, {10, 10}}, {{50, 50}, {60, 60}}, {{0, -90}, {20, 90}}};
    EXPECT_EQ(collisionReport(station, robot, {5, 5}),
              (QStringList{"joint box 1 (joint space)", "joint box 3 (joint space)"}));
    EXPECT_TRUE(collisionReport(station, robot, {30, 30}).isEmpty());
    EXPECT_TRUE(collisionReport(station, robot, {5}).isEmpty()) << "not the robot's joint count";
    SimItem* target = station.create(ItemType::Target, "T");
    target->robot = robot;
    target->jointValues = {55, 55};
    EXPECT_TRUE(targetCollides(station, target));
    target->jointValues = {-50, 0};
    EXPECT_FALSE(targetCollides(station, target));
}

TEST(ProgramPlayback, GoesThroughTheTargetsAndTheProgramsCalledAtAReadablePace)
{
    Station station;
    SimItem* robot = station.create(ItemType::Robot, "Arm1");
    robot->lower = {-180, -180};
    robot->upper = {180, 180};
    auto target = [&](const char* name, std::vector<double> joints) {
        SimItem* item = station.create(ItemType::Target, name);
        item->robot = robot;
        item->jointValues = std::move(joints);
        return item;
    };
    SimItem* a = target("A", {0, 0});
    SimItem* b = target("B", {10, -3});
    SimItem* c = target("C", {10, 1});
    SimItem* sub = station.create(ItemType::Program, "Sub");
    sub->robot = robot;
    sub->instructions = {{c, {}, {}}, {nullptr, "Main", {}}};  // a call back into Main is not followed
    SimItem* main = station.create(ItemType::Program, "Main");
    main->robot = robot;
    main->instructions = {{a, {}, {}}, {b, {}, {}}, {nullptr, "Sub", {}}, {nullptr, "Nowhere", {}}};
    const ProgramPlayback playback = playbackOf(station, main);
    EXPECT_EQ(playback.robot, robot);
    // A to B: 10 degrees in 5 frames of 2; B to C: 4 degrees in 2.
    const std::vector<std::vector<double>> expected{{0, 0},  {2, -0.6}, {4, -1.2}, {6, -1.8}, {8, -2.4},
                                                    {10, -3}, {10, -1},  {10, 1}};
    ASSERT_EQ(playback.configurations.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        for (size_t j = 0; j < 2; ++j)
            EXPECT_DOUBLE_EQ(playback.configurations[i][j], expected[i][j]) << "frame " << i;
    }
    EXPECT_TRUE(playbackOf(station, a).empty()) << "a target is no program";
}

}  // namespace

namespace {

TEST(ProgramPlayback, ProgramsCallingEachOtherOverAndOverPlayUpToALimit)
{
    // Each of 16 programs calls the next four times: 4^15 moves if followed whole.
    Station station;
    SimItem* robot = station.create(ItemType::Robot, "Arm1");
    robot->lower = {-180};
    robot->upper = {180};
    SimItem* a = station.create(ItemType::Target, "A");
    a->robot = robot;
    a->jointValues = {-100};
    SimItem* b = station.create(ItemType::Target, "B");
    b->robot = robot;
    b->jointValues = {100};
    std::vector<SimItem*> programs;
    for (int i = 0; i < 16; ++i) {
        SimItem* program = station.create(ItemType::Program, QStringLiteral("P%1").arg(i));
        program->robot = robot;
        programs.push_back(program);
    }
    for (int i = 0; i < 16; ++i) {
        programs[size_t(i)]->instructions = {{a, {}, {}}, {b, {}, {}}};
        for (int call = 0; i + 1 < 16 && call < 4; ++call)
            programs[size_t(i)]->instructions.push_back({nullptr, QStringLiteral("P%1").arg(i + 1), {}});
    }
    const ProgramPlayback playback = playbackOf(station, programs.front());
    EXPECT_EQ(playback.configurations.size(), ProgramPlayback::MostConfigurations);
    EXPECT_EQ(playback.configurations.front(), std::vector<double>{-100});
}

}  // namespace
