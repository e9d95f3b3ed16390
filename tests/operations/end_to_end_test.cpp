#include "calculate_map.h"
#include "join_joints.h"

#include "operation_test.h"

// The whole way on the joint-space oracle: a map around a wall, then a route
// through it between two configurations that the wall separates.
class EndToEndTest : public UiTest {
protected:
    EndToEndTest()
    {
        robot = station.addLoggedRobot("Arm2", {-180, -180}, {180, 180});
        robot->boxes.push_back({{-30, -120}, {30, 120}});
        session.setRobot(robot);
        // Query nodes within this distance of a sample would reuse it; kept
        // tiny so that the first query surely adds both configurations.
        session.setSettings([](PlannerSettings& s) { s.robotStepDeg = 0.01; });
    }

    Item query()
    {
        return linkJointValues(session, true, start, end, "Across");
    }

    // The joints of every target the program moves through, in order.
    static std::vector<JointVector> route(HostItem* program)
    {
        std::vector<JointVector> configurations;
        for (HostItem* target : static_cast<StationItem*>(program)->moves) {
            JointVector j;
            configurations.push_back(target->joints(j));
        }
        return configurations;
    }

    void expectFreeRouteFromStartToEnd(HostItem* program)
    {
        const std::vector<JointVector> configurations = route(program);
        ASSERT_GE(configurations.size(), 3u) << "the wall cannot be passed in one move";
        EXPECT_EQ(configurations.front().toText(",", 6), start.toText(",", 6));
        EXPECT_EQ(configurations.back().toText(",", 6), end.toText(",", 6));
        for (size_t i = 0; i + 1 < configurations.size(); ++i) {
            const int before = robot->jointMoveTests;
            EXPECT_EQ(robot->testJointMove(configurations[i], configurations[i + 1], -1.0), 0)
                << "move " << i + 1 << " collides";
            EXPECT_EQ(robot->jointMoveTests, before + 1);
        }
        const QStringList names = [&] {
            QStringList list;
            for (HostItem* target : static_cast<StationItem*>(program)->moves)
                list << target->name();
            return list;
        }();
        ASSERT_EQ(names.size(), columns(session.route()));
        for (int i = 0; i < names.size(); ++i)
            EXPECT_EQ(names[i], QString("Pt %1 (S%2)").arg(i + 1).arg(at(session.route(), 0, i)));
        EXPECT_EQ(names.first(), "Pt 1 (S101)");
        EXPECT_EQ(names.last(), QString("Pt %1 (S102)").arg(names.size()));
    }

    JointVector start = joints({-90, 0});
    JointVector end = joints({90, 0});
};

TEST_F(EndToEndTest, RouteAroundTheWallAndTheSameQueryAgain)
{
    ASSERT_TRUE(robot->moveCollides(start.values(), end.values(), station.collisionStep()));

    calculateMap(session);
    ASSERT_EQ(columns(session.samples()), 100);
    ASSERT_EQ(rows(session.samples()), 2);
    for (int k = 0; k < 100; ++k)
        EXPECT_FALSE(robot->collides(column(session.samples(), k))) << "sample " << k + 1;

    HostItem* program = query();
    ASSERT_NE(program, nullptr) << station.messageTexts().join("\n").toStdString();
    EXPECT_EQ(program->name(), "Across");
    EXPECT_EQ(columns(session.samples()), 102);
    expectFreeRouteFromStartToEnd(program);
    // The robot is left at the first configuration of the route.
    EXPECT_EQ(robot->currentJoints().toText(",", 6), start.toText(",", 6));

    const int testsBefore = robot->jointMoveTests;
    HostItem* again = query();
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(columns(session.samples()), 102) << "both query nodes are reused";
    EXPECT_EQ(rows(session.graph()), 102);
    EXPECT_EQ(robot->jointMoveTests, testsBefore);
    EXPECT_TRUE(static_cast<StationItem*>(program)->deleted) << "the program of that name is replaced";
    expectFreeRouteFromStartToEnd(again);
}
