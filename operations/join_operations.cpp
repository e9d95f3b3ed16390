// Linking the selected targets, or chaining the selected programs with links between them.
#include "join_operations.h"

#include "calculate_map.h"
#include "items_of_type.h"
#include "join_joints.h"
#include "operation_scope.h"
#include "planner_session.h"
#include "roadmap_matrix.h"
#include "sanitize_name.h"
#include "translate.h"
#include "vorlik/host_api.h"
#include "vorlik/item_types.h"

#include <QCoreApplication>
#include <QDebug>
#include <QStringList>

namespace {

// Gaps up to this L1 joint distance are taken as programs that already meet.
constexpr double ProgramsMeetDistance = 1.0;

void ensureMap(OperationScope& operation)
{
    if (operation.session().map().hasSamples())
        return;
    operation.session().host()->showMessage(QCoreApplication::translate("PluginAutoPRM", "Creating map..."), false);
    computeMap(operation);
}

}  // namespace

void linkSelection(PlannerSession& session, bool silent)
{
    QList<Item> selection;
    session.host()->getSelectedItems(selection);
    if (!selection.isEmpty() && selection.first()->type() == ItemType::Program)
        linkPrograms(session, silent, selection, QString());
    else
        linkTargets(session, silent, nullptr, nullptr);
}

Item linkTargets(PlannerSession& session, bool silent, Item target1, Item target2)
{
    OperationScope operation(session, silent);
    if (!operation.started())
        return nullptr;
    // The robot is always asked for loudly, whatever `silent` says.
    if (!session.requireRobot(false))
        return nullptr;
    HostApi* host = session.host();
    QString programName = QStringLiteral("SafeMove");

    // The map comes first, even when the selection then turns out too small.
    ensureMap(operation);
    if (operation.abandoned())
        return nullptr;
    qDebug().noquote().nospace() << "Trying to join targets...";

    QList<Item> candidates;
    if (target1)
        candidates << target1;
    if (target2)
        candidates << target2;
    if (candidates.size() < 2) {
        QList<Item> selection;
        candidates << itemsOfType(host->getSelectedItems(selection), ItemType::Target);
    }
    if (candidates.size() < 2) {
        host->showMessage(QStringLiteral("Select 2 targets to automatically join the path"), !silent);
        return nullptr;
    }

    HostItem* first = candidates[0];
    HostItem* second = candidates[1];
    const QString firstName = first->name();
    const QString secondName = second->name();
    qDebug().noquote() << "Joining targets: " + firstName + " & " + secondName;
    programName = sanitizeName(firstName + "To" + secondName);

    JointVector firstJoints;
    JointVector secondJoints;
    first->joints(firstJoints);
    second->joints(secondJoints);
    qDebug().noquote() << firstJoints.toText(", ", 3);
    qDebug().noquote() << secondJoints.toText(", ", 3);
    return linkJoints(operation, silent, firstJoints, secondJoints, programName);
}

bool linkPrograms(PlannerSession& session, bool silent, const QList<Item>& programs, const QString& progname_in)
{
    OperationScope operation(session, silent);
    if (!operation.started())
        return false;
    if (!session.requireRobot(false))
        return false;
    HostApi* host = session.host();
    const QString mainName = progname_in.isEmpty() ? QStringLiteral("MainSafe") : progname_in;

    const QList<Item> chain = itemsOfType(programs, ItemType::Program);
    // Counted before any map is computed, unlike the join of targets.
    if (chain.size() < 2) {
        host->showMessage(QStringLiteral("Select 2 or more programs to automatically join them"), !silent);
        return false;
    }

    ensureMap(operation);
    if (operation.abandoned())
        return false;
    qDebug().noquote().nospace() << "Trying to join programs...";

    bool ok = true;
    QStringList calls{chain[0]->name()};
    HostItem* previous = chain[0];
    for (int i = 1; i < chain.size(); ++i) {
        HostItem* current = chain[i];
        const QString previousName = previous->name();
        const QString currentName = current->name();
        qDebug().noquote() << "Joining programs: " + previousName + " & " + currentName;
        const QString linkName = sanitizeName("S" + previousName + "2" + currentName);

        JointVector previousStart;
        JointVector previousEnd;
        JointVector currentStart;
        JointVector currentEnd;
        previous->jointLimits(previousStart, previousEnd);
        current->jointLimits(currentStart, currentEnd);
        if (previousStart.isValid() && previousEnd.isValid() && currentStart.isValid() && currentEnd.isValid()) {
            if (JointVector::distance(previousEnd, currentStart) > ProgramsMeetDistance) {
                if (ok)
                    ok =
                        linkJoints(operation, silent, previousEnd, currentStart, linkName) != nullptr;
                if (operation.abandoned())
                    return false;
                calls << linkName;
            }
            previous = current;
        } else {
            // The next program is linked from the last one that had moves.
            host->showMessage(QCoreApplication::translate("PluginAutoPRM", "Program %1 does not contain any movements")
                                  .arg(currentName),
                              false);
        }
        if (!ok) {
            host->showMessage(QCoreApplication::translate("PluginAutoPRM", "Unable to create program: ") + linkName,
                              false);
            return false;
        }
        calls << currentName;
    }

    HostItem* mainProgram = host->addProgram(mainName, session.robot());
    if (mainProgram) {
        for (const QString& name : calls)
            mainProgram->addProgramCall(name, 0);
    }
    return true;
}
