// Times the planning core on maps of growing size against a joint-space host,
// beside the planner's original dense algorithms (kept in the tests as the
// reference) on the same problem in the same run: roadmap construction, node
// insertion and the shortest-path search. Without a progress dialog, so this
// is the core's own work; bench/ompl_compare measures whole runs in the host.
// Compare ratios within one run, not absolute times.
#include "dense_graph.h"
#include "dense_insert_node.h"
#include "dense_roadmap_builder.h"
#include "fake_host.h"
#include "host_planning.h"
#include "insert_node.h"
#include "random_generator.h"
#include "roadmap_builder.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"
#include "shortest_path.h"
#include "table_shortest_path.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <random>
#include <vector>

namespace {

// The planner logs every collision test; a benchmark measures without it.
void dropDebugLog(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtDebugMsg)
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

struct Figures {
    double buildMs = 0;
    double insertMs = 0;
    double searchMs = 0;
    int hostTests = 0;
    int edges = 0;
    MersenneTwister drawnTo;  // the generator after the map: the next size goes on from there
};

struct Problem {
    FakeHost host;
    PlannerResources resources;  // the generator and the (unshown) progress dialog
    FakeRobot* robot = nullptr;
    PlannerParameters parameters;
    std::vector<JointVector> insertions;
    std::vector<std::pair<int, int>> queries;

    explicit Problem(int sampleCount)
    {
        robot = host.addRobot("Arm", std::vector<double>(6, -170.0), std::vector<double>(6, 170.0));
        robot->boxes.push_back(JointBox{{-30, -60, -170, -170, -170, -170}, {30, 40, 170, 170, 170, 170}});
        parameters = {sampleCount, 10, 5, 4.0};
        std::mt19937 draw(7);
        std::uniform_real_distribution<double> joint(-160.0, 160.0);
        for (int i = 0; i < 10; ++i) {
            JointVector q(6);
            for (int j = 0; j < 6; ++j)
                q[j] = joint(draw);
            insertions.push_back(q);
        }
        std::uniform_int_distribution<int> node(1, sampleCount);
        for (int i = 0; i < 10; ++i)
            queries.push_back({node(draw), node(draw)});
    }
};

double millisecondsOf(QElapsedTimer& timer, int repeats)
{
    return timer.nsecsElapsed() / 1e6 / repeats;
}

Figures measureCore(int sampleCount, const MersenneTwister& start)
{
    Problem problem(sampleCount);
    problem.resources.random() = start;
    HostCollisionChecker checker(&problem.host, problem.robot);
    ScopedMatrix seeds = makeScopedMatrix();
    Roadmap roadmap;
    Figures figures;
    QElapsedTimer timer;
    timer.start();
    RoadmapBuilder(checker, problem.resources.progress(), problem.resources.random())
        .build(problem.parameters, seeds.get(), roadmap);
    figures.buildMs = millisecondsOf(timer, 1);
    figures.hostTests = problem.host.collisionTests;
    figures.edges = roadmap.edgeCount();
    figures.drawnTo = problem.resources.random();

    // Each insertion into the map as built, in place, undone by dropping the node.
    NodeInserter inserter(checker, problem.resources.progress());
    timer.restart();
    for (const JointVector& q : problem.insertions) {
        inserter.insert(q, roadmap, problem.parameters);
        roadmap.truncate(sampleCount);
    }
    figures.insertMs = millisecondsOf(timer, int(problem.insertions.size()));

    ScopedMatrix path = makeScopedMatrix();
    timer.restart();
    for (const auto& [source, destination] : problem.queries) {
        double cost = NoPathCost;
        shortestPath(&roadmap.graph(), source - 1, destination - 1, &cost, path.get());
    }
    figures.searchMs = millisecondsOf(timer, int(problem.queries.size()));
    return figures;
}

Figures measureReference(int sampleCount, const MersenneTwister& start)
{
    Problem problem(sampleCount);
    problem.resources.random() = start;
    ScopedMatrix seeds = makeScopedMatrix();
    ScopedMatrix samples = makeScopedMatrix();
    ScopedMatrix graph = makeScopedMatrix();
    Figures figures;
    QElapsedTimer timer;
    HostCollisionChecker checker(&problem.host, problem.robot);
    timer.start();
    denseBuildRoadmap(checker, problem.resources.progress(), problem.resources.random(), problem.parameters, seeds.get(), samples.get(),
                      graph.get());
    figures.buildMs = millisecondsOf(timer, 1);
    figures.hostTests = problem.host.collisionTests;
    RoadmapGraph sparse;
    graphFromDense(graph.get(), &sparse);
    figures.edges = sparse.edgeCount();

    // As the operations did: into scratch matrices, then copied into the map
    // (here into a copy, so that each insertion starts from the map as built).
    ScopedMatrix samplesOut = makeScopedMatrix();
    ScopedMatrix graphOut = makeScopedMatrix();
    ScopedMatrix committedSamples = makeScopedMatrix();
    ScopedMatrix committedGraph = makeScopedMatrix();
    timer.restart();
    for (const JointVector& q : problem.insertions) {
        int edgesMade = 0;
        int nodeIndex = 0;
        denseInsertNode(checker, problem.resources.progress(), q, samples.get(), graph.get(), problem.parameters, samplesOut.get(),
                        graphOut.get(), &edgesMade, &nodeIndex);
        copyMatrix(samplesOut.get(), committedSamples.get());
        copyMatrix(graphOut.get(), committedGraph.get());
    }
    figures.insertMs = millisecondsOf(timer, int(problem.insertions.size()));

    ScopedMatrix path = makeScopedMatrix();
    timer.restart();
    for (const auto& [source, destination] : problem.queries) {
        double cost = NoPathCost;
        tableShortestPath(graph.get(), source, destination, &cost, path.get());
    }
    figures.searchMs = millisecondsOf(timer, int(problem.queries.size()));
    return figures;
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    qInstallMessageHandler(dropDebugLog);
    std::vector<int> sizes = {500, 1000, 2000, 5000};
    const bool quick = argc > 1 && QByteArray(argv[1]) == "--quick";
    if (quick)
        sizes = {200, 400};

    std::printf("Planning core on a 6-joint robot with one joint-space box, 10 edges per sample,\n"
                "against the original dense algorithms in the same run (same map, same host tests)\n\n");
    std::printf("%8s %6s %8s | %10s %10s %7s | %10s %10s %7s | %10s %10s %8s\n", "samples", "edges", "tests",
                "build ms", "was ms", "ratio", "insert ms", "was ms", "ratio", "search ms", "was ms", "ratio");
    MersenneTwister sequence;
    for (int size : sizes) {
        // Each size goes on with the random sequence where the map before it left it.
        const MersenneTwister start = sequence;
        const Figures now = measureCore(size, start);
        const Figures was = measureReference(size, start);
        sequence = now.drawnTo;
        if (now.edges != was.edges || now.hostTests != was.hostTests)
            std::printf("(the two maps differ: %d/%d edges, %d/%d tests)\n", now.edges, was.edges, now.hostTests,
                        was.hostTests);
        std::printf("%8d %6d %8d | %10.1f %10.1f %7.1f | %10.3f %10.3f %7.1f | %10.3f %10.3f %8.1f\n", size, now.edges,
                    now.hostTests, now.buildMs, was.buildMs, was.buildMs / now.buildMs, now.insertMs, was.insertMs,
                    was.insertMs / now.insertMs, now.searchMs, was.searchMs, was.searchMs / now.searchMs);
    }
    std::printf("\n'was' is the original algorithm, 'ratio' how many times longer it takes.\n");
    return 0;
}
