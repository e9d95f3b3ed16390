// The search for free configurations: seeds first, then random draws.
#include "free_configuration.h"
#include "host_planning.h"
#include "progress_reporter.h"
#include "random_generator.h"
#include "roadmap_matrix.h"

#include "fake_host.h"
#include "log_capture.h"
#include "reference_random.h"

#include <gtest/gtest.h>

#include <memory>

namespace {
class FreeConfigurationTest : public testing::Test {
protected:
    void SetUp() override
    {
        robot = host.addRobot("Arm", {-10, -20, -30}, {10, 20, 30});
        checker = std::make_unique<HostCollisionChecker>(&host, robot);
        resources.progress().start(nullptr, "Search");
    }
    void TearDown() override
    {
        resources.progress().finish();
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

    // The search of the fixture's robot, from the plug-in's generator.
    FreeConfigurationSearch search(const RoadmapMatrix* seeds)
    {
        return FreeConfigurationSearch(*checker, resources.progress(), resources.random(), seeds);
    }

    // Boxes that make every configuration within the limits collide.
    void blockEverything() { robot->boxes.push_back({{-11, -21, -31}, {11, 21, 31}}); }

    FakeHost host;

    PlannerResources resources;  // the generator and the progress dialog
    FakeRobot* robot = nullptr;
    std::unique_ptr<HostCollisionChecker> checker;
    const double lower[3] = {-10, -20, -30};
    const double upper[3] = {10, 20, 30};
    JointVector found;
};
}  // namespace

TEST_F(FreeConfigurationTest, LimitsAndJointCountAreTheRobots)
{
    const FreeConfigurationSearch s = search(nullptr);
    EXPECT_EQ(s.jointCount(), 3);
    EXPECT_EQ(s.lower()[2], -30.0);
    EXPECT_EQ(s.upper()[1], 20.0);
}

TEST_F(FreeConfigurationTest, FreeSeedIsTakenFirstAndTheNextCallTakesTheNextSeed)
{
    ScopedMatrix seeds = seedList({{1, 2, 3}, {4, 5, 6}});
    FreeConfigurationSearch s = search(seeds.get());
    EXPECT_TRUE(s.next(found));
    EXPECT_EQ(found[0], 1.0);
    EXPECT_EQ(found[2], 3.0);
    EXPECT_EQ(found[3], 0.0);
    s.next(found);
    EXPECT_EQ(found[1], 5.0);
}

TEST_F(FreeConfigurationTest, SeedListWithFewerRowsThanJointsIsSkipped)
{
    ScopedMatrix seeds = seedList({{1, 2}, {3, 4}}, 2);
    ReferenceRandom reference(resources.random().outputsDrawn());
    FreeConfigurationSearch s = search(seeds.get());
    s.next(found);
    EXPECT_EQ(host.collisionTests, 1);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(found[i], reference.uniform() * (upper[i] - lower[i]) + lower[i]);
}

TEST_F(FreeConfigurationTest, RejectedSeedCountsNoAttemptAndShowsNoProgress)
{
    robot->boxes.push_back({{0, 0, 0}, {5, 5, 5}});
    // Refused (beyond the limits), then colliding, then free.
    ScopedMatrix seeds = seedList({{50, 0, 0}, {1, 1, 1}, {-1, -1, -1}});
    LogCapture log;
    search(seeds.get()).next(found);
    EXPECT_EQ(found[0], -1.0);
    EXPECT_EQ(host.collisionTests, 2) << "the refused seed was never checked for collisions";
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: "), 1);
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: 1"), 1) << "the colliding seed is attempt 1";
    EXPECT_TRUE(resources.progress().dialog()->labelText().endsWith("(attempt 1)"));
}

TEST_F(FreeConfigurationTest, RejectedRandomDrawCountsAnAttemptAndShowsProgress)
{
    int checks = 0;
    robot->accepts = [&](const JointVector&) { return ++checks > 1; };
    LogCapture log;
    ReferenceRandom reference(resources.random().outputsDrawn());
    EXPECT_TRUE(search(nullptr).next(found));
    EXPECT_EQ(host.collisionTests, 1) << "the refused draw was not checked for collisions";
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: 1"), 1);
    EXPECT_EQ(resources.progress().dialog()->labelText(),
              QString("Search<br>Looking for a collision-free robot position (attempt 1)"));
    for (int i = 0; i < 3; ++i)
        reference.uniform();  // the refused draw
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(found[i], reference.uniform() * (upper[i] - lower[i]) + lower[i]);
}

TEST_F(FreeConfigurationTest, AttemptsCountSeedsAndDrawsTogether)
{
    blockEverything();
    ScopedMatrix seeds = seedList({{1, 1, 1}, {2, 2, 2}});
    host.onCollisionTest = [this](int test) {
        if (test == 4)
            resources.progress().dialog()->cancel();
    };
    LogCapture log;
    search(seeds.get()).next(found);
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: "), 4);
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: 3"), 1) << "first random draw is attempt 3";
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: 4"), 1);
}

TEST_F(FreeConfigurationTest, CancelDuringTheSearchEndsIt)
{
    blockEverything();
    host.onCollisionTest = [this](int test) {
        if (test == 3)
            resources.progress().dialog()->cancel();
    };
    EXPECT_FALSE(search(nullptr).next(found));
    EXPECT_EQ(host.collisionTests, 3);
    EXPECT_TRUE(robot->collides(found.values())) << "the last candidate, which must not be used";
}

TEST_F(FreeConfigurationTest, EqualLimitsAlwaysGiveThatValue)
{
    FakeRobot* fixed = host.addRobot("Fixed", {-10, 7.25, -30}, {10, 7.25, 30});
    HostCollisionChecker fixedChecker(&host, fixed);
    FreeConfigurationSearch s(fixedChecker, resources.progress(), resources.random(), nullptr);
    for (int i = 0; i < 20; ++i) {
        s.next(found);
        ASSERT_EQ(found[1], 7.25);
    }
}
