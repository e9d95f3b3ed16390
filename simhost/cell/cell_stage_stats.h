// Counts of what each stage of the 3D check did.
#pragma once

#include "cell_narrow_phase.h"

// What each stage of a checker's 3D checks did: configurations placed,
// pairs the bounds ruled out, narrow tests answered exactly or by FCL, and,
// when timing is on, the seconds of placing and of the narrow tests (the
// rest of a check is culling).
struct CellStageStats {
    long long configurations = 0;
    long long pairs = 0;          // (link, object) and (link, link) pairs looked at
    long long pairsCulled = 0;    // ruled out by the link bounds or the broad phase
    long long solidPairs = 0;     // (solid, solid) pairs of the remaining pairs
    long long solidsCulled = 0;   // ruled out by the solids' bounding spheres
    cell_narrow_phase::Counts narrow;
    bool timed = false;
    double placeSeconds = 0.0;
    double narrowSeconds = 0.0;
};
