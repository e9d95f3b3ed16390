// Collision tests per second on the bundled work cell: the 3D model (FCL
// solids of the arm against the cell and itself) and the joint-space oracle,
// on the same random configurations and moves in one run.
//   cell_bench [STATION.json] [COUNT]
#include "cell_checker.h"
#include "joint_oracle.h"
#include "station.h"
#include "station_file.h"

#include "vorlik/item_types.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <random>

namespace {

using Clock = std::chrono::steady_clock;

struct Row {
    const char* oracle;
    const char* test;
    long long count;
    long long colliding;
    long long points;  // configurations looked at
    double seconds;
};

void print(const Row& row)
{
    std::printf("| %-12s | %-23s | %8lld | %9lld | %10lld | %8.3f | %12.0f | %14.0f |\n", row.oracle, row.test,
                row.count, row.colliding, row.points, row.seconds, row.count / row.seconds, row.points / row.seconds);
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

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QString path = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(WORKCELL_PATH);
    const int count = argc > 2 ? std::max(1, std::atoi(argv[2])) : 20000;
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
        std::vector<double> q(size_t(joints), 0.0);
        for (int i = 0; i < joints; ++i)
            q[size_t(i)] = std::uniform_real_distribution<double>(arm->lower[size_t(i)], arm->upper[size_t(i)])(random);
        return q;
    };
    std::vector<std::vector<double>> configurations;
    for (int k = 0; k < count; ++k)
        configurations.push_back(configuration());
    // Moves between neighbouring samples, as a roadmap tries them: a few dozen degrees.
    std::vector<std::pair<std::vector<double>, std::vector<double>>> moves;
    for (int k = 0; k < count / 10; ++k) {
        std::vector<double> a = configuration(), b = a;
        for (int i = 0; i < joints; ++i)
            b[size_t(i)] = std::clamp(a[size_t(i)] + std::uniform_real_distribution<double>(-30, 30)(random),
                                      arm->lower[size_t(i)], arm->upper[size_t(i)]);
        moves.emplace_back(a, b);
    }
    const double step = station->pathStepDeg();
    const std::vector<JointBox> boxes = jointSpaceBoxes(arm);

    std::printf("Collision tests on %s, robot %s (%d joints), step %.1f degrees\n\n", qUtf8Printable(path),
                qUtf8Printable(arm->itemName()), joints, step);
    std::printf("| %-12s | %-23s | %8s | %9s | %10s | %8s | %12s | %14s |\n", "oracle", "test", "tests", "colliding",
                "configs", "seconds", "tests/s", "configs/s");
    std::printf("|--------------|-------------------------|----------|-----------|------------|----------|-------------"
                "-|----------------|\n");

    CellChecker checker(*station, arm);
    {
        Row row{"3D (FCL)", "configuration", count, 0, count, 0.0};
        const auto start = Clock::now();
        for (const auto& q : configurations)
            row.colliding += checker.collidingPairs(q.data(), true) > 0;
        row.seconds = std::chrono::duration<double>(Clock::now() - start).count();
        print(row);
    }
    {
        Row row{"3D (FCL)", "collisions(), all pairs", count, 0, count, 0.0};
        const auto start = Clock::now();
        for (const auto& q : configurations) {
            arm->setJoints(JointVector(q.data(), joints));
            row.colliding += station->collisions() > 0;
        }
        row.seconds = std::chrono::duration<double>(Clock::now() - start).count();
        print(row);
    }
    {
        const long long before = station->cellStats.configurations;
        Row row{"3D (FCL)", "joint move", static_cast<long long>(moves.size()), 0, 0, 0.0};
        const auto start = Clock::now();
        for (const auto& move : moves)
            row.colliding += arm->testJointMove(JointVector(move.first.data(), joints),
                                                JointVector(move.second.data(), joints), step);
        row.seconds = std::chrono::duration<double>(Clock::now() - start).count();
        row.points = station->cellStats.configurations - before;
        print(row);
    }
    {
        Row row{"joint space", "configuration", count, 0, count, 0.0};
        const auto start = Clock::now();
        for (const auto& q : configurations)
            row.colliding += joint_oracle::boxesHolding(boxes, q.data()) > 0;
        row.seconds = std::chrono::duration<double>(Clock::now() - start).count();
        print(row);
    }
    {
        Row row{"joint space", "joint move", static_cast<long long>(moves.size()), 0, 0, 0.0};
        const auto start = Clock::now();
        for (const auto& move : moves) {
            row.points += joint_oracle::moveSteps(move.first.data(), move.second.data(), joints, step) + 1;
            row.colliding += joint_oracle::testJointMove(boxes, joints, move.first.data(), move.second.data(), step);
        }
        row.seconds = std::chrono::duration<double>(Clock::now() - start).count();
        print(row);
    }
    std::printf("\nconfigs: configurations looked at (a joint move stops at its first colliding point;\n"
                "the joint-space column counts every point of the move).\n");
    return 0;
}
