// The matrix the plug-in hands the host to show configurations.
#pragma once

#include <cstdint>

// Dense column-major matrix of doubles with its own dimension count and extents.
// The host sees it only when the plug-in hands it configurations to display
// (HostItem::showJointSequence): rows = extents[0] joints, columns = extents[1]
// configurations, element (r, c) at values[r + extents[0] * c].
// Its operations live in the planner; a host only reads it.
struct RoadmapMatrix {
    double* values = nullptr;
    int32_t* extents = nullptr;
    int32_t capacity = 0;
    int32_t dimensionCount = 0;
    bool ownsValues = true;
};
