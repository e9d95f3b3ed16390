// The MT19937 generator and its uniform draws.
#include "random_generator.h"

namespace {
constexpr int StateSize = 624;
constexpr int MiddleDistance = 397;
constexpr uint32_t MatrixA = 0x9908B0DFu;
constexpr uint32_t UpperMask = 0x80000000u;
constexpr uint32_t LowerMask = 0x7FFFFFFFu;
constexpr uint32_t DefaultSeed = 5489u;
}  // namespace

void MersenneTwister::seed(uint32_t value)
{
    state_[0] = value;
    for (int i = 1; i < StateSize; ++i)
        state_[i] = 1812433253u * (state_[i - 1] ^ (state_[i - 1] >> 30)) + static_cast<uint32_t>(i);
    index_ = StateSize;
    seeded_ = true;
}

void MersenneTwister::twist()
{
    for (int i = 0; i < StateSize; ++i) {
        const uint32_t y = (state_[i] & UpperMask) | (state_[(i + 1) % StateSize] & LowerMask);
        state_[i] = state_[(i + MiddleDistance) % StateSize] ^ (y >> 1) ^ ((y & 1u) ? MatrixA : 0u);
    }
}

uint32_t MersenneTwister::next32()
{
    // Seeded lazily and only once, so the first map after loading repeats.
    if (!seeded_)
        seed(DefaultSeed);
    ++index_;
    if (index_ == StateSize + 1) {
        twist();
        index_ = 1;
    }
    uint32_t y = state_[index_ - 1];
    y ^= y >> 11;
    y ^= (y << 7) & 0x9D2C5680u;
    y ^= (y << 15) & 0xEFC60000u;
    y ^= y >> 18;
    ++drawn_;
    return y;
}

double MersenneTwister::nextUniform()
{
    for (;;) {
        const uint32_t a = next32() >> 5;
        const uint32_t b = next32() >> 6;
        const double r = (a * 67108864.0 + b) * (1.0 / 9007199254740992.0);
        // Zero is drawn again so that the result stays strictly inside (0, 1).
        if (r != 0.0)
            return r;
    }
}
