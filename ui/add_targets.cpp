#include "add_targets.h"

#include "configuration.h"
#include "insert_node.h"
#include "items_of_type.h"
#include "planner_session.h"
#include "progress_reporter.h"
#include "roadmap_matrix.h"
#include "translate.h"
#include "vorlik/host_api.h"
#include "vorlik/item_types.h"

#include <QDebug>
#include <QMainWindow>
#include <QProgressDialog>

#include <algorithm>

namespace {

enum class Insertion { AlreadyPresent, Connected, Isolated };

// Inserts one configuration into the map, in place, under an already open
// dialog and tells what became of it. A cancelled insertion leaves the sample
// count unchanged and therefore reads as already present.
Insertion insertIntoMap(PlannerSession& session, const JointVector& joints, const PlannerParameters& parameters,
                        int* edgesMade)
{
    Configuration configuration{};
    std::copy(joints.values(), joints.values() + joints.count(), configuration.begin());
    int nodeIndex = -1;
    const int samplesBefore = columns(session.samples);
    insertNode(session.robot, configuration, session.samples, session.graph, parameters, session.samples,
               session.graph, edgesMade, &nodeIndex);
    Insertion outcome = Insertion::Isolated;
    if (columns(session.samples) == samplesBefore)
        outcome = Insertion::AlreadyPresent;
    else if (*edgesMade > 0)
        outcome = Insertion::Connected;
    return outcome;
}

QList<Item> selectedTargets(HostApi* host)
{
    QList<Item> selection;
    return itemsOfType(host->getSelectedItems(selection), ItemType::Target);
}

void addTargets(PlannerSession& session, const QList<Item>& targets, int jointCount,
                const PlannerParameters& parameters, int* edgesMade)
{
    HostApi* host = session.hostApi;
    ProgressReporter& progress = progressReporter();
    const int total = targets.size();
    for (int i = 0; i < total; ++i) {
        HostItem* target = targets[i];
        JointVector joints;
        target->joints(joints);
        if (joints.count() != jointCount)
            continue;
        const QString name = target->name();
        // One pass, so that a "%2" or the like inside the name is left as it is.
        progress.start(session.mainWindow,
                       planTr("Adding %1 (%2/%3)").arg(name, QString::number(i + 1), QString::number(total)));
        const Insertion outcome = insertIntoMap(session, joints, parameters, edgesMade);
        qDebug().noquote().nospace() << "Done adding first node";
        progress.finish();
        switch (outcome) {
        case Insertion::AlreadyPresent:
            host->showMessage(planTr("Target ") + name + " (or a nearby target) has already been added.", false);
            break;
        case Insertion::Connected:
            host->showMessage(planTr("Successfully added target: ") + name, false);
            break;
        case Insertion::Isolated:
            host->showMessage(planTr("Unable to add target: ") + name + " (" + joints.toText(", ", 3) + ")", false);
            break;
        }
    }
}

// True unless the position was appended without any edge.
bool addRobotPosition(PlannerSession& session, const JointVector& joints, const PlannerParameters& parameters,
                      int* edgesMade)
{
    HostApi* host = session.hostApi;
    ProgressReporter& progress = progressReporter();
    progress.start(session.mainWindow, planTr("Adding current robot position"));
    const Insertion outcome = insertIntoMap(session, joints, parameters, edgesMade);
    progress.finish();
    bool added = true;
    switch (outcome) {
    case Insertion::AlreadyPresent:
        host->showMessage(planTr("This target (or a nearby target) has already been added."), false);
        break;
    case Insertion::Connected:
        host->showMessage(planTr("Successfully added the current robot position"), false);
        break;
    case Insertion::Isolated:
        // The closing parenthesis without an opening one is the message as users know it.
        host->showMessage(planTr("Unable to add current robot position: ") + joints.toText(", ", 3) + ")", false);
        added = false;
        break;
    }
    return added;
}

}  // namespace

bool AddTargetsToMap(PlannerSession& session, bool silent, bool robotPositionOnly)
{
    if (!session.requireRobot(silent))
        return false;
    HostApi* host = session.hostApi;
    HostItem* robot = session.robot;

    QList<Item> targets;
    if (!robotPositionOnly)
        targets = selectedTargets(host);
    const PlannerParameters parameters = session.plannerParameters();

    const int keptRenderMode = host->renderMode();
    JointVector keptJoints;
    robot->joints(keptJoints);
    host->setRenderMode(1);

    int edgesMade = -1;
    bool result = true;
    if (!targets.isEmpty())
        addTargets(session, targets, keptJoints.count(), parameters, &edgesMade);
    else
        result = addRobotPosition(session, keptJoints, parameters, &edgesMade);

    host->setRenderMode(keptRenderMode);
    robot->setJoints(keptJoints);
    host->update(255);
    session.settingsChanged = true;
    session.emitUpdateForm();
    return result;
}
