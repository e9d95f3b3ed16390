#include "planner_resources.h"
#include "random_generator.h"

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

TEST(MersenneTwister, TheResourcesGeneratorContinuesOneSequence)
{
    PlannerResources resources;
    resources.random().next32();
    ReferenceRandom reference(resources.random().outputsDrawn());
    for (int i = 0; i < 50; ++i)
        ASSERT_EQ(resources.random().nextUniform(), reference.uniform());
}
