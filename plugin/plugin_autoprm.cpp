#include "plugin_autoprm.h"

#include "host_access.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"
#include "translate.h"
#include "vorlik/item_types.h"

#include <QAction>
#include <QDebug>
#include <QDockWidget>
#include <QIcon>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

namespace {
const char* const MapIcon = ":/resources/collisionmap.svg";
const char* const LinkIcon = ":/resources/avoidcollision.png";

// Title of the menu and the toolbar, translated anew at every load.
QString pluginTitle;

// Index in "menu-Utilities" before which the menu goes when that menu is full.
constexpr int UtilitiesMenuLimit = 99;

void destroyLater(QObject* object)
{
    if (object)
        object->deleteLater();
}
}  // namespace

static void initResources()
{
    Q_INIT_RESOURCE(zelvane);
}

static void cleanupResources()
{
    Q_CLEANUP_RESOURCE(zelvane);
}

PluginAutoPRM::PluginAutoPRM(QObject* parent) : QObject(parent)
{
    registerHostMetaTypes();
}

PluginAutoPRM::~PluginAutoPRM()
{
    // A host that deletes the object without unloading it first leaves the map.
    releaseMap();
}

QString PluginAutoPRM::title()
{
    return pluginTitle;
}

QString PluginAutoPRM::pluginName()
{
    return QStringLiteral("Zelvane");
}

QString PluginAutoPRM::pluginLoad(QMainWindow* mainWindow_, QMenuBar* menuBar, QStatusBar* statusBar_,
                                  HostApi* hostApi_, const QString& settings)
{
    pluginTitle = planTr("Collision-free motion planner");

    restoreDefaultSettings();
    releaseMap();
    samples = createMatrix();
    graph = new RoadmapGraph;
    route = createMatrix();
    samplePositions = createMatrix();
    workGraph = new RoadmapGraph;
    workSamples = createMatrix();

    setRoadmapHost(hostApi_);
    hostApi = hostApi_;
    mainWindow = mainWindow_;
    statusBar = statusBar_;

    qDebug().noquote().nospace() << "Loading plugin " << pluginName();
    qDebug().noquote().nospace() << "Using settings: " << settings;
    qDebug().noquote().nospace() << "Setting up the status bar";
    if (statusBar)
        statusBar->showMessage(planTr("Vorlik Plugin %1 is being loaded").arg(pluginName()), 0);

    initResources();

    actionMap = new QAction(QIcon(MapIcon), planTr("Create collision-free map"), nullptr);
    actionLinkSelection = new QAction(QIcon(LinkIcon), planTr("Link selected targets/programs"), nullptr);
    actionLinkTargets = new QAction(QIcon(LinkIcon), planTr("Link selected targets"), nullptr);
    actionLinkPrograms = new QAction(QIcon(LinkIcon), planTr("Link selected programs"), nullptr);

    // Queued: a long operation starts only after the menu click is fully handled.
    connect(actionMap, &QAction::triggered, this, &PluginAutoPRM::callback_robotpilot, Qt::QueuedConnection);
    connect(actionLinkSelection, &QAction::triggered, this, &PluginAutoPRM::callback_join_seltargets,
            Qt::QueuedConnection);
    connect(actionLinkTargets, &QAction::triggered, this, &PluginAutoPRM::callback_join_seltargets,
            Qt::QueuedConnection);
    connect(actionLinkPrograms, &QAction::triggered, this, &PluginAutoPRM::callback_join_selprogs,
            Qt::QueuedConnection);

    menu = new QMenu(pluginTitle);
    menu->setIcon(QIcon(MapIcon));
    placeMenu(menuBar);

    qDebug().noquote().nospace() << "Setting up the menu bar";
    menu->addAction(actionMap);
    menu->addAction(actionLinkSelection);

    dockWidget = nullptr;
    form = nullptr;
    settingsChanged = false;
    return QString();
}

void PluginAutoPRM::placeMenu(QMenuBar* menuBar)
{
    QMenu* utilities = mainWindow ? mainWindow->findChild<QMenu*>(QStringLiteral("menu-Utilities")) : nullptr;
    if (utilities) {
        const QList<QAction*> actions = utilities->actions();
        if (actions.size() <= UtilitiesMenuLimit) {
            qDebug().noquote().nospace() << "Inserting menu at the end of the utilities menu";
            utilities->addSeparator();
            utilities->addMenu(menu);
        } else {
            qDebug().noquote().nospace() << "Inserting menu at location " << UtilitiesMenuLimit;
            utilities->insertMenu(actions.at(UtilitiesMenuLimit), menu);
        }
        return;
    }
    qDebug().noquote().nospace() << "Adding menu in the main menu";
    if (menuBar)
        menuBar->addMenu(menu);
}

void PluginAutoPRM::pluginLoadToolbar(QMainWindow* window, int iconSize)
{
    toolbar = window->addToolBar(pluginTitle);
    toolbar->setIconSize(QSize(iconSize, iconSize));
    toolbar->setObjectName(pluginName() + "-Toolbar1");
    toolbar->addAction(actionMap);
    toolbar->addAction(actionLinkSelection);
    toolbar->hide();

    if (QMenu* collisionMenu = window->findChild<QMenu*>(QStringLiteral("toolbar-CollisionMenu"))) {
        collisionMenu->addAction(actionMap);
        collisionMenu->addAction(actionLinkSelection);
    }
}

void PluginAutoPRM::pluginUnload()
{
    qDebug().noquote().nospace() << "Unloading plugin " << pluginName();
    destroyLater(menu);
    menu = nullptr;
    destroyLater(toolbar);
    toolbar = nullptr;
    if (dockWidget) {
        dockWidget->close();
        dockWidget = nullptr;
        form = nullptr;
    }
    destroyLater(actionMap);
    actionMap = nullptr;
    destroyLater(actionLinkSelection);
    actionLinkSelection = nullptr;
    destroyLater(actionLinkPrograms);
    actionLinkPrograms = nullptr;
    destroyLater(actionLinkTargets);
    actionLinkTargets = nullptr;
    releaseMap();
    cleanupResources();
}

void PluginAutoPRM::pluginEvent(int eventCode)
{
    switch (eventCode) {
    case HostEvent::Redrawn:
        RenderMap();
        break;
    case HostEvent::StationChanged:
        if (!robot && !form && !settingsChanged)
            break;
        if (hostApi->isValidItem(robot))
            emit UpdateForm();
        else
            selectRobot(true, QString());
        break;
    case HostEvent::StationOpened:
        clearMapAndSettings();
        loadSettings();
        break;
    case HostEvent::StationSaving:
    case HostEvent::StationClosing:
        saveSettings();
        break;
    default:
        break;
    }
}

bool PluginAutoPRM::pluginItemContextMenu(const QList<Item>& items, QMenu* contextMenu)
{
    if (items.isEmpty() || !items.first())
        return false;
    switch (items.first()->type()) {
    case ItemType::Target:
        contextMenu->addAction(actionLinkTargets);
        return true;
    case ItemType::Program:
        contextMenu->addAction(actionLinkPrograms);
        return true;
    default:
        return false;
    }
}

void PluginAutoPRM::restoreDefaultSettings()
{
    nSamples = 100;
    nEdgesPerSample = 25;
    robotStepDeg = 4.0;
    nNewNodeEdges = 5;
    displaySamples = false;
    robot = nullptr;
}

// Back to the defaults with an empty map and no robot; only when there is a map.
void PluginAutoPRM::clearMapAndSettings()
{
    if (columns(samples) < 1)
        return;
    restoreDefaultSettings();
    setSize(samples, 0, 0);
    graph->clear();
    setSize(route, 0, 0);
    emit UpdateForm();
}

void PluginAutoPRM::releaseMap()
{
    destroyMatrix(&samples);
    delete graph;
    graph = nullptr;
    destroyMatrix(&route);
    destroyMatrix(&samplePositions);
    delete workGraph;
    workGraph = nullptr;
    destroyMatrix(&workSamples);
}

void PluginAutoPRM::callback_join_seltargets()
{
    Join_Selection_Smart(false);
}

void PluginAutoPRM::callback_join_selprogs()
{
    Join_Selection_Smart(false);
}
