#pragma once

// One stored matrix as its bytes, in the station's binary matrix format: a
// dimension count, the sizes and the values, any of them as wrong as a test wants.
#include <QByteArray>
#include <QDataStream>

#include <vector>

inline QByteArray matrixRecord(qint32 dimensions, const std::vector<qint32>& sizes, const std::vector<double>& values)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << dimensions;
    for (qint32 size : sizes)
        stream << size;
    for (double value : values)
        stream << value;
    return bytes;
}
