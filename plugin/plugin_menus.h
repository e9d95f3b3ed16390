// The plug-in's menu, toolbar and actions in the host's window.
#pragma once

#include <QList>
#include <QString>

#include "vorlik/host_item.h"

class QAction;
class QMainWindow;
class QMenu;
class QMenuBar;
class QToolBar;

// The plug-in's actions ("Create collision-free map" and the links) and the
// menu and toolbar that show them, made at every load and let go of at every
// unload. The plug-in object connects the actions to its slots.
class PluginMenus {
public:
    // Makes the four actions and the menu, and puts the menu at the end of the
    // window's "menu-Utilities" menu (before its 100th entry when it is full),
    // or at the end of the menu bar without one.
    void create(const QString& title, QMainWindow* mainWindow, QMenuBar* menuBar);
    // Adds the hidden toolbar "<name>-Toolbar1" and the actions to the
    // window's "toolbar-CollisionMenu" menu, if it has one.
    void addToolbar(QMainWindow* window, const QString& title, const QString& pluginName, int iconSize);
    // Offers the link of targets or of programs when the first item is one; true then.
    bool addToContextMenu(HostItem* firstItem, QMenu* contextMenu);

    // The menu and the toolbar go (once the event loop deletes them).
    void discardMenuAndToolbar();
    // The actions go (once the event loop deletes them).
    void discardActions();

    QAction* mapAction() const { return map_; }
    QAction* linkSelectionAction() const { return linkSelection_; }
    QAction* linkTargetsAction() const { return linkTargets_; }
    QAction* linkProgramsAction() const { return linkPrograms_; }

private:
    void placeMenu(QMainWindow* mainWindow, QMenuBar* menuBar);

    QMenu* menu_ = nullptr;
    QToolBar* toolbar_ = nullptr;
    QAction* map_ = nullptr;            // opens the form
    QAction* linkSelection_ = nullptr;  // links the selected targets or programs
    QAction* linkTargets_ = nullptr;    // the same, offered on a target
    QAction* linkPrograms_ = nullptr;   // the same, offered on a program
};
