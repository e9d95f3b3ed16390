#include "cell_arm_kinematics.h"
#include "cell_fixture.h"
#include "cell_placement.h"

#include <random>

namespace {

// The checker's own forward kinematics, which allocates nothing, against the arm model's.
class CheckerKinematics : public BundledCell {
};

TEST_F(CheckerKinematics, PlacesTheLinksAsTheArmModelDoes)
{
    const ArmKinematics kinematics(*arm->arm);
    const Eigen::Isometry3d base = cell_placement::absolutePose(arm);
    std::mt19937 random(3);
    std::vector<Eigen::Isometry3d> expected, frames(8);
    for (int trial = 0; trial < 1000; ++trial) {
        std::vector<double> q(6);
        for (size_t i = 0; i < 6; ++i)
            q[i] = std::uniform_real_distribution<double>(arm->lower[i], arm->upper[i])(random);
        arm->arm->linkFrames(base, q.data(), expected);
        kinematics.frames(base, q.data(), 7, frames.data());
        for (size_t f = 0; f < 8; ++f)
            EXPECT_TRUE(frames[f].isApprox(expected[f], 1e-12)) << "trial " << trial << ", frame " << f;
    }
}

}  // namespace
