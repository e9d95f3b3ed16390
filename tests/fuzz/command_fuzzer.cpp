// Fuzzes the text command interface: a keyword and a value, as the host hands
// them over, to a plug-in loaded in a fake station with a small robot. The
// plug-in stays loaded from one input to the next, as in a host: each input
// starts from "Clear" (the map forgotten, the settings back to their defaults)
// in the station as it was first made. Paths of "Save" are kept inside a
// folder of the run's own.
#include "plugin_autoprm.h"

#include "quiet_log.h"

#include "fake_host.h"

#include <QApplication>
#include <QDir>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

// Never destroyed, as the window that lives as long: the process ends with the run.
QApplication& application()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "command_fuzz";
    static char* argv[] = {name, nullptr};
    static QApplication* app = new QApplication(argc, argv);
    return *app;
}

// The station and the loaded plug-in, made once: loading (menus, icons) costs
// a hundred times more than a command.
struct LoadedPlugin {
    LoadedPlugin()
    {
        // A small joint range: joint moves are checked at a few points.
        robot = host.addRobot("Arm1", {-30, -30}, {30, 30});
        robot->boxes.push_back({{-3, -30}, {3, 15}});
        FakeItem* a = host.addItem(ItemType::Target, "A", robot);
        a->setJoints(JointVector(std::vector<double>{-15, 0}.data(), 2));
        FakeItem* b = host.addItem(ItemType::Target, "B", robot);
        b->setJoints(JointVector(std::vector<double>{15, 0}.data(), 2));
        host.addItem(ItemType::Program, "P1", robot);
        stationItems = host.itemCount();
        robotJoints = robot->currentJoints();
        plugin.pluginLoad(&window, window.menuBar(), window.statusBar(), &host, QString());
    }

    void reset()
    {
        host.keepFirstItems(stationItems);
        robot->setJoints(robotJoints);
        // The fake's records of what it was asked, kept for tests, would only grow.
        robot->moves = {};
        robot->lastStep = {};
        host.messages.clear();
        host.updates.clear();
        host.dataParams.clear();
        host.selection.clear();
        plugin.pluginCommand(QStringLiteral("Clear"), QString());
        plugin.pluginCommand(QStringLiteral("Shortcut"), QStringLiteral("0"));
    }

    FakeHost host;
    FakeRobot* robot = nullptr;
    JointVector robotJoints;
    size_t stationItems = 0;
    QMainWindow window;
    PluginAutoPRM plugin;
    QTemporaryDir folder;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    silenceDebugLog();
    application();
    static LoadedPlugin* loaded = new LoadedPlugin;

    // Command and value, split at the first '|'.
    const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const int bar = input.indexOf('|');
    const QString command = bar < 0 ? input : input.left(bar);
    QString value = bar < 0 ? QString() : input.mid(bar + 1);
    if (command.startsWith(QLatin1String("Save"), Qt::CaseInsensitive))
        value = QDir(loaded->folder.path()).filePath(value.toUtf8().toHex().left(40));
    // Maps stay small, so that a run is quick; the limits are tested elsewhere.
    if (command.startsWith(QLatin1String("Samples"), Qt::CaseInsensitive) && value.toDouble() > 200)
        return 0;

    loaded->reset();
    loaded->plugin.pluginCommand(QStringLiteral("Samples"), QStringLiteral("8"));
    loaded->plugin.pluginCommand(command, value);
    loaded->plugin.pluginCommand(QStringLiteral("Info"), QString());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
