// The host's main window: menus, station tree dock, view, status bar.
#pragma once

#include "host_setup.h"

#include <QMainWindow>

class QAction;
class QMenu;
class StationTree;

// The host's main window: File, View and Simulation menus, the
// "menu-Utilities" menu and the "toolbar-CollisionMenu" menu that plug-ins
// extend, a Simulation toolbar, the station tree in a dock, a central area
// for the station's view, and a status bar.
class HostWindow final : public QMainWindow {
    Q_OBJECT
public:
    explicit HostWindow(const HostSetup& setup, QWidget* parent = nullptr);

    QMenu* utilitiesMenu() const { return utilities_; }
    QMenu* collisionMenu() const { return collision_; }
    StationTree* stationTree() const { return tree_; }
    QAction* openAction() const { return open_; }
    QAction* saveAction() const { return save_; }
    QAction* saveAsAction() const { return saveAs_; }
    QAction* quitAction() const { return quit_; }
    // View: fit the station into the view, back to the first view.
    QAction* fitAction() const { return fit_; }
    QAction* resetViewAction() const { return resetView_; }
    // Simulation: play the selected program, pause it, stop what is shown.
    QAction* playAction() const { return play_; }
    QAction* pauseAction() const { return pause_; }
    QAction* stopAction() const { return stop_; }

    // Puts the station's view into the central area (the window owns it).
    void setView(QWidget* view);
    // Every action of the window's menus and toolbars, plug-ins' included, once each.
    QList<QAction*> allActions() const;

private:
    QAction* addAction(QMenu* menu, const QString& text, const char* name, const QKeySequence& key);
    // The View menu's docks and toolbars, plug-ins' included, as they are when it opens.
    void listPanels(QMenu* view);

    QMenu* utilities_ = nullptr;
    QMenu* collision_ = nullptr;
    StationTree* tree_ = nullptr;
    QAction* open_ = nullptr;
    QAction* save_ = nullptr;
    QAction* saveAs_ = nullptr;
    QAction* quit_ = nullptr;
    QAction* fit_ = nullptr;
    QAction* resetView_ = nullptr;
    QAction* play_ = nullptr;
    QAction* pause_ = nullptr;
    QAction* stop_ = nullptr;
    QList<QAction*> panelActions_;  // the View menu's part that lists docks and toolbars
};
