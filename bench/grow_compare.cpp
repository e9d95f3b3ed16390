// Growing the map when a link fails, beside computing a larger map from
// scratch as a user would without the option: on a 3-joint joint-space
// station whose wall leaves a narrow passage (bench/stations/narrow_passage.json),
// both start from the same map of N samples that does not link Left to Right.
// Growing: "GrowMap" on, one link. Recomputing: a map of twice the samples,
// then the link, again until it succeeds. Prints the host's collision tests,
// the time and the samples of the map until the link succeeded, for several
// starting maps (the random sequence goes on from one run to the next).
//
// Usage: grow_compare [N...]      (starting sample counts, default 50 100 200; K = 10)
#include "calculate_map.h"
#include "in_process_host.h"
#include "join_joints.h"
#include "planner_session.h"
#include "planner_resources.h"
#include "sim_host_api.h"
#include "station_file.h"
#include "vorlik/item_types.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace in_process_host;

namespace {

struct Outcome {
    bool linked = false;
    long long tests = 0;
    double ms = 0;
    int samples = 0;
    int maps = 0;  // maps computed
};

// A fresh host on the station, with the planner's session on its robot.
struct Bench {
    Bench(std::unique_ptr<Station> station, const MersenneTwister& start) : host(std::move(station), &counter)
    {
        robot = host.station().items(ItemType::Robot).front();
        session = std::make_shared<PlannerSession>(&host, nullptr, SessionCallbacks());
        session->setRobot(robot);
        session->resources().random() = start;
    }

    void compute(int samples, int growLimit)
    {
        PlannerSettings settings;
        settings.samples = samples;
        settings.edgesPerSample = 10;
        settings.growLimit = growLimit;
        session->changeSettings(settings);
        calculateMap(*session);
    }
    bool link()
    {
        const SimItem* a = host.station().find(QStringLiteral("Left"), ItemType::Target);
        const SimItem* b = host.station().find(QStringLiteral("Right"), ItemType::Target);
        return linkJointValues(*session, true, jointsOf(*a), jointsOf(*b), QStringLiteral("Through"));
    }

    CollisionCounter counter;
    SimHostApi host;
    SimItem* robot = nullptr;
    std::shared_ptr<PlannerSession> session;
};

double msSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

std::unique_ptr<Station> readStation()
{
    QString error;
    std::unique_ptr<Station> station = station_file::read(QStringLiteral(STATION_PATH), &error);
    if (!station)
        std::fprintf(stderr, "grow_compare: %s\n", qUtf8Printable(error));
    return station;
}

// From the same start for both, a map of n samples whose link fails (else
// nothing is measured): what `strategy` costs until the link succeeds.
template <typename Strategy> Outcome measure(int n, const MersenneTwister& sequence, Strategy strategy)
{
    Bench bench(readStation(), sequence);
    Outcome outcome;
    bench.compute(n, 0);
    if (bench.link())
        return outcome;
    const long long before = bench.counter.tests;
    const auto start = std::chrono::steady_clock::now();
    strategy(bench, outcome);
    outcome.ms = msSince(start);
    outcome.tests = bench.counter.tests - before;
    return outcome;
}

Outcome grow(int n, const MersenneTwister& start, int limit)
{
    return measure(n, start, [limit](Bench& bench, Outcome& outcome) {
        PlannerSettings settings = bench.session->settings();
        settings.growLimit = limit;
        bench.session->changeSettings(settings);
        outcome.linked = bench.link();
        outcome.samples = bench.session->map().sampleCount();
    });
}

Outcome recompute(int n, const MersenneTwister& start, int most)
{
    return measure(n, start, [n, most](Bench& bench, Outcome& outcome) {
        for (int samples = 2 * n; samples <= most && !outcome.linked; samples *= 2) {
            bench.compute(samples, 0);
            ++outcome.maps;
            outcome.linked = bench.link();
            outcome.samples = bench.session->map().sampleCount();
        }
    });
}

// The generator at one of several places of its sequence, one per trial.
MersenneTwister trialStart(int trial)
{
    MersenneTwister generator;
    for (int i = 0; i < trial * 100003; ++i)
        generator.next32();
    return generator;
}

struct Summary {
    int trials = 0;
    int linked = 0;
    std::vector<double> tests, ms, samples, maps;

    void add(const Outcome& o)
    {
        ++trials;
        if (!o.linked)
            return;
        ++linked;
        tests.push_back(double(o.tests));
        ms.push_back(o.ms);
        samples.push_back(o.samples);
        maps.push_back(o.maps);
    }
};

double median(std::vector<double> values)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : 0.5 * (values[middle - 1] + values[middle]);
}

double mean(const std::vector<double>& values)
{
    double total = 0.0;
    for (double value : values)
        total += value;
    return values.empty() ? 0.0 : total / double(values.size());
}

void printRow(int n, const char* how, const Summary& s)
{
    std::printf("%6d  %-22s %4d/%-4d %10.0f %10.0f %8.1f %8.1f %8.0f %7.1f\n", n, how, s.linked, s.trials,
                median(s.tests), mean(s.tests), median(s.ms), mean(s.ms), median(s.samples), mean(s.maps));
}

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    qInstallMessageHandler(quiet);
    std::vector<int> starts;
    for (int i = 1; i < argc; ++i)
        starts.push_back(std::atoi(argv[i]));
    if (starts.empty())
        starts = {50, 200, 800};
    constexpr int Limit = 40000;
    constexpr int Trials = 15;

    std::printf("Linking Left to Right through a narrow passage (3 joints, K = 10), from a map of N samples\n"
                "that does not link them: growing on failure (limit %d) beside recomputing maps of 2N, 4N, ...\n"
                "from scratch until the link succeeds; counted from the failed first link on. %d trials each,\n"
                "each from another place of the random sequence (trials whose first map links are left out).\n\n",
                Limit, Trials);
    std::printf("%6s  %-22s %9s %10s %10s %8s %8s %8s %7s\n", "N", "strategy", "linked", "tests", "tests", "ms",
                "ms", "samples", "maps");
    std::printf("%6s  %-22s %9s %10s %10s %8s %8s %8s %7s\n", "", "", "", "median", "mean", "median", "mean",
                "median", "mean");
    for (int n : starts) {
        Summary grown, recomputed;
        for (int trial = 0; trial < Trials; ++trial) {
            const MersenneTwister start = trialStart(trial);
            const Outcome g = grow(n, start, Limit);
            const Outcome r = recompute(n, start, 4 * Limit);
            // Only trials where the first map failed are compared.
            if (g.tests > 0 || r.tests > 0) {
                grown.add(g);
                recomputed.add(r);
            }
        }
        printRow(n, "grow on failure", grown);
        printRow(n, "recompute 2N, 4N, ...", recomputed);
    }
    std::printf("\ntests: configuration and joint-move tests the host answered until the link succeeded, of the\n"
                "trials that linked. samples: of the map that linked. maps: maps computed (recompute).\n");
    return 0;
}
