// Route shortening beside OMPL's PathSimplifier, on the same routes with the
// same checker: the planner computes a map of a 6-joint joint-space station
// and links its five pairs of targets
// in-process on the simulated host; each plain route is then shortened by the
// planner's RouteShortener (every new move asked of the host) and by OMPL's
// simplifier given the station's own box and joint-move tests. Prints joint
// travel (L1), via points, moves checked and time, per link and in total.
//
// Usage: shortcut_compare [N [STATION...]]   (N samples, default 2000; K = 10;
//        default stations: bench/stations/joint_space_boxes.json and joint_space_corridors.json)
#include "calculate_map.h"
#include "host_collision_checker.h"
#include "in_process_host.h"
#include "join_joints.h"
#include "ompl_joint_space.h"
#include "planner_session.h"
#include "route_shortener.h"
#include "sim_host_api.h"
#include "station_file.h"
#include "vorlik/item_types.h"

#include <ompl/geometric/PathGeometric.h>
#include <ompl/geometric/PathSimplifier.h>
#include <ompl/util/Console.h>
#include <ompl/util/RandomNumbers.h>

#include <QApplication>
#include <QFileInfo>
#include <QStringList>

#include <chrono>
#include <cstdio>
#include <vector>

namespace og = ompl::geometric;
using namespace ompl_joint_space;
using namespace in_process_host;

namespace {

const std::vector<std::pair<QString, QString>> Links = {{"A", "B"}, {"B", "C"}, {"C", "D"}, {"A", "E"}, {"E", "D"}};

struct Result {
    double travel = 0;
    int points = 0;
    long moves = 0;
    double ms = 0;
    void add(const Result& other)
    {
        travel += other.travel;
        points += other.points;
        moves += other.moves;
        ms += other.ms;
    }
};

double msSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double travelOf(const og::PathGeometric& path, const ob::SpaceInformationPtr& si)
{
    double total = 0.0;
    for (size_t i = 1; i < path.getStateCount(); ++i)
        total += si->distance(path.getState(i - 1), path.getState(i));
    return total;
}

og::PathGeometric pathOf(const std::vector<ViaPoint>& route, const ob::SpaceInformationPtr& si, int joints)
{
    og::PathGeometric path(si);
    ob::State* state = si->allocState();
    for (const ViaPoint& point : route) {
        for (int i = 0; i < joints; ++i)
            state->as<ob::RealVectorStateSpace::StateType>()->values[i] = point.joints[i];
        path.append(state);
    }
    si->freeState(state);
    return path;
}

// The route the map gives between two configurations, as a link writes it.
std::vector<ViaPoint> plainRoute(const RobotMap& map)
{
    std::vector<ViaPoint> route;
    for (int i = 0; i < columns(map.route()); ++i) {
        ViaPoint point;
        point.sample = static_cast<int>(at(map.route(), 0, i)) - 1;
        point.joints = JointVector(column(map.samples(), point.sample), rows(map.samples()));
        route.push_back(point);
    }
    return route;
}

void printRow(const char* link, const char* who, const Result& r, double plainTravel)
{
    std::printf("%-7s %-34s %10.1f %6.1f%% %7d %8ld %9.2f\n", link, who, r.travel, 100.0 * r.travel / plainTravel,
                r.points, r.moves, r.ms);
}

// Computes the map of one station and compares the shortenings of its five links; false when a link fails.
bool compareOn(const QString& stationPath, int sampleCount)
{
    QString error;
    std::unique_ptr<Station> station = station_file::read(stationPath, &error);
    if (!station) {
        std::fprintf(stderr, "shortcut_compare: %s\n", qUtf8Printable(error));
        return false;
    }
    const Checker checker = checkerOf(*station);
    const ob::SpaceInformationPtr si = spaceFor(*station, checker);
    CollisionCounter monitor;
    SimHostApi host(std::move(station), &monitor);
    SimItem* robot = host.station().items(ItemType::Robot).front();
    auto session = std::make_shared<PlannerSession>(&host, nullptr, SessionCallbacks());
    session->setRobot(robot);
    PlannerSettings settings;
    settings.samples = sampleCount;
    settings.edgesPerSample = 10;
    session->changeSettings(settings);
    calculateMap(*session);

    std::printf("Route shortening on the map of %d samples of %s (6 joints, K = 10), five links;\n"
                "the planner's shortener beside OMPL %d.%d.%d's PathSimplifier with the same checker\n\n",
                session->map().sampleCount(), qUtf8Printable(QFileInfo(stationPath).fileName()), OMPL_MAJOR_VERSION,
                OMPL_MINOR_VERSION, OMPL_PATCH_VERSION);
    std::printf("%-7s %-34s %10s %7s %7s %8s %9s\n", "link", "route", "travel", "of plain", "points", "moves", "ms");
    Result plainTotal, oursTotal, omplReduceTotal, omplMaxTotal;
    for (const auto& [from, to] : Links) {
        const SimItem* a = host.station().find(from, ItemType::Target);
        const SimItem* b = host.station().find(to, ItemType::Target);
        if (!linkJointValues(*session, true, jointsOf(*a), jointsOf(*b), from + "To" + to)) {
            std::fprintf(stderr, "shortcut_compare: no route from %s to %s\n", qUtf8Printable(from),
                         qUtf8Printable(to));
            return false;
        }
        const std::vector<ViaPoint> plain = plainRoute(session->map());
        const QByteArray name = (from + "-" + to).toUtf8();
        Result p{RouteShortener::travel(plain, checker.joints), int(plain.size()), 0, 0};

        auto start = std::chrono::steady_clock::now();
        HostCollisionChecker hostChecker(&host, robot);
        RouteShortener shortener(hostChecker, checker.joints);
        const std::vector<ViaPoint> ours = shortener.shorten(plain);
        Result o{RouteShortener::travel(ours, checker.joints), int(ours.size()), shortener.movesChecked(),
                 msSince(start)};

        og::PathSimplifier simplifier(si);
        og::PathGeometric reduced = pathOf(plain, si, checker.joints);
        long motionsBefore = checker.motions;
        start = std::chrono::steady_clock::now();
        for (bool gained = true; gained;)
            gained = simplifier.reduceVertices(reduced) | simplifier.shortcutPath(reduced);
        Result r{travelOf(reduced, si), int(reduced.getStateCount()), checker.motions - motionsBefore, msSince(start)};

        og::PathGeometric full = pathOf(plain, si, checker.joints);
        motionsBefore = checker.motions;
        start = std::chrono::steady_clock::now();
        simplifier.simplifyMax(full);
        Result m{travelOf(full, si), int(full.getStateCount()), checker.motions - motionsBefore, msSince(start)};

        printRow(name.constData(), "plain route", p, p.travel);
        printRow("", "Zelvane RouteShortener", o, p.travel);
        printRow("", "OMPL reduceVertices + shortcutPath", r, p.travel);
        printRow("", "OMPL simplifyMax", m, p.travel);
        plainTotal.add(p);
        oursTotal.add(o);
        omplReduceTotal.add(r);
        omplMaxTotal.add(m);
    }
    std::printf("\n");
    printRow("total", "plain route", plainTotal, plainTotal.travel);
    printRow("", "Zelvane RouteShortener", oursTotal, plainTotal.travel);
    printRow("", "OMPL reduceVertices + shortcutPath", omplReduceTotal, plainTotal.travel);
    printRow("", "OMPL simplifyMax", omplMaxTotal, plainTotal.travel);
    std::printf("\n");
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    qInstallMessageHandler(quiet);
    ompl::msg::setLogLevel(ompl::msg::LOG_NONE);
    const int sampleCount = argc > 1 ? std::atoi(argv[1]) : 2000;
    QStringList stations;
    for (int i = 2; i < argc; ++i)
        stations << QString::fromLocal8Bit(argv[i]);
    if (stations.isEmpty())
        stations = QStringList{QStringLiteral(STATIONS_PATH "/joint_space_boxes.json"),
                               QStringLiteral(STATIONS_PATH "/joint_space_corridors.json")};
    for (const QString& station : stations) {
        // Each station as a freshly loaded plug-in maps it: its session has a generator of its own.
        ompl::RNG::setSeed(1);
        if (!compareOn(station, sampleCount))
            return 1;
    }
    std::printf("travel: summed joint motion (L1, degrees). moves: joint moves the checker was asked about.\n"
                "OMPL's simplifier draws random points (seeded); simplifyMax ends with B-spline smoothing.\n");
    return 0;
}
