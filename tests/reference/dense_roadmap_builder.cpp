// The planner's original roadmap construction over a dense N x N graph, with a
// full stable sort of all older distances for every sample; kept word for
// word as the reference for the sparse construction.
#include "dense_roadmap_builder.h"

#include "roadmap_builder.h"

#include "collision_checker.h"
#include "free_configuration.h"
#include "index_matrix.h"
#include "vorlik/joint_vector.h"
#include "progress_steps.h"
#include "roadmap_matrix.h"
#include "sort_permutation.h"

#include <algorithm>

namespace {
// Keeps the leading keep x keep block of the graph and the first keep samples.
// The graph goes through a temporary so that every entry keeps its row and
// column; the samples are column-major, so their first columns are a prefix.
void truncateRoadmap(RoadmapMatrix* samples, RoadmapMatrix* graph, int keep)
{
    ScopedMatrix block = makeScopedMatrix();
    setSize(block.get(), keep, keep);
    for (int c = 0; c < keep; ++c)
        for (int r = 0; r < keep; ++r)
            at(block.get(), r, c) = at(graph, r, c);
    copyMatrix(block.get(), graph);
    setSize(samples, rows(samples), keep);
}
}  // namespace

void denseBuildRoadmap(CollisionChecker& checker, PlannerProgress& progress, MersenneTwister& random,
                       const PlannerParameters& parameters, const RoadmapMatrix* seeds, RoadmapMatrix* samples,
                       RoadmapMatrix* graph)
{
    FreeConfigurationSearch search(checker, progress, random, seeds);
    const int jointCount = search.jointCount();
    JointVector configuration;

    if (!search.next(configuration)) {
        setSize(samples, 0, 0);
        setSize(graph, 0, 0);
        return;
    }

    // The settings as the original read them: doubles.
    const int sampleTotal = static_cast<int>(double(parameters.samples));
    const double edgesPerSample = double(parameters.edgesPerSample);
    setSize(samples, jointCount, sampleTotal);
    fillZero(samples);
    if (sampleTotal > 0)
        std::copy(configuration.values(), configuration.values() + jointCount, column(samples, 0));
    setSize(graph, sampleTotal, sampleTotal);
    fillZero(graph);
    double edgeCount = 0.0;

    const ScopedMatrix distanceOwner = makeScopedMatrix();
    RoadmapMatrix* distances = distanceOwner.get();
    const ScopedIndexMatrix order(createIndexMatrix());

    for (int k = 1; k < sampleTotal; ++k) {
        if (!search.next(configuration)) {
            truncateRoadmap(samples, graph, k);
            return;
        }
        double* sample = column(samples, k);
        std::copy(configuration.values(), configuration.values() + jointCount, sample);

        setSize(distances, k, 1);
        for (int p = 0; p < k; ++p)
            distances->values[p] = JointVector::distance(sample, column(samples, p), jointCount);
        sortWithPermutation(distances, order.get());

        // Only the K nearest are tried; a blocked one is not replaced by the next.
        for (int m = 0; m < std::min(edgesPerSample, double(k)); ++m) {
            if (showSampleProgress(progress, k + 1, sampleTotal, static_cast<long long>(edgeCount))) {
                truncateRoadmap(samples, graph, k + 1);
                return;
            }
            const int q = order->values[m] - 1;
            if (checker.jointMove(JointVector(sample, jointCount), JointVector(column(samples, q), jointCount)) == 0) {
                edgeCount += 1.0;
                at(graph, k, q) = distances->values[m];
                at(graph, q, k) = distances->values[m];
            }
        }
    }
}
