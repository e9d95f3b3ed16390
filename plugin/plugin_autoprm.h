#pragma once

#include "planner_session.h"
#include "vorlik/iappvorlik.h"

#include <QList>
#include <QObject>
#include <QString>

class QAction;
class QDataStream;
class QDockWidget;
class QMenu;
class QToolBar;
class FormPRM;

// The collision-free motion planner as the Vorlik host sees it: one object that
// owns the menu, toolbar, dock, settings, chosen robot and roadmap.
class PluginAutoPRM : public QObject, public IAppVorlik, public PlannerSession {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Vorlik.IAppVorlik")
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
    void saveRobotMap();

    // Robot choice.
    bool selectRobot(bool autoSelect, const QString& name) override;
    QString robotName() override;
    bool requireRobot(bool silent) override;

    // Operations the user starts.
    void CalculateMap();
    bool AddTargetsToMap(bool silent, bool robotPositionOnly);

    // Title of the plug-in's menu, toolbar and dock.
    static QString title();

    void emitUpdateForm() override { emit UpdateForm(); }
    QObject* sessionObject() override { return this; }

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
    QString joinCommand(const QString& command, const QString& value);
    QString saveCommand(const QString& command, const QString& path);
    void restoreDefaultSettings();
    void clearMapAndSettings();
    // Frees the map's matrices and graphs (load creates them anew).
    void releaseMap();
    void placeMenu(QMenuBar* menuBar);

    QToolBar* toolbar = nullptr;
    QMenu* menu = nullptr;
    QAction* actionMap = nullptr;
    QAction* actionLinkTargets = nullptr;
    QAction* actionLinkPrograms = nullptr;
    QAction* actionLinkSelection = nullptr;
    QDockWidget* dockWidget = nullptr;
    FormPRM* form = nullptr;
};
