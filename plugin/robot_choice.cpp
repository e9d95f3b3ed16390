// Which robot the map is built for.
#include "robot_choice.h"

#include "planner_session.h"
#include "translate.h"
#include "vorlik/host_api.h"
#include "vorlik/item_types.h"

#include <QCoreApplication>

bool RobotChoice::select(bool autoSelect, const QString& name)
{
    PlannerSession& session = session_;
    HostApi* hostApi = session.host();
    // The running operation's robot stays its robot.
    if (session.busy()) {
        session.refuseWhileBusy(true);
        return session.robot() != nullptr;
    }
    saveSettings_();
    session.setRobot(nullptr);

    QList<Item> robots;
    hostApi->getItemList(robots, ItemType::Robot);
    if (robots.isEmpty()) {
        hostApi->showMessage(QStringLiteral("Select File-Open to load a robot or a Vorlik station"), false);
        loadRobotMap_();
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
    loadRobotMap_();
    return found != nullptr;
}
