// Building the map: free samples, each joined to its nearest older ones.
#include "roadmap_builder.h"

#include "collision_checker.h"
#include "free_configuration.h"
#include "nearest_samples.h"
#include "progress_steps.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include <algorithm>

namespace {
// Keeps the first `keep` samples and the edges among them.
void truncateRoadmap(RoadmapMatrix* samples, RoadmapGraph* graph, int keep)
{
    graph->resize(keep);
    setSize(samples, rows(samples), keep);
}

// True when the straight joint move between two samples is free.
bool moveIsFree(CollisionChecker& checker, const double* a, const double* b, int jointCount)
{
    return checker.jointMove(JointVector(a, jointCount), JointVector(b, jointCount)) == 0;
}
}  // namespace

RoadmapBuilder::RoadmapBuilder(CollisionChecker& checker, PlannerProgress& progress, MersenneTwister& random)
    : checker_(checker), progress_(progress), random_(random)
{
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
    const double edgesPerSample = parameters[PlannerParameter::Edges];
    setSize(samples, jointCount, sampleTotal);
    fillZero(samples);
    if (sampleTotal > 0)
        std::copy(configuration.begin(), configuration.begin() + jointCount, column(samples, 0));
    graph->clear();
    graph->resize(sampleTotal);
    long long edgeCount = 0;
    NearestSamples nearest;

    for (int k = 1; k < sampleTotal; ++k) {
        if (!search.next(configuration)) {
            truncateRoadmap(samples, graph, k);
            return;
        }
        double* sample = column(samples, k);
        std::copy(configuration.begin(), configuration.begin() + jointCount, sample);

        // Only the K nearest are tried; a blocked one is not replaced by the next.
        const int tried = NearestSamples::candidateCount(edgesPerSample, k);
        for (const NearestSamples::Candidate& candidate : nearest.find(samples, k, sample, jointCount, tried)) {
            if (showSampleProgress(progress_, k + 1, sampleTotal, edgeCount)) {
                truncateRoadmap(samples, graph, k + 1);
                return;
            }
            if (moveIsFree(checker_, sample, column(samples, candidate.index), jointCount)) {
                ++edgeCount;
                graph->setLength(k, candidate.index, candidate.distance);
            }
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
    const double edgesPerSample = parameters[PlannerParameter::Edges];
    NearestSamples nearest;

    for (int n = 0; n < count; ++n) {
        if (!search.next(configuration))
            return n;
        const int k = columns(samples);
        setSize(samples, jointCount, k + 1);
        double* sample = column(samples, k);
        std::copy(configuration.begin(), configuration.begin() + jointCount, sample);
        graph->addNode();
        // As in the construction: the K nearest are tried, a blocked one is not replaced.
        const int tried = NearestSamples::candidateCount(edgesPerSample, k);
        for (const NearestSamples::Candidate& candidate : nearest.find(samples, k, sample, jointCount, tried)) {
            if (added(n + 1))
                return n + 1;
            if (moveIsFree(checker_, sample, column(samples, candidate.index), jointCount))
                graph->setLength(k, candidate.index, candidate.distance);
        }
    }
    return count;
}
