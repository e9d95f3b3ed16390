#pragma once

#include "fake_host.h"
#include "operation_scope.h"
#include "planner_session.h"
#include "plugin_autoprm.h"

#include <QAction>
#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

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

    FakeItem* addTarget(const QString& name, HostItem* robot, std::vector<double> joints)
    {
        FakeItem* target = host.addItem(ItemType::Target, name, robot);
        target->setJoints(JointVector(joints.data(), int(joints.size())));
        return target;
    }

    // Links two targets of the robot by a text command and checks that it wrote
    // the program: the planner works end to end. The station is left as it was,
    // as its targets would seed the next map.
    void expectJoinWorks(HostItem* robot, int joints, const QString& programName)
    {
        const size_t itemsBefore = host.itemCount();
        std::vector<double> start(size_t(joints), -30.0);
        std::vector<double> end(size_t(joints), 40.0);
        addTarget(programName + " start", robot, start);
        addTarget(programName + " end", robot, end);
        EXPECT_EQ(plugin->pluginCommand("Join=" + programName, programName + " start|" + programName + " end"),
                  "Success");
        EXPECT_NE(host.getItem(programName, ItemType::Program), nullptr) << "the program is written";
        host.keepFirstItems(itemsBefore);
    }

    // The loaded plug-in's session, and its parts as tests read and set them.
    PlannerSession& session() { return *plugin->session(); }
    const RobotMap& map() { return session().map(); }
    const PlannerSettings& settings() { return session().settings(); }
    // Settings as a station holds them: not marked changed.
    void setSettings(const std::function<void(PlannerSettings&)>& change)
    {
        PlannerSettings changed = settings();
        change(changed);
        session().restoreSettings(changed);
    }
    // Lays out the map by hand, as an operation would change it.
    void editMap(const std::function<void(RobotMap&)>& edit)
    {
        OperationScope scope(session(), true);
        edit(scope.map());
    }
    // Lays out the map's matrices by hand: its samples, graph and route as
    // they are, changed by `edit`, then given back to the map (which takes
    // only what a stored map may hold).
    void editLayout(const std::function<void(RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route)>& edit)
    {
        editMap([&](RobotMap& m) {
            ScopedMatrix samples = makeScopedMatrix();
            copyMatrix(m.samples(), samples.get());
            RoadmapGraph graph = *m.graph();
            edit(samples.get(), &graph, m.route());
            m.roadmap().assign(std::move(samples), std::move(graph));
        });
    }
    // Chooses the robot, with the map in hand as its map.
    void setRobot(HostItem* robot)
    {
        session().setRobot(robot);
        editMap([robot](RobotMap& map) { map.setRobot(robot); });
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
