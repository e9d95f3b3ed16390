// Route shortening: shorter routes between the same ends, every new move
// checked by the host and free, the same result every time, no random draws.
#include "route_shortener.h"

#include "fake_host.h"
#include "host_planning.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

ViaPoint point(double a, double b, int sample)
{
    ViaPoint p;
    p.joints = JointVector(2);
    p.joints[0] = a;
    p.joints[1] = b;
    p.sample = sample;
    return p;
}

bool same(const JointVector& x, const JointVector& y)
{
    return x[0] == y[0] && x[1] == y[1];
}

class RouteShortenerTest : public testing::Test {
protected:
    void SetUp() override
    {
        // A wall between x = -10 and 10, open above y = 50.
        robot->boxes.push_back({{-10, -201}, {10, 50}});
        host.params["PathStepCollisionDeg"] = "2.0";
    }

    // A roadmap route around the wall that zig-zags on its way.
    std::vector<ViaPoint> zigzag() const
    {
        return {point(-100, 0, 4), point(-80, 40, 9),  point(-60, 20, 2), point(-30, 70, 11),
                point(0, 60, 7),   point(30, 90, 3),   point(60, 55, 12), point(80, 30, 5),
                point(100, 0, 8)};
    }

    bool moveIsFree(const ViaPoint& a, const ViaPoint& b) const
    {
        return !robot->moveCollides(a.joints.values(), b.joints.values(), 2.0);
    }

    FakeHost host;
    FakeRobot* robot = host.addRobot("Arm", {-200, -200}, {200, 200});
    HostCollisionChecker checker{&host, robot};
};

}  // namespace

TEST_F(RouteShortenerTest, ShorterBetweenTheSameEndsAndEveryMoveFree)
{
    const std::vector<ViaPoint> route = zigzag();
    for (size_t i = 0; i + 1 < route.size(); ++i)
        ASSERT_TRUE(moveIsFree(route[i], route[i + 1])) << "the route given is free";

    RouteShortener shortener(checker, 2);
    const std::vector<ViaPoint> shorter = shortener.shorten(route);

    EXPECT_LT(RouteShortener::travel(shorter, 2), 0.85 * RouteShortener::travel(route, 2));
    EXPECT_LT(shorter.size(), route.size());
    ASSERT_GE(shorter.size(), 3u) << "the wall is still in the way of a straight move";
    EXPECT_TRUE(same(shorter.front().joints, route.front().joints));
    EXPECT_EQ(shorter.front().sample, 4);
    EXPECT_TRUE(same(shorter.back().joints, route.back().joints));
    EXPECT_EQ(shorter.back().sample, 8);
    for (size_t i = 0; i + 1 < shorter.size(); ++i)
        EXPECT_TRUE(moveIsFree(shorter[i], shorter[i + 1])) << "move " << i + 1;
    EXPECT_EQ(shortener.movesChecked(), robot->jointMoveTests);
}

TEST_F(RouteShortenerTest, EveryNewMoveWasAskedOfTheHost)
{
    const std::vector<ViaPoint> route = zigzag();
    const std::vector<ViaPoint> shorter = RouteShortener(checker, 2).shorten(route);
    auto asked = [this](const ViaPoint& a, const ViaPoint& b) {
        return std::any_of(robot->moves.begin(), robot->moves.end(), [&](const auto& move) {
            return move.first[0] == a.joints[0] && move.first[1] == a.joints[1] && move.second[0] == b.joints[0] &&
                   move.second[1] == b.joints[1];
        });
    };
    auto original = [&route](const ViaPoint& a, const ViaPoint& b) {
        for (size_t i = 0; i + 1 < route.size(); ++i)
            if (same(route[i].joints, a.joints) && same(route[i + 1].joints, b.joints))
                return true;
        return false;
    };
    for (size_t i = 0; i + 1 < shorter.size(); ++i) {
        if (!original(shorter[i], shorter[i + 1])) {
            EXPECT_TRUE(asked(shorter[i], shorter[i + 1])) << "move " << i + 1;
        }
    }
}

TEST_F(RouteShortenerTest, PointsOnMovesAreNewAndSamplesKeepTheirNumbers)
{
    const std::vector<ViaPoint> route = zigzag();
    for (const ViaPoint& p : RouteShortener(checker, 2).shorten(route)) {
        if (p.sample == ViaPoint::NewPoint)
            continue;
        const bool found = std::any_of(route.begin(), route.end(), [&p](const ViaPoint& q) {
            return q.sample == p.sample && same(q.joints, p.joints);
        });
        EXPECT_TRUE(found) << "sample " << p.sample;
    }
}

// The shortener is given no generator: it draws nothing from the map's sequence.
TEST_F(RouteShortenerTest, TheSameRouteGivesTheSameResult)
{
    const std::vector<ViaPoint> first = RouteShortener(checker, 2).shorten(zigzag());
    const std::vector<ViaPoint> second = RouteShortener(checker, 2).shorten(zigzag());
    ASSERT_EQ(first.size(), second.size());
    for (size_t i = 0; i < first.size(); ++i) {
        EXPECT_TRUE(std::equal(first[i].joints.values(), first[i].joints.values() + JointVector::MaxJoints,
                               second[i].joints.values()));
        EXPECT_EQ(first[i].sample, second[i].sample);
    }
}

TEST_F(RouteShortenerTest, TwoPointsAreLeftAloneWithoutAsking)
{
    const std::vector<ViaPoint> route = {point(-100, 0, 1), point(-50, 0, 2)};
    RouteShortener shortener(checker, 2);
    const std::vector<ViaPoint> same = shortener.shorten(route);
    EXPECT_EQ(same.size(), 2u);
    EXPECT_EQ(shortener.movesChecked(), 0);
}

TEST_F(RouteShortenerTest, AStraightLineFreeOfObstaclesBecomesOneMove)
{
    robot->boxes.clear();
    const std::vector<ViaPoint> shorter = RouteShortener(checker, 2).shorten(zigzag());
    ASSERT_EQ(shorter.size(), 2u);
    EXPECT_EQ(shorter.front().sample, 4);
    EXPECT_EQ(shorter.back().sample, 8);
}

TEST_F(RouteShortenerTest, AViaPointHighAboveTheWallComesDownAsFarAsTheMovesStayFree)
{
    // Over the wall from y = 40 to y = 40 by a corner at y = 90: the corner
    // cannot go (the straight move runs through the wall), but lower down,
    // above the wall's top at 50, it lengthens the route less. Two corners on
    // the wall's top edges would make it 80; cuts alone reach 85.
    const std::vector<ViaPoint> route{point(-30, 40, 1), point(0, 90, 2), point(30, 40, 3)};
    ASSERT_FALSE(moveIsFree(route[0], route[2]));
    RouteShortener shortener(checker, 2);
    const std::vector<ViaPoint> shorter = shortener.shorten(route);
    EXPECT_LE(RouteShortener::travel(shorter, 2), 82.0) << "160 before";
    EXPECT_TRUE(same(shorter.front().joints, route.front().joints));
    EXPECT_TRUE(same(shorter.back().joints, route.back().joints));
    for (size_t i = 1; i < shorter.size(); ++i)
        EXPECT_TRUE(moveIsFree(shorter[i - 1], shorter[i]));
}

TEST_F(RouteShortenerTest, AMoveAskedAboutOnceIsNotAskedAgain)
{
    RouteShortener shortener(checker, 2);
    const std::vector<ViaPoint> shorter = shortener.shorten(zigzag());
    // Every move the host was asked about was a different one.
    std::vector<std::pair<JointVector, JointVector>> asked = robot->moves;
    const auto key = [](const std::pair<JointVector, JointVector>& move) {
        std::vector<double> values;
        for (int i = 0; i < 2; ++i)
            values.push_back(move.first[i]);
        for (int i = 0; i < 2; ++i)
            values.push_back(move.second[i]);
        return values;
    };
    std::vector<std::vector<double>> keys;
    for (const auto& move : asked)
        keys.push_back(key(move));
    std::sort(keys.begin(), keys.end());
    EXPECT_EQ(std::adjacent_find(keys.begin(), keys.end()), keys.end());
    EXPECT_EQ(int(asked.size()), shortener.movesChecked());
}
