// Adding the selected targets, or the robot's position, to the map as nodes.
#include "add_targets.h"

#include "finite_joints.h"
#include "display_guard.h"
#include "host_collision_checker.h"
#include "insert_node.h"
#include "items_of_type.h"
#include "map_capacity.h"
#include "operation_scope.h"
#include "planner_session.h"
#include "progress_reporter.h"
#include "roadmap_matrix.h"
#include "translate.h"
#include "vorlik/host_api.h"
#include "vorlik/item_types.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMainWindow>
#include <QProgressDialog>

#include <algorithm>

namespace {

enum class Insertion { AlreadyPresent, Connected, Isolated };

// Inserts one configuration into the map, in place, under an already open
// dialog and tells what became of it. A cancelled insertion leaves the sample
// count unchanged and therefore reads as already present.
Insertion insertIntoMap(OperationScope& operation, const JointVector& joints, const PlannerParameters& parameters,
                        int* edgesMade)
{
    const JointVector configuration(joints.values(), joints.count());
    RobotMap& map = operation.map();
    const int samplesBefore = map.sampleCount();
    HostCollisionChecker checker(operation.session().host(), operation.session().robot());
    *edgesMade = NodeInserter(checker, operation.session().progress())
                     .insert(configuration, map.roadmap(), parameters)
                     .edgesMade;
    Insertion outcome = Insertion::Isolated;
    if (map.sampleCount() == samplesBefore)
        outcome = Insertion::AlreadyPresent;
    else if (*edgesMade > 0)
        outcome = Insertion::Connected;
    return outcome;
}

// A map at the size its station can keep takes no more nodes.
bool roomForOneMore(PlannerSession& session, int jointCount)
{
    if (mapCanBeKept(jointCount, session.map().sampleCount() + 1))
        return true;
    session.host()->showMessage(
        QCoreApplication::translate("PluginAutoPRM",
                                    "The map is as large as the station can keep: no target can be added."),
        false);
    return false;
}

QList<Item> selectedTargets(HostApi* host)
{
    QList<Item> selection;
    return itemsOfType(host->getSelectedItems(selection), ItemType::Target);
}

void addTargets(OperationScope& operation, const QList<Item>& targets, int jointCount,
                const PlannerParameters& parameters, int* edgesMade)
{
    PlannerSession& session = operation.session();
    HostApi* host = session.host();
    ProgressReporter& progress = session.progress();
    const int total = targets.size();
    for (int i = 0; i < total && !operation.abandoned(); ++i) {
        HostItem* target = targets[i];
        JointVector joints;
        target->joints(joints);
        if (joints.count() != jointCount)
            continue;
        const QString name = target->name();
        if (!allFinite(joints)) {
            host->showMessage(QCoreApplication::translate(
                                  "PluginAutoPRM", "Target %1 has joint values that are not numbers: it is not added.")
                                  .arg(name),
                              false);
            continue;
        }
        if (!roomForOneMore(session, jointCount))
            return;
        // One pass, so that a "%2" or the like inside the name is left as it is.
        progress.start(session.mainWindow(),
                       QCoreApplication::translate("PluginAutoPRM", "Adding %1 (%2/%3)")
                           .arg(name, QString::number(i + 1), QString::number(total)));
        const Insertion outcome = insertIntoMap(operation, joints, parameters, edgesMade);
        qDebug().noquote().nospace() << "Done adding first node";
        progress.finish();
        if (!session.robotStillThere() || operation.abandoned())
            return;
        switch (outcome) {
        case Insertion::AlreadyPresent:
            host->showMessage(QCoreApplication::translate("PluginAutoPRM", "Target ") + name
                                  + " (or a nearby target) has already been added.",
                              false);
            break;
        case Insertion::Connected:
            host->showMessage(QCoreApplication::translate("PluginAutoPRM", "Successfully added target: ") + name,
                              false);
            break;
        case Insertion::Isolated:
            host->showMessage(QCoreApplication::translate("PluginAutoPRM", "Unable to add target: ") + name + " ("
                                  + joints.toText(", ", 3) + ")",
                              false);
            break;
        }
    }
}

// True unless the position was appended without any edge.
bool addRobotPosition(OperationScope& operation, const JointVector& joints, const PlannerParameters& parameters,
                      int* edgesMade)
{
    PlannerSession& session = operation.session();
    HostApi* host = session.host();
    if (!allFinite(joints)) {
        host->showMessage(QCoreApplication::translate(
                              "PluginAutoPRM", "The robot's joint values are not numbers: its position is not added."),
                          false);
        return false;
    }
    if (!roomForOneMore(session, joints.count()))
        return false;
    ProgressReporter& progress = session.progress();
    progress.start(session.mainWindow(), QCoreApplication::translate("PluginAutoPRM", "Adding current robot position"));
    const Insertion outcome = insertIntoMap(operation, joints, parameters, edgesMade);
    progress.finish();
    if (!session.robotStillThere() || operation.abandoned())
        return false;
    bool added = true;
    switch (outcome) {
    case Insertion::AlreadyPresent:
        host->showMessage(
            QCoreApplication::translate("PluginAutoPRM", "This target (or a nearby target) has already been added."),
            false);
        break;
    case Insertion::Connected:
        host->showMessage(QCoreApplication::translate("PluginAutoPRM", "Successfully added the current robot position"),
                          false);
        break;
    case Insertion::Isolated:
        // The closing parenthesis without an opening one is the message as users know it.
        host->showMessage(QCoreApplication::translate("PluginAutoPRM", "Unable to add current robot position: ")
                              + joints.toText(", ", 3) + ")",
                          false);
        added = false;
        break;
    }
    return added;
}

}  // namespace

bool addTargetsToMap(PlannerSession& session, bool silent, bool robotPositionOnly)
{
    OperationScope operation(session, silent);
    if (!operation.started())
        return false;
    if (!session.requireRobot(silent))
        return false;
    HostApi* host = session.host();
    HostItem* robot = session.robot();

    QList<Item> targets;
    if (!robotPositionOnly)
        targets = selectedTargets(host);
    const PlannerParameters parameters = session.settings().parameters();

    DisplayGuard display(host, robot);
    const JointVector& keptJoints = display.keptJoints();

    int edgesMade = -1;
    bool result = true;
    if (!targets.isEmpty())
        addTargets(operation, targets, keptJoints.count(), parameters, &edgesMade);
    else
        result = addRobotPosition(operation, keptJoints, parameters, &edgesMade);

    if (session.abandonment() == Abandonment::StationReplaced || session.abandonment() == Abandonment::Unloaded)
        return false;
    display.restore(!operation.abandoned());
    if (operation.abandoned())
        return false;
    session.markChanged();
    session.notifyChanged();
    return result;
}
