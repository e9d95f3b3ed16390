// The planner's random generator.
#pragma once

#include <cstdint>

// 32-bit Mersenne Twister (MT19937), seeded with 5489 at its first draw and
// never again, so the first map after loading is repeatable and later maps
// continue the same sequence.
class MersenneTwister {
public:
    uint32_t next32();
    // Uniform double strictly inside (0, 1), from two outputs with 53 bits.
    double nextUniform();
    // Number of 32-bit outputs produced so far, so that a reference generator
    // can be brought to the same point of the sequence.
    uint64_t outputsDrawn() const { return drawn_; }

private:
    void seed(uint32_t value);
    void twist();

    uint32_t state_[624] = {};
    int index_ = 0;  // 1..624 while in use
    bool seeded_ = false;
    uint64_t drawn_ = 0;
};
