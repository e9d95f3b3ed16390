// Times the planning core on maps of growing size against a joint-space host:
// roadmap construction, node insertion and the shortest-path search. Prints a
// table; compare the ratios between rows of one run, not absolute times.
#include "fake_host.h"
#include "host_access.h"
#include "insert_node.h"
#include "roadmap_builder.h"
#include "roadmap_matrix.h"
#include "shortest_path.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cmath>
#include <cstdio>
#include <random>

namespace {

// The planner logs every collision test; a benchmark measures without it.
void dropDebugLog(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtDebugMsg)
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

struct Row {
    int samples = 0;
    double buildMs = 0;
    int hostTests = 0;
    int edges = 0;
    double insertMs = 0;
    double searchMs = 0;
};

Row measure(int sampleCount)
{
    FakeHost host;
    setRoadmapHost(&host);
    FakeRobot* robot = host.addRobot("Arm", std::vector<double>(6, -170.0), std::vector<double>(6, 170.0));
    robot->boxes.push_back(JointBox{{-30, -60, -170, -170, -170, -170}, {30, 40, 170, 170, 170, 170}});

    const PlannerParameters parameters{0.0, double(sampleCount), 10.0, 5.0, 4.0};
    ScopedMatrix seeds = makeScopedMatrix();
    ScopedMatrix samples = makeScopedMatrix();
    ScopedMatrix graph = makeScopedMatrix();
    Row row;
    row.samples = sampleCount;

    QElapsedTimer timer;
    timer.start();
    buildRoadmap(robot, parameters, seeds.get(), samples.get(), graph.get());
    row.buildMs = timer.nsecsElapsed() / 1e6;
    row.hostTests = host.collisionTests;
    for (int i = 0; i < elementCount(graph.get()); ++i)
        row.edges += graph->values[i] > 0 ? 1 : 0;
    row.edges /= 2;

    // Ten insertions of fresh configurations into copies of the map.
    std::mt19937 draw(7);
    std::uniform_real_distribution<double> joint(-160.0, 160.0);
    ScopedMatrix samplesOut = makeScopedMatrix();
    ScopedMatrix graphOut = makeScopedMatrix();
    constexpr int Insertions = 10;
    timer.restart();
    for (int i = 0; i < Insertions; ++i) {
        Configuration configuration{};
        for (int j = 0; j < 6; ++j)
            configuration[size_t(j)] = joint(draw);
        int edgesMade = 0;
        int nodeIndex = 0;
        insertNode(robot, configuration, samples.get(), graph.get(), parameters, samplesOut.get(), graphOut.get(),
                   &edgesMade, &nodeIndex);
    }
    row.insertMs = timer.nsecsElapsed() / 1e6 / Insertions;

    constexpr int Searches = 10;
    std::uniform_int_distribution<int> node(1, sampleCount);
    ScopedMatrix path = makeScopedMatrix();
    timer.restart();
    for (int i = 0; i < Searches; ++i) {
        double cost = NoPathCost;
        shortestPath(graph.get(), node(draw), node(draw), &cost, path.get());
    }
    row.searchMs = timer.nsecsElapsed() / 1e6 / Searches;
    setRoadmapHost(nullptr);
    return row;
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    qInstallMessageHandler(dropDebugLog);
    const std::vector<int> sizes = {100, 200, 400, 800};
    std::vector<Row> rows;
    for (int size : sizes)
        rows.push_back(measure(size));

    std::printf("Planning core on a 6-joint robot with one joint-space box, 10 edges per sample\n\n");
    std::printf("%8s %10s %11s %8s %12s %12s %10s %16s\n", "samples", "build ms", "host tests", "edges",
                "insert ms", "search ms", "search x", "n^2 log n x");
    const Row& base = rows.front();
    for (const Row& row : rows) {
        const double n = row.samples;
        const double n0 = base.samples;
        const double model = (n * n * std::log(n)) / (n0 * n0 * std::log(n0));
        std::printf("%8d %10.1f %11d %8d %12.3f %12.3f %10.1f %16.1f\n", row.samples, row.buildMs, row.hostTests,
                    row.edges, row.insertMs, row.searchMs, row.searchMs / base.searchMs, model);
    }
    std::printf("\n'search x' is the search time relative to the first row; 'n^2 log n x' what the\n"
                "search's full re-sort of its open list at every step predicts.\n");
    return 0;
}
