// The log's configuration text against JointVector::toText, which it replaces.
#include "joint_values_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

void expectAsToText(const std::vector<double>& values)
{
    const JointVector joints(values.data(), int(values.size()));
    ASSERT_EQ(jointValuesText(joints), joints.toText(", ", 3)) << values.size() << " values";
}

}  // namespace

TEST(JointValuesText, RandomJointValuesAreWrittenAsToTextWritesThem)
{
    std::mt19937_64 engine(20261124);
    std::uniform_real_distribution<double> angle(-400.0, 400.0);
    std::uniform_int_distribution<int> count(0, 8);
    for (int i = 0; i < 200000; ++i) {
        std::vector<double> values(size_t(count(engine)) + 1);
        for (double& v : values)
            v = angle(engine);
        expectAsToText(values);
    }
}

TEST(JointValuesText, ExactHalvesRoundAsQtRoundsThem)
{
    // j / 16 for odd j lies exactly halfway between two thousandths; j / 1000,
    // j / 2000 and j / 8192 on and near the rounding points.
    for (int j = -200000; j <= 200000; ++j) {
        expectAsToText({j / 16.0});
        expectAsToText({j / 1000.0});
        expectAsToText({j / 2000.0});
        expectAsToText({j / 8192.0});
    }
}

TEST(JointValuesText, ZerosTinyHugeAndNonNumbersAsToText)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    for (double v : {0.0, -0.0, -0.0001, -0.0004999, -0.0005, 0.0005, 1e-300, -1e-300, 0.9995, -0.9995, 999.9995,
                     -999.9995, 999999999999.0, 1e12, -1e12, 1e15 + 0.5, 1e300, -1e300, nan, -nan, inf, -inf,
                     std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max()})
        expectAsToText({1.5, v, -2.25});
    expectAsToText({});
}
