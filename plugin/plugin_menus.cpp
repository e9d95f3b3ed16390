// Where the plug-in's actions appear in the host's window.
#include "plugin_menus.h"

#include "vorlik/item_types.h"

#include <QAction>
#include <QCoreApplication>
#include <QDebug>
#include <QIcon>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
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

void PluginMenus::create(const QString& title, QMainWindow* mainWindow, QMenuBar* menuBar)
{
    map_ = new QAction(QIcon(MapIcon), QCoreApplication::translate("PluginAutoPRM", "Create collision-free map"),
                       nullptr);
    linkSelection_ = new QAction(
        QIcon(LinkIcon), QCoreApplication::translate("PluginAutoPRM", "Link selected targets/programs"), nullptr);
    linkTargets_ =
        new QAction(QIcon(LinkIcon), QCoreApplication::translate("PluginAutoPRM", "Link selected targets"), nullptr);
    linkPrograms_ =
        new QAction(QIcon(LinkIcon), QCoreApplication::translate("PluginAutoPRM", "Link selected programs"), nullptr);

    menu_ = new QMenu(title);
    menu_->setIcon(QIcon(MapIcon));
    placeMenu(mainWindow, menuBar);

    qDebug().noquote().nospace() << "Setting up the menu bar";
    menu_->addAction(map_);
    menu_->addAction(linkSelection_);
}

void PluginMenus::placeMenu(QMainWindow* mainWindow, QMenuBar* menuBar)
{
    QMenu* utilities = mainWindow ? mainWindow->findChild<QMenu*>(QStringLiteral("menu-Utilities")) : nullptr;
    if (utilities) {
        const QList<QAction*> actions = utilities->actions();
        if (actions.size() <= UtilitiesMenuLimit) {
            qDebug().noquote().nospace() << "Inserting menu at the end of the utilities menu";
            utilities->addSeparator();
            utilities->addMenu(menu_);
        } else {
            qDebug().noquote().nospace() << "Inserting menu at location " << UtilitiesMenuLimit;
            utilities->insertMenu(actions.at(UtilitiesMenuLimit), menu_);
        }
        return;
    }
    qDebug().noquote().nospace() << "Adding menu in the main menu";
    if (menuBar)
        menuBar->addMenu(menu_);
}

void PluginMenus::addToolbar(QMainWindow* window, const QString& title, const QString& pluginName, int iconSize)
{
    toolbar_ = window->addToolBar(title);
    toolbar_->setIconSize(QSize(iconSize, iconSize));
    toolbar_->setObjectName(pluginName + "-Toolbar1");
    toolbar_->addAction(map_);
    toolbar_->addAction(linkSelection_);
    toolbar_->hide();

    if (QMenu* collisionMenu = window->findChild<QMenu*>(QStringLiteral("toolbar-CollisionMenu"))) {
        collisionMenu->addAction(map_);
        collisionMenu->addAction(linkSelection_);
    }
}

bool PluginMenus::addToContextMenu(HostItem* firstItem, QMenu* contextMenu)
{
    switch (firstItem->type()) {
    case ItemType::Target:
        contextMenu->addAction(linkTargets_);
        return true;
    case ItemType::Program:
        contextMenu->addAction(linkPrograms_);
        return true;
    default:
        return false;
    }
}

void PluginMenus::discardMenuAndToolbar()
{
    destroyLater(menu_);
    destroyLater(toolbar_);
}

void PluginMenus::discardActions()
{
    destroyLater(map_);
    destroyLater(linkSelection_);
    destroyLater(linkPrograms_);
    destroyLater(linkTargets_);
}
