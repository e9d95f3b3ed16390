// Building the map: free samples, each joined to its nearest older ones.
#include "roadmap_builder.h"

#include "collision_check.h"
#include "edge_check.h"
#include "nearest_samples.h"
#include "progress_reporter.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"
#include "translate.h"

#include <QCoreApplication>
#include <QDebug>

#include <algorithm>
#include <cmath>

namespace {
// Keeps the first `keep` samples and the edges among them.
void truncateRoadmap(RoadmapMatrix* samples, RoadmapGraph* graph, int keep)
{
    graph->resize(keep);
    setSize(samples, rows(samples), keep);
}
}  // namespace

bool prmProgress(int samplesDone, int sampleTotal, double edgeCount)
{
    const long long edges = static_cast<long long>(edgeCount);
    qDebug().nospace() << "Calculating PRM " << samplesDone << " / " << sampleTotal << " - Edges: " << edges;
    ProgressReporter& reporter = progressReporter();
    reporter.setHeadline(
        QCoreApplication::translate("PluginAutoPRM", "Calculating collision map:<br>Samples: %1/%2 Edges: %3")
            .arg(samplesDone)
            .arg(sampleTotal)
            .arg(edges));
    reporter.setDetail(QString());
    return reporter.update(static_cast<int>(samplesDone * 100LL / sampleTotal));
}

void buildRoadmap(HostItem* robot, const PlannerParameters& parameters, const RoadmapMatrix* seeds,
                  RoadmapMatrix* samples, RoadmapGraph* graph)
{
    double lower[JointVector::MaxJoints] = {};
    double upper[JointVector::MaxJoints] = {};
    const int jointCount = readJointLimits(robot, lower, upper);
    double seedCursor = 1.0;
    double cancelValue = 0.0;
    Configuration configuration{};

    findFreeConfiguration(robot, lower, upper, jointCount, seeds, &seedCursor, configuration, &cancelValue);
    if (cancelValue > 0) {
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
    double edgeCount = 0.0;
    NearestSamples nearest;

    for (int k = 1; k < sampleTotal; ++k) {
        findFreeConfiguration(robot, lower, upper, jointCount, seeds, &seedCursor, configuration, &cancelValue);
        if (cancelValue > 0) {
            truncateRoadmap(samples, graph, k);
            return;
        }
        double* sample = column(samples, k);
        std::copy(configuration.begin(), configuration.begin() + jointCount, sample);

        // Only the K nearest are tried; a blocked one is not replaced by the next.
        const int tried = NearestSamples::candidateCount(edgesPerSample, k);
        for (const NearestSamples::Candidate& candidate : nearest.find(samples, k, sample, jointCount, tried)) {
            if (prmProgress(k + 1, sampleTotal, edgeCount)) {
                truncateRoadmap(samples, graph, k + 1);
                return;
            }
            if (edgeIsBlocked(robot, sample, column(samples, candidate.index), jointCount) == 0) {
                edgeCount += 1.0;
                graph->setLength(k, candidate.index, candidate.distance);
            }
        }
    }
}
