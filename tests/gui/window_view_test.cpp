// The window as a person sees it, in a real window under Xvfb: the 3D view
// repaints when the station changes, a sample sequence stops on Esc, the
// title names the file and marks changes, and quitting asks before changes
// are lost.
#include "box_answerer.h"
#include "window_fixture.h"

#include "vorlik/item_types.h"

#include <QAction>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

class WindowView : public WindowHost {
protected:
    void SetUp() override
    {
        start(ZELVANE_PLUGIN_PATH, true);
        window->resize(1100, 720);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        openWorkcell();
        settle(300);
    }

    // A map computed, its sample sequence stopped and every repaint done.
    void computeMap()
    {
        EXPECT_EQ(plugin.plugin()->pluginCommand("Samples", "60"), "OK");
        EXPECT_EQ(plugin.plugin()->pluginCommand("Calc", ""), "Done");
        view->stopPlaying();
        settle(300);
    }

    SimItem* program(const char* name) { return api->station().find(name, ItemType::Program); }
};

TEST_F(WindowView, RepaintsOnceAProgramIsFinished)
{
    computeMap();
    QSignalSpy repainted(view, &StationView::repainted);
    EXPECT_EQ(plugin.plugin()->pluginCommand("Join=PickToPlace", "Pick|Place"), "Success");
    ASSERT_NE(program("PickToPlace"), nullptr);
    repainted.clear();
    // Nothing else moves the view: the finished program alone repaints it, with its path.
    ASSERT_TRUE(settleUntil([&] { return repainted.count() > 0; }, 2000)) << "no repaint after the program";
    EXPECT_EQ(view->scene().program, program("PickToPlace"));
}

TEST_F(WindowView, RepaintsWithThePathOfTheProgramSelected)
{
    computeMap();
    EXPECT_EQ(plugin.plugin()->pluginCommand("Join=There", "Pick|Place"), "Success");
    EXPECT_EQ(plugin.plugin()->pluginCommand("Join=Back", "Place|Pick"), "Success");
    settle(300);
    StationTree* tree = window->stationTree();
    tree->entryOf(program("There"))->setSelected(true);
    settle(300);
    EXPECT_EQ(view->scene().program, program("There"));
    QSignalSpy repainted(view, &StationView::repainted);
    tree->clearSelection();
    tree->entryOf(program("Back"))->setSelected(true);
    ASSERT_TRUE(settleUntil([&] { return repainted.count() > 0; }, 2000)) << "no repaint after the selection";
    EXPECT_EQ(view->scene().program, program("Back"));
}

TEST_F(WindowView, RepaintsWhenAnotherStationIsOpened)
{
    QTemporaryDir folder;
    const QString other = folder.filePath("other.json");
    QFile file(other);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"robots": [{"name": "Rail", "lower": [0], "upper": [100]}]})");
    file.close();
    QSignalSpy repainted(view, &StationView::repainted);
    QString error;
    ASSERT_TRUE(desktop->openStation(other, &error)) << error.toStdString();
    ASSERT_TRUE(settleUntil([&] { return repainted.count() > 0; }, 2000)) << "the old cell stays on screen";
    EXPECT_EQ(view->scene().station, &api->station());
    EXPECT_TRUE(api->station().items(ObjectType).empty());
}

TEST_F(WindowView, ASampleSequenceIsShortAndStopsOnEscape)
{
    EXPECT_EQ(plugin.plugin()->pluginCommand("Samples", "200"), "OK");
    EXPECT_EQ(plugin.plugin()->pluginCommand("Calc", ""), "Done");
    settle(100);
    ASSERT_TRUE(view->playing()) << "a new map shows its samples";
    EXPECT_TRUE(window->statusBar()->currentMessage().startsWith("Showing 200 configurations of Arm1"))
        << window->statusBar()->currentMessage().toStdString();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(view->playing());
    EXPECT_EQ(view->scene().posedRobot, nullptr) << "the robot shows its own joints again";
    // Left alone, 200 samples are shown by 30 of them, a tenth of a second each.
    EXPECT_EQ(plugin.plugin()->pluginCommand("Calc", ""), "Done");
    EXPECT_TRUE(view->playing());
    EXPECT_EQ(view->frameCount(), StationView::MostSequenceFrames);
    EXPECT_EQ(view->framePeriod(), 100);
    // Any other key stops it too.
    QTest::keyClick(window->stationTree(), Qt::Key_Down);
    EXPECT_FALSE(view->playing());
}

TEST_F(WindowView, TheTitleNamesTheFileAndMarksChanges)
{
    EXPECT_EQ(window->windowTitle(), "workcell.json[*] - Vorlik");
    EXPECT_FALSE(window->isWindowModified());
    window->stationTree()->entryOf(api->station().find("Home", ItemType::Target))->setText(0, "Rest");
    ASSERT_TRUE(settleUntil([&] { return window->isWindowModified(); }, 2000));
    QTemporaryDir folder;
    desktop->saveStation(folder.filePath("saved.json"));
    ASSERT_TRUE(settleUntil([&] { return !window->isWindowModified(); }, 2000));
    EXPECT_EQ(window->windowTitle(), "saved.json[*] - Vorlik");
}

TEST_F(WindowView, QuittingWithChangesAsksAndCancelKeepsTheWindow)
{
    window->stationTree()->entryOf(api->station().find("Home", ItemType::Target))->setText(0, "Rest");
    settle();
    {
        BoxAnswerer cancel(QMessageBox::Cancel);
        window->quitAction()->trigger();
        settle(300);
        EXPECT_EQ(cancel.asked, QStringList{"The changes to workcell.json are not saved. Save them before quitting?"});
    }
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(desktop->closed());
    BoxAnswerer discard(QMessageBox::Discard);
    window->quitAction()->trigger();
    settle(300);
    EXPECT_EQ(discard.asked.size(), 1);
    EXPECT_TRUE(desktop->closed());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowView, QuittingWithoutChangesAsksNothing)
{
    BoxAnswerer any(QMessageBox::Cancel);
    window->quitAction()->trigger();
    settle(300);
    EXPECT_TRUE(any.asked.isEmpty());
    EXPECT_TRUE(desktop->closed());
}

}  // namespace
