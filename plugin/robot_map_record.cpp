// Writing and reading the robot map record, with every check a stored record must pass.
#include "robot_map_record.h"

#include "map_capacity.h"

#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include <QDebug>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <vector>

#ifdef __linux__
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace {

constexpr int64_t ElementBytes = 8;

// Writes into a buffer sized up front; nothing is appended or copied.
class RecordWriter {
public:
    explicit RecordWriter(char* data) : data_(data) {}

    void putInt32(qint32 value)
    {
        qToBigEndian(value, data_ + offset_);
        offset_ += 4;
    }
    void putDouble(double value)
    {
        quint64 bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        qToBigEndian(bits, data_ + offset_);
        offset_ += 8;
    }
    void putMatrix(const RoadmapMatrix* matrix)
    {
        putInt32(matrix->dimensionCount);
        for (int i = 0; i < matrix->dimensionCount; ++i)
            putInt32(matrix->extents[i]);
        const int count = std::max(elementCount(matrix), 0);
        for (int i = 0; i < count; ++i)
            putDouble(matrix->values[i]);
    }
    // The dense N x N matrix, column by column in one pass: each column zero
    // (the bytes of +0.0), then its edges, while it is still in the cache.
    void putGraph(const RoadmapGraph* graph)
    {
        const int64_t n = graph->nodeCount();
        putInt32(2);
        putInt32(static_cast<qint32>(n));
        putInt32(static_cast<qint32>(n));
        for (int64_t column = 0; column < n; ++column) {
            char* elements = data_ + offset_;
            std::memset(elements, 0, static_cast<size_t>(ElementBytes * n));
            for (const RoadmapGraph::Edge& edge : graph->edgesOf(static_cast<int>(column))) {
                quint64 bits = 0;
                std::memcpy(&bits, &edge.length, sizeof bits);
                qToBigEndian(bits, elements + ElementBytes * edge.node);
            }
            offset_ += ElementBytes * n;
        }
    }
    int64_t written() const { return offset_; }

private:
    char* data_;
    int64_t offset_ = 0;
};

// A map's record runs to a gigabyte and more, every byte of it written once.
// Fresh memory comes from the system a page at a time, each at a fault of its
// own: for such a record the faults take longer than the writing. Where the
// system can, its pages are asked for in one call instead (a hint: where it
// cannot, the faults come as before).
void prefault(char* data, int64_t size)
{
#if defined(__linux__) && defined(MADV_POPULATE_WRITE)
    const uintptr_t page = uintptr_t(sysconf(_SC_PAGESIZE));
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(data) + page - 1) & ~(page - 1);
    const uintptr_t end = (reinterpret_cast<uintptr_t>(data) + uintptr_t(size)) & ~(page - 1);
    if (end > begin)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
#else
    Q_UNUSED(data);
    Q_UNUSED(size);
#endif
}

// Reads big-endian fields and says when the record ends.
class RecordReader {
public:
    explicit RecordReader(const QByteArray& bytes)
        : data_(reinterpret_cast<const uchar*>(bytes.constData())), size_(bytes.size())
    {
    }

    bool atEnd() const { return offset_ >= size_; }
    int64_t bytesLeft() const { return size_ - offset_; }
    bool readInt32(qint32* value)
    {
        if (bytesLeft() < 4)
            return false;
        *value = qFromBigEndian<qint32>(data_ + offset_);
        offset_ += 4;
        return true;
    }
    double readDouble()
    {
        const quint64 bits = qFromBigEndian<quint64>(data_ + offset_);
        offset_ += 8;
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

private:
    const uchar* data_;
    int64_t size_;
    int64_t offset_ = 0;
};

// The head of one stored matrix: its two sizes, checked against the bytes
// that are left before anything is allocated for it.
struct MatrixHead {
    bool present = false;  // false: the record ended before it
    qint32 rows = 0;
    qint32 columns = 0;
};

bool readHead(RecordReader& reader, const char* what, MatrixHead* head, QString* problem)
{
    if (reader.atEnd()) {
        qDebug().noquote().nospace() << "No data to read";
        return true;
    }
    head->present = true;
    qint32 dimensions = 0;
    if (!reader.readInt32(&dimensions)) {
        *problem = QStringLiteral("the %1 matrix is cut short").arg(QLatin1String(what));
        return false;
    }
    qDebug().noquote().nospace() << "Loading matrix of dimensions: " << dimensions;
    if (dimensions != 2) {
        *problem =
            QStringLiteral("the %1 matrix has %2 dimensions instead of 2").arg(QLatin1String(what)).arg(dimensions);
        return false;
    }
    if (!reader.readInt32(&head->rows) || !reader.readInt32(&head->columns)) {
        *problem = QStringLiteral("the %1 matrix is cut short").arg(QLatin1String(what));
        return false;
    }
    if (head->rows < 0 || head->columns < 0) {
        *problem = QStringLiteral("the %1 matrix has a negative size (%2 x %3)")
                       .arg(QLatin1String(what))
                       .arg(head->rows)
                       .arg(head->columns);
        return false;
    }
    // Counted in elements: in bytes, two sizes near 2^31 would overflow.
    if (int64_t(head->rows) * head->columns > reader.bytesLeft() / ElementBytes) {
        *problem = QStringLiteral("the %1 matrix claims %2 x %3 values, more than the record holds")
                       .arg(QLatin1String(what))
                       .arg(head->rows)
                       .arg(head->columns);
        return false;
    }
    return true;
}

bool readDense(RecordReader& reader, const MatrixHead& head, const char* what, RoadmapMatrix* matrix, QString* problem)
{
    setSize(matrix, head.rows, head.columns);
    const int count = head.rows * head.columns;
    for (int i = 0; i < count; ++i) {
        const double value = reader.readDouble();
        if (!std::isfinite(value)) {
            *problem =
                QStringLiteral("the %1 matrix holds a value that is not a finite number").arg(QLatin1String(what));
            return false;
        }
        matrix->values[i] = value;
    }
    return true;
}

// The dense graph must be a roadmap's: square, symmetric, zero on the
// diagonal, every entry a finite length >= 0 (not even a -0.0: the planner
// never writes one, and it could not be written back as it was).
bool readGraph(RecordReader& reader, const MatrixHead& head, RoadmapGraph* graph, QString* problem)
{
    if (head.rows != head.columns) {
        *problem = QStringLiteral("the graph is not square (%1 x %2)").arg(head.rows).arg(head.columns);
        return false;
    }
    const int n = head.rows;
    graph->resize(n);
    // Columns come in order, so an entry below the diagonal, (row, column),
    // comes before its mirror (column, row): it waits here, under the column
    // the mirror is in, in ascending order of the mirror's row.
    std::vector<std::vector<RoadmapGraph::Edge>> pending(static_cast<size_t>(n));
    for (int column = 0; column < n; ++column) {
        const std::vector<RoadmapGraph::Edge>& mirrors = pending[static_cast<size_t>(column)];
        size_t next = 0;
        for (int row = 0; row < n; ++row) {
            const double value = reader.readDouble();
            if (!std::isfinite(value) || std::signbit(value)) {
                *problem = QStringLiteral("the graph holds an entry that is not a length (%1, %2)")
                               .arg(row + 1)
                               .arg(column + 1);
                return false;
            }
            if (row > column) {
                if (value != 0.0)
                    pending[static_cast<size_t>(row)].push_back({column, value});
                continue;
            }
            if (row == column) {
                if (value != 0.0) {
                    *problem = QStringLiteral("the graph joins node %1 to itself").arg(row + 1);
                    return false;
                }
                continue;
            }
            const bool mirrored = next < mirrors.size() && mirrors[next].node == row;
            if (value != (mirrored ? mirrors[next].length : 0.0)) {
                *problem = QStringLiteral("the graph is not symmetric at (%1, %2)").arg(row + 1).arg(column + 1);
                return false;
            }
            if (mirrored) {
                graph->setLength(row, column, value);
                ++next;
            }
        }
        pending[static_cast<size_t>(column)] = {};
    }
    return true;
}

// The last route found: one row of 1-based nodes (0 x 0 before any link). It
// is only ever written back (a link searches anew), and a map computed after a
// link keeps the old route, which may name nodes the new map does not have:
// such a route is kept as stored.
bool readRoute(RecordReader& reader, const MatrixHead& head, RoadmapMatrix* route, QString* problem)
{
    if (head.rows != 1 && !(head.rows == 0 && head.columns == 0)) {
        *problem = QStringLiteral("the route has %1 rows instead of 1").arg(head.rows);
        return false;
    }
    if (!readDense(reader, head, "route", route, problem))
        return false;
    for (int i = 0; i < elementCount(route); ++i) {
        const double node = route->values[i];
        if (node != std::floor(node) || node < 1 || node > 2147483647.0) {
            *problem = QStringLiteral("the route holds %1, which is not a node number").arg(node);
            return false;
        }
    }
    return true;
}

bool readAll(RecordReader& reader, int jointCount, RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route,
             QString* problem)
{
    MatrixHead head;
    if (!readHead(reader, "samples", &head, problem))
        return false;
    if (!head.present)
        return true;  // an empty record: the map stays empty, nothing is logged
    if (head.columns > 0 ? head.rows != jointCount : head.rows != 0 && head.rows != jointCount) {
        *problem = QStringLiteral("the map was built for %1 joints, the robot has %2").arg(head.rows).arg(jointCount);
        return false;
    }
    if (!readDense(reader, head, "samples", samples, problem))
        return false;
    const int sampleCount = head.columns;

    // An absent part is no damage: each one missing says "No data to read".
    head = MatrixHead();
    if (!readHead(reader, "graph", &head, problem))
        return false;
    if (head.present) {
        // Each cancelled insertion leaves the graph one more node ahead of the samples.
        if (head.rows < sampleCount && !(head.rows == 0 && head.columns == 0)) {
            *problem = QStringLiteral("the graph has %1 nodes for %2 samples").arg(head.rows).arg(sampleCount);
            return false;
        }
        if (!readGraph(reader, head, graph, problem))
            return false;
    }

    head = MatrixHead();
    if (!readHead(reader, "route", &head, problem))
        return false;
    if (!head.present)
        return true;
    return readRoute(reader, head, route, problem);
}

}  // namespace

QByteArray encodeRobotMap(const RoadmapMatrix* samples, const RoadmapGraph* graph, const RoadmapMatrix* route,
                          QString* problem)
{
    const int64_t n = graph->nodeCount();
    const auto storedBytes = [](const RoadmapMatrix* matrix) {
        return storedMatrixBytes(matrix->dimensionCount, std::max(elementCount(matrix), 0));
    };
    const int64_t size = storedBytes(samples) + storedMatrixBytes(2, n * n) + storedBytes(route);
    if (size > largestRobotMapRecord()) {
        *problem = QStringLiteral("a map of %1 samples needs %2 bytes, more than a station can hold").arg(n).arg(size);
        return QByteArray();
    }
    QByteArray bytes;
    try {
        bytes = QByteArray(static_cast<int>(size), Qt::Uninitialized);
    } catch (const std::bad_alloc&) {
        *problem = QStringLiteral("there is not enough memory for the %1 bytes of the map").arg(size);
        return QByteArray();
    }
    prefault(bytes.data(), size);
    RecordWriter writer(bytes.data());
    writer.putMatrix(samples);
    writer.putGraph(graph);
    writer.putMatrix(route);
    Q_ASSERT(writer.written() == size);
    return bytes;
}

bool decodeRobotMap(const QByteArray& bytes, int jointCount, RoadmapMatrix* samples, RoadmapGraph* graph,
                    RoadmapMatrix* route, QString* problem)
{
    setSize(samples, 0, 0);
    graph->clear();
    setSize(route, 0, 0);
    RecordReader reader(bytes);
    if (readAll(reader, jointCount, samples, graph, route, problem))
        return true;
    setSize(samples, 0, 0);
    graph->clear();
    setSize(route, 0, 0);
    return false;
}
