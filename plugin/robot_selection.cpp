// Which robot the map is built for, and the guard of robot-bound operations.
#include "plugin_autoprm.h"

#include "planner_session.h"
#include "translate.h"
#include "vorlik/item_types.h"

bool PluginAutoPRM::selectRobot(bool autoSelect, const QString& name)
{
    if (!session_)
        return false;
    PlannerSession& session = *session_;
    // The running operation's robot stays its robot.
    if (session.busy()) {
        session.refuseWhileBusy(true);
        return session.robot() != nullptr;
    }
    saveSettings();
    session.setRobot(nullptr);

    QList<Item> robots;
    hostApi->getItemList(robots, ItemType::Robot);
    if (robots.isEmpty()) {
        hostApi->showMessage(QStringLiteral("Select File-Open to load a robot or a Vorlik station"), false);
        loadRobotMap();
        return false;
    }

    HostItem* found = name.isEmpty() ? nullptr : hostApi->getItem(name, ItemType::Robot);
    if (!found) {
        if (autoSelect)
            found = robots.first();
        else
            found = hostApi->pickItem(
                QCoreApplication::translate("PluginAutoPRM", "Select a robot to calculate the automatic path map"),
                ItemType::Robot);
    }

    if (found) {
        // A picked mechanism stands for the robot it drives.
        session.setRobot(found->getLink(ItemType::Robot));
        hostApi->showMessage(
            QCoreApplication::translate("PluginAutoPRM", "Selected robot for PRM: ") + session.robotName(), false);
    } else {
        hostApi->showMessage(QCoreApplication::translate("PluginAutoPRM", "Robot not available to calculate PRM"),
                             false);
    }
    loadRobotMap();
    return found != nullptr;
}

QString PluginAutoPRM::robotName()
{
    return session_ ? session_->robotName() : QString();
}

bool PluginAutoPRM::requireRobot(bool silent)
{
    return session_ && session_->requireRobot(silent);
}
