#include "index_matrix.h"
#include "roadmap_matrix.h"
#include "sort_permutation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

namespace {
ScopedMatrix rowOf(const std::vector<double>& values)
{
    ScopedMatrix m = makeScopedMatrix();
    setSize(m.get(), 1, static_cast<int>(values.size()));
    std::copy(values.begin(), values.end(), m->values);
    return m;
}
}  // namespace

TEST(SortPermutation, SortsInPlaceWithOneBasedPositions)
{
    ScopedMatrix row = rowOf({5.0, 1.0, 3.0});
    ScopedIndexMatrix order(createIndexMatrix());
    sortWithPermutation(row.get(), order.get());
    EXPECT_EQ(order->extents[0], 1);
    EXPECT_EQ(order->extents[1], 3);
    const double sorted[3] = {1, 3, 5};
    const int positions[3] = {2, 3, 1};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(row->values[i], sorted[i]);
        EXPECT_EQ(order->values[i], positions[i]);
    }
}

TEST(SortPermutation, EqualValuesKeepTheirOrder)
{
    ScopedMatrix row = rowOf({2.0, 1.0, 2.0, 1.0, 2.0});
    ScopedIndexMatrix order(createIndexMatrix());
    sortWithPermutation(row.get(), order.get());
    const int positions[5] = {2, 4, 1, 3, 5};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(order->values[i], positions[i]);
}

TEST(SortPermutation, EmptyRow)
{
    ScopedMatrix row = rowOf({});
    ScopedIndexMatrix order(createIndexMatrix());
    sortWithPermutation(row.get(), order.get());
    EXPECT_EQ(elementCount(order.get()), 0);
}

TEST(SortPermutation, AgreesWithStableSortOnRandomRows)
{
    std::mt19937 engine(7);
    std::uniform_int_distribution<int> small(0, 9);
    for (int length : {1, 2, 3, 7, 16, 33, 100}) {
        std::vector<double> values(static_cast<size_t>(length));
        for (double& v : values)
            v = small(engine);
        std::vector<int> expected(values.size());
        std::iota(expected.begin(), expected.end(), 0);
        std::stable_sort(expected.begin(), expected.end(), [&](int a, int b) { return values[a] < values[b]; });

        ScopedMatrix row = rowOf(values);
        ScopedIndexMatrix order(createIndexMatrix());
        sortWithPermutation(row.get(), order.get());
        for (int i = 0; i < length; ++i) {
            ASSERT_EQ(order->values[i], expected[i] + 1) << "length " << length << " place " << i;
            ASSERT_EQ(row->values[i], values[expected[i]]);
        }
    }
}
