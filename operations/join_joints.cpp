// Linking two joint configurations through the map and writing the route as a program.
#include "join_joints.h"

#include "finite_joints.h"
#include "connected_nodes.h"
#include "display_guard.h"
#include "host_collision_checker.h"
#include "insert_node.h"
#include "map_capacity.h"
#include "map_growth.h"
#include "operation_scope.h"
#include "planner_session.h"
#include "route_repair.h"
#include "route_shortener.h"
#include "progress_reporter.h"
#include "roadmap_matrix.h"
#include "shortest_path.h"
#include "translate.h"
#include "vorlik/host_api.h"
#include "vorlik/item_types.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMainWindow>
#include <QProgressDialog>

#include <algorithm>

namespace {

// Inserts one query configuration into the map, in place: it stays there.
InsertedNode insertQueryNode(OperationScope& operation, const JointVector& joints,
                             const PlannerParameters& parameters)
{
    RobotMap& map = operation.map();
    HostCollisionChecker checker(operation.session().host(), operation.session().robot());
    return NodeInserter(checker, operation.session().progress())
        .insert(joints, map.roadmap(), parameters);
}

// Configurations that are not numbers, or a map with no room for two more
// nodes, are refused before anything changes.
bool canLink(PlannerSession& session, bool silent, const JointVector& start, const JointVector& end)
{
    const int jointCount = rows(session.map().samples());
    if (!allFinite(start.values(), jointCount) || !allFinite(end.values(), jointCount)) {
        session.host()->showMessage(
            QCoreApplication::translate("PluginAutoPRM",
                                        "The configurations to link hold joint values that are not numbers."),
            !silent);
        return false;
    }
    if (!mapCanBeKept(jointCount, session.map().sampleCount() + 2)) {
        session.host()->showMessage(
            QCoreApplication::translate(
                "PluginAutoPRM", "The map is as large as the station can keep: no configuration can be linked to it."),
            !silent);
        return false;
    }
    return true;
}

// The route's nodes as points to write, in travel order. A node that is no
// sample (a cancelled insertion leaves one) keeps its number, and its joints
// stay zero: writing stops there.
std::vector<ViaPoint> routePoints(const RobotMap& map)
{
    const RoadmapMatrix* route = map.route();
    const RoadmapMatrix* samples = map.samples();
    const int jointCount = rows(samples);
    std::vector<ViaPoint> points;
    const int length = rows(route) == 1 ? columns(route) : 0;
    for (int i = 0; i < length; ++i) {
        ViaPoint point;
        point.sample = static_cast<int>(at(route, 0, i) - 1.0);
        if (point.sample >= 0 && point.sample < map.sampleCount())
            point.joints = JointVector(column(samples, point.sample), jointCount);
        points.push_back(point);
    }
    return points;
}

bool allSamples(const std::vector<ViaPoint>& points, int sampleCount)
{
    return std::all_of(points.begin(), points.end(),
                       [sampleCount](const ViaPoint& p) { return p.sample >= 0 && p.sample < sampleCount; });
}

// Writes the route as program `progname`: one target per point, named after
// its place on the route and its sample number ("via" for a point a shortening
// put on a move). Null when the route is unusable.
Item writeRoute(PlannerSession& session, bool silent, const QString& progname, const std::vector<ViaPoint>& points)
{
    HostApi* host = session.host();
    HostItem* robot = session.robot();
    const RoadmapMatrix* route = session.map().route();
    const int jointCount = rows(session.map().samples());
    const int sampleCount = session.map().sampleCount();

    if (rows(route) != 1 || columns(route) < 2) {
        qDebug().noquote().nospace() << "Something is wrong with the robot route!!";
        return nullptr;
    }

    while (HostItem* old = host->getItem(progname, ItemType::Program))
        old->deleteItem();
    HostItem* program = host->addProgram(progname, robot);
    if (!program)
        return nullptr;

    for (size_t i = 0; i < points.size(); ++i) {
        const ViaPoint& point = points[i];
        const bool made = point.sample == ViaPoint::NewPoint;
        if (!made && (point.sample < 0 || point.sample >= sampleCount)) {
            host->showMessage(QStringLiteral("Something is wrong with the robot route!"), !silent);
            program->deleteItem();
            return nullptr;
        }
        const JointVector joints(point.joints.values(), jointCount);
        if (i == 0)
            robot->setJoints(joints);
        const QString name = made ? QStringLiteral("Pt %1 (via)").arg(i + 1)
                                  : QStringLiteral("Pt %1 (S%2)").arg(i + 1).arg(point.sample + 1);
        HostItem* target = host->addTarget(name, robot->parent(), robot);
        if (!target)
            continue;
        target->setJoints(joints);
        target->setAsJointTarget();
        program->addJointMove(target);
    }
    program->setProgramOptionA(false);
    program->setProgramOptionB(false);
    host->update(1);
    program->finishProgram(QString());
    return program;
}

// How a search for a route ended.
enum class RouteOutcome { Found, StartUnreachable, EndUnreachable, NoPath, Abandoned };

// The failure the user is told of; nothing for a route found or an operation abandoned.
void tellFailure(PlannerSession& session, bool silent, RouteOutcome outcome, const QString& progname)
{
    HostApi* host = session.host();
    switch (outcome) {
    case RouteOutcome::StartUnreachable:
        host->showMessage(QCoreApplication::translate(
                              "PluginAutoPRM",
                              "The robot is unable to reach the first target. Try to add more targets or increase the "
                              "number of samples and update the collision map."),
                          !silent);
        break;
    case RouteOutcome::EndUnreachable:
        host->showMessage(QCoreApplication::translate(
                              "PluginAutoPRM",
                              "The robot is unable to reach the second target for program <strong>%1</strong>. "
                              "Try to increase the number of samples and update the collision map.")
                              .arg(progname),
                          !silent);
        break;
    case RouteOutcome::NoPath:
        host->showMessage(
            QCoreApplication::translate("PluginAutoPRM",
                                        "It is not possible to connect the start and end targets for program "
                                        "<strong>%1</strong>. Try to increase the number of samples and update the "
                                        "collision map.")
                .arg(progname),
            !silent);
        break;
    case RouteOutcome::Found:
    case RouteOutcome::Abandoned:
        break;
    }
}

// The query proper, between the saved and the restored robot state: both
// configurations into the map, then the search. `cancelled` says whether
// the user cancelled one of the insertions.
RouteOutcome findRoute(OperationScope& operation, const JointVector& start, const JointVector& end, int* startNode,
                       int* endNode, bool* cancelled)
{
    PlannerSession& session = operation.session();
    ProgressReporter& progress = session.progress();
    const PlannerParameters parameters = session.settings().parameters();
    *startNode = -1;
    *endNode = -1;

    progress.start(session.mainWindow(), QCoreApplication::translate("PluginAutoPRM", "Adding start node"));
    InsertedNode inserted = insertQueryNode(operation, start, parameters);
    *startNode = inserted.node;
    qDebug().noquote().nospace() << "Done adding first node";
    const bool firstCancelled = progress.finish();
    *cancelled = firstCancelled;
    if (operation.abandoned())
        return RouteOutcome::Abandoned;
    if (inserted.edgesMade < 1)
        return RouteOutcome::StartUnreachable;

    progress.start(session.mainWindow(), QCoreApplication::translate("PluginAutoPRM", "Adding end node"));
    inserted = insertQueryNode(operation, end, parameters);
    *endNode = inserted.node;
    // After a cancelled first insertion this dialog stays open until the next
    // one replaces it.
    if (!firstCancelled)
        *cancelled = progress.finish();
    qDebug().noquote().nospace() << "Done adding second node";
    if (operation.abandoned()) {
        progress.finish();
        return RouteOutcome::Abandoned;
    }
    if (inserted.edgesMade < 1)
        return RouteOutcome::EndUnreachable;

    // Nodes are told counted from 1, as the route counts them.
    qDebug().noquote().nospace() << "Calculating map...";
    qDebug().noquote().nospace() << *startNode + 1;
    qDebug().noquote().nospace() << *endNode + 1;
    // The end node is the search's source, so the chain comes back start first.
    double cost = NoPathCost;
    RobotMap& map = operation.map();
    shortestPath(map.graph(), *endNode, *startNode, &cost, map.route());
    if (cost >= NoPathCost) {
        qDebug().noquote().nospace() << "Not possible to link nodes " << *startNode + 1 << " and " << *endNode + 1;
        return RouteOutcome::NoPath;
    }
    return RouteOutcome::Found;
}

// The query with the options of a failed link: a found route is checked
// against the cell when asked (its refused moves leave the map), and a link
// that fails grows the map and tries again while the limit allows. Failures
// are told once the last try failed.
bool findCheckedRoute(OperationScope& operation, bool silent, const JointVector& start, const JointVector& end,
                      const QString& progname)
{
    PlannerSession& session = operation.session();
    const PlannerSettings& settings = session.settings();
    MapGrowth growth(settings.growLimit);
    int startNode = -1;
    int endNode = -1;
    int removed = 0;
    bool cancelled = false;
    RouteOutcome outcome = findRoute(operation, start, end, &startNode, &endNode, &cancelled);
    for (;;) {
        // After a cancelled insertion the route is not checked: it goes as it always went.
        if (outcome == RouteOutcome::Found && settings.checkRoutes && !cancelled
            && !repairRoute(operation, startNode, endNode, &removed))
            outcome = operation.abandoned() ? RouteOutcome::Abandoned : RouteOutcome::NoPath;
        if (outcome == RouteOutcome::Found || outcome == RouteOutcome::Abandoned || cancelled || !growth.canGrow())
            break;
        growth.growRound(operation);
        if (growth.cancelled() || operation.abandoned()) {
            outcome = operation.abandoned() ? RouteOutcome::Abandoned : outcome;
            break;
        }
        // While the new samples leave the two ends apart, the next round comes
        // without a search, which costs the square of the map; the last try searches.
        const bool apart = startNode >= 0 && endNode >= 0 && !nodesConnected(operation.map().graph(), startNode, endNode);
        if (apart && growth.canGrow())
            continue;
        // The two configurations are samples of the map now: they are found again, not added.
        outcome = findRoute(operation, start, end, &startNode, &endNode, &cancelled);
    }
    if (growth.grown() > 0)
        qDebug().noquote().nospace() << "The map grew by " << growth.grown() << " samples";
    tellFailure(session, silent, outcome, progname);
    if (removed > 0 && outcome != RouteOutcome::Abandoned) {
        const QString text =
            removed == 1 ? QCoreApplication::translate("PluginAutoPRM",
                                                       "An edge of the map is not free in the cell as it is now and "
                                                       "was taken out of the map. Update the map.")
                         : QCoreApplication::translate("PluginAutoPRM",
                                                       "%1 edges of the map are not free in the cell as it is now and "
                                                       "were taken out of the map. Update the map.")
                               .arg(removed);
        session.host()->showMessage(text, outcome != RouteOutcome::Found && !silent);
    }
    return outcome == RouteOutcome::Found;
}

}  // namespace

Item linkJointValues(PlannerSession& session, bool silent, const JointVector& start, const JointVector& end,
                     const QString& progname)
{
    OperationScope operation(session, silent);
    if (!operation.started())
        return nullptr;
    return linkJoints(operation, silent, start, end, progname);
}

Item linkJoints(OperationScope& operation, bool silent, const JointVector& start, const JointVector& end,
                const QString& progname)
{
    PlannerSession& session = operation.session();
    if (!session.requireRobot(silent))
        return nullptr;
    if (!canLink(session, silent, start, end))
        return nullptr;
    HostApi* host = session.host();
    HostItem* robot = session.robot();

    DisplayGuard display(host, robot);

    const bool found = findCheckedRoute(operation, silent, start, end, progname) && session.robotStillThere();
    std::vector<ViaPoint> points = routePoints(session.map());
    // Shortened while the display waits, before the robot goes back.
    if (found && session.settings().shortenRoutes && allSamples(points, session.map().sampleCount())) {
        HostCollisionChecker checker(host, robot);
        RouteShortener shortener(checker, rows(session.map().samples()));
        points = shortener.shorten(std::move(points));
        qDebug().noquote().nospace() << "Route shortened: " << points.size() << " points, " << shortener.movesChecked()
                                     << " moves checked";
    }

    const Abandonment abandonment = session.abandonment();
    if (abandonment == Abandonment::StationReplaced || abandonment == Abandonment::Unloaded)
        return nullptr;
    display.restore(abandonment == Abandonment::None);
    if (abandonment != Abandonment::None)
        return nullptr;
    session.markChanged();

    Item program = found ? writeRoute(session, silent, progname, points) : nullptr;
    session.notifyChanged();
    return program;
}
