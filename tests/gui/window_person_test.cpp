// A person's way through the window, without a script: open a station,
// select two targets in the tree, link them from the tree's context menu.
#include "window_fixture.h"

#include "vorlik/item_types.h"

#include <QAction>
#include <QMenu>

namespace {

using PersonAtTheWindow = WindowHost;

TEST_F(PersonAtTheWindow, LinksTwoTargetsFromTheTreeContextMenu)
{
    start(ZELVANE_PLUGIN_PATH);
    openWorkcell();
    settle();
    Station& station = api->station();
    StationTree* tree = window->stationTree();
    SimItem* place = station.find("Place", ItemType::Target);
    SimItem* pick = station.find("Pick", ItemType::Target);
    ASSERT_TRUE(place && pick);
    ASSERT_TRUE(tree->entryOf(place) && tree->entryOf(pick));
    ASSERT_TRUE(station.items(ItemType::Program).empty());

    // The planner's form, opened from its menu, chooses the robot.
    QAction* planner = nullptr;
    for (QAction* action : window->allActions()) {
        if (action->text() == "Create collision-free map")
            planner = action;
    }
    ASSERT_NE(planner, nullptr);
    planner->trigger();
    ASSERT_TRUE(settleUntil([this] { return window->findChild<QWidget*>("FormPRM") != nullptr; }, 2000));

    // Picked in this order, answered in this order.
    tree->entryOf(place)->setSelected(true);
    tree->entryOf(pick)->setSelected(true);
    QList<Item> selected;
    api->getSelectedItems(selected);
    EXPECT_EQ(selected, (QList<Item>{place, pick}));

    std::unique_ptr<QMenu> menu = tree->contextMenu();
    ASSERT_TRUE(menu);
    ASSERT_EQ(menu->actions().size(), 1);
    QAction* link = menu->actions().first();
    EXPECT_EQ(link->text(), "Link selected targets");
    link->trigger();
    menu.reset();

    ASSERT_TRUE(settleUntil([&station] { return !station.items(ItemType::Program).empty(); }, 60000))
        << "no program was written";
    SimItem* program = station.items(ItemType::Program).front();
    ASSERT_TRUE(settleUntil([&] { return tree->entryOf(program) != nullptr; }, 2000));
    EXPECT_EQ(tree->entryOf(program)->text(0), program->itemName());
    EXPECT_FALSE(program->instructions.empty());
    // The route's targets are in the tree too.
    for (const Instruction& move : program->instructions) {
        if (move.target) {
            EXPECT_NE(tree->entryOf(move.target), nullptr) << move.target->itemName().toStdString();
        }
    }
}

TEST_F(PersonAtTheWindow, NoContextMenuWithoutSelectionOrForARobot)
{
    start(ZELVANE_PLUGIN_PATH);
    openWorkcell();
    settle();
    StationTree* tree = window->stationTree();
    EXPECT_FALSE(tree->contextMenu()) << "nothing selected, no menu";
    Station& station = api->station();
    tree->entryOf(station.find("Arm1", ItemType::Robot))->setSelected(true);
    EXPECT_FALSE(tree->contextMenu()) << "the plug-in adds nothing for a robot";
}

TEST_F(PersonAtTheWindow, OpenFailureNamesTheFileAndKeepsTheStation)
{
    start(ZELVANE_PLUGIN_PATH);
    openWorkcell();
    settle();
    QString error;
    EXPECT_FALSE(desktop->openStation("/nonexistent/station.json", &error));
    EXPECT_TRUE(error.contains("/nonexistent/station.json")) << error.toStdString();
    EXPECT_NE(api->station().find("Pick", ItemType::Target), nullptr);
}

}  // namespace
