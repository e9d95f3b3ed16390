#include "cell_object_tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Vector = Eigen::Vector3d;

Vector randomPoint(std::mt19937& random, double reach)
{
    std::uniform_real_distribution<double> within(-reach, reach);
    return Vector(within(random), within(random), within(random));
}

TEST(ObjectTree, AnswersTheBoxesABallReachesAsLookingAtEachWould)
{
    std::mt19937 random(9);
    std::vector<Aabb> boxes;
    for (int i = 0; i < 40; ++i) {
        const Vector centre = randomPoint(random, 1000), half = randomPoint(random, 200).cwiseAbs();
        boxes.push_back(Aabb{centre - half, centre + half});
    }
    const ObjectTree tree(boxes);
    std::vector<int> found(boxes.size());
    for (int trial = 0; trial < 2000; ++trial) {
        const Vector centre = randomPoint(random, 1200);
        const double radius = std::uniform_real_distribution<double>(0, 300)(random);
        const int count = tree.reachedBy(centre, radius, found.data());
        std::vector<int> expected;
        for (int i = 0; i < int(boxes.size()); ++i) {
            if (boxes[size_t(i)].reachedBy(centre, radius))
                expected.push_back(i);
        }
        std::vector<int> answered(found.begin(), found.begin() + count);
        std::sort(answered.begin(), answered.end());
        EXPECT_EQ(answered, expected) << "trial " << trial;
    }
}

}  // namespace
