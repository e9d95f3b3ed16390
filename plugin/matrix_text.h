// The text form of a matrix or of the graph, for the "Save" commands.
#pragma once

class QTextStream;
class RoadmapGraph;
struct RoadmapMatrix;

// Text form, one line per column: "v, v, \n" (comma form) or "[v v ];\n",
// each value with 8 decimals. Nothing is written for an empty matrix.
void writeMatrixText(QTextStream& stream, const RoadmapMatrix* matrix, bool commaForm);
// The graph as the text of its dense N x N matrix, written a column at a time.
void writeGraphText(QTextStream& stream, const RoadmapGraph* graph, bool commaForm);
