#include "cell_fixture.h"

#include <cmath>

namespace {

// The bundled arm's table (standard Denavit-Hartenberg, millimetres): a2, a3,
// d3, d4, the tool's reach along the last axis, and the base's height.
constexpr double a2 = 431.8, a3 = 20.3, d3 = 150.05, d4 = 431.8, tool = 186.25;
constexpr double baseHeight = 750.0 + 660.0;

double rad(double degrees)
{
    return degrees * M_PI / 180.0;
}

struct Expected {
    double x, y, z;     // tool centre point, relative to the base
    double ax, ay, az;  // the tool's approach axis (its z)
};

// Worked out by hand from the table for q4 = 0 (or q5 = 0): the arm moves in
// the vertical plane at angle q1, shifted sideways by d3. In that plane the
// reach r and height h of the tool are
//   r = a2 cos q2 + a3 cos(q2+q3) - d4 sin(q2+q3) - tool sin(q2+q3+q5)
//   h = a2 sin q2 + a3 sin(q2+q3) + d4 cos(q2+q3) + tool cos(q2+q3+q5)
// and x = r cos q1 + d3 sin q1, y = r sin q1 - d3 cos q1, z = h.
Expected planarArm(const double q[6])
{
    const double s1 = std::sin(rad(q[0])), c1 = std::cos(rad(q[0]));
    const double t23 = rad(q[1] + q[2]), t235 = rad(q[1] + q[2] + q[4]);
    const double r = a2 * std::cos(rad(q[1])) + a3 * std::cos(t23) - d4 * std::sin(t23) - tool * std::sin(t235);
    const double h = a2 * std::sin(rad(q[1])) + a3 * std::sin(t23) + d4 * std::cos(t23) + tool * std::cos(t235);
    return {r * c1 + d3 * s1, r * s1 - d3 * c1, h, -std::sin(t235) * c1, -std::sin(t235) * s1, std::cos(t235)};
}

class ArmKinematics : public BundledCell {
protected:
    HostPose reached(const double q[6])
    {
        HostPose toolPose, out;
        arm->poseTool(toolPose);
        return arm->solveFK(out, JointVector(q, 6), toolPose, nullptr);
    }

    void expectPose(const HostPose& pose, const Expected& e)
    {
        // HostPose holds floats: a hundredth of a millimetre is all it keeps at this size.
        EXPECT_NEAR(pose(0, 3), e.x, 0.02);
        EXPECT_NEAR(pose(1, 3), e.y, 0.02);
        EXPECT_NEAR(pose(2, 3), e.z, 0.02);
        EXPECT_NEAR(pose(0, 2), e.ax, 1e-5);
        EXPECT_NEAR(pose(1, 2), e.ay, 1e-5);
        EXPECT_NEAR(pose(2, 2), e.az, 1e-5);
    }
};

TEST_F(ArmKinematics, ZeroJointsStretchTheUpperArmForwardAndTheForearmUp)
{
    const double zero[6] = {0, 0, 0, 0, 0, 0};
    const HostPose pose = reached(zero);
    // By hand: forward a2 + a3, sideways -d3, up d4 + tool, no rotation at all.
    expectPose(pose, {452.1, -150.05, 618.05, 0, 0, 1});
    EXPECT_NEAR(pose(0, 0), 1.0, 1e-6);
    EXPECT_NEAR(pose(1, 1), 1.0, 1e-6);
    EXPECT_NEAR(pose(0, 1), 0.0, 1e-6);
}

TEST_F(ArmKinematics, ShoulderElbowAndWristBendInTheArmPlane)
{
    const double q[6] = {30, 45, -120, 0, 40, 17};
    expectPose(reached(q), planarArm(q));
    const double other[6] = {-60, 100, -200, 0, -30, 90};
    expectPose(reached(other), planarArm(other));
}

TEST_F(ArmKinematics, ForearmRollLeavesAStraightWristOnItsAxis)
{
    const double q[6] = {45, 60, -90, 75, 0, -30};
    const double unrolled[6] = {45, 60, -90, 0, 0, -30};
    expectPose(reached(q), planarArm(unrolled));
}

TEST_F(ArmKinematics, TheBaseStandsOnTheTableAndThePlugInsProductGivesTheToolInTheStation)
{
    HostPose base;
    arm->poseAbs(base);
    EXPECT_FLOAT_EQ(base(2, 3), float(baseHeight));
    EXPECT_FLOAT_EQ(base(0, 3), 0.0f);
    const double q[6] = {30, 45, -120, 0, 40, 17};
    const HostPose inStation = base * reached(q);
    const Expected e = planarArm(q);
    EXPECT_NEAR(inStation(0, 3), e.x, 0.05);
    EXPECT_NEAR(inStation(2, 3), e.z + baseHeight, 0.05);
    // A target answers the pose its joints reach.
    HostPose pick;
    station->find(QStringLiteral("Pick"), ItemType::Target)->poseAbs(pick);
    const std::vector<double> joints = targetJoints("Pick");
    const Expected p = planarArm(joints.data());
    EXPECT_NEAR(pick(0, 3), p.x, 0.05);
    EXPECT_NEAR(pick(2, 3), p.z + baseHeight, 0.05);
    // The bundled pick is above its fixture, gripper down.
    EXPECT_NEAR(pick(2, 2), -1.0, 1e-3);
}

}  // namespace
