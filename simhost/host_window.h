#pragma once

#include "scenario.h"

#include <QMainWindow>

class QMenu;

// The host's main window: a menu bar with the "menu-Utilities" menu and the
// "toolbar-CollisionMenu" menu that plug-ins extend, and a status bar.
class HostWindow final : public QMainWindow {
    Q_OBJECT
public:
    explicit HostWindow(const HostSetup& setup, QWidget* parent = nullptr);

    QMenu* utilitiesMenu() const { return utilities_; }
    QMenu* collisionMenu() const { return collision_; }

private:
    QMenu* utilities_ = nullptr;
    QMenu* collision_ = nullptr;
};
