#include "host_collision_checker.h"
#include "vorlik/joint_vector.h"

#include "fake_host.h"

#include <gtest/gtest.h>

TEST(EdgeValidation, IdenticalConfigurationsHaveDistanceZero)
{
    const double a[3] = {12.5, -3, 7};
    EXPECT_EQ(JointVector::distance(a, a, 3), 0.0);
}

TEST(EdgeValidation, DistanceIsTheL1Sum)
{
    const double a[3] = {0, 0, 0};
    const double b[3] = {10, -5, 2};
    EXPECT_EQ(JointVector::distance(a, b, 3), 17.0);
    EXPECT_EQ(JointVector::distance(a, b, 0), 0.0);
    EXPECT_EQ(JointVector::distance(a, b, -1), 0.0);
}

TEST(EdgeValidation, DistanceIsNotWeighted)
{
    const double a[2] = {0, 0};
    const double one[2] = {10, 0};
    const double two[2] = {5, 5};
    EXPECT_EQ(JointVector::distance(a, one, 2), JointVector::distance(a, two, 2));
}

TEST(EdgeValidation, AsksTheHostWithItsOwnStep)
{
    FakeHost host;
    FakeRobot* robot = host.addRobot("Arm", {-90, -90}, {90, 90});
    const double a[2] = {0, 0};
    const double b[2] = {10, 10};
    EXPECT_EQ(HostCollisionChecker(&host, robot).jointMove(JointVector(a, 2), JointVector(b, 2)), 0);
    ASSERT_EQ(robot->lastStep.size(), 1u);
    EXPECT_EQ(robot->lastStep[0], -1.0);
}

TEST(EdgeValidation, ReturnsTheHostAnswerUnchanged)
{
    FakeHost host;
    FakeRobot* robot = host.addRobot("Arm", {-90, -90}, {90, 90});
    robot->boxes.push_back({{2, 2}, {8, 8}});
    robot->blockedAnswer = 7;
    const double a[2] = {0, 0};
    const double b[2] = {10, 10};
    EXPECT_EQ(HostCollisionChecker(&host, robot).jointMove(JointVector(a, 2), JointVector(b, 2)), 7);
}

TEST(EdgeValidation, TheHostStepSetsTheFinenessOfTheTest)
{
    FakeHost host;
    FakeRobot* robot = host.addRobot("Arm", {-90, -90}, {90, 90});
    // A thin wall between 5 and 6 on joint 0 that a coarse step jumps over.
    robot->boxes.push_back({{5, -90}, {6, 90}});
    const double a[2] = {0, 0};
    const double b[2] = {10, 0};
    QString answer;
    host.command(answer, "PathStepCollisionDeg", "10.00000");
    EXPECT_EQ(HostCollisionChecker(&host, robot).jointMove(JointVector(a, 2), JointVector(b, 2)), 0);
    host.command(answer, "PathStepCollisionDeg", "0.50000");
    EXPECT_NE(HostCollisionChecker(&host, robot).jointMove(JointVector(a, 2), JointVector(b, 2)), 0);
}
