// Computing the map of the chosen robot under the progress dialog, with the "Replace map" question.
#include "calculate_map.h"

#include "finite_joints.h"
#include "display_guard.h"
#include "host_collision_checker.h"
#include "map_capacity.h"
#include "operation_scope.h"
#include "planner_session.h"
#include "progress_reporter.h"
#include "replace_map_question.h"
#include "roadmap_builder.h"
#include "roadmap_matrix.h"
#include "translate.h"
#include "vorlik/host_api.h"
#include "vorlik/item_types.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMainWindow>
#include <QProgressDialog>

#include <cmath>

namespace {

// Seeds are the joints of the robot's own targets. A target sits in the column
// of its position in the station's target list, and the matrix is then cut to
// as many columns as seeds were found: a skipped target before an accepted one
// leaves a zero column in the kept part and pushes the last seeds out. Existing
// maps were computed this way, so it stays.
ScopedMatrix collectSeeds(PlannerSession& session, int jointCount)
{
    QList<Item> targets;
    session.host()->getItemList(targets, ItemType::Target);

    ScopedMatrix seeds = makeScopedMatrix();
    setSize(seeds.get(), jointCount, targets.size());
    fillZero(seeds.get());

    int seedCount = 0;
    for (int position = 0; position < targets.size(); ++position) {
        HostItem* target = targets[position];
        JointVector joints;
        target->joints(joints);
        if (joints.count() != jointCount)
            continue;
        if (target->getLink(ItemType::Robot) != session.robot())
            continue;
        if (!allFinite(joints)) {
            session.host()->showMessage(
                QCoreApplication::translate("PluginAutoPRM",
                                            "Target %1 has joint values that are not numbers: it is not used.")
                    .arg(target->name()),
                false);
            continue;
        }
        joints.copyInto(column(seeds.get(), position));
        ++seedCount;
    }
    setSize(seeds.get(), jointCount, seedCount);
    return seeds;
}

// A map the station could not keep, or limits that cannot be sampled, are
// refused before anything is done; the map stays as it is.
bool canCompute(PlannerSession& session, HostItem* robot)
{
    JointVector lower;
    JointVector upper;
    HostCollisionChecker(session.host(), robot).jointLimits(lower, upper);
    const int jointCount = lower.count();
    for (int i = 0; i < jointCount; ++i) {
        if (!std::isfinite(lower[i]) || !std::isfinite(upper[i]) || !std::isfinite(upper[i] - lower[i])) {
            session.host()->showMessage(
                QCoreApplication::translate("PluginAutoPRM",
                                            "The joint limits of robot %1 are not numbers a map can be sampled in.")
                    .arg(robot->name()),
                true);
            return false;
        }
    }
    const int sampleCount = session.settings().samples;
    if (sampleCount < 1) {
        session.host()->showMessage(
            QCoreApplication::translate("PluginAutoPRM", "A map needs at least 1 sample; the number of samples is %1.")
                .arg(sampleCount),
            true);
        return false;
    }
    if (!mapCanBeKept(jointCount, sampleCount)) {
        session.host()->showMessage(
            QCoreApplication::translate("PluginAutoPRM",
                                        "A map of %1 samples is too large to be kept in the station. The largest map "
                                        "of this robot has %2 samples.")
                .arg(sampleCount)
                .arg(largestKeepableSampleCount(jointCount)),
            true);
        return false;
    }
    return true;
}

void commitWorkMap(OperationScope& operation, HostItem* robot)
{
    RobotMap& work = operation.workMap();
    operation.map().roadmap() = work.roadmap();
    operation.map().setRobot(robot);
}

}  // namespace

void calculateMap(PlannerSession& session)
{
    OperationScope operation(session, false);
    if (operation.started())
        computeMap(operation);
}

void computeMap(OperationScope& operation)
{
    PlannerSession& session = operation.session();
    if (!session.requireRobot(false))
        return;
    HostApi* host = session.host();
    HostItem* robot = session.robot();
    if (!canCompute(session, robot))
        return;

    JointVector joints;
    robot->joints(joints);
    ScopedMatrix seeds = collectSeeds(session, joints.count());

    const PlannerParameters parameters = session.settings().parameters();

    DisplayGuard display(host, robot, joints);

    session.progress().start(session.mainWindow(),
                             QCoreApplication::translate("PluginAutoPRM", "Calculating collision Map..."));
    RobotMap& work = operation.workMap();
    HostCollisionChecker checker(host, robot);
    RoadmapBuilder(checker, session.progress(), session.resources().random())
        .build(parameters, seeds.get(), work.roadmap());
    seeds.reset();
    session.robotStillThere();

    if (operation.abandoned()) {
        // The robot or the station is gone: nothing built for it is kept.
        session.progress().finish();
        qDebug().noquote().nospace() << "Operation aborted!";
        if (session.abandonment() == Abandonment::RobotDeleted)
            display.restore(false);
        return;
    }

    display.restore(true);

    const bool cancelled = session.progress().finish();
    if (!cancelled) {
        commitWorkMap(operation, robot);
        robot->showJointSequence(session.map().samples());
    } else {
        qDebug().noquote().nospace() << "Operation aborted!";
        if (work.graph()->isEmpty()) {
            // Nothing was kept: the previous map stays without asking.
        } else if (session.map().graph()->isEmpty()) {
            commitWorkMap(operation, robot);
        } else if (askReplaceMap(session.mainWindow()) && !operation.abandoned()) {
            commitWorkMap(operation, robot);
        }
    }

    session.markChanged();
    qDebug().noquote().nospace() << "Done calculating PRM";
    session.notifyChanged();
}
