// The growth rule of a matrix's storage.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

// Growth rule shared by RoadmapMatrix and IndexMatrix: capacity starts at 16,
// doubles, and saturates at 0x7FFFFFFF; old elements are kept as a flat prefix.
template <typename Matrix> int storageElementCount(const Matrix* matrix)
{
    int64_t count = 1;
    for (int i = 0; i < matrix->dimensionCount; ++i)
        count *= matrix->extents[i];
    return static_cast<int>(count);
}

template <typename Matrix> void growStorage(Matrix* matrix, int oldElementCount)
{
    using Element = std::remove_pointer_t<decltype(matrix->values)>;
    const int needed = storageElementCount(matrix);
    if (needed <= matrix->capacity)
        return;
    int32_t capacity = matrix->capacity < 16 ? 16 : matrix->capacity;
    while (capacity < needed)
        capacity = capacity > 0x3FFFFFFF ? 0x7FFFFFFF : capacity * 2;
    auto* block = new Element[static_cast<size_t>(capacity)]();
    if (matrix->values) {
        int keep = oldElementCount > 0 ? oldElementCount : 0;
        if (keep > matrix->capacity)
            keep = matrix->capacity;
        std::memcpy(block, matrix->values, sizeof(Element) * static_cast<size_t>(keep));
        if (matrix->ownsValues)
            delete[] matrix->values;
    }
    matrix->values = block;
    matrix->capacity = capacity;
    matrix->ownsValues = true;
}

template <typename Matrix> void resizeStorage(Matrix* matrix, int rows, int columns)
{
    const int old = storageElementCount(matrix);
    matrix->extents[0] = rows;
    matrix->extents[1] = columns;
    growStorage(matrix, old);
}

template <typename Matrix> void releaseStorage(Matrix** handle)
{
    if (!handle || !*handle)
        return;
    Matrix* matrix = *handle;
    if (matrix->values && matrix->ownsValues)
        delete[] matrix->values;
    delete[] matrix->extents;
    delete matrix;
    *handle = nullptr;
}

template <typename Matrix> Matrix* newStorage(int dimensionCount)
{
    auto* matrix = new Matrix;
    matrix->dimensionCount = dimensionCount;
    matrix->extents = new int32_t[static_cast<size_t>(dimensionCount > 0 ? dimensionCount : 1)]();
    return matrix;
}
