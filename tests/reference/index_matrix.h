#pragma once

#include <cstdint>
#include <memory>

// The RoadmapMatrix layout with 32-bit integer elements: the 1-based
// permutations that sorting produces.
struct IndexMatrix {
    int32_t* values = nullptr;
    int32_t* extents = nullptr;
    int32_t capacity = 0;
    int32_t dimensionCount = 0;
    bool ownsValues = true;
};

IndexMatrix* createIndexMatrix();  // 0 x 0, two dimensions
void destroyMatrix(IndexMatrix** handle);
void ensureCapacity(IndexMatrix* matrix, int oldElementCount);
void setSize(IndexMatrix* matrix, int rows, int columns);
int elementCount(const IndexMatrix* matrix);

struct IndexMatrixDeleter {
    void operator()(IndexMatrix* matrix) const { destroyMatrix(&matrix); }
};
using ScopedIndexMatrix = std::unique_ptr<IndexMatrix, IndexMatrixDeleter>;
