#pragma once

struct RoadmapMatrix;
struct IndexMatrix;

// Stable ascending merge sort of all elements of `values`, in place; fills
// `permutation` (resized to match) with the 1-based positions the values had.
void sortWithPermutation(RoadmapMatrix* values, IndexMatrix* permutation);
