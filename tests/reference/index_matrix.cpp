#include "index_matrix.h"

#include "matrix_storage.h"

IndexMatrix* createIndexMatrix()
{
    return newStorage<IndexMatrix>(2);
}

void destroyMatrix(IndexMatrix** handle)
{
    releaseStorage(handle);
}

void ensureCapacity(IndexMatrix* matrix, int oldElementCount)
{
    growStorage(matrix, oldElementCount);
}

void setSize(IndexMatrix* matrix, int rows, int columns)
{
    resizeStorage(matrix, rows, columns);
}

int elementCount(const IndexMatrix* matrix)
{
    return storageElementCount(matrix);
}
