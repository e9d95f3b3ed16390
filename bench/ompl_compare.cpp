// The planner in the simulated host beside OMPL's PRM, on the same joint-space
// problem with the same collision checker, in one run: a 6-joint robot among
// four joint-space boxes (bench/stations/joint_space_boxes.json), N samples,
// 10 edges per sample, then five links between its targets.
//
// Zelvane runs as users run it: vorlik-sim loads the plug-in, the progress
// dialog is open, the transcript is written; each step's wall time comes from
// the transcript's "ms". OMPL's PRM gets the same joint limits, the station's
// own box test, L1 joint distance and discrete joint-move test (vorlik-sim's
// oracle, called directly), K = 10 nearest neighbours; its links add the two
// targets as milestones and search the roadmap (A*). Each side runs in a
// process of its own, so that its peak resident memory is its own.
//
// Usage: ompl_compare [--quick]     (--quick: N = 200 and 500 only)
#include "ompl_joint_space.h"
#include "station.h"
#include "station_file.h"
#include "vorlik/item_types.h"

#include <ompl/base/ProblemDefinition.h>
#include <ompl/base/objectives/PathLengthOptimizationObjective.h>
#include <ompl/config.h>
#include <ompl/geometric/planners/prm/PRM.h>
#include <ompl/util/Console.h>
#include <ompl/util/RandomNumbers.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace ob = ompl::base;
namespace og = ompl::geometric;
using namespace ompl_joint_space;

namespace {

constexpr int EdgesPerSample = 10;
const std::vector<std::pair<QString, QString>> Links = {{"A", "B"}, {"B", "C"}, {"C", "D"}, {"A", "E"}, {"E", "D"}};

struct Figures {
    double mapMs = 0;
    double linkMs = 0;   // the slowest of the five
    double linksMs = 0;  // all five
    double runMs = 0;    // the whole run, as its caller waited for it
    long peakKb = 0;
    long collisionTests = 0;
    bool ok = false;
};

// --- OMPL, with the station's own checker -------------------------------------------------------

// The PRM with its milestone insertion and roadmap search in reach, so that a
// link is two insertions and a search, as the planner's is.
class BenchPRM : public og::PRM {
public:
    using PRM::addMilestone;
    using PRM::constructSolution;
    using PRM::PRM;
};

double msSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

Figures runOmpl(const Station& station, int sampleCount, bool lean)
{
    const Checker checker = checkerOf(station);
    const ob::SpaceInformationPtr si = spaceFor(station, checker, lean);
    BenchPRM prm(si);
    // Edge costs come from the problem's objective: path length in L1.
    auto problem = std::make_shared<ob::ProblemDefinition>(si);
    problem->setOptimizationObjective(std::make_shared<ob::PathLengthOptimizationObjective>(si));
    prm.setProblemDefinition(problem);
    prm.setMaxNearestNeighbors(EdgesPerSample);
    prm.setup();

    Figures figures;
    auto start = std::chrono::steady_clock::now();
    prm.growRoadmap(ob::PlannerTerminationCondition(
        [&prm, sampleCount] { return prm.milestoneCount() >= static_cast<unsigned long>(sampleCount); }));
    figures.mapMs = msSince(start);

    auto milestone = [&](const QString& target) {
        ob::State* state = si->allocState();
        const SimItem* t = station.find(target, ItemType::Target);
        for (int i = 0; i < checker.joints; ++i)
            state->as<ob::RealVectorStateSpace::StateType>()->values[i] = t->jointValues[size_t(i)];
        return prm.addMilestone(state);
    };
    figures.ok = true;
    for (const auto& [from, to] : Links) {
        start = std::chrono::steady_clock::now();
        const auto a = milestone(from);
        const auto b = milestone(to);
        try {
            prm.constructSolution(a, b);
        } catch (const ompl::Exception&) {
            figures.ok = false;  // no path: reported, still timed
        }
        figures.linkMs = std::max(figures.linkMs, msSince(start));
    }
    figures.collisionTests = checker.configurations + checker.motions;
    return figures;
}

// --- Zelvane in vorlik-sim ----------------------------------------------------------------------

QByteArray scenarioFor(int sampleCount)
{
    QJsonArray steps{QJsonObject{{"command", "Samples"}, {"value", QString::number(sampleCount)}},
                     QJsonObject{{"command", "Edges"}, {"value", QString::number(EdgesPerSample)}},
                     QJsonObject{{"command", "Calc"}}};
    int n = 0;
    for (const auto& [from, to] : Links)
        steps.append(QJsonObject{{"command", QString("Join=L%1").arg(++n)}, {"value", from + "|" + to}});
    return QJsonDocument(QJsonObject{{"steps", steps}}).toJson();
}

// Runs vorlik-sim to its end; its peak resident memory, or -1 when it failed.
long runHost(const QStringList& arguments, const QString& output)
{
    std::vector<std::string> args;
    for (const QString& a : arguments)
        args.push_back(a.toStdString());
    std::fflush(stdout);  // the child must not print what the parent has buffered
    const pid_t child = fork();
    if (child == 0) {
        if (!freopen(output.toLocal8Bit().constData(), "w", stdout))
            _exit(126);
        std::vector<char*> argv;
        for (std::string& a : args)
            argv.push_back(a.data());
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? usage.ru_maxrss : -1;
}

Figures runZelvane(int sampleCount, const QDir& work)
{
    Figures figures;
    const QString scenario = work.filePath(QString("scenario-%1.json").arg(sampleCount));
    const QString transcript = work.filePath(QString("transcript-%1.jsonl").arg(sampleCount));
    const QString printed = work.filePath(QString("printed-%1.txt").arg(sampleCount));
    QFile file(scenario);
    if (!file.open(QIODevice::WriteOnly) || file.write(scenarioFor(sampleCount)) < 0)
        return figures;
    file.close();
    const auto start = std::chrono::steady_clock::now();
    figures.peakKb =
        runHost({VORLIK_SIM_PATH, STATION_PATH, "--script", scenario, "--transcript", transcript, "--print"}, printed);
    figures.runMs = msSince(start);
    if (figures.peakKb < 0)
        return figures;

    QFile records(transcript);
    if (!records.open(QIODevice::ReadOnly))
        return figures;
    int successes = 0;
    while (!records.atEnd()) {
        const QJsonObject record = QJsonDocument::fromJson(records.readLine()).object();
        if (record.value("type") != "reply")
            continue;
        const QString command = record.value("command").toString();
        const double ms = record.value("ms").toDouble(-1);
        if (command == "Calc")
            figures.mapMs = ms;
        if (command.startsWith("Join")) {
            figures.linkMs = std::max(figures.linkMs, ms);
            figures.linksMs += ms;
            successes += record.value("reply") == "Success" ? 1 : 0;
        }
    }
    QFile summary(printed);
    if (summary.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : summary.readAll().split('\n'))
            if (line.startsWith("run: "))
                figures.collisionTests = line.split(',').value(1).trimmed().split(' ').value(0).toLong();
    }
    figures.ok = successes == static_cast<int>(Links.size()) && figures.mapMs >= 0;
    return figures;
}

// OMPL in a child process; the figures come back through a pipe.
Figures runOmplApart(const Station& station, int sampleCount, bool lean)
{
    int channel[2];
    if (pipe(channel) != 0)
        return {};
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        close(channel[0]);
        Figures f;
        try {
            f = runOmpl(station, sampleCount, lean);
        } catch (const std::exception& e) {
            std::fprintf(stderr, "ompl_compare: OMPL failed: %s\n", e.what());
            _exit(1);
        }
        const std::string line = std::to_string(f.mapMs) + " " + std::to_string(f.linkMs) + " "
            + std::to_string(f.collisionTests) + " " + (f.ok ? "1" : "0");
        if (write(channel[1], line.data(), line.size()) < 0)
            _exit(1);
        _exit(0);
    }
    close(channel[1]);
    char buffer[256] = {};
    const ssize_t length = read(channel[0], buffer, sizeof buffer - 1);
    close(channel[0]);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    Figures figures;
    int ok = 0;
    if (length > 0
        && std::sscanf(buffer, "%lf %lf %ld %d", &figures.mapMs, &figures.linkMs, &figures.collisionTests, &ok) == 4)
        figures.ok = ok == 1;
    figures.peakKb = usage.ru_maxrss;
    return figures;
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    ompl::msg::setLogLevel(ompl::msg::LOG_NONE);
    ompl::RNG::setSeed(1);
    std::vector<int> sizes = {500, 1000, 2000, 5000, 10000, 15000};
    if (argc > 1 && QByteArray(argv[1]) == "--quick")
        sizes = {200, 500};

    QString error;
    const std::unique_ptr<Station> station = station_file::read(STATION_PATH, &error);
    if (!station) {
        std::fprintf(stderr, "ompl_compare: %s\n", qUtf8Printable(error));
        return 1;
    }
    QTemporaryDir work;

    std::printf("Zelvane in vorlik-sim (dialog open, transcript written) beside OMPL %s PRM given the\n"
                "simulated host's checker and given a lean one (the same tests inline): 6 joints, 4 joint-space\n"
                "boxes, step %.1f deg, K = %d, then 5 links\n\n",
                QString("%1.%2.%3")
                    .arg(OMPL_MAJOR_VERSION)
                    .arg(OMPL_MINOR_VERSION)
                    .arg(OMPL_PATCH_VERSION)
                    .toUtf8()
                    .constData(),
                station->pathStepDeg(), EdgesPerSample);
    std::printf("%6s | %9s %9s %6s %9s %6s | %8s %8s %6s | %8s %8s %6s | %8s | %9s %9s\n", "N", "map ms", "OMPL ms",
                "ratio", "lean ms", "ratio", "link ms", "OMPL ms", "ratio", "peak MB", "OMPL MB", "ratio", "close s",
                "tests", "OMPL");
    bool allOk = true;
    for (int n : sizes) {
        const Figures z = runZelvane(n, QDir(work.path()));
        const Figures o = runOmplApart(*station, n, false);
        const Figures lean = runOmplApart(*station, n, true);
        allOk = allOk && z.ok && o.ok && lean.ok;
        // What the run took beyond the map and the links: starting, loading, and closing the station.
        const double restS = (z.runMs - z.mapMs - z.linksMs) / 1000.0;
        std::printf("%6d | %9.1f %9.1f %6.2f %9.1f %6.2f | %8.2f %8.2f %6.2f | %8.1f %8.1f %6.1f | %8.2f | %9ld %9ld%s\n",
                    n, z.mapMs, o.mapMs, z.mapMs / o.mapMs, lean.mapMs, z.mapMs / lean.mapMs, z.linkMs, o.linkMs,
                    z.linkMs / o.linkMs, z.peakKb / 1024.0, o.peakKb / 1024.0, double(z.peakKb) / o.peakKb, restS,
                    z.collisionTests, o.collisionTests, z.ok && o.ok && lean.ok ? "" : "  (a run failed)");
    }
    std::printf("\nmap: Calc / OMPL's growRoadmap to N milestones (ratio: Zelvane's to OMPL's; lean: OMPL with the\n"
                "lean checker). close: the whole Zelvane run less Calc and the links (start, load, closing the\n"
                "station, which writes the stored map). link: the slowest of the five links (Zelvane:\n"
                "the Join command, two node insertions, the search and the program; OMPL: two milestones and A*).\n"
                "peak: the whole run's resident memory (Zelvane: map, links, and the station closed, which\n"
                "writes the stored map). tests: configurations and joint moves checked in the whole run.\n");
    return allOk ? 0 : 1;
}
