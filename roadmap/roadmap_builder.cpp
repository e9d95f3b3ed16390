// Building the map: free samples, each joined to its nearest older ones.
#include "roadmap_builder.h"

#include "collision_checker.h"
#include "free_configuration.h"
#include "nearest_samples_tree.h"
#include "progress_steps.h"
#include "roadmap.h"

#include <algorithm>

namespace {
// How many of the nearest older samples a new sample is tried against: every
// m with m < min(K, olderCount), K the edges-per-sample setting.
int candidateCount(int edgesPerSample, int olderCount)
{
    return std::max(0, std::min(edgesPerSample, olderCount));
}
}  // namespace

RoadmapBuilder::RoadmapBuilder(CollisionChecker& checker, PlannerProgress& progress, MersenneTwister& random)
    : checker_(checker), progress_(progress), random_(random), neighbours_(std::make_unique<NearestSamplesTree>())
{
}

RoadmapBuilder::~RoadmapBuilder() = default;

void RoadmapBuilder::setNeighbourStrategy(std::unique_ptr<NeighbourStrategy> strategy)
{
    neighbours_ = std::move(strategy);
}

bool RoadmapBuilder::joinToOlder(const PlannerParameters& parameters, Roadmap& roadmap, int k,
                                 const std::function<bool()>& stop, long long* edgeCount)
{
    const int jointCount = roadmap.jointCount();
    const RoadmapMatrix* samples = roadmap.samples();
    const double* sample = roadmap.sample(k);
    const JointVector newSample(sample, jointCount);
    // Only the K nearest are tried; a blocked one is not replaced by the next.
    const int tried = candidateCount(parameters.edgesPerSample, k);
    for (const NeighbourStrategy::Candidate& candidate : neighbours_->nearest(samples, k, sample, jointCount, tried)) {
        if (stop())
            return true;
        if (checker_.jointMove(newSample, JointVector(roadmap.sample(candidate.index), jointCount)) == 0) {
            ++*edgeCount;
            roadmap.join(k, candidate.index, candidate.distance);
        }
    }
    return false;
}

void RoadmapBuilder::build(const PlannerParameters& parameters, const RoadmapMatrix* seeds, Roadmap& roadmap)
{
    neighbours_->forget();  // a new map
    FreeConfigurationSearch search(checker_, progress_, random_, seeds);
    const int jointCount = search.jointCount();
    JointVector configuration;

    if (!search.next(configuration)) {
        roadmap.clear();
        return;
    }

    const int sampleTotal = parameters.samples;
    roadmap.reset(jointCount, sampleTotal);
    if (sampleTotal > 0)
        roadmap.setSample(0, configuration.values());
    long long edgeCount = 0;

    for (int k = 1; k < sampleTotal; ++k) {
        if (!search.next(configuration)) {
            roadmap.truncate(k);
            return;
        }
        roadmap.setSample(k, configuration.values());
        const auto cancelled = [&] { return showSampleProgress(progress_, k + 1, sampleTotal, edgeCount); };
        if (joinToOlder(parameters, roadmap, k, cancelled, &edgeCount)) {
            roadmap.truncate(k + 1);
            return;
        }
    }
}

int RoadmapBuilder::grow(const PlannerParameters& parameters, int count, Roadmap& roadmap,
                         const std::function<bool(int added)>& added)
{
    neighbours_->forget();  // the map may have changed since the builder last saw it
    const RoadmapMatrix* noSeeds = nullptr;
    FreeConfigurationSearch search(checker_, progress_, random_, noSeeds);
    const int jointCount = search.jointCount();
    if (roadmap.jointCount() != jointCount || roadmap.nodeCount() != roadmap.sampleCount() || !roadmap.hasSamples())
        return 0;
    JointVector configuration;
    long long edgeCount = 0;

    for (int n = 0; n < count; ++n) {
        if (!search.next(configuration))
            return n;
        const int k = roadmap.addNode();
        roadmap.appendSample(configuration.values());
        if (joinToOlder(parameters, roadmap, k, [&] { return added(n + 1); }, &edgeCount))
            return n + 1;
    }
    return count;
}
