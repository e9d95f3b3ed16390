// The joint-move test that finds the points inside a box by bisection,
// compared with walking every checked point, the way the test was first
// written, over many random moves whose points fall on box faces.
#include "joint_oracle.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

namespace {

// Every point a + (b - a) * k / n, k = 0 ... n, against every box.
int walkedJointMove(const std::vector<JointBox>& boxes, int jointCount, const double* a, const double* b, double step)
{
    const int n = joint_oracle::moveSteps(a, b, jointCount, step);
    std::vector<double> point(static_cast<size_t>(jointCount));
    for (int k = 0; k <= n; ++k) {
        for (int i = 0; i < jointCount; ++i)
            point[static_cast<size_t>(i)] = a[i] + (b[i] - a[i]) * k / n;
        if (joint_oracle::boxesHolding(boxes, point.data()) > 0)
            return 1;
    }
    return 0;
}

class Draw {
public:
    explicit Draw(unsigned seed) : engine_(seed) {}
    int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
    // Mostly whole numbers and halves, so that points fall on box faces.
    double value(int range)
    {
        switch (whole(0, 3)) {
        case 0: return whole(-range, range);
        case 1: return whole(-2 * range, 2 * range) / 2.0;
        case 2: return whole(-10 * range, 10 * range) / 10.0;
        default: return std::uniform_real_distribution<double>(-range, range)(engine_);
        }
    }

private:
    std::mt19937 engine_;
};

TEST(JointOracleDifferential, BisectionFindsWhatTheWalkFinds)
{
    Draw draw(20261124);
    const double steps[] = {0.1, 0.25, 0.5, 1.0, 2.0, 3.0, 4.0, 7.5, 100.0};
    int collisions = 0;
    const int moves = 40000;
    for (int trial = 0; trial < moves; ++trial) {
        const int joints = draw.whole(1, 6);
        const int range = draw.whole(1, 3) == 1 ? 4 : 40;
        std::vector<double> a(static_cast<size_t>(joints));
        std::vector<double> b(static_cast<size_t>(joints));
        for (int i = 0; i < joints; ++i) {
            a[size_t(i)] = draw.value(range);
            // Often the same value at both ends: that joint stands still.
            b[size_t(i)] = draw.whole(0, 3) == 0 ? a[size_t(i)] : draw.value(range);
        }
        std::vector<JointBox> boxes(static_cast<size_t>(draw.whole(0, 4)));
        for (JointBox& box : boxes) {
            // Some boxes cover fewer joints than the robot has.
            const int dimensions = draw.whole(0, 5) == 0 ? draw.whole(0, joints) : joints;
            for (int i = 0; i < dimensions; ++i) {
                double low = draw.value(range);
                double high = draw.whole(0, 5) == 0 ? low : draw.value(range);
                if (high < low)
                    std::swap(low, high);
                box.lower.push_back(low);
                box.upper.push_back(high);
            }
        }
        const double step = steps[draw.whole(0, 8)];
        const int expected = walkedJointMove(boxes, joints, a.data(), b.data(), step);
        ASSERT_EQ(joint_oracle::testJointMove(boxes, joints, a.data(), b.data(), step), expected)
            << "move " << trial;
        collisions += expected;
    }
    // Both answers occur often enough for the comparison to mean something.
    EXPECT_GT(collisions, moves / 10);
    EXPECT_LT(collisions, moves * 9 / 10);
}

TEST(JointOracleDifferential, ValuesThatAreNoFiniteNumbersAreInNoBox)
{
    // Along such a move every point is NaN or infinite, strictly inside no
    // box; the walk would visit a billion of them to say so.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const std::vector<JointBox> boxes{{{-10, -10}, {10, 10}}};
    const double ends[][2] = {{0, nan}, {nan, 0}, {0, inf}, {inf, 0}, {-inf, inf}, {0, -inf}, {-1e308, 1e308}};
    for (const auto& pair : ends) {
        const double a[] = {pair[0], 0};
        const double b[] = {pair[1], 0};
        EXPECT_EQ(joint_oracle::testJointMove(boxes, 2, a, b, 4.0), 0) << pair[0] << " to " << pair[1];
    }
    // Nothing lies strictly beyond a bound that is no number.
    const std::vector<JointBox> odd{{{nan, -10}, {10, 10}}, {{-10, -10}, {nan, 10}}};
    const double from[] = {-20, 0};
    const double to[] = {20, 0};
    EXPECT_EQ(joint_oracle::testJointMove(odd, 2, from, to, 4.0), walkedJointMove(odd, 2, from, to, 4.0));
    EXPECT_EQ(joint_oracle::testJointMove(odd, 2, to, from, 4.0), walkedJointMove(odd, 2, to, from, 4.0));
    // A box of no joints holds every point, these too.
    const std::vector<JointBox> everywhere{{{}, {}}};
    const double a[] = {nan, 0};
    EXPECT_EQ(joint_oracle::testJointMove(everywhere, 2, a, a, 4.0), walkedJointMove(everywhere, 2, a, a, 4.0));
}

}  // namespace
