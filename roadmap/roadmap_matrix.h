// The operations on RoadmapMatrix, the planner's dense matrix.
#pragma once

#include "vorlik/roadmap_matrix.h"

#include <memory>

// Operations on RoadmapMatrix. Element (r, c) lives at values[r + rows * c], so
// a column is one contiguous configuration. Capacity starts at 16 elements,
// doubles, and never shrinks; growth keeps the old elements as a flat prefix.

RoadmapMatrix* createMatrix();                                  // 0 x 0, two dimensions
void createMatrix(RoadmapMatrix** handle, int dimensionCount);  // all extents 0
void destroyMatrix(RoadmapMatrix** handle);                     // null handle is left alone
void ensureCapacity(RoadmapMatrix* matrix, int oldElementCount);
void setSize(RoadmapMatrix* matrix, int rows, int columns);
bool copyMatrix(const RoadmapMatrix* source, RoadmapMatrix* destination);
double* column(RoadmapMatrix* matrix, int columnIndex);
const double* column(const RoadmapMatrix* matrix, int columnIndex);
int dimensionSize(const RoadmapMatrix* matrix, int dimension);  // dimension counted from 1
double sum(const RoadmapMatrix* matrix);                        // first extents[0] elements

// Conveniences used throughout the planner.
int elementCount(const RoadmapMatrix* matrix);
inline int rows(const RoadmapMatrix* matrix)
{
    return dimensionSize(matrix, 1);
}
inline int columns(const RoadmapMatrix* matrix)
{
    return dimensionSize(matrix, 2);
}
inline double& at(RoadmapMatrix* m, int row, int col)
{
    return m->values[row + m->extents[0] * col];
}
inline double at(const RoadmapMatrix* m, int row, int col)
{
    return m->values[row + m->extents[0] * col];
}
void fillZero(RoadmapMatrix* matrix);

// Owner of a temporary matrix: destroyed on every exit path.
struct MatrixDeleter {
    void operator()(RoadmapMatrix* matrix) const { destroyMatrix(&matrix); }
};
using ScopedMatrix = std::unique_ptr<RoadmapMatrix, MatrixDeleter>;
inline ScopedMatrix makeScopedMatrix()
{
    return ScopedMatrix(createMatrix());
}
