// The map record written last, kept with the map it holds.
#include "written_map_record.h"

#include "robot_map.h"

#include <algorithm>
#include <cstring>

QByteArray WrittenMapRecord::reuse(const QString& key, const RobotMap& map) const
{
    if (key_.isEmpty() || key != key_)
        return QByteArray();
    if (!same(samples_.get(), map.samples()) || !same(route_.get(), map.route()) || !same(graph_, *map.graph()))
        return QByteArray();
    return bytes_;
}

void WrittenMapRecord::remember(const QString& key, const RobotMap& map, const QByteArray& bytes)
{
    // A matrix that is not two-dimensional cannot be copied: such a map is not kept.
    if (!copyMatrix(map.samples(), samples_.get()) || !copyMatrix(map.route(), route_.get())) {
        forget();
        return;
    }
    key_ = key;
    bytes_ = bytes;
    graph_ = *map.graph();
}

void WrittenMapRecord::forget()
{
    key_.clear();
    bytes_ = QByteArray();
    setSize(samples_.get(), 0, 0);
    graph_ = RoadmapGraph();
    setSize(route_.get(), 0, 0);
}

bool WrittenMapRecord::same(const RoadmapMatrix* copy, const RoadmapMatrix* matrix)
{
    if (copy->dimensionCount != matrix->dimensionCount
        || !std::equal(copy->extents, copy->extents + copy->dimensionCount, matrix->extents))
        return false;
    const size_t count = static_cast<size_t>(std::max(elementCount(matrix), 0));
    // Bit for bit: -0.0 and 0.0 are stored apart.
    return count == 0 || std::memcmp(copy->values, matrix->values, count * sizeof(double)) == 0;
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
