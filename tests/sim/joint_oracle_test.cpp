#include "joint_oracle.h"
#include "station.h"

#include "vorlik/item_types.h"

#include <gtest/gtest.h>

namespace {

const JointBox box{{10, -20, -90}, {40, 20, 90}};

TEST(JointOracle, BoxHoldsOnlyPointsStrictlyInside)
{
    const double inside[] = {20, 0, 0};
    const double onLowerFace[] = {10, 0, 0};
    const double onUpperFace[] = {20, 20, 0};
    const double outside[] = {50, 0, 0};
    EXPECT_TRUE(joint_oracle::boxHolds(box, inside));
    EXPECT_FALSE(joint_oracle::boxHolds(box, onLowerFace));
    EXPECT_FALSE(joint_oracle::boxHolds(box, onUpperFace));
    EXPECT_FALSE(joint_oracle::boxHolds(box, outside));
}

TEST(JointOracle, CountsEveryBoxThatHoldsThePoint)
{
    const std::vector<JointBox> boxes{box, box, {{-5, -5, -5}, {5, 5, 5}}};
    const double q[] = {20, 0, 0};
    EXPECT_EQ(joint_oracle::boxesHolding(boxes, q), 2);
}

TEST(JointOracle, LimitsIncludeTheirBoundsAndNeedEveryJoint)
{
    const std::vector<double> lower{-10, -10};
    const std::vector<double> upper{10, 10};
    const double onBound[] = {-10, 10};
    const double beyond[] = {-10.001, 0};
    EXPECT_TRUE(joint_oracle::withinLimits(lower, upper, onBound, 2));
    EXPECT_FALSE(joint_oracle::withinLimits(lower, upper, beyond, 2));
    EXPECT_FALSE(joint_oracle::withinLimits(lower, upper, onBound, 1));
}

TEST(JointOracle, MoveStepsFollowTheLargestJointChange)
{
    const double a[] = {0, 0, 0};
    const double b[] = {10, -3, 1};
    EXPECT_EQ(joint_oracle::moveSteps(a, b, 3, 4.0), 3);  // ceil(10 / 4)
    EXPECT_EQ(joint_oracle::moveSteps(a, b, 3, 5.0), 2);
    EXPECT_EQ(joint_oracle::moveSteps(a, a, 3, 4.0), 1);  // never fewer than one
}

TEST(JointOracle, JointMoveCollidesWhenAnyCheckedPointIsInABox)
{
    const std::vector<JointBox> boxes{box};
    const double a[] = {0, 0, 0};
    const double b[] = {60, 0, 0};
    // Points at 0, 20, 40, 60 with step 20: 20 lies inside.
    EXPECT_EQ(joint_oracle::testJointMove(boxes, 3, a, b, 20.0), 1);
    // Points at 0, 30, 60 with step 30: 30 lies inside.
    EXPECT_EQ(joint_oracle::testJointMove(boxes, 3, a, b, 30.0), 1);
    // One interval: only 0 and 60 are checked, both outside.
    EXPECT_EQ(joint_oracle::testJointMove(boxes, 3, a, b, 60.0), 0);
}

TEST(JointOracle, JointMoveOnlyChecksTheSampledPoints)
{
    // A thin box between two checked points is stepped over.
    const std::vector<JointBox> thin{{{10.5, -1, -1}, {11.5, 1, 1}}};
    const double a[] = {0, 0, 0};
    const double b[] = {20, 0, 0};
    EXPECT_EQ(joint_oracle::testJointMove(thin, 3, a, b, 4.0), 0);  // 0, 4, 8, 12, 16, 20
    EXPECT_EQ(joint_oracle::testJointMove(thin, 3, a, b, 1.0), 1);  // 11 is inside
}

TEST(JointOracle, StationCollisionsSumRobotsAndTheirBoxes)
{
    Station station;
    SimItem* arm1 = station.create(ItemType::Robot, QStringLiteral("Arm1"));
    arm1->lower = {-180, -90, -90};
    arm1->upper = {180, 90, 90};
    arm1->boxes = {box, box};
    arm1->jointValues = {20, 0, 0};
    SimItem* arm2 = station.create(ItemType::Robot, QStringLiteral("Arm2"));
    arm2->lower = {-180, -90, -90};
    arm2->upper = {180, 90, 90};
    arm2->boxes = {box};
    arm2->jointValues = {30, 0, 0};
    EXPECT_EQ(station.collisions(), 3);
    arm2->jointValues = {0, 0, 0};
    EXPECT_EQ(station.collisions(), 2);
    station.remove(arm1);
    EXPECT_EQ(station.collisions(), 0);
}

}  // namespace
