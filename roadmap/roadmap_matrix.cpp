// The operations on RoadmapMatrix.
#include "roadmap_matrix.h"

#include "matrix_storage.h"

#include <algorithm>

RoadmapMatrix* createMatrix()
{
    return newStorage<RoadmapMatrix>(2);
}

void createMatrix(RoadmapMatrix** handle, int dimensionCount)
{
    *handle = newStorage<RoadmapMatrix>(dimensionCount);
}

void destroyMatrix(RoadmapMatrix** handle)
{
    releaseStorage(handle);
}

void ensureCapacity(RoadmapMatrix* matrix, int oldElementCount)
{
    growStorage(matrix, oldElementCount);
}

void setSize(RoadmapMatrix* matrix, int rows, int columns)
{
    resizeStorage(matrix, rows, columns);
}

bool copyMatrix(const RoadmapMatrix* source, RoadmapMatrix* destination)
{
    if (source->dimensionCount != 2 || destination->dimensionCount != 2) {
        const int old = storageElementCount(destination);
        for (int i = 0; i < destination->dimensionCount; ++i)
            destination->extents[i] = 0;
        growStorage(destination, old);
        return false;
    }
    setSize(destination, source->extents[0], source->extents[1]);
    const int count = source->extents[0] * source->extents[1];
    if (count > 0)
        std::copy(source->values, source->values + count, destination->values);
    return true;
}

double* column(RoadmapMatrix* matrix, int columnIndex)
{
    return matrix->values + static_cast<long>(matrix->extents[0]) * columnIndex;
}

const double* column(const RoadmapMatrix* matrix, int columnIndex)
{
    return matrix->values + static_cast<long>(matrix->extents[0]) * columnIndex;
}

int dimensionSize(const RoadmapMatrix* matrix, int dimension)
{
    if (dimension < 1 || dimension > matrix->dimensionCount)
        return 0;
    return matrix->extents[dimension - 1];
}

double sum(const RoadmapMatrix* matrix)
{
    double total = 0.0;
    const int n = matrix->dimensionCount > 0 ? matrix->extents[0] : 0;
    for (int i = 0; i < n; ++i)
        total += matrix->values[i];
    return total;
}

int elementCount(const RoadmapMatrix* matrix)
{
    return storageElementCount(matrix);
}

void fillZero(RoadmapMatrix* matrix)
{
    const int count = elementCount(matrix);
    if (count > 0)
        std::fill(matrix->values, matrix->values + count, 0.0);
}
