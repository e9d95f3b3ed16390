#pragma once

class QDataStream;
class QTextStream;
struct RoadmapMatrix;

// Binary form: int32 dimension count, the sizes, then the elements in storage
// order as float64, all through QDataStream's default (big-endian) encoding.
void writeMatrix(QDataStream& stream, const RoadmapMatrix* matrix);
// Replaces the matrix held by the handle with the one read; at the end of the
// stream it logs "No data to read" and leaves the matrix as it is.
void readMatrix(QDataStream& stream, RoadmapMatrix** handle);

// Text form, one line per column: "v, v, \n" (comma form) or "[v v ];\n",
// each value with 8 decimals. Nothing is written for an empty matrix.
void writeMatrixText(QTextStream& stream, const RoadmapMatrix* matrix, bool commaForm);
