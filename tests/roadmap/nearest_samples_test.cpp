// The nearest samples against the literal rule: a stable sort of all distances.
#include "vorlik/joint_vector.h"
#include "nearest_samples.h"
#include "roadmap_matrix.h"
#include "stable_sort_nearest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

TEST(NearestSamples, GivesTheStableSortsOrderOnTieHeavyInputs)
{
    std::mt19937 engine(20261124);
    auto pick = [&engine](int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine); };
    NearestSamples strategy;
    int ties = 0;
    for (int trial = 0; trial < 4000; ++trial) {
        const int joints = pick(1, 8);
        const int n = pick(0, 60);
        ScopedMatrix samples = makeScopedMatrix();
        setSize(samples.get(), joints, n);
        // Few integer values, and now and then a copy of an earlier sample:
        // many equal distances, which only the index may order.
        const int spread = pick(0, 3);
        for (int c = 0; c < n; ++c) {
            if (c > 0 && pick(0, 4) == 0) {
                const int source = pick(0, c - 1);
                for (int r = 0; r < joints; ++r)
                    at(samples.get(), r, c) = at(samples.get(), r, source);
            } else {
                for (int r = 0; r < joints; ++r)
                    at(samples.get(), r, c) = pick(-spread, spread);
            }
        }
        std::vector<double> q(static_cast<size_t>(joints));
        for (double& v : q)
            v = pick(-spread, spread);
        const int older = pick(0, n);
        const int count = pick(0, 3) == 0 ? pick(older, older + 20) : pick(0, 12);  // K beyond the map too

        const auto expected = stableSortNearest(samples.get(), older, q.data(), joints, count);
        const auto& found = strategy.nearest(samples.get(), older, q.data(), joints, count);
        ASSERT_EQ(found.size(), expected.size()) << "trial " << trial;
        for (size_t i = 0; i < expected.size(); ++i) {
            ASSERT_EQ(found[i].index, expected[i].index) << "trial " << trial << " place " << i;
            ASSERT_EQ(found[i].distance, expected[i].distance) << "trial " << trial << " place " << i;
            if (i > 0 && expected[i].distance == expected[i - 1].distance)
                ++ties;
        }
    }
    EXPECT_GT(ties, 10000) << "the inputs must be tie-heavy to test the order of equal distances";
}

TEST(NearestSamples, AQueryForMoreBeginsWithTheSameCandidates)
{
    // The insertion asks for more candidates in growing batches.
    std::mt19937 engine(7);
    NearestSamples strategy;
    ScopedMatrix samples = makeScopedMatrix();
    setSize(samples.get(), 2, 200);
    for (int i = 0; i < 400; ++i)
        samples->values[i] = std::uniform_int_distribution<int>(-2, 2)(engine);
    const double q[2] = {0, 1};
    const std::vector<NeighbourStrategy::Candidate> few = strategy.nearest(samples.get(), 200, q, 2, 16);
    const std::vector<NeighbourStrategy::Candidate> more = strategy.nearest(samples.get(), 200, q, 2, 64);
    ASSERT_EQ(few.size(), 16u);
    for (size_t i = 0; i < few.size(); ++i)
        EXPECT_EQ(few[i].index, more[i].index);
}
