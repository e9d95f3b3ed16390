#include "host_window.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

HostWindow::HostWindow(const HostSetup& setup, QWidget* parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("vorlik-MainWindow"));
    setWindowTitle(QStringLiteral("Vorlik"));
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("menu-File"));
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
    statusBar()->showMessage(QStringLiteral("Ready"));
}
