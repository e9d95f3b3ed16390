// The plug-in object the host loads.
#pragma once

#include "form_docks.h"
#include "plugin_menus.h"
#include "roadmap_matrix.h"
#include "vorlik/iappvorlik.h"
#include "written_map_record.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

class FormPRM;
class MapDrawing;
class PlannerResources;
class PlannerSession;
class QDockWidget;

// The collision-free motion planner as the Vorlik host sees it: the one object
// with the host's interface, slots other plug-ins invoke by name and the
// signal the form listens to. It owns the planner session (settings, chosen
// robot, map) of the open station, the resources that outlive a load, the
// menus and the form's dock, and hands the work to the classes of each
// concern: the command language (CommandLanguage), persistence (MapStore),
// robot choice (RobotChoice), the operations (GuardedOperations), menus and
// actions (PluginMenus) and map drawing (MapDrawing). Every entry point may be
// reached while an operation runs (its progress dialog runs the event loop)
// and after an unload; none lets an exception reach the host. The library's
// entry points and metadata are in plugin_module.cpp.
class PluginAutoPRM : public QObject, public IAppVorlik {
    Q_OBJECT
    Q_INTERFACES(IAppVorlik)

public:
    explicit PluginAutoPRM(QObject* parent = nullptr);
    ~PluginAutoPRM() override;

    // IAppVorlik
    QString pluginName() override;
    QString pluginLoad(QMainWindow* mainWindow, QMenuBar* menuBar, QStatusBar* statusBar, HostApi* hostApi,
                       const QString& settings) override;
    void pluginUnload() override;
    void pluginLoadToolbar(QMainWindow* mainWindow, int iconSize) override;
    QString pluginCommand(const QString& command, const QString& value) override;
    void pluginEvent(int eventCode) override;
    bool pluginItemContextMenu(const QList<Item>& items, QMenu* menu) override;

    // Persistence of settings and maps in the station's data parameters.
    bool loadSettings();
    void saveSettings();
    void loadRobotMap();

    // Robot choice.
    bool selectRobot(bool autoSelect, const QString& name);
    QString robotName();
    bool requireRobot(bool silent);

    // Operations the user starts.
    void CalculateMap();
    bool AddTargetsToMap(bool silent, bool robotPositionOnly);

    // Title of the plug-in's menu, toolbar and dock.
    QString title() const { return title_; }

    // The open station's planner state; null before load and after unload.
    PlannerSession* session() const { return session_.get(); }
    const RoadmapMatrix* samplePositions() const;

signals:
    void UpdateForm();

public slots:
    void callback_robotpilot();
    void callback_join_seltargets();
    void callback_join_selprogs();
    void callback_robotpilot_closed();
    void Join_Selection_Smart(bool silent);
    Item Join_Selected_Targets(bool silent = false, Item target1 = nullptr, Item target2 = nullptr);
    bool Join_Programs(bool silent, QList<Item> programs, QString progname_in = QString());
    Item Join_Joints(bool silent, const double* jnts1, const double* jnts2, QString progname);
    void ShowSamples();
    void RenderMap();

private:
    void handleEvent(int eventCode);
    void stationOpened();
    void stationChanged();
    void openForm();
    // Everything load made goes; true when a form was open and is now closed.
    bool tearDownInterface();

    QMainWindow* mainWindow = nullptr;
    QStatusBar* statusBar = nullptr;
    HostApi* hostApi = nullptr;
    PluginMenus menus_;                   // the menu, the toolbar and their actions
    QDockWidget* dockWidget = nullptr;    // the form's dock, while open
    FormPRM* form = nullptr;              // the form, while open
    FormDocks formDocks_;                 // every dock ever opened, closed at unload
    std::shared_ptr<PlannerSession> session_;
    std::unique_ptr<MapDrawing> drawing_;  // the map in the 3D view, from load to unload
    // The generator, the progress dialog and the operation count, for the
    // object's whole life: maps drawn after an unload and a load go on with
    // the same random sequence, and an operation an unload let go of still
    // keeps the next one from starting until it has unwound.
    std::shared_ptr<PlannerResources> resources_;
    WrittenMapRecord writtenMap_;  // the map record last written, not encoded again while the map is unchanged
    QString title_;  // of the menu, the toolbar and the dock, translated at every load
};
