// Linking two joint configurations through the map and writing the route as a program.
#include "join_joints.h"

#include "configuration.h"
#include "insert_node.h"
#include "map_capacity.h"
#include "operation_scope.h"
#include "planner_session.h"
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

Configuration configurationFrom(const double* joints)
{
    Configuration configuration;
    std::copy(joints, joints + JointVector::MaxJoints, configuration.begin());
    return configuration;
}

// Inserts one query configuration into the map, in place: it stays there.
void insertQueryNode(OperationScope& operation, const double* joints, const PlannerParameters& parameters,
                     int* edgesMade, int* nodeIndex)
{
    RobotMap& map = operation.map();
    insertNode(operation.session().robot(), configurationFrom(joints), map.samples(), map.graph(), parameters,
               map.samples(), map.graph(), edgesMade, nodeIndex);
}

// Configurations that are not numbers, or a map with no room for two more
// nodes, are refused before anything changes.
bool canLink(PlannerSession& session, bool silent, const double* jnts1, const double* jnts2)
{
    const int jointCount = rows(session.map().samples());
    if (!allFinite(jnts1, jointCount) || !allFinite(jnts2, jointCount)) {
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
            std::copy_n(column(samples, point.sample), jointCount, point.joints.begin());
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
        const JointVector joints(point.joints.data(), jointCount);
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

// The query proper, between the saved and the restored robot state.
// True when a route between the two nodes was found.
bool findRoute(OperationScope& operation, bool silent, const double* jnts1, const double* jnts2,
               const QString& progname)
{
    PlannerSession& session = operation.session();
    HostApi* host = session.host();
    ProgressReporter& progress = progressReporter();
    const QString firstTargetUnreachable = QCoreApplication::translate(
        "PluginAutoPRM",
        "The robot is unable to reach the first target. Try to add more targets or increase the number "
        "of samples and update the collision map.");
    const PlannerParameters parameters = session.settings().parameters();
    int edgesMade = -1;
    int startIndex = -1;
    int endIndex = -1;

    progress.start(session.mainWindow(), QCoreApplication::translate("PluginAutoPRM", "Adding start node"));
    insertQueryNode(operation, jnts1, parameters, &edgesMade, &startIndex);
    qDebug().noquote().nospace() << "Done adding first node";
    const bool firstCancelled = progress.finish();
    if (operation.abandoned())
        return false;
    if (edgesMade < 1) {
        host->showMessage(firstTargetUnreachable, !silent);
        return false;
    }

    progress.start(session.mainWindow(), QCoreApplication::translate("PluginAutoPRM", "Adding end node"));
    insertQueryNode(operation, jnts2, parameters, &edgesMade, &endIndex);
    // After a cancelled first insertion this dialog stays open until the next
    // one replaces it.
    if (!firstCancelled)
        progress.finish();
    qDebug().noquote().nospace() << "Done adding second node";
    if (operation.abandoned()) {
        progress.finish();
        return false;
    }
    if (edgesMade < 1) {
        host->showMessage(QCoreApplication::translate(
                              "PluginAutoPRM",
                              "The robot is unable to reach the second target for program <strong>%1</strong>. "
                              "Try to increase the number of samples and update the collision map.")
                              .arg(progname),
                          !silent);
        return false;
    }

    qDebug().noquote().nospace() << "Calculating map...";
    qDebug().noquote().nospace() << startIndex;
    qDebug().noquote().nospace() << endIndex;
    // The end node is the search's source, so the chain comes back start first.
    double cost = NoPathCost;
    RobotMap& map = operation.map();
    shortestPath(map.graph(), endIndex, startIndex, &cost, map.route());
    if (cost >= NoPathCost) {
        qDebug().noquote().nospace() << "Not possible to link nodes " << startIndex << " and " << endIndex;
        host->showMessage(
            QCoreApplication::translate("PluginAutoPRM",
                                        "It is not possible to connect the start and end targets for program "
                                        "<strong>%1</strong>. Try to increase the number of samples and update the "
                                        "collision map.")
                .arg(progname),
            !silent);
        return false;
    }
    return true;
}

}  // namespace

Item Join_Joints(PlannerSession& session, bool silent, const double* jnts1, const double* jnts2,
                 const QString& progname)
{
    OperationScope operation(session, silent);
    if (!operation.started())
        return nullptr;
    return linkJoints(operation, silent, jnts1, jnts2, progname);
}

Item linkJoints(OperationScope& operation, bool silent, const double* jnts1, const double* jnts2,
                const QString& progname)
{
    PlannerSession& session = operation.session();
    if (!session.requireRobot(silent))
        return nullptr;
    if (!canLink(session, silent, jnts1, jnts2))
        return nullptr;
    HostApi* host = session.host();
    HostItem* robot = session.robot();

    const int keptRenderMode = host->renderMode();
    JointVector keptJoints;
    robot->joints(keptJoints);
    host->setRenderMode(1);

    const bool found = findRoute(operation, silent, jnts1, jnts2, progname) && session.robotStillThere();
    std::vector<ViaPoint> points = routePoints(session.map());
    // Shortened while the display waits, before the robot goes back.
    if (found && session.settings().shortenRoutes && allSamples(points, session.map().sampleCount())) {
        RouteShortener shortener(robot, rows(session.map().samples()));
        points = shortener.shorten(std::move(points));
        qDebug().noquote().nospace() << "Route shortened: " << points.size() << " points, " << shortener.movesChecked()
                                     << " moves checked";
    }

    const Abandonment abandonment = session.abandonment();
    if (abandonment == Abandonment::StationReplaced || abandonment == Abandonment::Unloaded)
        return nullptr;
    host->setRenderMode(keptRenderMode);
    if (abandonment == Abandonment::None)
        robot->setJoints(keptJoints);
    host->update(255);
    if (abandonment != Abandonment::None)
        return nullptr;
    session.markChanged();

    Item program = found ? writeRoute(session, silent, progname, points) : nullptr;
    session.notifyChanged();
    return program;
}
