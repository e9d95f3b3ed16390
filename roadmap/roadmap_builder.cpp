// Building the map: free samples, each joined to its nearest older ones.
#include "roadmap_builder.h"

#include "collision_checker.h"
#include "free_configuration.h"
#include "nearest_samples.h"
#include "progress_steps.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include <algorithm>
#include <cmath>

namespace {
// Keeps the first `keep` samples and the edges among them.
void truncateRoadmap(RoadmapMatrix* samples, RoadmapGraph* graph, int keep)
{
    graph->resize(keep);
    setSize(samples, rows(samples), keep);
}

// How many of the nearest older samples a new sample is tried against: every
// m with m < min(K, olderCount), K the edges-per-sample setting.
int candidateCount(double edgesPerSample, int olderCount)
{
    const double bound = std::min(edgesPerSample, double(olderCount));
    return bound > 0 ? static_cast<int>(std::ceil(bound)) : 0;
}
}  // namespace

RoadmapBuilder::RoadmapBuilder(CollisionChecker& checker, PlannerProgress& progress, MersenneTwister& random)
    : checker_(checker), progress_(progress), random_(random), neighbours_(std::make_unique<NearestSamples>())
{
}

RoadmapBuilder::~RoadmapBuilder() = default;

void RoadmapBuilder::setNeighbourStrategy(std::unique_ptr<NeighbourStrategy> strategy)
{
    neighbours_ = std::move(strategy);
}

bool RoadmapBuilder::joinToOlder(const PlannerParameters& parameters, RoadmapMatrix* samples, RoadmapGraph* graph,
                                 int k, const std::function<bool()>& stop, long long* edgeCount)
{
    const int jointCount = rows(samples);
    const double* sample = column(samples, k);
    const JointVector newSample(sample, jointCount);
    // Only the K nearest are tried; a blocked one is not replaced by the next.
    const int tried = candidateCount(parameters[PlannerParameter::Edges], k);
    for (const NeighbourStrategy::Candidate& candidate : neighbours_->nearest(samples, k, sample, jointCount, tried)) {
        if (stop())
            return true;
        if (checker_.jointMove(newSample, JointVector(column(samples, candidate.index), jointCount)) == 0) {
            ++*edgeCount;
            graph->setLength(k, candidate.index, candidate.distance);
        }
    }
    return false;
}

void RoadmapBuilder::build(const PlannerParameters& parameters, const RoadmapMatrix* seeds, RoadmapMatrix* samples,
                           RoadmapGraph* graph)
{
    FreeConfigurationSearch search(checker_, progress_, random_, seeds);
    const int jointCount = search.jointCount();
    Configuration configuration{};

    if (!search.next(configuration)) {
        setSize(samples, 0, 0);
        graph->clear();
        return;
    }

    const int sampleTotal = static_cast<int>(parameters[PlannerParameter::Samples]);
    setSize(samples, jointCount, sampleTotal);
    fillZero(samples);
    if (sampleTotal > 0)
        std::copy(configuration.begin(), configuration.begin() + jointCount, column(samples, 0));
    graph->clear();
    graph->resize(sampleTotal);
    long long edgeCount = 0;

    for (int k = 1; k < sampleTotal; ++k) {
        if (!search.next(configuration)) {
            truncateRoadmap(samples, graph, k);
            return;
        }
        std::copy(configuration.begin(), configuration.begin() + jointCount, column(samples, k));
        const auto cancelled = [&] { return showSampleProgress(progress_, k + 1, sampleTotal, edgeCount); };
        if (joinToOlder(parameters, samples, graph, k, cancelled, &edgeCount)) {
            truncateRoadmap(samples, graph, k + 1);
            return;
        }
    }
}

int RoadmapBuilder::grow(const PlannerParameters& parameters, int count, RoadmapMatrix* samples,
                         RoadmapGraph* graph, const std::function<bool(int added)>& added)
{
    const RoadmapMatrix* noSeeds = nullptr;
    FreeConfigurationSearch search(checker_, progress_, random_, noSeeds);
    const int jointCount = search.jointCount();
    if (rows(samples) != jointCount || graph->nodeCount() != columns(samples) || columns(samples) < 1)
        return 0;
    Configuration configuration{};
    long long edgeCount = 0;

    for (int n = 0; n < count; ++n) {
        if (!search.next(configuration))
            return n;
        const int k = columns(samples);
        setSize(samples, jointCount, k + 1);
        std::copy(configuration.begin(), configuration.begin() + jointCount, column(samples, k));
        graph->addNode();
        if (joinToOlder(parameters, samples, graph, k, [&] { return added(n + 1); }, &edgeCount))
            return n + 1;
    }
    return count;
}
