#include "collision_check.h"
#include "host_access.h"
#include "progress_reporter.h"
#include "random_generator.h"
#include "roadmap_matrix.h"

#include "fake_host.h"
#include "log_capture.h"
#include "reference_random.h"

#include <gtest/gtest.h>

namespace {
class CollisionCheckTest : public testing::Test {
protected:
    void SetUp() override
    {
        setRoadmapHost(&host);
        robot = host.addRobot("Arm", {-10, -20, -30}, {10, 20, 30});
        readJointLimits(robot, lower, upper);
        progressReporter().start(nullptr, "Search");
    }
    void TearDown() override
    {
        progressReporter().finish();
        setRoadmapHost(nullptr);
    }

    // A seed list of J rows, one column per configuration.
    ScopedMatrix seedList(const std::vector<std::vector<double>>& seeds, int rowCount = 3)
    {
        ScopedMatrix m = makeScopedMatrix();
        setSize(m.get(), rowCount, static_cast<int>(seeds.size()));
        for (size_t c = 0; c < seeds.size(); ++c)
            for (int r = 0; r < rowCount; ++r)
                at(m.get(), r, static_cast<int>(c)) = seeds[c][r];
        return m;
    }

    // Boxes that make every configuration within the limits collide.
    void blockEverything() { robot->boxes.push_back({{-11, -21, -31}, {11, 21, 31}}); }

    FakeHost host;
    FakeRobot* robot = nullptr;
    double lower[JointVector::MaxJoints] = {};
    double upper[JointVector::MaxJoints] = {};
    double cursor = 1.0;
    double cancel = -1.0;
    Configuration found{};
};
}  // namespace

TEST_F(CollisionCheckTest, JointLimitsAndCount)
{
    double lo[JointVector::MaxJoints] = {};
    double hi[JointVector::MaxJoints] = {};
    EXPECT_EQ(readJointLimits(robot, lo, hi), 3);
    EXPECT_EQ(lo[2], -30.0);
    EXPECT_EQ(hi[1], 20.0);
    EXPECT_EQ(lo[3], 0.0);
}

TEST_F(CollisionCheckTest, CollisionCountMovesTheRobotAndRefreshes)
{
    robot->boxes.push_back({{0, 0, 0}, {5, 5, 5}});
    const double inside[3] = {1, 2, 3};
    const double outside[3] = {-1, 2, 3};
    LogCapture log;
    EXPECT_EQ(collisionCount(robot, inside, 3), 1);
    EXPECT_EQ(robot->currentJoints()[2], 3.0);
    ASSERT_FALSE(host.updates.empty());
    EXPECT_EQ(host.updates.back(), 255);
    EXPECT_EQ(collisionCount(robot, outside, 3), 0);
    ASSERT_GE(log.messages().size(), 2);
    EXPECT_TRUE(log.messages()[0].startsWith("Collision checking for: Arm"));
    EXPECT_TRUE(log.messages()[0].endsWith("1.000, 2.000, 3.000"));
    EXPECT_EQ(log.messages()[1], QString("Collisions found: 1"));
}

TEST_F(CollisionCheckTest, RejectionAsksTheRobot)
{
    const double inLimits[3] = {10, -20, 0};
    const double beyond[3] = {10.5, 0, 0};
    EXPECT_FALSE(configurationRejected(robot, inLimits, 3));
    EXPECT_TRUE(configurationRejected(robot, beyond, 3));
}

TEST_F(CollisionCheckTest, FreeSeedIsTakenFirstAndTheCursorAdvances)
{
    ScopedMatrix seeds = seedList({{1, 2, 3}, {4, 5, 6}});
    findFreeConfiguration(robot, lower, upper, 3, seeds.get(), &cursor, found, &cancel);
    EXPECT_EQ(cancel, 0.0);
    EXPECT_EQ(cursor, 2.0);
    EXPECT_EQ(found[0], 1.0);
    EXPECT_EQ(found[2], 3.0);
    EXPECT_EQ(found[3], 0.0);
    findFreeConfiguration(robot, lower, upper, 3, seeds.get(), &cursor, found, &cancel);
    EXPECT_EQ(cursor, 3.0);
    EXPECT_EQ(found[1], 5.0);
}

TEST_F(CollisionCheckTest, SeedListWithFewerRowsThanJointsIsSkipped)
{
    ScopedMatrix seeds = seedList({{1, 2}, {3, 4}}, 2);
    ReferenceRandom reference(processRandom().outputsDrawn());
    findFreeConfiguration(robot, lower, upper, 3, seeds.get(), &cursor, found, &cancel);
    EXPECT_EQ(cursor, 1.0);
    EXPECT_EQ(host.collisionTests, 1);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(found[i], reference.uniform() * (upper[i] - lower[i]) + lower[i]);
}

TEST_F(CollisionCheckTest, RejectedSeedCountsNoAttemptAndShowsNoProgress)
{
    robot->boxes.push_back({{0, 0, 0}, {5, 5, 5}});
    // Refused (beyond the limits), then colliding, then free.
    ScopedMatrix seeds = seedList({{50, 0, 0}, {1, 1, 1}, {-1, -1, -1}});
    LogCapture log;
    findFreeConfiguration(robot, lower, upper, 3, seeds.get(), &cursor, found, &cancel);
    EXPECT_EQ(found[0], -1.0);
    EXPECT_EQ(host.collisionTests, 2) << "the refused seed was never checked for collisions";
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: "), 1);
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: 1"), 1) << "the colliding seed is attempt 1";
    EXPECT_TRUE(progressReporter().dialog()->labelText().endsWith("(attempt 1)"));
}

TEST_F(CollisionCheckTest, RejectedRandomDrawCountsAnAttemptAndShowsProgress)
{
    int checks = 0;
    robot->accepts = [&](const JointVector&) { return ++checks > 1; };
    LogCapture log;
    ReferenceRandom reference(processRandom().outputsDrawn());
    findFreeConfiguration(robot, lower, upper, 3, nullptr, &cursor, found, &cancel);
    EXPECT_EQ(cancel, 0.0);
    EXPECT_EQ(host.collisionTests, 1) << "the refused draw was not checked for collisions";
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: 1"), 1);
    EXPECT_EQ(progressReporter().dialog()->labelText(),
              QString("Search<br>Looking for a collision-free robot position (attempt 1)"));
    for (int i = 0; i < 3; ++i)
        reference.uniform();  // the refused draw
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(found[i], reference.uniform() * (upper[i] - lower[i]) + lower[i]);
}

TEST_F(CollisionCheckTest, AttemptsCountSeedsAndDrawsTogether)
{
    blockEverything();
    ScopedMatrix seeds = seedList({{1, 1, 1}, {2, 2, 2}});
    host.onCollisionTest = [](int test) {
        if (test == 4)
            progressReporter().dialog()->cancel();
    };
    LogCapture log;
    findFreeConfiguration(robot, lower, upper, 3, seeds.get(), &cursor, found, &cancel);
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: "), 4);
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: 3"), 1) << "first random draw is attempt 3";
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: 4"), 1);
}

TEST_F(CollisionCheckTest, CancelDuringTheSearchGivesCancelValueOne)
{
    blockEverything();
    host.onCollisionTest = [](int test) {
        if (test == 3)
            progressReporter().dialog()->cancel();
    };
    findFreeConfiguration(robot, lower, upper, 3, nullptr, &cursor, found, &cancel);
    EXPECT_EQ(cancel, 1.0);
    EXPECT_EQ(host.collisionTests, 3);
    EXPECT_TRUE(robot->collides(found.data())) << "the last candidate, which must not be used";
}

TEST_F(CollisionCheckTest, EqualLimitsAlwaysGiveThatValue)
{
    FakeRobot* fixed = host.addRobot("Fixed", {-10, 7.25, -30}, {10, 7.25, 30});
    double lo[JointVector::MaxJoints] = {};
    double hi[JointVector::MaxJoints] = {};
    readJointLimits(fixed, lo, hi);
    for (int i = 0; i < 20; ++i) {
        findFreeConfiguration(fixed, lo, hi, 3, nullptr, &cursor, found, &cancel);
        ASSERT_EQ(found[1], 7.25);
    }
}
