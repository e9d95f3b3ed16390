// The host's main window: menus, station tree dock, view, status bar.
#pragma once

#include "host_setup.h"

#include <QMainWindow>

class QAction;
class QMenu;
class StationTree;

// The host's main window: a File menu, the "menu-Utilities" menu and the
// "toolbar-CollisionMenu" menu that plug-ins extend, the station tree in a
// dock, a central area for the station's view, and a status bar.
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

    // Puts the station's view into the central area (the window owns it).
    void setView(QWidget* view);
    // Every action of the window's menus and toolbars, plug-ins' included, once each.
    QList<QAction*> allActions() const;

private:
    QAction* addFileAction(QMenu* file, const QString& text, const char* name, QKeySequence::StandardKey key);

    QMenu* utilities_ = nullptr;
    QMenu* collision_ = nullptr;
    StationTree* tree_ = nullptr;
    QAction* open_ = nullptr;
    QAction* save_ = nullptr;
    QAction* saveAs_ = nullptr;
    QAction* quit_ = nullptr;
};
