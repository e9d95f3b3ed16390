// The host's main window: menus, station tree dock, view, status bar.
#include "host_window.h"

#include "station_tree.h"

#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>

namespace {

void collectActions(const QList<QAction*>& from, QList<QAction*>* into)
{
    for (QAction* action : from) {
        if (action->isSeparator() || into->contains(action))
            continue;
        into->append(action);
        if (QMenu* sub = action->menu())
            collectActions(sub->actions(), into);
    }
}

}  // namespace

HostWindow::HostWindow(const HostSetup& setup, QWidget* parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("vorlik-MainWindow"));
    setWindowTitle(QStringLiteral("Vorlik"));
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("menu-File"));
    open_ = addAction(file, QStringLiteral("&Open..."), "action-Open", QKeySequence::Open);
    save_ = addAction(file, QStringLiteral("&Save"), "action-Save", QKeySequence::Save);
    saveAs_ = addAction(file, QStringLiteral("Save &As..."), "action-SaveAs", QKeySequence::SaveAs);
    file->addSeparator();
    quit_ = addAction(file, QStringLiteral("&Quit"), "action-Quit", QKeySequence::Quit);

    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    view->setObjectName(QStringLiteral("menu-View"));
    fit_ = addAction(view, QStringLiteral("&Fit Station"), "action-Fit", QKeySequence(Qt::Key_F));
    resetView_ = addAction(view, QStringLiteral("&Reset View"), "action-ResetView", QKeySequence(Qt::Key_Home));
    view->addSeparator();
    connect(view, &QMenu::aboutToShow, this, [this, view] { listPanels(view); });

    QMenu* simulation = menuBar()->addMenu(QStringLiteral("&Simulation"));
    simulation->setObjectName(QStringLiteral("menu-Simulation"));
    play_ = addAction(simulation, QStringLiteral("&Play Program"), "action-Play", QKeySequence(Qt::Key_F5));
    pause_ = addAction(simulation, QStringLiteral("P&ause"), "action-Pause", QKeySequence(Qt::Key_F6));
    pause_->setCheckable(true);
    stop_ = addAction(simulation, QStringLiteral("S&top"), "action-Stop", QKeySequence(Qt::Key_Escape));
    play_->setIcon(style()->standardIcon(QStyle::SP_MediaPlay));
    pause_->setIcon(style()->standardIcon(QStyle::SP_MediaPause));
    stop_->setIcon(style()->standardIcon(QStyle::SP_MediaStop));
    QToolBar* toolbar = addToolBar(QStringLiteral("Simulation"));
    toolbar->setObjectName(QStringLiteral("toolbar-Simulation"));
    toolbar->addAction(play_);
    toolbar->addAction(pause_);
    toolbar->addAction(stop_);

    // Menus are children of the window itself, where plug-ins look them up.
    if (setup.utilitiesActions >= 0) {
        utilities_ = new QMenu(QStringLiteral("&Utilities"), this);
        utilities_->setObjectName(QStringLiteral("menu-Utilities"));
        for (int i = 1; i <= setup.utilitiesActions; ++i)
            utilities_->addAction(QStringLiteral("Utility %1").arg(i));
        menuBar()->addMenu(utilities_);
    }
    if (setup.collisionMenu) {
        collision_ = new QMenu(QStringLiteral("&Collisions"), this);
        collision_->setObjectName(QStringLiteral("toolbar-CollisionMenu"));
        menuBar()->addMenu(collision_);
    }

    auto* stationDock = new QDockWidget(QStringLiteral("Station"), this);
    stationDock->setObjectName(QStringLiteral("dock-Station"));
    stationDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable
                             | QDockWidget::DockWidgetClosable);
    tree_ = new StationTree(stationDock);
    stationDock->setWidget(tree_);
    addDockWidget(Qt::LeftDockWidgetArea, stationDock);

    auto* placeholder = new QLabel(QStringLiteral("3D view"), this);
    placeholder->setObjectName(QStringLiteral("view-Placeholder"));
    placeholder->setAlignment(Qt::AlignCenter);
    placeholder->setMinimumSize(320, 240);
    setCentralWidget(placeholder);

    statusBar()->showMessage(QStringLiteral("Ready"));
}

QAction* HostWindow::addAction(QMenu* menu, const QString& text, const char* name, const QKeySequence& key)
{
    QAction* action = menu->addAction(text);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    return action;
}

void HostWindow::listPanels(QMenu* view)
{
    for (QAction* action : panelActions_)
        view->removeAction(action);
    panelActions_.clear();
    for (QDockWidget* dock : findChildren<QDockWidget*>()) {
        if (dock->parentWidget() == this)
            panelActions_ << dock->toggleViewAction();
    }
    for (QToolBar* toolbar : findChildren<QToolBar*>()) {
        if (toolbar->parentWidget() == this)
            panelActions_ << toolbar->toggleViewAction();
    }
    view->addActions(panelActions_);
}

void HostWindow::setView(QWidget* view)
{
    setCentralWidget(view);
}

QList<QAction*> HostWindow::allActions() const
{
    QList<QAction*> actions;
    collectActions(menuBar()->actions(), &actions);
    for (QMenu* menu : findChildren<QMenu*>())
        collectActions(menu->actions(), &actions);
    for (QToolBar* toolbar : findChildren<QToolBar*>())
        collectActions(toolbar->actions(), &actions);
    return actions;
}
