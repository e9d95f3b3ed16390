#include "random_generator.h"
#include "roadmap_matrix.h"

#include "reference_random.h"

#include <gtest/gtest.h>

#include <random>

TEST(MersenneTwister, FreshInstanceMatchesTheStandardEngineAtSeed5489)
{
    MersenneTwister generator;
    std::mt19937 reference;  // default seed 5489
    // More than two blocks, so that the twist is crossed twice.
    for (int i = 0; i < 1500; ++i)
        ASSERT_EQ(generator.next32(), reference()) << "output " << i;
    EXPECT_EQ(generator.outputsDrawn(), 1500u);
}

TEST(MersenneTwister, TenThousandthOutputOfTheStandardSequence)
{
    // The C++ standard pins the 10000th output of MT19937 at its default seed.
    MersenneTwister generator;
    uint32_t last = 0;
    for (int i = 0; i < 10000; ++i)
        last = generator.next32();
    EXPECT_EQ(last, 4123659995u);
}

TEST(MersenneTwister, UniformUsesTwoOutputsWith53Bits)
{
    MersenneTwister generator;
    std::mt19937 reference;
    for (int i = 0; i < 200; ++i) {
        const uint32_t a = reference() >> 5;
        const uint32_t b = reference() >> 6;
        const double expected = (a * 67108864.0 + b) * 1.1102230246251565e-16;
        const double drawn = generator.nextUniform();
        ASSERT_EQ(drawn, expected);
        ASSERT_GT(drawn, 0.0);
        ASSERT_LT(drawn, 1.0);
    }
}

TEST(MersenneTwister, ProcessGeneratorContinuesOneSequence)
{
    ReferenceRandom reference(processRandom().outputsDrawn());
    for (int i = 0; i < 50; ++i)
        ASSERT_EQ(randomUniform(), reference.uniform());
}

TEST(MersenneTwister, RandomVectorSetsTheFirstDimensionAndDraws)
{
    RoadmapMatrix* vector = nullptr;
    createMatrix(&vector, 1);
    ScopedMatrix owner(vector);
    ReferenceRandom reference(processRandom().outputsDrawn());
    randomVector(6, vector);
    EXPECT_EQ(dimensionSize(vector, 1), 6);
    ASSERT_GE(vector->capacity, 6);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(vector->values[i], reference.uniform());

    // A two-dimensional vector still gets room for all n draws.
    ScopedMatrix column = makeScopedMatrix();
    randomVector(20, column.get());
    EXPECT_EQ(rows(column.get()), 20);
    EXPECT_GE(column->capacity, 20);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(column->values[i], reference.uniform());
}
