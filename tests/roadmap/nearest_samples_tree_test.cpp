// The tree of samples against the literal rule (a stable sort of all
// distances) and against the linear scan, as the construction asks it.
#include "nearest_samples.h"
#include "nearest_samples_tree.h"
#include "roadmap_matrix.h"
#include "stable_sort_nearest.h"
#include "vorlik/joint_vector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

using Candidates = std::vector<NeighbourStrategy::Candidate>;

// Equal in index and in distance, place by place; the number of ties met.
int expectSame(const Candidates& found, const Candidates& expected, int trial)
{
    int ties = 0;
    EXPECT_EQ(found.size(), expected.size()) << "trial " << trial;
    for (size_t i = 0; i < std::min(found.size(), expected.size()); ++i) {
        EXPECT_EQ(found[i].index, expected[i].index) << "trial " << trial << " place " << i;
        EXPECT_EQ(found[i].distance, expected[i].distance) << "trial " << trial << " place " << i;
        if (i > 0 && expected[i].distance == expected[i - 1].distance)
            ++ties;
    }
    return ties;
}

struct Engine {
    std::mt19937 engine;
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine); }
};

// Few integer values and now and then a copy of an earlier sample: many
// equal distances, which only the index may order, and boxes that cannot be
// split.
void fillTieHeavy(Engine& e, RoadmapMatrix* samples, int joints, int n, int spread)
{
    setSize(samples, joints, n);
    for (int c = 0; c < n; ++c) {
        if (c > 0 && e.pick(0, 4) == 0) {
            const int source = e.pick(0, c - 1);
            for (int r = 0; r < joints; ++r)
                at(samples, r, c) = at(samples, r, source);
        } else {
            for (int r = 0; r < joints; ++r)
                at(samples, r, c) = e.pick(-spread, spread);
        }
    }
}

}  // namespace

TEST(NearestSamplesTree, AsTheConstructionAsksItGivesTheStableSortsOrder)
{
    // Every new sample asks about all older ones, then joins them; a tree
    // from the first sample on, so that small maps have many boxes too.
    Engine e{std::mt19937(20261124)};
    int ties = 0;
    long questions = 0;
    for (int trial = 0; trial < 300; ++trial) {
        const int joints = e.pick(1, 7);
        const int n = e.pick(0, 400);
        ScopedMatrix samples = makeScopedMatrix();
        fillTieHeavy(e, samples.get(), joints, n, e.pick(0, 4));
        NearestSamplesTree tree(0);
        const int count = e.pick(0, 3) == 0 ? e.pick(0, 80) : e.pick(1, 12);
        for (int k = 0; k < n; ++k) {
            const double* q = column(samples.get(), k);
            ties += expectSame(tree.nearest(samples.get(), k, q, joints, count),
                               stableSortNearest(samples.get(), k, q, joints, count), trial);
            ++questions;
            if (HasFailure())
                return;
        }
    }
    EXPECT_GT(questions, 50000);
    EXPECT_GT(ties, 100000) << "the inputs must be tie-heavy to test the order of equal distances";
}

TEST(NearestSamplesTree, AnswersAnyConfigurationAndCountAsTheScanDoes)
{
    // Configurations that are no sample, K beyond the map, fewer samples
    // than before (the tree starts over) and another matrix.
    Engine e{std::mt19937(77)};
    NearestSamplesTree tree(0);
    NearestSamples scan;
    int ties = 0;
    for (int trial = 0; trial < 4000; ++trial) {
        const int joints = e.pick(1, 6);
        const int n = e.pick(0, 300);
        ScopedMatrix samples = makeScopedMatrix();
        fillTieHeavy(e, samples.get(), joints, n, e.pick(0, 3));
        tree.forget();  // the new matrix may lie where the last one lay
        for (int question = 0; question < 4; ++question) {
            std::vector<double> q(static_cast<size_t>(joints));
            for (double& v : q)
                v = e.pick(-5, 5) / 2.0;
            const int older = e.pick(0, n);
            const int count = e.pick(0, 3) == 0 ? e.pick(older, older + 20) : e.pick(0, 12);
            const Candidates expected = stableSortNearest(samples.get(), older, q.data(), joints, count);
            ties += expectSame(tree.nearest(samples.get(), older, q.data(), joints, count), expected, trial);
            expectSame(scan.nearest(samples.get(), older, q.data(), joints, count), expected, trial);
            if (HasFailure())
                return;
        }
    }
    EXPECT_GT(ties, 10000);
}

TEST(NearestSamplesTree, OneConfigurationManyTimesOverIsStillAnswered)
{
    // A box of one configuration cannot be split: its leaf grows instead.
    ScopedMatrix samples = makeScopedMatrix();
    setSize(samples.get(), 3, 1000);
    for (int c = 0; c < 1000; ++c)
        for (int r = 0; r < 3; ++r)
            at(samples.get(), r, c) = c < 900 ? 1.0 : c * 0.25;
    NearestSamplesTree tree(0);
    for (int k = 0; k < 1000; k += 7) {
        const double* q = column(samples.get(), k);
        expectSame(tree.nearest(samples.get(), k, q, 3, 10), stableSortNearest(samples.get(), k, q, 3, 10), k);
    }
}

TEST(NearestSamplesTree, ASampleThatIsNotANumberLeavesTheAnswerToTheScan)
{
    ScopedMatrix samples = makeScopedMatrix();
    setSize(samples.get(), 2, 100);
    for (int c = 0; c < 100; ++c) {
        at(samples.get(), 0, c) = c % 7;
        at(samples.get(), 1, c) = c == 50 ? std::numeric_limits<double>::quiet_NaN() : c % 5;
    }
    NearestSamplesTree tree(0);
    NearestSamples scan;
    for (int k : {10, 49, 51, 99}) {
        const double* q = column(samples.get(), 3);
        const Candidates expected = scan.nearest(samples.get(), k, q, 2, 10);
        const Candidates found = tree.nearest(samples.get(), k, q, 2, 10);
        ASSERT_EQ(found.size(), expected.size());
        for (size_t i = 0; i < found.size(); ++i)
            EXPECT_EQ(found[i].index, expected[i].index) << k << " " << i;
    }
}

TEST(NearestSamplesTree, WithItsDefaultThresholdALargeMapIsAnsweredAsTheScanAnswersIt)
{
    // Uniform samples past the threshold, as the construction meets them: the
    // scan answers the first ones, the tree (grown at once) the rest.
    std::mt19937 engine(3);
    std::uniform_real_distribution<double> value(-170.0, 170.0);
    ScopedMatrix samples = makeScopedMatrix();
    const int n = 6000;
    setSize(samples.get(), 6, n);
    for (int i = 0; i < 6 * n; ++i)
        samples->values[i] = value(engine);
    NearestSamplesTree tree;  // the default: the scan answers below its threshold
    NearestSamples scan;
    for (int k = 0; k < n; ++k) {
        const double* q = column(samples.get(), k);
        const Candidates expected = scan.nearest(samples.get(), k, q, 6, 10);
        const Candidates& found = tree.nearest(samples.get(), k, q, 6, 10);
        ASSERT_EQ(found.size(), expected.size()) << k;
        for (size_t i = 0; i < found.size(); ++i) {
            ASSERT_EQ(found[i].index, expected[i].index) << k << " " << i;
            ASSERT_EQ(found[i].distance, expected[i].distance) << k << " " << i;
        }
    }
}

TEST(NearestSamplesTree, SamplesChangedBeforeForgetAreNotSeenAndAfterItAre)
{
    // What the tree was told stays true until forget(): the construction
    // builds each new map after it.
    ScopedMatrix samples = makeScopedMatrix();
    setSize(samples.get(), 1, 200);
    for (int c = 0; c < 200; ++c)
        samples->values[c] = c;
    NearestSamplesTree tree(0);
    const double q[1] = {0.0};
    EXPECT_EQ(tree.nearest(samples.get(), 200, q, 1, 1).front().index, 0);
    samples->values[150] = 0.0;  // a sample the tree holds now lies at q too, at a later index
    samples->values[0] = 500.0;  // and the one it found moves away
    tree.forget();
    const Candidates found = tree.nearest(samples.get(), 200, q, 1, 1);
    EXPECT_EQ(found.front().index, 150);
    EXPECT_EQ(found.front().distance, 0.0);
}
