// The host's main window: menus, station tree dock, view, status bar.
#include "host_window.h"

#include "station_tree.h"

#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
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
    open_ = addFileAction(file, QStringLiteral("&Open..."), "action-Open", QKeySequence::Open);
    save_ = addFileAction(file, QStringLiteral("&Save"), "action-Save", QKeySequence::Save);
    saveAs_ = addFileAction(file, QStringLiteral("Save &As..."), "action-SaveAs", QKeySequence::SaveAs);
    file->addSeparator();
    quit_ = addFileAction(file, QStringLiteral("&Quit"), "action-Quit", QKeySequence::Quit);
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
    stationDock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
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

QAction* HostWindow::addFileAction(QMenu* file, const QString& text, const char* name, QKeySequence::StandardKey key)
{
    QAction* action = file->addAction(text);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    return action;
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
