// Growing a roadmap by more samples, as its construction adds them.
#include "roadmap_growth.h"

#include "collision_check.h"
#include "edge_check.h"
#include "nearest_samples.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include <algorithm>

int growRoadmap(HostItem* robot, const PlannerParameters& parameters, int count, RoadmapMatrix* samples,
                RoadmapGraph* graph, const std::function<bool(int added)>& progress)
{
    double lower[JointVector::MaxJoints] = {};
    double upper[JointVector::MaxJoints] = {};
    const int jointCount = readJointLimits(robot, lower, upper);
    if (rows(samples) != jointCount || graph->nodeCount() != columns(samples) || columns(samples) < 1)
        return 0;
    ScopedMatrix noSeeds = makeScopedMatrix();
    double seedCursor = 1.0;
    double cancelValue = 0.0;
    Configuration configuration{};
    const double edgesPerSample = parameters[PlannerParameter::Edges];
    NearestSamples nearest;

    for (int added = 0; added < count; ++added) {
        findFreeConfiguration(robot, lower, upper, jointCount, noSeeds.get(), &seedCursor, configuration,
                              &cancelValue);
        if (cancelValue > 0)
            return added;
        const int k = columns(samples);
        setSize(samples, jointCount, k + 1);
        double* sample = column(samples, k);
        std::copy(configuration.begin(), configuration.begin() + jointCount, sample);
        graph->addNode();
        // As in the construction: the K nearest are tried, a blocked one is not replaced.
        const int tried = NearestSamples::candidateCount(edgesPerSample, k);
        for (const NearestSamples::Candidate& candidate : nearest.find(samples, k, sample, jointCount, tried)) {
            if (progress(added + 1))
                return added + 1;
            if (edgeIsBlocked(robot, sample, column(samples, candidate.index), jointCount) == 0)
                graph->setLength(k, candidate.index, candidate.distance);
        }
    }
    return count;
}
