#pragma once

#include <cstdint>
#include <random>

// Independent model of the sampler's draws: the standard library's MT19937 at
// its default seed (5489), brought forward by the number of 32-bit outputs the
// generator under test has already produced, with the 53-bit rule for floats.
class ReferenceRandom {
public:
    explicit ReferenceRandom(uint64_t outputsAlreadyDrawn = 0) { engine_.discard(outputsAlreadyDrawn); }

    double uniform()
    {
        for (;;) {
            const uint64_t a = engine_() >> 5;
            const uint64_t b = engine_() >> 6;
            const double r = static_cast<double>((a << 26) + b) / 9007199254740992.0;
            if (r != 0.0)
                return r;
        }
    }

private:
    std::mt19937 engine_;
};
