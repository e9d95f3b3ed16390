// The plug-in object's life in the host: load, toolbar, events, context menu, unload.
#include "plugin_autoprm.h"

#include "entry_guard.h"
#include "planner_resources.h"
#include "planner_session.h"
#include "translate.h"
#include "vorlik/item_types.h"

#include <QAction>
#include <QCoreApplication>
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

// Index in "menu-Utilities" before which the menu goes when that menu is full.
constexpr int UtilitiesMenuLimit = 99;

template <typename Object> void destroyLater(Object*& object)
{
    if (object)
        object->deleteLater();
    object = nullptr;
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
        samplePositions_ = makeScopedMatrix();

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

        actionMap = new QAction(QIcon(MapIcon),
                                QCoreApplication::translate("PluginAutoPRM", "Create collision-free map"), nullptr);
        actionLinkSelection = new QAction(
            QIcon(LinkIcon), QCoreApplication::translate("PluginAutoPRM", "Link selected targets/programs"), nullptr);
        actionLinkTargets = new QAction(QIcon(LinkIcon),
                                        QCoreApplication::translate("PluginAutoPRM", "Link selected targets"), nullptr);
        actionLinkPrograms = new QAction(
            QIcon(LinkIcon), QCoreApplication::translate("PluginAutoPRM", "Link selected programs"), nullptr);

        // Queued: a long operation starts only after the menu click is fully handled.
        connect(actionMap, &QAction::triggered, this, &PluginAutoPRM::callback_robotpilot, Qt::QueuedConnection);
        connect(actionLinkSelection, &QAction::triggered, this, &PluginAutoPRM::callback_join_seltargets,
                Qt::QueuedConnection);
        connect(actionLinkTargets, &QAction::triggered, this, &PluginAutoPRM::callback_join_seltargets,
                Qt::QueuedConnection);
        connect(actionLinkPrograms, &QAction::triggered, this, &PluginAutoPRM::callback_join_selprogs,
                Qt::QueuedConnection);

        menu = new QMenu(title_);
        menu->setIcon(QIcon(MapIcon));
        placeMenu(menuBar);

        qDebug().noquote().nospace() << "Setting up the menu bar";
        menu->addAction(actionMap);
        menu->addAction(actionLinkSelection);

        dockWidget = nullptr;
        form = nullptr;
        return QString();
    });
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
    if (!session_ || !window)
        return;
    guardedEntry(*resources_, hostApi, [&] {
        toolbar = window->addToolBar(title_);
        toolbar->setIconSize(QSize(iconSize, iconSize));
        toolbar->setObjectName(pluginName() + "-Toolbar1");
        toolbar->addAction(actionMap);
        toolbar->addAction(actionLinkSelection);
        toolbar->hide();

        if (QMenu* collisionMenu = window->findChild<QMenu*>(QStringLiteral("toolbar-CollisionMenu"))) {
            collisionMenu->addAction(actionMap);
            collisionMenu->addAction(actionLinkSelection);
        }
    });
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
        cleanupResources();
    });
}

bool PluginAutoPRM::tearDownInterface()
{
    destroyLater(menu);
    destroyLater(toolbar);
    dockWidget = nullptr;
    form = nullptr;
    const bool formClosed = formDocks_.closeAll(this);
    destroyLater(actionMap);
    destroyLater(actionLinkSelection);
    destroyLater(actionLinkPrograms);
    destroyLater(actionLinkTargets);
    samplePositions_.reset();
    if (session_) {
        // An operation still running stops at its next step, keeps nothing and
        // lets the session go when it has unwound.
        session_->abandonOperation(Abandonment::Unloaded);
        session_.reset();
    }
    return formClosed;
}

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
    case HostEvent::StationClosing:
        saveSettings();
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
    std::weak_ptr<PlannerSession> weak = session_;
    session.whenIdle([this, weak] {
        if (!session_ || session_ != weak.lock())
            return;
        clearMapAndSettings();
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
    return guardedEntry(*resources_, hostApi, false, [&] {
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
    });
}

// Back to the defaults with an empty map and no robot; only when there is a map.
void PluginAutoPRM::clearMapAndSettings()
{
    PlannerSession& session = *session_;
    if (!session.map().hasSamples())
        return;
    session.restoreSettings(PlannerSettings());
    session.setRobot(nullptr);
    session.forgetMap();
    emit UpdateForm();
}
