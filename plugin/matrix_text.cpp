// The text form of a matrix or of the graph, as "Save" and "SaveMap" write it.
#include "matrix_text.h"

#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include <QDebug>
#include <QTextStream>

#include <vector>

namespace {
void writeColumnText(QTextStream& stream, const double* values, int rowCount, bool commaForm)
{
    if (!commaForm)
        stream << "[";
    for (int r = 0; r < rowCount; ++r)
        stream << QString::number(values[r], 'f', 8) << (commaForm ? ", " : " ");
    stream << (commaForm ? "\n" : "];\n");
}
}  // namespace

void writeMatrixText(QTextStream& stream, const RoadmapMatrix* matrix, bool commaForm)
{
    const int rowCount = dimensionSize(matrix, 1);
    const int columnCount = dimensionSize(matrix, 2);
    if (rowCount * columnCount == 0)
        return;
    for (int c = 0; c < columnCount; ++c)
        writeColumnText(stream, column(matrix, c), rowCount, commaForm);
}

void writeGraphText(QTextStream& stream, const RoadmapGraph* graph, bool commaForm)
{
    const int n = graph->nodeCount();
    std::vector<double> values(static_cast<size_t>(n), 0.0);
    for (int c = 0; c < n; ++c) {
        for (const RoadmapGraph::Edge& edge : graph->edgesOf(c))
            values[static_cast<size_t>(edge.node)] = edge.length;
        writeColumnText(stream, values.data(), n, commaForm);
        for (const RoadmapGraph::Edge& edge : graph->edgesOf(c))
            values[static_cast<size_t>(edge.node)] = 0.0;
    }
}
