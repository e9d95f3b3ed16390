// The plug-in's operations, slots and persistence: each runs on the session of
// the open station, and none does anything before a load or after an unload.
#include "plugin_autoprm.h"

#include "add_targets.h"
#include "calculate_map.h"
#include "dock.h"
#include "entry_guard.h"
#include "form_prm.h"
#include "join_joints.h"
#include "join_operations.h"
#include "map_store.h"
#include "planner_session.h"
#include "show_samples.h"

#include <QDockWidget>
#include <QMainWindow>

bool PluginAutoPRM::loadSettings()
{
    return session_ && MapStore(*session_, hostApi, pluginName()).loadSettings();
}

void PluginAutoPRM::saveSettings()
{
    if (session_)
        MapStore(*session_, hostApi, pluginName()).saveSettings();
}

void PluginAutoPRM::loadRobotMap()
{
    if (session_)
        MapStore(*session_, hostApi, pluginName()).loadRobotMap();
}

void PluginAutoPRM::CalculateMap()
{
    if (session_)
        guardedEntry(*resources_, hostApi, [this] { ::CalculateMap(*session_); });
}

bool PluginAutoPRM::AddTargetsToMap(bool silent, bool robotPositionOnly)
{
    if (!session_)
        return false;
    return guardedEntry(*resources_, hostApi, false, [&] { return ::AddTargetsToMap(*session_, silent, robotPositionOnly); });
}

void PluginAutoPRM::Join_Selection_Smart(bool silent)
{
    if (session_)
        guardedEntry(*resources_, hostApi, [&] { ::Join_Selection_Smart(*session_, silent); });
}

Item PluginAutoPRM::Join_Selected_Targets(bool silent, Item target1, Item target2)
{
    if (!session_)
        return nullptr;
    return guardedEntry(*resources_, hostApi, Item(nullptr),
                        [&] { return ::Join_Selected_Targets(*session_, silent, target1, target2); });
}

bool PluginAutoPRM::Join_Programs(bool silent, QList<Item> programs, QString progname_in)
{
    if (!session_)
        return false;
    return guardedEntry(*resources_, hostApi, false, [&] { return ::Join_Programs(*session_, silent, programs, progname_in); });
}

Item PluginAutoPRM::Join_Joints(bool silent, const double* jnts1, const double* jnts2, QString progname)
{
    if (!session_ || !jnts1 || !jnts2)
        return nullptr;
    return guardedEntry(*resources_, hostApi, Item(nullptr),
                        [&] { return ::Join_Joints(*session_, silent, jnts1, jnts2, progname); });
}

void PluginAutoPRM::ShowSamples()
{
    if (session_)
        guardedEntry(*resources_, hostApi, [this] { ::ShowSamples(*session_); });
}

void PluginAutoPRM::callback_join_seltargets()
{
    Join_Selection_Smart(false);
}

void PluginAutoPRM::callback_join_selprogs()
{
    Join_Selection_Smart(false);
}

void PluginAutoPRM::callback_robotpilot()
{
    if (session_)
        guardedEntry(*resources_, hostApi, [this] { openForm(); });
}

void PluginAutoPRM::openForm()
{
    if (dockWidget) {
        hostApi->showMessage(QStringLiteral("Auto PRM form is already open"), false);
        // Hidden from the main window's dock menu rather than closed: shown
        // again where it was, neither raised nor moved.
        if (!dockWidget->isVisible())
            dockWidget->show();
        return;
    }
    hostApi->showMessage(QStringLiteral("Opening PRM form..."), false);
    form = new FormPRM(session_, this, mainWindow);
    dockWidget = createDock(mainWindow, form, title(), Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea,
                            Qt::LeftDockWidgetArea, true, true);
    connect(form, &QObject::destroyed, this, &PluginAutoPRM::callback_robotpilot_closed);
    formDocks_.add(dockWidget, form);
}

void PluginAutoPRM::callback_robotpilot_closed()
{
    dockWidget = nullptr;
    form = nullptr;
    // Unloaded, the plug-in says nothing to the host, whoever invokes the slot.
    if (session_ && hostApi)
        hostApi->showMessage(QStringLiteral("Closed robot pilot"), false);
}
