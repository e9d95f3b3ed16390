// Fuzzes the text command interface: a keyword and a value, as the host hands
// them over, to a freshly loaded plug-in in a fake station with a small robot.
// Paths of "Save" are kept inside a folder of the run's own.
#include "plugin_autoprm.h"

#include "quiet_log.h"

#include "fake_host.h"
#include "planner_session.h"

#include <QApplication>
#include <QDir>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {
QApplication& application()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "command_fuzz";
    static char* argv[] = {name, nullptr};
    static QApplication app(argc, argv);
    return app;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    silenceDebugLog();
    application();
    static QTemporaryDir folder;

    // Command and value, split at the first '|'.
    const QString input = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const int bar = input.indexOf('|');
    const QString command = bar < 0 ? input : input.left(bar);
    QString value = bar < 0 ? QString() : input.mid(bar + 1);
    if (command.startsWith(QLatin1String("Save"), Qt::CaseInsensitive))
        value = QDir(folder.path()).filePath(value.toUtf8().toHex().left(40));
    // Maps stay small, so that a run is quick; the limits are tested elsewhere.
    if (command.startsWith(QLatin1String("Samples"), Qt::CaseInsensitive) && value.toDouble() > 200)
        return 0;

    FakeHost host;
    FakeRobot* robot = host.addRobot("Arm1", {-100, -100}, {100, 100});
    robot->boxes.push_back({{-10, -100}, {10, 50}});
    FakeItem* a = host.addItem(ItemType::Target, "A", robot);
    a->setJoints(JointVector(std::vector<double>{-50, 0}.data(), 2));
    FakeItem* b = host.addItem(ItemType::Target, "B", robot);
    b->setJoints(JointVector(std::vector<double>{50, 0}.data(), 2));
    host.addItem(ItemType::Program, "P1", robot);
    QMainWindow window;
    PluginAutoPRM plugin;
    plugin.pluginLoad(&window, window.menuBar(), window.statusBar(), &host, QString());
    plugin.pluginCommand(QStringLiteral("Samples"), QStringLiteral("20"));
    plugin.pluginCommand(command, value);
    plugin.pluginCommand(QStringLiteral("Info"), QString());
    plugin.pluginUnload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
