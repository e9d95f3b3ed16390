#include "roadmap_matrix.h"

#include <gtest/gtest.h>

TEST(RoadmapMatrix, CreateIsEmptyTwoDimensional)
{
    ScopedMatrix m = makeScopedMatrix();
    EXPECT_EQ(m->dimensionCount, 2);
    EXPECT_EQ(rows(m.get()), 0);
    EXPECT_EQ(columns(m.get()), 0);
    EXPECT_EQ(m->values, nullptr);
    EXPECT_EQ(m->capacity, 0);
    EXPECT_TRUE(m->ownsValues);
}

TEST(RoadmapMatrix, CreateWithDimensionsZeroesAllExtents)
{
    RoadmapMatrix* m = nullptr;
    createMatrix(&m, 3);
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->dimensionCount, 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(m->extents[i], 0);
    destroyMatrix(&m);
    EXPECT_EQ(m, nullptr);
    destroyMatrix(&m);  // a null handle is left alone
    EXPECT_EQ(m, nullptr);
}

TEST(RoadmapMatrix, GrowingFromNothingToOneElementAllocatesSixteen)
{
    ScopedMatrix m = makeScopedMatrix();
    setSize(m.get(), 1, 1);
    EXPECT_EQ(m->capacity, 16);
}

TEST(RoadmapMatrix, GrowingToSeventeenElementsAllocatesThirtyTwo)
{
    ScopedMatrix m = makeScopedMatrix();
    setSize(m.get(), 17, 1);
    EXPECT_EQ(m->capacity, 32);
}

TEST(RoadmapMatrix, GrowingToFortyFromCapacityTwentyAllocatesForty)
{
    ScopedMatrix m = makeScopedMatrix();
    m->values = new double[20]();
    m->capacity = 20;
    setSize(m.get(), 4, 5);
    for (int i = 0; i < 20; ++i)
        m->values[i] = i + 1.0;
    setSize(m.get(), 4, 10);
    EXPECT_EQ(m->capacity, 40);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(m->values[i], i + 1.0) << "old elements stay as a prefix";
    for (int i = 20; i < 40; ++i)
        EXPECT_EQ(m->values[i], 0.0) << "new storage is zero-filled";
}

TEST(RoadmapMatrix, CapacityNeverShrinks)
{
    ScopedMatrix m = makeScopedMatrix();
    setSize(m.get(), 10, 10);
    const int capacity = m->capacity;
    setSize(m.get(), 1, 1);
    EXPECT_EQ(m->capacity, capacity);
    EXPECT_EQ(rows(m.get()), 1);
}

TEST(RoadmapMatrix, DimensionThreeOfATwoDimensionalMatrixIsZero)
{
    ScopedMatrix m = makeScopedMatrix();
    setSize(m.get(), 3, 4);
    EXPECT_EQ(dimensionSize(m.get(), 1), 3);
    EXPECT_EQ(dimensionSize(m.get(), 2), 4);
    EXPECT_EQ(dimensionSize(m.get(), 3), 0);
}

TEST(RoadmapMatrix, ColumnMajorLayoutAndColumnPointer)
{
    ScopedMatrix m = makeScopedMatrix();
    setSize(m.get(), 3, 2);
    at(m.get(), 2, 1) = 7.5;
    EXPECT_EQ(m->values[2 + 3 * 1], 7.5);
    EXPECT_EQ(column(m.get(), 1), m->values + 3);
}

TEST(RoadmapMatrix, CopyTakesSizesAndElements)
{
    ScopedMatrix a = makeScopedMatrix();
    ScopedMatrix b = makeScopedMatrix();
    setSize(a.get(), 2, 3);
    for (int i = 0; i < 6; ++i)
        a->values[i] = i * 1.5;
    EXPECT_TRUE(copyMatrix(a.get(), b.get()));
    EXPECT_EQ(rows(b.get()), 2);
    EXPECT_EQ(columns(b.get()), 3);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(b->values[i], i * 1.5);
}

TEST(RoadmapMatrix, CopyFromAVectorEmptiesTheDestination)
{
    RoadmapMatrix* vector = nullptr;
    createMatrix(&vector, 1);
    ScopedMatrix owner(vector);
    ScopedMatrix b = makeScopedMatrix();
    setSize(b.get(), 2, 2);
    EXPECT_FALSE(copyMatrix(vector, b.get()));
    EXPECT_EQ(rows(b.get()), 0);
    EXPECT_EQ(columns(b.get()), 0);
}

TEST(RoadmapMatrix, SumAddsTheFirstColumnOnly)
{
    ScopedMatrix m = makeScopedMatrix();
    EXPECT_EQ(sum(m.get()), 0.0);
    setSize(m.get(), 3, 2);
    for (int i = 0; i < 6; ++i)
        m->values[i] = i + 1.0;
    EXPECT_EQ(sum(m.get()), 6.0);
}
