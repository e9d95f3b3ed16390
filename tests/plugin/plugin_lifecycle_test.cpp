// Loading, menus, toolbar, context menus and host events of the plug-in object.
#include "plugin_fixture.h"

#include "log_capture.h"
#include "roadmap_matrix.h"

#include <QDockWidget>
#include <QToolBar>

namespace {

QString menuTitle()
{
    return "Collision-free motion planner";
}

QStringList texts(const QList<QAction*>& actions)
{
    QStringList result;
    for (QAction* action : actions)
        result << action->text();
    return result;
}

TEST_F(LoadedPlugin, UtilitiesMenuWith99ActionsGetsSeparatorAndMenuAtItsEnd)
{
    LogCapture log;
    load(99);
    const QList<QAction*> actions = utilities->actions();
    ASSERT_EQ(actions.size(), 101);
    EXPECT_TRUE(actions.at(99)->isSeparator());
    EXPECT_EQ(actions.at(100)->menu()->title(), menuTitle());
    EXPECT_TRUE(log.messages().contains("Inserting menu at the end of the utilities menu"));
}

TEST_F(LoadedPlugin, UtilitiesMenuWith100ActionsGetsMenuBeforeTheHundredth)
{
    LogCapture log;
    load(100);
    const QList<QAction*> actions = utilities->actions();
    ASSERT_EQ(actions.size(), 101);
    ASSERT_NE(actions.at(99)->menu(), nullptr);
    EXPECT_EQ(actions.at(99)->menu()->title(), menuTitle());
    EXPECT_EQ(actions.at(100)->text(), "Tool 99");
    for (QAction* action : actions)
        EXPECT_FALSE(action->isSeparator());
    EXPECT_TRUE(log.messages().contains("Inserting menu at location 99"));
}

TEST_F(LoadedPlugin, WithoutUtilitiesMenuTheMenuGoesToTheEndOfTheMenuBar)
{
    LogCapture log;
    load(-1);
    const QList<QAction*> bar = window->menuBar()->actions();
    ASSERT_FALSE(bar.isEmpty());
    ASSERT_NE(bar.last()->menu(), nullptr);
    EXPECT_EQ(bar.last()->menu()->title(), menuTitle());
    EXPECT_TRUE(log.messages().contains("Adding menu in the main menu"));
}

TEST_F(LoadedPlugin, MenuHoldsMapAndSelectionActions)
{
    load();
    QMenu* menu = utilities->actions().last()->menu();
    EXPECT_EQ(texts(menu->actions()), QStringList({"Create collision-free map", "Link selected targets/programs"}));
    EXPECT_FALSE(menu->icon().isNull());
    for (QAction* action : menu->actions())
        EXPECT_FALSE(action->icon().isNull()) << action->text().toStdString();
}

TEST_F(LoadedPlugin, LoadLogsAndShowsStatus)
{
    LogCapture log;
    load();
    EXPECT_TRUE(log.messages().contains("Loading plugin Zelvane"));
    EXPECT_TRUE(log.messages().contains("Using settings: test settings"));
    EXPECT_EQ(window->statusBar()->currentMessage(), "Vorlik Plugin Zelvane is being loaded");
    EXPECT_EQ(plugin->pluginName(), "Zelvane");
}

TEST_F(LoadedPlugin, ToolbarIsHiddenAndCollisionMenuGetsTheTwoActions)
{
    load();
    auto* toolbar = window->findChild<QToolBar*>("Zelvane-Toolbar1");
    ASSERT_NE(toolbar, nullptr);
    EXPECT_TRUE(toolbar->isHidden());
    EXPECT_EQ(toolbar->iconSize(), QSize(24, 24));
    EXPECT_EQ(toolbar->windowTitle(), menuTitle());
    EXPECT_EQ(texts(toolbar->actions()), QStringList({"Create collision-free map", "Link selected targets/programs"}));
    EXPECT_EQ(texts(collision->actions()), QStringList({"Create collision-free map", "Link selected targets/programs"}));
}

TEST_F(LoadedPlugin, WithoutCollisionMenuTheToolbarStillLoads)
{
    load(0, false);
    EXPECT_NE(window->findChild<QToolBar*>("Zelvane-Toolbar1"), nullptr);
}

TEST_F(LoadedPlugin, ContextMenuLooksAtTheFirstItemOnly)
{
    load();
    FakeRobot* robot = addRobot("Arm1");
    FakeItem* program = host.addItem(ItemType::Program, "P1", robot);
    FakeItem* target = host.addItem(ItemType::Target, "T1", robot);

    QMenu programMenu;
    EXPECT_TRUE(plugin->pluginItemContextMenu({program, target}, &programMenu));
    EXPECT_EQ(texts(programMenu.actions()), QStringList({"Link selected programs"}));

    QMenu targetMenu;
    EXPECT_TRUE(plugin->pluginItemContextMenu({target, program}, &targetMenu));
    EXPECT_EQ(texts(targetMenu.actions()), QStringList({"Link selected targets"}));

    QMenu robotMenu;
    EXPECT_FALSE(plugin->pluginItemContextMenu({robot, target}, &robotMenu));
    EXPECT_TRUE(robotMenu.actions().isEmpty());

    QMenu emptyMenu;
    EXPECT_FALSE(plugin->pluginItemContextMenu({}, &emptyMenu));
    EXPECT_TRUE(emptyMenu.actions().isEmpty());
}

TEST_F(LoadedPlugin, LinkActionsRunTheSelectionJoinOnceTheClickIsHandled)
{
    load();
    QMenu targetMenu;
    QMenu programMenu;
    FakeItem* target = host.addItem(ItemType::Target, "T1");
    FakeItem* program = host.addItem(ItemType::Program, "P1");
    plugin->pluginItemContextMenu({target}, &targetMenu);
    plugin->pluginItemContextMenu({program}, &programMenu);
    const QString noRobot = "Invalid robot: add a robot or load a project";

    for (QMenu* menu : {&targetMenu, &programMenu}) {
        host.messages.clear();
        menu->actions().first()->trigger();
        // Queued: nothing has run while the click is being handled.
        EXPECT_TRUE(host.messages.isEmpty());
        QCoreApplication::processEvents();
        // Without a robot the selection join reports it in a message box.
        EXPECT_EQ(host.messages, (QList<QPair<QString, bool>>{{noRobot, true}}));
    }
}

TEST_F(LoadedPlugin, StationOpenedOnEmptyMapKeepsSettingsButReadsStoredOnes)
{
    load();
    setSettings([](PlannerSettings& s) { s.samples = 7; });
    plugin->pluginEvent(4);
    EXPECT_EQ(settings().samples, 7);  // nothing stored, nothing cleared

    FakeRobot* robot = addRobot("Arm1");
    setRobot(robot);
    setSettings([](PlannerSettings& s) { s.samples = 33; });
    session().markChanged();
    plugin->saveSettings();
    setSettings([](PlannerSettings& s) { s.samples = 7; });
    plugin->pluginEvent(4);
    EXPECT_EQ(settings().samples, 33);
}

TEST_F(LoadedPlugin, StationOpenedWithMapClearsSettingsFirst)
{
    load();
    FakeRobot* robot = addRobot("Arm1");
    setRobot(robot);
    setSettings([](PlannerSettings& s) { s.edgesPerSample = 3; });
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        setSize(samples, 3, 2);
    });
    plugin->pluginEvent(4);
    EXPECT_EQ(settings().edgesPerSample, 25);
    EXPECT_EQ(columns(map().samples()), 0);
    EXPECT_EQ(session().robot(), nullptr);
}

TEST_F(LoadedPlugin, StationChangedReselectsWhenTheRobotVanished)
{
    load();
    FakeRobot* first = addRobot("Arm1");
    FakeRobot* second = addRobot("Arm2");
    setRobot(second);
    int updates = 0;
    QObject::connect(plugin.get(), &PluginAutoPRM::UpdateForm, [&updates] { ++updates; });

    plugin->pluginEvent(3);
    EXPECT_EQ(session().robot(), second);
    EXPECT_GE(updates, 1);

    second->deleteItem();
    plugin->pluginEvent(3);
    EXPECT_EQ(session().robot(), first);
    EXPECT_TRUE(hasMessage("Selected robot for PRM: Arm1", false));
}

TEST_F(LoadedPlugin, StationChangedWithNothingChosenDoesNothing)
{
    load();
    addRobot("Arm1");
    plugin->pluginEvent(3);
    EXPECT_EQ(session().robot(), nullptr);
    EXPECT_TRUE(host.messages.isEmpty());
}

TEST_F(LoadedPlugin, SecondLoadAfterUnloadRestoresDefaults)
{
    load();
    setSettings([](PlannerSettings& s) { s.samples = 5; });
    setSettings([](PlannerSettings& s) { s.edgesPerSample = 6; });
    setSettings([](PlannerSettings& s) { s.robotStepDeg = 1.5; });
    setSettings([](PlannerSettings& s) { s.newNodeEdges = 9; });
    setSettings([](PlannerSettings& s) { s.displaySamples = true; });
    setRobot(addRobot("Arm1"));
    plugin->pluginUnload();
    EXPECT_EQ(plugin->session(), nullptr) << "the map goes with the session";
    plugin->pluginLoad(window.get(), window->menuBar(), window->statusBar(), &host, QString());
    EXPECT_EQ(settings().samples, 100);
    EXPECT_EQ(settings().edgesPerSample, 25);
    EXPECT_EQ(settings().robotStepDeg, 4.0);
    EXPECT_EQ(settings().newNodeEdges, 5);
    EXPECT_FALSE(settings().displaySamples);
    EXPECT_EQ(session().robot(), nullptr);
    ASSERT_NE(plugin->session(), nullptr);
    EXPECT_EQ(columns(map().samples()), 0);
}

TEST_F(LoadedPlugin, MapsAfterAnUnloadAndALoadGoOnWithTheSameRandomSequence)
{
    load();
    setRobot(addRobot("Arm1"));
    setSettings([](PlannerSettings& s) { s.samples = 12; });
    EXPECT_EQ(plugin->pluginCommand("Calc", QString()), "Done");
    const uint64_t drawn = session().resources().random().outputsDrawn();
    EXPECT_GT(drawn, 0u);
    MersenneTwister expected = session().resources().random();

    plugin->pluginUnload();
    plugin->pluginLoad(window.get(), window->menuBar(), window->statusBar(), &host, QString());
    EXPECT_EQ(session().resources().random().outputsDrawn(), drawn) << "not seeded again by the load";
    EXPECT_EQ(session().resources().random().next32(), expected.next32());
}

TEST_F(LoadedPlugin, SlotsInvokedAfterTheUnloadSayNothingToTheHost)
{
    // Another plug-in may invoke them by name at any time.
    load();
    setRobot(addRobot("Arm1"));
    plugin->pluginUnload();
    host.messages.clear();
    for (const char* slot : {"callback_robotpilot", "callback_robotpilot_closed", "ShowSamples", "RenderMap",
                             "callback_join_seltargets", "callback_join_selprogs"})
        EXPECT_TRUE(QMetaObject::invokeMethod(plugin.get(), slot, Qt::DirectConnection)) << slot;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(host.messages.isEmpty());
    EXPECT_TRUE(window->findChildren<QDockWidget*>().isEmpty());
    plugin.reset();
}

TEST_F(LoadedPlugin, UnloadSchedulesMenuAndToolbarForDeletion)
{
    load();
    QPointer<QMenu> menu = utilities->actions().last()->menu();
    QPointer<QToolBar> toolbar = window->findChild<QToolBar*>("Zelvane-Toolbar1");
    plugin->pluginUnload();
    EXPECT_FALSE(menu.isNull());  // deferred, not under the caller's feet
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(menu.isNull());
    EXPECT_TRUE(toolbar.isNull());
    plugin.reset();
}

}  // namespace
