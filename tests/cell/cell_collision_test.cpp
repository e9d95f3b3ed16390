#include "cell_checker.h"
#include "cell_fixture.h"
#include "sim_item.h"

#include <random>

namespace {

// Between the pick and the place, the gripper low: right in the guard wall.
const std::vector<double> inTheWall = {15, 9.5, -168, 0, -21.5, 10};
// Behind the arm, the upper arm tilted down and the forearm hanging: the
// gripper reaches under the table top.
const std::vector<double> intoTheTable = {-120, -20, -180, 0, 0, 0};
// Upper arm forward, forearm folded back under it, gripper turned into the pedestal.
const std::vector<double> folded = {0, 0, -225, -90, 90, 0};

class CellCollisions : public BundledCell {
protected:
    void removeObject(const char* name)
    {
        SimItem* object = station->find(QLatin1String(name), ObjectType);
        ASSERT_TRUE(object) << name;
        station->remove(object);
    }
};

TEST_F(CellCollisions, TheBundledTargetsAreFree)
{
    for (const char* name : {"Home", "Pick", "Place"})
        EXPECT_EQ(collisionsAt(targetJoints(name)), 0) << name;
}

TEST_F(CellCollisions, TheGripperBetweenPickAndPlaceHitsTheGuardWall)
{
    EXPECT_GT(collisionsAt(inTheWall), 0);
    removeObject("Guard wall");
    EXPECT_EQ(collisionsAt(inTheWall), 0) << "the wall and nothing else was hit";
}

TEST_F(CellCollisions, ReachingUnderTheTableTopHitsTheTable)
{
    EXPECT_GT(collisionsAt(intoTheTable), 0);
    removeObject("Table");
    EXPECT_EQ(collisionsAt(intoTheTable), 0);
}

TEST_F(CellCollisions, AFoldedArmHitsItself)
{
    CellChecker checker(*station, arm);
    EXPECT_GT(checker.selfPairs(folded.data()), 0);
    // Nothing of the cell is involved: without any object it still collides.
    for (const char* name : {"Table", "Pick fixture", "Place fixture", "Guard wall", "Post", "Ball"})
        removeObject(name);
    EXPECT_GT(collisionsAt(folded), 0);
    EXPECT_EQ(checker.selfPairs(targetJoints("Home").data()), 0);
}

TEST_F(CellCollisions, JointBoxesStillCountBesideThe3DPairs)
{
    JointBox box;
    box.lower = {-1, -1, -1, -1, -1, -1};
    box.upper = {1, 1, 1, 1, 1, 1};
    arm->boxes.push_back(box);
    EXPECT_EQ(collisionsAt({0, 0, 0, 0, 0, 0}), 1);
    const int wall = collisionsAt(inTheWall);
    EXPECT_GT(wall, 0);
    std::vector<double> inBoth = inTheWall;
    arm->boxes.front().lower = {14, 9, -169, -1, -22, 9};
    arm->boxes.front().upper = {16, 10, -167, 1, -21, 11};
    EXPECT_EQ(collisionsAt(inBoth), wall + 1);
}

TEST_F(CellCollisions, TheStraightMoveFromPickToPlaceCollidesAndSmallMovesAtHomeDoNot)
{
    EXPECT_EQ(moveCollides(targetJoints("Pick"), targetJoints("Place"), -1.0), 1);
    EXPECT_EQ(moveCollides(targetJoints("Pick"), targetJoints("Place"), 0.4), 1);
    std::vector<double> nearHome = targetJoints("Home");
    nearHome[0] += 10;
    nearHome[4] -= 15;
    EXPECT_EQ(moveCollides(targetJoints("Home"), nearHome, -1.0), 0);
}

TEST_F(CellCollisions, AMoveOfMorePointsThanOneAnswerMayTakeIsNotChecked)
{
    std::vector<double> nearHome = targetJoints("Home");
    nearHome[0] += 10;
    // 10 degrees in steps of 0.01 are a thousand points, checked; in steps
    // of 1e-6 ten million, more than one answer may take.
    EXPECT_EQ(moveCollides(targetJoints("Home"), nearHome, 0.01), 0);
    EXPECT_EQ(moveCollides(targetJoints("Home"), nearHome, 1e-6), MoveNotCheckable);
    // Through the wall, where the check would find the collision at once, too.
    EXPECT_EQ(moveCollides(targetJoints("Pick"), targetJoints("Place"), 1e-9), MoveNotCheckable);
}

TEST_F(CellCollisions, CoarseToFineOrderAnswersAsCheckingEveryPointInTurn)
{
    std::mt19937 random(2024);
    CellChecker checker(*station, arm);
    int colliding = 0;
    for (int trial = 0; trial < 200; ++trial) {
        std::vector<double> a(6), b(6);
        for (int i = 0; i < 6; ++i) {
            std::uniform_real_distribution<double> within(arm->lower[size_t(i)], arm->upper[size_t(i)]);
            a[size_t(i)] = within(random);
            // Short moves, so that both answers occur.
            b[size_t(i)] = std::clamp(a[size_t(i)] + std::uniform_real_distribution<double>(-40, 40)(random),
                                      arm->lower[size_t(i)], arm->upper[size_t(i)]);
        }
        const int n = joint_oracle::moveSteps(a.data(), b.data(), 6, 4.0);
        bool any = false;
        std::vector<double> point(6);
        for (int k = 0; k <= n && !any; ++k) {
            for (int i = 0; i < 6; ++i)
                point[size_t(i)] = a[size_t(i)] + (b[size_t(i)] - a[size_t(i)]) * k / n;
            any = checker.collidingPairs(point.data(), false) > 0;
        }
        EXPECT_EQ(checker.testMove(a.data(), b.data(), n), any ? 1 : 0) << "trial " << trial;
        EXPECT_EQ(moveCollides(a, b, 4.0), any ? 1 : 0) << "trial " << trial;
        colliding += any;
    }
    EXPECT_GT(colliding, 20);
    EXPECT_LT(colliding, 180);
}

}  // namespace
