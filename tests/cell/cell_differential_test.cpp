#include "cell_checker.h"
#include "cell_fixture.h"
#include "cell_reference_checker.h"

#include <algorithm>
#include <random>

namespace {

// The checker against the FCL-everywhere check it replaced, on random
// configurations and moves of the bundled cell: the same counts, the same
// answers, and moves that look at the same configurations.
class AgainstFclReference : public BundledCell {
protected:
    std::vector<double> randomJoints()
    {
        std::vector<double> q(6);
        for (size_t i = 0; i < 6; ++i)
            q[i] = std::uniform_real_distribution<double>(arm->lower[i], arm->upper[i])(random);
        return q;
    }
    // A move of up to 30 degrees a joint, as a roadmap tries them.
    std::pair<std::vector<double>, std::vector<double>> randomMove()
    {
        std::vector<double> a = randomJoints(), b = a;
        for (size_t i = 0; i < 6; ++i)
            b[i] = std::clamp(a[i] + std::uniform_real_distribution<double>(-30, 30)(random), arm->lower[i],
                              arm->upper[i]);
        return {a, b};
    }

    std::mt19937 random{4711};
};

TEST_F(AgainstFclReference, RandomConfigurationsCountTheSamePairs)
{
    FclReferenceChecker reference(*station, arm);
    CellChecker culled(*station, arm);
    CellChecker unculled(*station, arm, CellChecker::Options{false});
    int colliding = 0, several = 0;
    for (int trial = 0; trial < 10000; ++trial) {
        const std::vector<double> q = randomJoints();
        const int expected = reference.collidingPairs(q.data(), false);
        ASSERT_EQ(culled.collidingPairs(q.data(), false), expected) << "trial " << trial;
        ASSERT_EQ(unculled.collidingPairs(q.data(), false), expected) << "trial " << trial;
        ASSERT_EQ(culled.collidingPairs(q.data(), true), std::min(expected, 1)) << "trial " << trial;
        ASSERT_EQ(culled.selfPairs(q.data()), reference.selfPairs(q.data())) << "trial " << trial;
        colliding += expected > 0;
        several += expected > 2;
    }
    // Both answers, and counts beyond one, came up often.
    EXPECT_GT(colliding, 1000);
    EXPECT_LT(colliding, 9000);
    EXPECT_GT(several, 100);
    // Most pairs never reached a narrow test.
    const CellStageStats& stages = culled.stageStats();
    EXPECT_GT(stages.pairsCulled, stages.pairs / 2);
    EXPECT_GT(stages.narrow.exact, 100 * stages.narrow.fcl);
}

TEST_F(AgainstFclReference, RandomMovesAnswerAlikeAfterLookingAtTheSameConfigurations)
{
    FclReferenceChecker reference(*station, arm);
    CellChecker checker(*station, arm);
    int colliding = 0;
    for (int trial = 0; trial < 1500; ++trial) {
        const auto [a, b] = randomMove();
        const int n = joint_oracle::moveSteps(a.data(), b.data(), 6, 4.0);
        const long long referenceBefore = reference.configurations();
        const long long before = station->cellStats.configurations;
        const int expected = reference.testMove(a.data(), b.data(), n);
        ASSERT_EQ(checker.testMove(a.data(), b.data(), n), expected) << "trial " << trial;
        // The ends, then the midpoints coarse to fine, up to the first hit: the same count.
        ASSERT_EQ(station->cellStats.configurations - before, reference.configurations() - referenceBefore)
            << "trial " << trial;
        colliding += expected;
    }
    EXPECT_GT(colliding, 150);
    EXPECT_LT(colliding, 1350);
}

TEST_F(AgainstFclReference, TheHostAnswersAsTheReference)
{
    FclReferenceChecker reference(*station, arm);
    for (int trial = 0; trial < 1000; ++trial) {
        const std::vector<double> q = randomJoints();
        ASSERT_EQ(collisionsAt(q), reference.collidingPairs(q.data(), false)) << "trial " << trial;
        const auto [a, b] = randomMove();
        ASSERT_EQ(moveCollides(a, b, 4.0), reference.testMove(a.data(), b.data(), joint_oracle::moveSteps(
                                                                                      a.data(), b.data(), 6, 4.0)))
            << "trial " << trial;
    }
    EXPECT_EQ(station->cellCheckerBuilds(), 1) << "one view served every check";
}

}  // namespace
