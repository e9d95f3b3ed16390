// The planner's original node insertion over a dense graph, kept word for word
// as the reference for the in-place insertion into the sparse graph.
#include "dense_insert_node.h"


#include "collision_checker.h"
#include "index_matrix.h"
#include "vorlik/joint_vector.h"
#include "planner_progress.h"
#include "roadmap_matrix.h"
#include "sort_permutation.h"
#include "translate.h"

#include <QDebug>

#include <algorithm>
#include <climits>
#include <cmath>

namespace {
// Nearest integer, halves away from zero, saturated to the 32-bit range.
int roundSaturated(double value)
{
    const double rounded = std::round(value);
    if (std::isnan(rounded))
        return 0;
    if (rounded >= 2147483648.0)
        return INT_MAX;
    if (rounded < -2147483648.0)
        return INT_MIN;
    return static_cast<int>(rounded);
}

int incrementSaturated(int value)
{
    return value == INT_MAX ? value : value + 1;
}

bool connectProgress(PlannerProgress& reporter, int candidate, int candidateTotal, int edges)
{
    qDebug().noquote().nospace() << "Adding node " << candidate << " / " << candidateTotal << " - Edges: " << edges;
    reporter.setHeadline(
        planTr("Connecting robot position: %1/%2 - Edges: %3").arg(candidate).arg(candidateTotal).arg(edges));
    reporter.setDetail(QString());
    return reporter.update(static_cast<int>(candidate * 100LL / candidateTotal));
}

// graphOut = graph bordered by one zero row and column for the new node.
void growGraph(const RoadmapMatrix* graph, RoadmapMatrix* graphOut)
{
    const int side = rows(graph);
    setSize(graphOut, side + 1, side + 1);
    fillZero(graphOut);
    for (int c = 0; c < side; ++c)
        for (int r = 0; r < side; ++r)
            at(graphOut, r, c) = at(graph, r, c);
}
}  // namespace

void denseInsertNode(CollisionChecker& checker, PlannerProgress& progress, const JointVector& configuration, const RoadmapMatrix* samples,
                const RoadmapMatrix* graph, const PlannerParameters& parameters, RoadmapMatrix* samplesOut,
                RoadmapMatrix* graphOut, int* edgesMade, int* nodeIndex)
{
    // The settings as the original read them: one array of doubles.
    const double settings[5] = {0.0, double(parameters.samples), double(parameters.edgesPerSample),
                                double(parameters.newNodeEdges), parameters.robotStepDeg};
    enum { Edges = 2, NewNodeEdges = 3, RobotStep = 4 };
    const int jointCount = rows(samples);
    const int sampleCount = columns(samples);
    if (sampleCount < 1) {
        setSize(samplesOut, 0, 0);
        setSize(graphOut, 0, 0);
        *nodeIndex = -1;
        *edgesMade = 0;
        return;
    }

    const ScopedMatrix distanceOwner = makeScopedMatrix();
    RoadmapMatrix* distances = distanceOwner.get();
    const ScopedIndexMatrix order(createIndexMatrix());
    setSize(distances, sampleCount, 1);
    for (int j = 0; j < sampleCount; ++j)
        distances->values[j] = JointVector::distance(configuration.values(), column(samples, j), jointCount);
    sortWithPermutation(distances, order.get());

    copyMatrix(samples, samplesOut);

    // Within one robot step of a sample the configuration is that sample. The
    // edges-per-sample setting is reported as the edge count, so that callers
    // judge a reused node a success.
    if (settings[RobotStep] >= distances->values[0]) {
        *nodeIndex = order->values[0];
        copyMatrix(graph, graphOut);
        *edgesMade = roundSaturated(settings[Edges]);
        return;
    }

    growGraph(graph, graphOut);
    const int side = rows(graph);
    *nodeIndex = incrementSaturated(side);

    int edges = 0;
    for (int k = 0; k < sampleCount; ++k) {
        if (connectProgress(progress, k + 1, sampleCount, edges)) {
            // Cancelled: samplesOut stays without the node; callers abandon the query.
            *edgesMade = edges;
            return;
        }
        const int candidate = order->values[k] - 1;
        if (checker.jointMove(JointVector(configuration.values(), jointCount), JointVector(column(samples, candidate), jointCount))
            != 0)
            continue;
        edges = incrementSaturated(edges);
        if (sampleCount <= side) {
            at(graphOut, candidate, sampleCount) = distances->values[k];
            at(graphOut, sampleCount, candidate) = distances->values[k];
        }
        if (edges >= settings[NewNodeEdges])
            break;
    }

    // Appended even without edges: an isolated node, which the caller reports.
    setSize(samplesOut, jointCount, sampleCount + 1);
    std::copy(configuration.values(), configuration.values() + jointCount, column(samplesOut, sampleCount));
    *edgesMade = edges;
}
