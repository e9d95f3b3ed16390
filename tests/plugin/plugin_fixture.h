#pragma once

#include "fake_host.h"
#include "plugin_autoprm.h"

#include <QAction>
#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include <gtest/gtest.h>

#include <memory>

// A plug-in loaded into a fake host with a main window that has a
// "menu-Utilities" menu (with `utilitiesActions` entries, or none at all when
// negative) and a "toolbar-CollisionMenu" menu.
class LoadedPlugin : public ::testing::Test {
protected:
    void load(int utilitiesActions = 0, bool collisionMenu = true)
    {
        window = std::make_unique<QMainWindow>();
        if (utilitiesActions >= 0) {
            utilities = window->menuBar()->addMenu("Utilities");
            utilities->setObjectName("menu-Utilities");
            for (int i = 0; i < utilitiesActions; ++i)
                utilities->addAction(QString("Tool %1").arg(i));
        }
        if (collisionMenu) {
            collision = window->menuBar()->addMenu("Collisions");
            collision->setObjectName("toolbar-CollisionMenu");
        }
        plugin = std::make_unique<PluginAutoPRM>();
        plugin->pluginLoad(window.get(), window->menuBar(), window->statusBar(), &host, "test settings");
        plugin->pluginLoadToolbar(window.get(), 24);
    }

    void TearDown() override
    {
        if (plugin)
            plugin->pluginUnload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        plugin.reset();
        window.reset();
    }

    FakeRobot* addRobot(const QString& name, int joints = 3)
    {
        return host.addRobot(name, std::vector<double>(size_t(joints), -180.0), std::vector<double>(size_t(joints), 180.0));
    }

    bool hasMessage(const QString& text, bool popup) const
    {
        return host.messages.contains(qMakePair(text, popup));
    }

    FakeHost host;
    std::unique_ptr<QMainWindow> window;
    QMenu* utilities = nullptr;
    QMenu* collision = nullptr;
    std::unique_ptr<PluginAutoPRM> plugin;
};
