// The generator the plug-in's maps are drawn from.
#pragma once

#include "random_generator.h"

// The generator the plug-in's maps are drawn from: seeded at its first draw
// and going on across maps.
MersenneTwister& processRandom();
