// The generator the plug-in's maps are drawn from.
#include "planner_random.h"

MersenneTwister& processRandom()
{
    static MersenneTwister generator;
    return generator;
}
