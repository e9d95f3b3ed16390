// Fuzzes the reader of a robot's stored map record. Any bytes give a map or a
// refusal, never a crash or an allocation beyond what the record holds; a
// record read whole is written back byte for byte, and what is written reads
// back. The first byte chooses the robot's joint count.
#include "robot_map_record.h"

#include "quiet_log.h"

#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    silenceDebugLog();
    if (size < 1)
        return 0;
    const int jointCount = data[0] % 13;
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1), static_cast<int>(size - 1));

    ScopedMatrix samples = makeScopedMatrix();
    RoadmapGraph graph;
    ScopedMatrix route = makeScopedMatrix();
    QString problem;
    if (!decodeRobotMap(bytes, jointCount, samples.get(), &graph, route.get(), &problem)) {
        if (problem.isEmpty() || columns(samples.get()) != 0 || graph.nodeCount() != 0)
            std::abort();  // a refusal says why and leaves nothing behind
        return 0;
    }
    const int sampleCount = columns(samples.get());
    if (sampleCount > 0 && rows(samples.get()) != jointCount)
        std::abort();
    if (graph.nodeCount() != 0 && graph.nodeCount() < sampleCount)
        std::abort();

    QString writeProblem;
    const QByteArray again = encodeRobotMap(samples.get(), &graph, route.get(), &writeProblem);
    if (again.isNull())
        return 0;  // too large to keep: said, not written
    if (again.size() == bytes.size() && again != bytes)
        std::abort();  // a whole record comes back as it was
    ScopedMatrix samples2 = makeScopedMatrix();
    RoadmapGraph graph2;
    ScopedMatrix route2 = makeScopedMatrix();
    if (!decodeRobotMap(again, jointCount, samples2.get(), &graph2, route2.get(), &problem) || graph2 != graph)
        std::abort();
    return 0;
}
