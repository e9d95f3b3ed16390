#include "matrix_io.h"

#include "roadmap_matrix.h"

#include <QDataStream>
#include <QDebug>
#include <QTextStream>

namespace {
// Sizes beyond this come from a damaged record, not from a map: reading them
// would exhaust memory, so such a matrix is read as empty.
constexpr qint64 MaxReadableElements = qint64(1) << 28;
}  // namespace

void writeMatrix(QDataStream& stream, const RoadmapMatrix* matrix)
{
    stream << qint32(matrix->dimensionCount);
    for (int i = 0; i < matrix->dimensionCount; ++i)
        stream << qint32(matrix->extents[i]);
    const int count = elementCount(matrix);
    for (int i = 0; i < count; ++i)
        stream << matrix->values[i];
}

void readMatrix(QDataStream& stream, RoadmapMatrix** handle)
{
    if (stream.atEnd()) {
        qDebug().noquote().nospace() << "No data to read";
        return;
    }
    destroyMatrix(handle);
    qint32 dimensions = 0;
    stream >> dimensions;
    qDebug().noquote().nospace() << "Loading matrix of dimensions: " << dimensions;
    createMatrix(handle, dimensions);
    RoadmapMatrix* matrix = *handle;
    for (int i = 0; i < dimensions; ++i) {
        qint32 size = 0;
        stream >> size;
        matrix->extents[i] = size;
    }
    qint64 product = 1;
    for (int i = 0; i < dimensions; ++i)
        product *= qMax<qint64>(matrix->extents[i], 0);
    if (product > MaxReadableElements) {
        qDebug().noquote().nospace() << "Matrix too large to read: " << product << " elements";
        for (int i = 0; i < dimensions; ++i)
            matrix->extents[i] = 0;
        return;
    }
    ensureCapacity(matrix, 0);
    const int count = elementCount(matrix);
    for (int i = 0; i < count; ++i)
        stream >> matrix->values[i];
}

void writeMatrixText(QTextStream& stream, const RoadmapMatrix* matrix, bool commaForm)
{
    const int rowCount = dimensionSize(matrix, 1);
    const int columnCount = dimensionSize(matrix, 2);
    if (rowCount * columnCount == 0)
        return;
    for (int c = 0; c < columnCount; ++c) {
        const double* values = column(matrix, c);
        if (!commaForm)
            stream << "[";
        for (int r = 0; r < rowCount; ++r)
            stream << QString::number(values[r], 'f', 8) << (commaForm ? ", " : " ");
        stream << (commaForm ? "\n" : "];\n");
    }
}
