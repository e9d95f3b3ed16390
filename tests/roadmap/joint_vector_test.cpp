#include "vorlik/joint_vector.h"

#include <gtest/gtest.h>

TEST(JointVector, DistanceUsesTheSmallerCount)
{
    const double a[7] = {1, 2, 3, 4, 5, 6, 100};
    const double b[7] = {0, 0, 0, 0, 0, 0, 0};
    const JointVector six(a, 6);
    const JointVector seven(b, 7);
    EXPECT_EQ(JointVector::distance(six, seven), 21.0);
    EXPECT_EQ(JointVector::distance(seven, six), 21.0);
}

TEST(JointVector, FourteenValuesKeepTwelve)
{
    double values[14];
    for (int i = 0; i < 14; ++i)
        values[i] = i;
    const JointVector joints(values, 14);
    EXPECT_EQ(joints.count(), 12);
    EXPECT_EQ(joints[11], 11.0);
}

TEST(JointVector, ZeroedRecordIsClampedAndValidity)
{
    EXPECT_EQ(JointVector(20).count(), 12);
    EXPECT_FALSE(JointVector(0).isValid());
    EXPECT_TRUE(JointVector(1).isValid());
}

TEST(JointVector, TextWithSeparatorAndDecimals)
{
    const double values[3] = {1.0, -2.5, 3.14159};
    EXPECT_EQ(JointVector(values, 3).toText(", ", 3), QString("1.000, -2.500, 3.142"));
    EXPECT_EQ(JointVector(0).toText(", ", 3), QString());
}
