#include "cell_distance.h"

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

// The least of a convex function on [0, 1], by ternary search.
template <typename F>
double leastOn(const F& f)
{
    double low = 0.0, high = 1.0;
    for (int i = 0; i < 200; ++i) {
        const double a = low + (high - low) / 3, b = high - (high - low) / 3;
        if (f(a) < f(b))
            high = b;
        else
            low = a;
    }
    return std::min({f(low), f(0.0), f(1.0)});
}

TEST(CellDistance, SegmentsToBoxesAndSegmentsAsASearchAlongThemFinds)
{
    std::mt19937 random(5);
    const Vector half(3, 5, 2);
    for (int trial = 0; trial < 2000; ++trial) {
        const Vector a = randomPoint(random, 10), b = randomPoint(random, 10);
        const Vector c = randomPoint(random, 10), d = randomPoint(random, 10);
        double t = 0.0, s = 0.0;
        const double toBox = cell_distance::segmentBox(a, b, half, &t);
        EXPECT_NEAR(toBox, leastOn([&](double u) { return cell_distance::pointBox(a + u * (b - a), half); }), 1e-9)
            << "trial " << trial;
        EXPECT_NEAR(toBox, cell_distance::pointBox(a + t * (b - a), half), 1e-9);
        const double between = cell_distance::segmentSegment(a, b, c, d, &s, &t);
        EXPECT_NEAR(between, leastOn([&](double u) { return cell_distance::pointSegment(a + u * (b - a), c, d); }),
                    1e-9)
            << "trial " << trial;
        EXPECT_NEAR(between, (a + s * (b - a) - c - t * (d - c)).squaredNorm(), 1e-9);
    }
}

TEST(CellDistance, ParallelAndDegenerateSegments)
{
    double s = 0.0, t = 0.0;
    // Parallel, overlapping along their length: 2 apart.
    EXPECT_DOUBLE_EQ(cell_distance::segmentSegment(Vector(0, 0, 0), Vector(10, 0, 0), Vector(5, 2, 0),
                                                   Vector(20, 2, 0), &s, &t), 4.0);
    // Parallel, end to end: the ends 3 apart.
    EXPECT_DOUBLE_EQ(cell_distance::segmentSegment(Vector(0, 0, 0), Vector(10, 0, 0), Vector(13, 0, 0),
                                                   Vector(20, 0, 0), &s, &t), 9.0);
    // A point and a segment.
    EXPECT_DOUBLE_EQ(cell_distance::segmentSegment(Vector(1, 1, 0), Vector(1, 1, 0), Vector(0, 0, 0),
                                                   Vector(10, 0, 0), &s, &t), 1.0);
    EXPECT_DOUBLE_EQ(cell_distance::segmentBox(Vector(5, 0, 0), Vector(5, 0, 0), Vector(1, 1, 1), &t), 16.0);
}

TEST(CellDistance, PointsToACylinderSquareToItsSideItsFaceAndItsRim)
{
    EXPECT_DOUBLE_EQ(cell_distance::pointCylinder(Vector(13, 0, 5), 10, 20), 9.0);
    EXPECT_DOUBLE_EQ(cell_distance::pointCylinder(Vector(0, 4, 25), 10, 20), 25.0);
    EXPECT_DOUBLE_EQ(cell_distance::pointCylinder(Vector(0, 13, 24), 10, 20), 25.0);
    EXPECT_DOUBLE_EQ(cell_distance::pointCylinder(Vector(3, 4, -19), 10, 20), 0.0);
}

}  // namespace
