#include "calculate_map.h"

#include "planner_session.h"
#include "progress_reporter.h"
#include "replace_map_question.h"
#include "roadmap_builder.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"
#include "translate.h"
#include "vorlik/host_api.h"
#include "vorlik/item_types.h"

#include <QDebug>
#include <QMainWindow>
#include <QProgressDialog>

namespace {

// Seeds are the joints of the robot's own targets. A target sits in the column
// of its position in the station's target list, and the matrix is then cut to
// as many columns as seeds were found: a skipped target before an accepted one
// leaves a zero column in the kept part and pushes the last seeds out. Existing
// maps were computed this way, so it stays.
ScopedMatrix collectSeeds(PlannerSession& session, int jointCount)
{
    QList<Item> targets;
    session.hostApi->getItemList(targets, ItemType::Target);

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
        if (target->getLink(ItemType::Robot) != session.robot)
            continue;
        joints.copyInto(column(seeds.get(), position));
        ++seedCount;
    }
    setSize(seeds.get(), jointCount, seedCount);
    return seeds;
}

void commitWorkMap(PlannerSession& session)
{
    *session.graph = *session.workGraph;
    copyMatrix(session.workSamples, session.samples);
}

}  // namespace

void CalculateMap(PlannerSession& session)
{
    if (!session.requireRobot(false))
        return;
    HostApi* host = session.hostApi;
    HostItem* robot = session.robot;

    JointVector keptJoints;
    robot->joints(keptJoints);
    ScopedMatrix seeds = collectSeeds(session, keptJoints.count());

    const PlannerParameters parameters = session.plannerParameters();

    const int keptRenderMode = host->renderMode();
    host->setRenderMode(1);

    progressReporter().start(session.mainWindow, planTr("Calculating collision Map..."));
    buildRoadmap(robot, parameters, seeds.get(), session.workSamples, session.workGraph);

    host->setRenderMode(keptRenderMode);
    robot->setJoints(keptJoints);
    host->update(255);
    seeds.reset();

    const bool cancelled = progressReporter().finish();
    if (!cancelled) {
        commitWorkMap(session);
        robot->showJointSequence(session.samples);
    } else {
        qDebug().noquote().nospace() << "Operation aborted!";
        if (session.workGraph->isEmpty()) {
            // Nothing was kept: the previous map stays without asking.
        } else if (session.graph->isEmpty()) {
            commitWorkMap(session);
        } else if (askReplaceMap(session.mainWindow)) {
            commitWorkMap(session);
        }
    }

    session.settingsChanged = true;
    qDebug().noquote().nospace() << "Done calculating PRM";
    session.emitUpdateForm();
}
