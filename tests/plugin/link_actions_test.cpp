// Every link action (menu, toolbar, context menus) runs the one join that
// decides from the host's selection whether targets or programs are linked.
#include "plugin_fixture.h"
#include "dense_graph.h"

#include "roadmap_matrix.h"

#include <QToolBar>

namespace {

const QString SelectTwoTargets = "Select 2 targets to automatically join the path";
const QString SelectTwoPrograms = "Select 2 or more programs to automatically join them";

class LinkActions : public LoadedPlugin {
protected:
    void SetUp() override
    {
        load();
        robot = addRobot("Arm1");
        setRobot(robot);
        // A map exists, so that no join computes one first.
        editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
            setSize(samples, 3, 1);
            fillZero(samples);
            graph->clear();
            graph->resize(1);
        });
        target = host.addItem(ItemType::Target, "T1", robot);
        program = host.addItem(ItemType::Program, "P1", robot);
        plugin->pluginItemContextMenu({target}, &targetMenu);
        plugin->pluginItemContextMenu({program}, &programMenu);
    }

    // The actions under test, by the text each shows.
    QList<QAction*> linkActions()
    {
        QList<QAction*> actions;
        actions << targetMenu.actions().value(0) << programMenu.actions().value(0);
        QMenu* menu = utilities->actions().last()->menu();
        if (menu)
            actions << menu->actions().value(1);
        return actions;
    }

    // Triggers the action with the selection set, lets the queued slot run,
    // and returns what the host was asked to show.
    QList<QPair<QString, bool>> trigger(QAction* action, const QList<Item>& selection)
    {
        host.messages.clear();
        host.selection = selection;
        action->trigger();
        QCoreApplication::processEvents();
        return host.messages;
    }

    FakeRobot* robot = nullptr;
    FakeItem* target = nullptr;
    FakeItem* program = nullptr;
    QMenu targetMenu;
    QMenu programMenu;
};

TEST_F(LinkActions, TheThreeLinkActionsAreTheOnesUnderTest)
{
    const QList<QAction*> actions = linkActions();
    ASSERT_EQ(actions.size(), 3);
    ASSERT_NE(actions[0], nullptr);
    ASSERT_NE(actions[1], nullptr);
    ASSERT_NE(actions[2], nullptr);
    EXPECT_EQ(actions[0]->text(), "Link selected targets");
    EXPECT_EQ(actions[1]->text(), "Link selected programs");
    EXPECT_EQ(actions[2]->text(), "Link selected targets/programs");
}

TEST_F(LinkActions, ProgramsActionWithATargetSelectedLinksTargets)
{
    QAction* programs = programMenu.actions().value(0);
    ASSERT_NE(programs, nullptr);
    EXPECT_EQ(trigger(programs, {target}), (QList<QPair<QString, bool>>{{SelectTwoTargets, true}}));
}

TEST_F(LinkActions, TargetsActionWithAProgramSelectedLinksPrograms)
{
    QAction* targets = targetMenu.actions().value(0);
    ASSERT_NE(targets, nullptr);
    EXPECT_EQ(trigger(targets, {program}), (QList<QPair<QString, bool>>{{SelectTwoPrograms, true}}));
}

TEST_F(LinkActions, EveryLinkActionFollowsTheFirstSelectedItem)
{
    for (QAction* action : linkActions()) {
        ASSERT_NE(action, nullptr);
        const std::string name = action->text().toStdString();
        EXPECT_EQ(trigger(action, {target, program}), (QList<QPair<QString, bool>>{{SelectTwoTargets, true}})) << name;
        EXPECT_EQ(trigger(action, {program, target}), (QList<QPair<QString, bool>>{{SelectTwoPrograms, true}})) << name;
        EXPECT_EQ(trigger(action, {}), (QList<QPair<QString, bool>>{{SelectTwoTargets, true}})) << name;
    }
}

TEST_F(LinkActions, ProgramsActionLinksTwoSelectedTargetsIntoAProgram)
{
    const double start[] = {-30, 10, 0};
    const double end[] = {40, -20, 15};
    FakeItem* first = host.addItem(ItemType::Target, "A", robot);
    first->setJoints(JointVector(start, 3));
    FakeItem* second = host.addItem(ItemType::Target, "B", robot);
    second->setJoints(JointVector(end, 3));
    QAction* programs = programMenu.actions().value(0);
    ASSERT_NE(programs, nullptr);
    trigger(programs, {first, second});
    HostItem* linked = host.getItem("AToB", ItemType::Program);
    ASSERT_NE(linked, nullptr);
    // Start and end become nodes 2 and 3 of the one-sample map.
    const QStringList moves = static_cast<FakeItem*>(linked)->instructions;
    ASSERT_GE(moves.size(), 2);
    EXPECT_EQ(moves.first(), "move Pt 1 (S2)");
    EXPECT_EQ(moves.last(), QString("move Pt %1 (S3)").arg(moves.size()));
}

}  // namespace
