// Inserting a configuration into the map as a node, joined to its nearest samples.
#include "insert_node.h"

#include "collision_checker.h"
#include "joint_distance.h"
#include "progress_steps.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <vector>

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

struct Candidate {
    int index;  // 0-based sample
    double distance;
};

// Candidates are tried in the order a stable sort of their distances gives:
// nearest first, equal distances by ascending index. As a heap comparison:
// true when a comes after b.
bool triedLater(const Candidate& a, const Candidate& b)
{
    if (a.distance != b.distance)
        return a.distance > b.distance;
    return a.index > b.index;
}
}  // namespace

NodeInserter::NodeInserter(CollisionChecker& checker, PlannerProgress& progress)
    : checker_(checker), progress_(progress)
{
}

InsertedNode NodeInserter::insert(Configuration configuration, const RoadmapMatrix* samples,
                                  const RoadmapGraph* graph, const PlannerParameters& parameters,
                                  RoadmapMatrix* samplesOut, RoadmapGraph* graphOut)
{
    InsertedNode inserted;
    const int jointCount = rows(samples);
    const int sampleCount = columns(samples);
    if (sampleCount < 1) {
        setSize(samplesOut, 0, 0);
        graphOut->clear();
        return inserted;
    }

    std::vector<Candidate> candidates(static_cast<size_t>(sampleCount));
    for (int j = 0; j < sampleCount; ++j)
        candidates[static_cast<size_t>(j)] = {j, jointDistance(configuration.data(), column(samples, j), jointCount)};
    const Candidate nearest = *std::min_element(
        candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) { return triedLater(b, a); });

    if (samplesOut != samples)
        copyMatrix(samples, samplesOut);
    if (graphOut != graph)
        *graphOut = *graph;

    // Within one robot step of a sample the configuration is that sample. The
    // edges-per-sample setting is reported as the edge count, so that callers
    // judge a reused node a success.
    if (parameters[PlannerParameter::RobotStep] >= nearest.distance) {
        inserted.nodeNumber = nearest.index + 1;
        inserted.edgesMade = roundSaturated(parameters[PlannerParameter::Edges]);
        return inserted;
    }

    const int side = graphOut->nodeCount();
    graphOut->addNode();
    inserted.nodeNumber = incrementSaturated(side);

    // Nearest first, taken from a heap one at a time: usually only a few are tried.
    std::make_heap(candidates.begin(), candidates.end(), triedLater);
    int edges = 0;
    for (int k = 0; k < sampleCount; ++k) {
        if (showConnectProgress(progress_, k + 1, sampleCount, edges)) {
            // Cancelled: samplesOut stays without the node; callers abandon the query.
            inserted.edgesMade = edges;
            return inserted;
        }
        std::pop_heap(candidates.begin(), candidates.end(), triedLater);
        const Candidate candidate = candidates.back();
        candidates.pop_back();
        if (checker_.jointMove(JointVector(configuration.data(), jointCount),
                               JointVector(column(samples, candidate.index), jointCount))
            != 0)
            continue;
        edges = incrementSaturated(edges);
        // The node's edges go to index N, which after a cancelled insertion is
        // that earlier node's.
        if (sampleCount <= side)
            graphOut->setLength(candidate.index, sampleCount, candidate.distance);
        if (edges >= parameters[PlannerParameter::NewNodeEdges])
            break;
    }

    // Appended even without edges: an isolated node, which the caller reports.
    setSize(samplesOut, jointCount, sampleCount + 1);
    std::copy(configuration.begin(), configuration.begin() + jointCount, column(samplesOut, sampleCount));
    inserted.edgesMade = edges;
    return inserted;
}
