// The plug-in's operations and slots: each runs the user-facing operation on
// this plug-in's settings, robot and map.
#include "plugin_autoprm.h"

#include "add_targets.h"
#include "calculate_map.h"
#include "dock.h"
#include "form_prm.h"
#include "join_joints.h"
#include "join_operations.h"
#include "show_samples.h"

#include <QDockWidget>
#include <QMainWindow>

void PluginAutoPRM::CalculateMap()
{
    ::CalculateMap(*this);
}

bool PluginAutoPRM::AddTargetsToMap(bool silent, bool robotPositionOnly)
{
    return ::AddTargetsToMap(*this, silent, robotPositionOnly);
}

void PluginAutoPRM::Join_Selection_Smart(bool silent)
{
    ::Join_Selection_Smart(*this, silent);
}

Item PluginAutoPRM::Join_Selected_Targets(bool silent, Item target1, Item target2)
{
    return ::Join_Selected_Targets(*this, silent, target1, target2);
}

bool PluginAutoPRM::Join_Programs(bool silent, QList<Item> programs, QString progname_in)
{
    return ::Join_Programs(*this, silent, programs, progname_in);
}

Item PluginAutoPRM::Join_Joints(bool silent, const double* jnts1, const double* jnts2, QString progname)
{
    return ::Join_Joints(*this, silent, jnts1, jnts2, progname);
}

void PluginAutoPRM::ShowSamples()
{
    ::ShowSamples(*this);
}

void PluginAutoPRM::callback_robotpilot()
{
    if (dockWidget) {
        hostApi->showMessage(QStringLiteral("Auto PRM form is already open"), false);
        return;
    }
    hostApi->showMessage(QStringLiteral("Opening PRM form..."), false);
    form = new FormPRM(this, mainWindow);
    dockWidget = createDock(mainWindow, form, title(), Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea,
                            Qt::LeftDockWidgetArea, true, true);
    connect(form, &QObject::destroyed, this, &PluginAutoPRM::callback_robotpilot_closed);
}

void PluginAutoPRM::callback_robotpilot_closed()
{
    dockWidget = nullptr;
    form = nullptr;
    hostApi->showMessage(QStringLiteral("Closed robot pilot"), false);
}
