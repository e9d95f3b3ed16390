// The planner's questions about a robot, answered with the host's own tests.
#include "host_collision_checker.h"

#include "fake_host.h"
#include "log_capture.h"

#include <gtest/gtest.h>

namespace {
class HostCollisionCheckerTest : public testing::Test {
protected:
    void SetUp() override { robot = host.addRobot("Arm", {-10, -20, -30}, {10, 20, 30}); }

    FakeHost host;
    FakeRobot* robot = nullptr;
};

JointVector joints(double a, double b, double c)
{
    const double values[3] = {a, b, c};
    return JointVector(values, 3);
}
}  // namespace

TEST_F(HostCollisionCheckerTest, JointLimitsAndCount)
{
    JointVector lo;
    JointVector hi;
    HostCollisionChecker(&host, robot).jointLimits(lo, hi);
    EXPECT_EQ(lo.count(), 3);
    EXPECT_EQ(lo[2], -30.0);
    EXPECT_EQ(hi[1], 20.0);
}

TEST_F(HostCollisionCheckerTest, CollisionCountMovesTheRobotAndRefreshes)
{
    robot->boxes.push_back({{0, 0, 0}, {5, 5, 5}});
    HostCollisionChecker checker(&host, robot);
    LogCapture log;
    EXPECT_EQ(checker.collisionCount(joints(1, 2, 3)), 1);
    EXPECT_EQ(robot->currentJoints()[2], 3.0);
    ASSERT_FALSE(host.updates.empty());
    EXPECT_EQ(host.updates.back(), 255);
    EXPECT_EQ(checker.collisionCount(joints(-1, 2, 3)), 0);
    ASSERT_GE(log.messages().size(), 2);
    EXPECT_TRUE(log.messages()[0].startsWith("Collision checking for: Arm"));
    EXPECT_TRUE(log.messages()[0].endsWith("1.000, 2.000, 3.000"));
    EXPECT_EQ(log.messages()[1], QString("Collisions found: 1"));
}

TEST_F(HostCollisionCheckerTest, AcceptanceAsksTheRobot)
{
    HostCollisionChecker checker(&host, robot);
    EXPECT_TRUE(checker.accepts(joints(10, -20, 0)));
    EXPECT_FALSE(checker.accepts(joints(10.5, 0, 0)));
}
