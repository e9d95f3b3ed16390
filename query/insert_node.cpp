// Inserting a configuration into the map as a node, joined to its nearest samples.
#include "insert_node.h"

#include "collision_checker.h"
#include "nearest_samples.h"
#include "progress_steps.h"
#include "roadmap.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <vector>

namespace {
int incrementSaturated(int value)
{
    return value == INT_MAX ? value : value + 1;
}

// Candidates are asked of the strategy in batches, nearest first, this many
// at first and twice as many each time a batch is used up: usually the first
// few make the node's edges, and a query for more begins with the same ones.
constexpr int FirstBatch = 16;
}  // namespace

NodeInserter::NodeInserter(CollisionChecker& checker, PlannerProgress& progress)
    : checker_(checker), progress_(progress), neighbours_(std::make_unique<NearestSamples>())
{
}

NodeInserter::~NodeInserter() = default;

void NodeInserter::setNeighbourStrategy(std::unique_ptr<NeighbourStrategy> strategy)
{
    neighbours_ = std::move(strategy);
}

InsertedNode NodeInserter::insert(const JointVector& configuration, Roadmap& roadmap,
                                  const PlannerParameters& parameters)
{
    InsertedNode inserted;
    const int jointCount = roadmap.jointCount();
    const int sampleCount = roadmap.sampleCount();
    if (sampleCount < 1) {
        roadmap.clear();
        return inserted;
    }

    int batch = std::min(FirstBatch, sampleCount);
    std::vector<NeighbourStrategy::Candidate> candidates =
        neighbours_->nearest(roadmap.samples(), sampleCount, configuration.values(), jointCount, batch);
    const NeighbourStrategy::Candidate nearest = candidates.front();

    // Within one robot step of a sample the configuration is that sample. The
    // edges-per-sample setting is reported as the edge count, so that callers
    // judge a reused node a success.
    if (parameters.robotStepDeg >= nearest.distance) {
        inserted.node = nearest.index;
        inserted.edgesMade = parameters.edgesPerSample;
        return inserted;
    }

    const int side = roadmap.addNode();
    inserted.node = side;

    // Nearest first: usually only a few are tried.
    const JointVector node(configuration.values(), jointCount);
    int edges = 0;
    for (int k = 0; k < sampleCount; ++k) {
        if (showConnectProgress(progress_, k + 1, sampleCount, edges)) {
            // Cancelled: the new node stays without its sample; callers abandon the query.
            inserted.edgesMade = edges;
            return inserted;
        }
        if (k == batch) {
            batch = static_cast<int>(std::min<long long>(2LL * batch, sampleCount));
            candidates = neighbours_->nearest(roadmap.samples(), sampleCount, configuration.values(), jointCount, batch);
        }
        const NeighbourStrategy::Candidate candidate = candidates[static_cast<size_t>(k)];
        if (checker_.jointMove(node, JointVector(roadmap.sample(candidate.index), jointCount)) != 0)
            continue;
        edges = incrementSaturated(edges);
        // The node's edges go to index N, which after a cancelled insertion is
        // that earlier node's.
        if (sampleCount <= side)
            roadmap.join(candidate.index, sampleCount, candidate.distance);
        if (edges >= parameters.newNodeEdges)
            break;
    }

    // Appended even without edges: an isolated node, which the caller reports.
    roadmap.appendSample(configuration.values());
    inserted.edgesMade = edges;
    return inserted;
}
