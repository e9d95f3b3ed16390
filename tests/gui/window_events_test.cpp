// The events the window sends the plug-in of its own accord, seen by the
// probe plug-in, which logs each one: 4 after opening, 3 when items were
// added, renamed or deleted, 5 before saving, 6 on closing, 1 after a repaint;
// all from the event loop, none while the plug-in is in a call.
#include "window_fixture.h"

#include "box_answerer.h"
#include "log_capture.h"

#include "vorlik/item_types.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QMessageBox>
#include <QTemporaryDir>

namespace {

class WindowEvents : public WindowHost {
protected:
    void SetUp() override
    {
        start(PROBE_PLUGIN_PATH);
        openWorkcell();
        settle();
        log = std::make_unique<LogCapture>();
    }

    void TearDown() override
    {
        log.reset();
        WindowHost::TearDown();
    }

    std::vector<int> events() const
    {
        std::vector<int> codes;
        for (const QString& line : log->messages()) {
            if (line.startsWith("Probe event "))
                codes.push_back(line.mid(12).toInt());
        }
        return codes;
    }

    std::unique_ptr<LogCapture> log;
};

TEST_F(WindowEvents, OpeningSendsFourFromTheEventLoop)
{
    openWorkcell();
    EXPECT_TRUE(events().empty());
    settle();
    EXPECT_EQ(events(), std::vector<int>{4});
    EXPECT_NE(window->stationTree()->entryOf(api->station().find("Pick", ItemType::Target)), nullptr);
}

TEST_F(WindowEvents, ItemsThePluginAddsSendThreeAfterItsCall)
{
    plugin.plugin()->pluginCommand("program", "");
    SimItem* route = api->station().find("Route", ItemType::Program);
    ASSERT_NE(route, nullptr);
    EXPECT_TRUE(events().empty()) << "sent inside the plug-in's call";
    settle();
    EXPECT_EQ(events(), std::vector<int>{3});
    EXPECT_NE(window->stationTree()->entryOf(route), nullptr);
}

TEST_F(WindowEvents, RenameAndDeleteInTheTreeSendThree)
{
    StationTree* tree = window->stationTree();
    SimItem* home = api->station().find("Home", ItemType::Target);
    ASSERT_NE(home, nullptr);
    tree->entryOf(home)->setText(0, "Rest");
    settle();
    EXPECT_EQ(home->itemName(), "Rest");
    EXPECT_EQ(events(), std::vector<int>{3});

    tree->entryOf(home)->setSelected(true);
    BoxAnswerer yes(QMessageBox::Yes);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
    QCoreApplication::sendEvent(tree, &press);
    settle();
    EXPECT_EQ(yes.asked, QStringList{"Delete Rest from the station?"});
    EXPECT_FALSE(api->station().holds(home));
    EXPECT_EQ(tree->entryOf(home), nullptr);
    EXPECT_EQ(events(), (std::vector<int>{3, 3}));
}

TEST_F(WindowEvents, NothingIsSentWhileAModalBoxIsUp)
{
    QMessageBox box(QMessageBox::Information, "Vorlik", "Busy", QMessageBox::Ok, window.get());
    box.setWindowModality(Qt::ApplicationModal);
    box.show();
    openWorkcell();
    settle();
    EXPECT_TRUE(events().empty());
    box.close();
    settle();
    EXPECT_EQ(events(), std::vector<int>{4});
}

TEST_F(WindowEvents, SavingSendsFiveBeforeWriting)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("saved.json");
    desktop->saveStation(path);
    EXPECT_TRUE(events().empty());
    EXPECT_FALSE(QFile::exists(path));
    settle();
    EXPECT_EQ(events(), std::vector<int>{5});
    EXPECT_EQ(desktop->stationPath(), path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    // The probe stores "saved" when it hears event 5: the file has it, so 5 came first.
    const QJsonObject data = QJsonDocument::fromJson(file.readAll()).object().value("data").toObject();
    EXPECT_EQ(QByteArray::fromBase64(data.value("Probe").toString().toLatin1()), "saved");
}

TEST_F(WindowEvents, ClosingSendsSixThenCloses)
{
    window->show();
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(events().empty());
    settle();
    EXPECT_EQ(events(), std::vector<int>{6});
    EXPECT_TRUE(desktop->closed());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowEvents, RepaintsSendOneEach)
{
    desktop->viewRepainted();
    EXPECT_TRUE(events().empty());
    settle();
    desktop->viewRepainted();
    settle();
    EXPECT_EQ(events(), (std::vector<int>{1, 1}));
}

}  // namespace
