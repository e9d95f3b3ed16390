// The map record written last, kept with the map it holds.
#include "written_map_record.h"

#include "robot_map.h"
#include "roadmap_matrix.h"

#include <algorithm>
#include <cstring>

QByteArray WrittenMapRecord::reuse(const QString& key, const RobotMap& map) const
{
    if (key_.isEmpty() || key != key_)
        return QByteArray();
    if (!same(samples_, map.samples()) || !same(route_, map.route()) || !same(graph_, *map.graph()))
        return QByteArray();
    return bytes_;
}

void WrittenMapRecord::remember(const QString& key, const RobotMap& map, const QByteArray& bytes)
{
    key_ = key;
    bytes_ = bytes;
    samples_ = copyOf(map.samples());
    graph_ = *map.graph();
    route_ = copyOf(map.route());
}

void WrittenMapRecord::forget()
{
    key_.clear();
    bytes_ = QByteArray();
    samples_ = MatrixCopy();
    graph_ = RoadmapGraph();
    route_ = MatrixCopy();
}

WrittenMapRecord::MatrixCopy WrittenMapRecord::copyOf(const RoadmapMatrix* matrix)
{
    MatrixCopy copy;
    copy.extents.assign(matrix->extents, matrix->extents + matrix->dimensionCount);
    const int count = std::max(elementCount(matrix), 0);
    copy.values.assign(matrix->values, matrix->values + count);
    return copy;
}

bool WrittenMapRecord::same(const MatrixCopy& copy, const RoadmapMatrix* matrix)
{
    if (!std::equal(copy.extents.begin(), copy.extents.end(), matrix->extents, matrix->extents + matrix->dimensionCount))
        return false;
    const size_t count = static_cast<size_t>(std::max(elementCount(matrix), 0));
    // Bit for bit: -0.0 and 0.0 are stored apart.
    return count == copy.values.size()
           && (count == 0 || std::memcmp(copy.values.data(), matrix->values, count * sizeof(double)) == 0);
}

bool WrittenMapRecord::same(const RoadmapGraph& copy, const RoadmapGraph& graph)
{
    if (copy.nodeCount() != graph.nodeCount() || copy.edgeCount() != graph.edgeCount())
        return false;
    for (int node = 0; node < graph.nodeCount(); ++node) {
        const std::vector<RoadmapGraph::Edge>& mine = copy.edgesOf(node);
        const std::vector<RoadmapGraph::Edge>& theirs = graph.edgesOf(node);
        const auto sameEdge = [](const RoadmapGraph::Edge& a, const RoadmapGraph::Edge& b) {
            return a.node == b.node && std::memcmp(&a.length, &b.length, sizeof a.length) == 0;
        };
        if (!std::equal(mine.begin(), mine.end(), theirs.begin(), theirs.end(), sameEdge))
            return false;
    }
    return true;
}
