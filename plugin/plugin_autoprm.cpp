// The plug-in object: the host's interface, the slots, and delegation to the
// classes of each concern.
#include "plugin_autoprm.h"

#include "command_language.h"
#include "dock.h"
#include "entry_guard.h"
#include "form_prm.h"
#include "guarded_operations.h"
#include "map_drawing.h"
#include "map_store.h"
#include "planner_resources.h"
#include "planner_session.h"
#include "robot_choice.h"
#include "vorlik/item_types.h"

#include <QAction>
#include <QCoreApplication>
#include <QDebug>
#include <QDockWidget>
#include <QMainWindow>
#include <QStatusBar>

static void initResources()
{
    Q_INIT_RESOURCE(zelvane);
}

static void cleanupResources()
{
    Q_CLEANUP_RESOURCE(zelvane);
}

PluginAutoPRM::PluginAutoPRM(QObject* parent)
    : QObject(parent), resources_(std::make_shared<PlannerResources>())
{
    registerHostMetaTypes();
}

PluginAutoPRM::~PluginAutoPRM()
{
    formDocks_.deleteAll(this);
}

QString PluginAutoPRM::pluginName()
{
    return QStringLiteral("Zelvane");
}

// ---------------------------------------------------------------- load and unload

QString PluginAutoPRM::pluginLoad(QMainWindow* mainWindow_, QMenuBar* menuBar, QStatusBar* statusBar_,
                                  HostApi* hostApi_, const QString& settings)
{
    return guardedEntry(*resources_, hostApi_, QString(), [&] {
        title_ = QCoreApplication::translate("PluginAutoPRM", "Collision-free motion planner");

        // A load without an unload first (or during one still unwinding) starts over.
        tearDownInterface();
        session_ = std::make_shared<PlannerSession>(hostApi_, mainWindow_, SessionCallbacks(), resources_);
        // A session the plug-in let go of (an unload) reaches it no more.
        const PlannerSession* own = session_.get();
        SessionCallbacks callbacks;
        callbacks.changed = [this, own] {
            if (session_.get() == own)
                emit UpdateForm();
        };
        callbacks.selectRobot = [this, own](bool autoSelect, const QString& name) {
            return session_.get() == own && selectRobot(autoSelect, name);
        };
        session_->setCallbacks(std::move(callbacks));
        drawing_ = std::make_unique<MapDrawing>();

        hostApi = hostApi_;
        mainWindow = mainWindow_;
        statusBar = statusBar_;

        qDebug().noquote().nospace() << "Loading plugin " << pluginName();
        qDebug().noquote().nospace() << "Using settings: " << settings;
        qDebug().noquote().nospace() << "Setting up the status bar";
        if (statusBar)
            statusBar->showMessage(
                QCoreApplication::translate("PluginAutoPRM", "Vorlik Plugin %1 is being loaded").arg(pluginName()), 0);

        initResources();
        menus_.create(title_, mainWindow, menuBar);
        // Queued: a long operation starts only after the menu click is fully handled.
        connect(menus_.mapAction(), &QAction::triggered, this, &PluginAutoPRM::callback_robotpilot,
                Qt::QueuedConnection);
        connect(menus_.linkSelectionAction(), &QAction::triggered, this, &PluginAutoPRM::callback_join_seltargets,
                Qt::QueuedConnection);
        connect(menus_.linkTargetsAction(), &QAction::triggered, this, &PluginAutoPRM::callback_join_seltargets,
                Qt::QueuedConnection);
        connect(menus_.linkProgramsAction(), &QAction::triggered, this, &PluginAutoPRM::callback_join_selprogs,
                Qt::QueuedConnection);

        dockWidget = nullptr;
        form = nullptr;
        return QString();
    });
}

void PluginAutoPRM::pluginLoadToolbar(QMainWindow* window, int iconSize)
{
    if (!session_ || !window)
        return;
    guardedEntry(*resources_, hostApi, [&] { menus_.addToolbar(window, title_, pluginName(), iconSize); });
}

void PluginAutoPRM::pluginUnload()
{
    if (!session_)
        return;
    guardedEntry(*resources_, hostApi, [&] {
        qDebug().noquote().nospace() << "Unloading plugin " << pluginName();
        HostApi* host = hostApi;
        // The form hears of its dock's closing no more: it is said here, while the host listens.
        if (tearDownInterface() && host)
            host->showMessage(QStringLiteral("Closed robot pilot"), false);
        writtenMap_.forget();  // a gigabyte, maybe: not kept while nothing is loaded
        cleanupResources();
    });
}

bool PluginAutoPRM::tearDownInterface()
{
    menus_.discardMenuAndToolbar();
    dockWidget = nullptr;
    form = nullptr;
    const bool formClosed = formDocks_.closeAll(this);
    menus_.discardActions();
    drawing_.reset();
    if (session_) {
        // An operation still running stops at its next step, keeps nothing and
        // lets the session go when it has unwound.
        session_->abandonOperation(Abandonment::Unloaded);
        session_.reset();
    }
    return formClosed;
}

// ---------------------------------------------------------------- host events

void PluginAutoPRM::pluginEvent(int eventCode)
{
    if (!session_)
        return;
    guardedEntry(*resources_, hostApi, [&] { handleEvent(eventCode); });
}

void PluginAutoPRM::handleEvent(int eventCode)
{
    switch (eventCode) {
    case HostEvent::Redrawn:
        RenderMap();
        break;
    case HostEvent::StationChanged:
        stationChanged();
        break;
    case HostEvent::StationOpened:
        stationOpened();
        break;
    case HostEvent::StationSaving:
        saveSettings();
        break;
    case HostEvent::StationClosing:
        saveSettings();
        writtenMap_.forget();  // the host lets its copy go with the station
        break;
    default:
        break;
    }
}

void PluginAutoPRM::stationChanged()
{
    PlannerSession& session = *session_;
    if (!session.robot() && !form && !session.settingsChanged())
        return;
    if (hostApi->isValidItem(session.robot())) {
        emit UpdateForm();
        return;
    }
    session.robotGone();
}

void PluginAutoPRM::stationOpened()
{
    PlannerSession& session = *session_;
    // The handles of the previous station are dead: nothing is saved under
    // them, and an operation on them stops.
    session.abandonOperation(Abandonment::StationReplaced);
    session.setRobot(nullptr);
    writtenMap_.forget();
    std::weak_ptr<PlannerSession> weak = session_;
    session.whenIdle([this, weak] {
        if (!session_ || session_ != weak.lock())
            return;
        session_->resetToDefaults();
        session_->forgetMap();  // an empty map too: whose it was belongs to the old station
        loadSettings();
        // An open form chooses a robot for the new station as it does when it
        // opens; the stored settings may have named one already.
        if (form && !session_->robot())
            selectRobot(true, QString());
    });
}

bool PluginAutoPRM::pluginItemContextMenu(const QList<Item>& items, QMenu* contextMenu)
{
    if (!session_ || !contextMenu || items.isEmpty() || !items.first())
        return false;
    return guardedEntry(*resources_, hostApi, false, [&] { return menus_.addToContextMenu(items.first(), contextMenu); });
}

QString PluginAutoPRM::pluginCommand(const QString& command, const QString& value)
{
    if (!session_)
        return QString();
    // The session stays for the whole command, whatever an operation's event loop lets happen.
    const std::shared_ptr<PlannerSession> session = session_;
    return guardedEntry(*resources_, hostApi, QString(),
                        [&] { return CommandLanguage(*session).run(command, value); });
}

// ---------------------------------------------------------------- persistence and robot choice

bool PluginAutoPRM::loadSettings()
{
    return session_ && MapStore(*session_, hostApi, pluginName(), writtenMap_).loadSettings();
}

void PluginAutoPRM::saveSettings()
{
    if (session_)
        MapStore(*session_, hostApi, pluginName(), writtenMap_).saveSettings();
}

void PluginAutoPRM::loadRobotMap()
{
    if (session_)
        MapStore(*session_, hostApi, pluginName(), writtenMap_).loadRobotMap();
}

bool PluginAutoPRM::selectRobot(bool autoSelect, const QString& name)
{
    if (!session_)
        return false;
    // The session stays while the user picks a robot, whatever happens meanwhile.
    const std::shared_ptr<PlannerSession> session = session_;
    return RobotChoice(*session, [this] { saveSettings(); }, [this] { loadRobotMap(); }).select(autoSelect, name);
}

QString PluginAutoPRM::robotName()
{
    return session_ ? session_->robotName() : QString();
}

bool PluginAutoPRM::requireRobot(bool silent)
{
    return session_ && session_->requireRobot(silent);
}

// ---------------------------------------------------------------- operations and slots

void PluginAutoPRM::CalculateMap()
{
    if (session_)
        GuardedOperations(*session_).calculateMap();
}

bool PluginAutoPRM::AddTargetsToMap(bool silent, bool robotPositionOnly)
{
    return session_ && GuardedOperations(*session_).addTargetsToMap(silent, robotPositionOnly);
}

void PluginAutoPRM::Join_Selection_Smart(bool silent)
{
    if (session_)
        GuardedOperations(*session_).joinSelection(silent);
}

Item PluginAutoPRM::Join_Selected_Targets(bool silent, Item target1, Item target2)
{
    return session_ ? GuardedOperations(*session_).joinTargets(silent, target1, target2) : nullptr;
}

bool PluginAutoPRM::Join_Programs(bool silent, QList<Item> programs, QString progname_in)
{
    return session_ && GuardedOperations(*session_).joinPrograms(silent, programs, progname_in);
}

Item PluginAutoPRM::Join_Joints(bool silent, const double* jnts1, const double* jnts2, QString progname)
{
    if (!session_ || !jnts1 || !jnts2)
        return nullptr;
    return GuardedOperations(*session_).joinJoints(silent, jnts1, jnts2, progname);
}

void PluginAutoPRM::ShowSamples()
{
    if (session_)
        GuardedOperations(*session_).showSamples();
}

void PluginAutoPRM::RenderMap()
{
    if (!session_ || !drawing_)
        return;
    guardedEntry(*resources_, hostApi, [this] { drawing_->draw(*session_); });
}

const RoadmapMatrix* PluginAutoPRM::samplePositions() const
{
    return drawing_ ? drawing_->samplePositions() : nullptr;
}

void PluginAutoPRM::callback_join_seltargets()
{
    Join_Selection_Smart(false);
}

void PluginAutoPRM::callback_join_selprogs()
{
    Join_Selection_Smart(false);
}

// ---------------------------------------------------------------- the form

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
