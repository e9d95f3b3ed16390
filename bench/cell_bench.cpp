// Collision tests per second on the bundled work cell: the 3D model as the
// host checks it (exact narrow tests after culling), the same without
// culling, the FCL-everywhere check it replaced, and the joint-space oracle,
// all on the same random configurations and moves in one run; then the share
// of each stage of the 3D check. One thread: the figures are for one core.
//   cell_bench [STATION.json] [COUNT]
#include "cell_checker.h"
#include "cell_reference_checker.h"
#include "joint_oracle.h"
#include "station.h"
#include "station_file.h"

#include "vorlik/item_types.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <functional>
#include <random>

namespace {

using Clock = std::chrono::steady_clock;
using Joints = std::vector<double>;
using Move = std::pair<Joints, Joints>;

struct Row {
    const char* oracle;
    const char* test;
    long long count = 0;
    long long colliding = 0;
    long long points = 0;  // configurations looked at
    double seconds = 0.0;
};

void print(const Row& row)
{
    std::printf("| %-22s | %-23s | %8lld | %9lld | %10lld | %8.3f | %12.0f | %14.0f |\n", row.oracle, row.test,
                row.count, row.colliding, row.points, row.seconds, row.count / row.seconds, row.points / row.seconds);
}

// Runs the test on every item, counting the colliding ones, the time and the
// configurations looked at (by the counter, else one an item), after a first
// few untimed, so that no row pays for warming the caches.
template <typename Item>
Row timed(const char* oracle, const char* test, const std::vector<Item>& items,
          const std::function<int(const Item&)>& collides, const std::function<long long()>& looked = {})
{
    for (size_t i = 0; i < std::min<size_t>(items.size(), 1000); ++i)
        collides(items[i]);
    Row row{oracle, test, static_cast<long long>(items.size()), 0, 0, 0.0};
    const long long before = looked ? looked() : 0;
    const auto start = Clock::now();
    for (const Item& item : items)
        row.colliding += collides(item) > 0;
    row.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    row.points = looked ? looked() - before : row.count;
    return row;
}

// The joint-space obstacles of the cell as a joint-space placeholder would give
// them: the wall in front, and the table below the shoulder.
std::vector<JointBox> jointSpaceBoxes(const SimItem* arm)
{
    JointBox wall{arm->lower, arm->upper};
    wall.lower[0] = -25;
    wall.upper[0] = 25;
    wall.upper[1] = 35;
    JointBox table{arm->lower, arm->upper};
    table.upper[1] = -20;
    return {wall, table};
}

double percent(double part, double whole)
{
    return whole > 0.0 ? 100.0 * part / whole : 0.0;
}

// Where a timed checker's time went, and how far each stage let the pairs through.
void printStages(const char* what, const CellStageStats& stages, double seconds)
{
    const double per = stages.configurations > 0 ? 1.0 / double(stages.configurations) : 0.0;
    const double culling = seconds - stages.placeSeconds - stages.narrowSeconds;
    std::printf("%s: %lld configurations in %.3f s (timed stages; the clock reads add to it)\n", what,
                stages.configurations, seconds);
    std::printf("  placing the links (forward kinematics, link bounds): %5.1f %%\n",
                percent(stages.placeSeconds, seconds));
    std::printf("  culling (broad phase, bounding spheres, pair order):  %5.1f %%\n", percent(culling, seconds));
    std::printf("  narrow tests:                                         %5.1f %%\n",
                percent(stages.narrowSeconds, seconds));
    std::printf("  per configuration: %.2f pairs looked at, %.2f ruled out by link bounds and the broad phase;\n"
                "  %.2f solid pairs left, %.2f ruled out by their bounding spheres; %.3f narrow tests exact,\n"
                "  %.5f by FCL (%.3f %% of the narrow tests)\n",
                double(stages.pairs) * per, double(stages.pairsCulled) * per, double(stages.solidPairs) * per,
                double(stages.solidsCulled) * per, double(stages.narrow.exact) * per, double(stages.narrow.fcl) * per,
                percent(double(stages.narrow.fcl), double(stages.narrow.exact + stages.narrow.fcl)));
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QString path = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(WORKCELL_PATH);
    const int count = argc > 2 ? std::max(1, std::atoi(argv[2])) : 100000;
    QString error;
    std::unique_ptr<Station> station = station_file::read(path, &error);
    if (!station) {
        std::fprintf(stderr, "cell_bench: %s\n", qUtf8Printable(error));
        return 1;
    }
    SimItem* arm = nullptr;
    for (SimItem* robot : station->items(ItemType::Robot))
        arm = arm ? arm : (robot->arm ? robot : nullptr);
    if (!arm) {
        std::fprintf(stderr, "cell_bench: %s: no robot with kinematics\n", qUtf8Printable(path));
        return 1;
    }
    const int joints = arm->jointCount();
    std::mt19937 random(12345);
    auto configuration = [&] {
        Joints q(size_t(joints), 0.0);
        for (int i = 0; i < joints; ++i)
            q[size_t(i)] = std::uniform_real_distribution<double>(arm->lower[size_t(i)], arm->upper[size_t(i)])(random);
        return q;
    };
    std::vector<Joints> configurations;
    for (int k = 0; k < count; ++k)
        configurations.push_back(configuration());
    // Moves between neighbouring samples, as a roadmap tries them: a few dozen degrees.
    std::vector<Move> moves;
    for (int k = 0; k < count / 10; ++k) {
        Joints a = configuration(), b = a;
        for (int i = 0; i < joints; ++i)
            b[size_t(i)] = std::clamp(a[size_t(i)] + std::uniform_real_distribution<double>(-30, 30)(random),
                                      arm->lower[size_t(i)], arm->upper[size_t(i)]);
        moves.emplace_back(a, b);
    }
    const double step = station->pathStepDeg();
    const std::vector<JointBox> boxes = jointSpaceBoxes(arm);
    auto steps = [&](const Move& move) {
        return joint_oracle::moveSteps(move.first.data(), move.second.data(), joints, step);
    };

    std::printf("Collision tests on %s, robot %s (%d joints), step %.1f degrees\n\n", qUtf8Printable(path),
                qUtf8Printable(arm->itemName()), joints, step);
    std::printf("| %-22s | %-23s | %8s | %9s | %10s | %8s | %12s | %14s |\n", "oracle", "test", "tests", "colliding",
                "configs", "seconds", "tests/s", "configs/s");
    std::printf("|------------------------|-------------------------|----------|-----------|------------|----------|"
                "--------------|----------------|\n");

    CellChecker culled(*station, arm);
    CellChecker unculled(*station, arm, CellChecker::Options{false});
    FclReferenceChecker reference(*station, arm);
    using Config = std::function<int(const Joints&)>;
    using MoveTest = std::function<int(const Move&)>;
    const std::vector<std::pair<const char*, Config>> configurationTests = {
        {"3D, culled + exact", [&](const Joints& q) { return culled.collidingPairs(q.data(), true); }},
        {"3D, exact, no culling", [&](const Joints& q) { return unculled.collidingPairs(q.data(), true); }},
        {"3D, FCL everywhere", [&](const Joints& q) { return reference.collidingPairs(q.data(), true); }},
    };
    for (const auto& [name, test] : configurationTests)
        print(timed<Joints>(name, "configuration", configurations, test));
    print(timed<Joints>("3D, host", "collisions(), all pairs", configurations, [&](const Joints& q) {
        arm->setJoints(JointVector(q.data(), joints));
        return station->collisions();
    }));
    const std::vector<std::tuple<const char*, MoveTest, std::function<long long()>>> moveTests = {
        {"3D, culled + exact", [&](const Move& m) { return culled.testMove(m.first.data(), m.second.data(), steps(m)); },
         [&] { return culled.stageStats().configurations; }},
        {"3D, exact, no culling",
         [&](const Move& m) { return unculled.testMove(m.first.data(), m.second.data(), steps(m)); },
         [&] { return unculled.stageStats().configurations; }},
        {"3D, FCL everywhere",
         [&](const Move& m) { return reference.testMove(m.first.data(), m.second.data(), steps(m)); },
         [&] { return reference.configurations(); }},
        {"3D, host",
         [&](const Move& m) {
             return arm->testJointMove(JointVector(m.first.data(), joints), JointVector(m.second.data(), joints), step);
         },
         [&] { return station->cellStats.configurations; }},
    };
    for (const auto& [name, test, looked] : moveTests)
        print(timed<Move>(name, "joint move", moves, test, looked));
    print(timed<Joints>("joint space", "configuration", configurations,
                        [&](const Joints& q) { return joint_oracle::boxesHolding(boxes, q.data()); }));
    {
        Row row = timed<Move>("joint space", "joint move", moves, [&](const Move& m) {
            return joint_oracle::testJointMove(boxes, joints, m.first.data(), m.second.data(), step);
        });
        row.points = 0;
        for (const Move& move : moves)
            row.points += steps(move) + 1;
        print(row);
    }
    std::printf("\nconfigs: configurations looked at (a joint move stops at its first colliding point;\n"
                "the joint-space column counts every point of the move).\n\n");

    // The same work again with each stage timed, by checkers that saw nothing else.
    CellChecker staged(*station, arm);
    staged.timeStages(true);
    auto start = Clock::now();
    for (const Joints& q : configurations)
        staged.collidingPairs(q.data(), true);
    printStages("Configurations", staged.stageStats(), std::chrono::duration<double>(Clock::now() - start).count());
    CellChecker stagedMoves(*station, arm);
    stagedMoves.timeStages(true);
    start = Clock::now();
    for (const Move& move : moves)
        stagedMoves.testMove(move.first.data(), move.second.data(), steps(move));
    printStages("Joint moves", stagedMoves.stageStats(), std::chrono::duration<double>(Clock::now() - start).count());
    return 0;
}
