// One run of the host as the command line asks: a scenario or the window.
#include "host_run.h"

#include "desktop_host.h"
#include "host_window.h"
#include "plugin_host.h"
#include "question_answerer.h"
#include "record_printer.h"
#include "run_monitor.h"
#include "run_summary.h"
#include "scenario_runner.h"
#include "sim_host_api.h"
#include "station_file.h"
#include "station_render.h"
#include "station_tree.h"
#include "station_watch.h"
#include "station_view.h"
#include "transcript.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QJsonObject>
#include <QPixmap>
#include <QStatusBar>

#include <cstdio>

namespace {

constexpr int toolbarIconSize = 24;
const QSize renderSize(1024, 768);
// The window's size when it is shown by a run, so that pictures of it compare.
constexpr int windowWidth = 1100;
constexpr int windowHeight = 720;

int failRun(Transcript& transcript, const QString& message)
{
    transcript.writeError(message);
    std::fprintf(stderr, "vorlik-sim: %s\n", qUtf8Printable(message));
    return 1;
}

// Opens the transcript and reads the station; null, with the exit code, when the run cannot start.
std::unique_ptr<Station> startRun(const RunOptions& options, Transcript& transcript, bool captureLog, int* code)
{
    QString error;
    if (!transcript.open(options.transcript, &error)) {
        std::fprintf(stderr, "vorlik-sim: %s\n", qUtf8Printable(error));
        *code = 1;
        return nullptr;
    }
    if (captureLog)
        transcript.captureLog();
    // The window may start without a file, on an empty station.
    if (options.station.isEmpty())
        return std::make_unique<Station>();
    std::unique_ptr<Station> station = station_file::read(options.station, &error);
    if (!station)
        *code = failRun(transcript, error);
    return station;
}

void startPlugin(PluginHost& plugin, HostWindow& window, SimHostApi& api)
{
    plugin.load(window, &api);
    plugin.plugin()->pluginLoadToolbar(&window, toolbarIconSize);
    processHostEvents();
    plugin.plugin()->pluginEvent(HostEvent::StationOpened);
    processHostEvents();
}

// Shows the window; the 3D view goes into every window a person or a screenshot sees.
void showWindow(HostWindow& window, SimHostApi& api)
{
    window.setView(new StationView(api));
    window.resize(windowWidth, windowHeight);
    window.show();
    processHostEvents();
}

bool writeScreenshot(HostWindow& window, SimHostApi& api, const QString& path, QString* error)
{
    window.stationTree()->showStation(api.station());
    for (int pass = 0; pass < 3; ++pass)
        processHostEvents();
    const QImage picture = window.grab().toImage();
    if (picture.isNull() || !picture.save(path, "PNG")) {
        *error = QStringLiteral("%1: cannot write the screenshot").arg(path);
        return false;
    }
    return true;
}

// Leaves the window to a person until it is closed; event 6 goes out as it closes.
int workInWindow(SimHostApi& api, StationWatch& watch, PluginHost& plugin, HostWindow& window, const QString& path)
{
    api.setWindow(&window, window.statusBar(), false);
    DesktopHost desktop(api, plugin, window, path);
    watch.onHostCalled = [&desktop] { desktop.hostCalled(); };
    watch.onRecord = [&desktop](const QJsonObject& record) { desktop.recorded(record); };
    if (auto* view = window.findChild<StationView*>())
        QObject::connect(view, &StationView::repainted, &desktop, &DesktopHost::viewRepainted);
    window.show();
    const int code = QApplication::exec();
    if (!desktop.closed() && plugin.loaded())
        plugin.plugin()->pluginEvent(HostEvent::StationClosing);
    if (plugin.loaded())
        plugin.unload();
    watch.onHostCalled = nullptr;
    watch.onRecord = nullptr;
    return code;
}

// The plug-in's debug log, a line for every edge it tries, is for a
// transcript; a person at the window sees warnings only, unless asked.
void quietenDebugLog()
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& message) {
        if (type != QtDebugMsg && type != QtInfoMsg)
            std::fprintf(stderr, "%s\n", qUtf8Printable(qFormatLogMessage(type, context, message)));
    });
}

}  // namespace

int runScenario(const RunOptions& options)
{
    Transcript transcript;
    transcript.setEcho(options.print);
    int code = 0;
    std::unique_ptr<Station> station = startRun(options, transcript, true, &code);
    if (!station)
        return code;
    QString error;
    Scenario scenario;
    if (!scenario_file::read(options.script, &scenario, &error))
        return failRun(transcript, error);

    RunMonitor monitor(transcript);
    StationWatch watch(monitor);
    SimHostApi api(std::move(station), &watch);
    HostWindow window(scenario.host);
    api.setWindow(&window, window.statusBar(), true);
    QuestionAnswerer answerer(&monitor);
    qApp->installEventFilter(&answerer);
    if (options.gui || !options.screenshot.isEmpty())
        showWindow(window, api);

    PluginHost plugin;
    if (!plugin.open(options.plugin, &error))
        return failRun(transcript, error);
    startPlugin(plugin, window, api);
    window.stationTree()->showStation(api.station());

    ScenarioRunner runner(scenario, options.script, {api, monitor, answerer, window, plugin});
    QElapsedTimer clock;
    clock.start();
    bool completed = runner.run(&error);
    if (completed && options.print)
        std::printf("%s\n", qUtf8Printable(describeRecord(summaryRecord(api.station().cellStats, clock.nsecsElapsed() / 1e9))));
    if (completed && !options.screenshot.isEmpty())
        completed = writeScreenshot(window, api, options.screenshot, &error);
    qApp->removeEventFilter(&answerer);
    if (completed && options.gui) {
        code = workInWindow(api, watch, plugin, window, options.station);
    } else {
        if (completed && plugin.loaded()) {
            plugin.plugin()->pluginEvent(HostEvent::StationClosing);
            processHostEvents();
        }
        if (plugin.loaded())
            plugin.unload();
    }
    if (!completed)
        return failRun(transcript, error);
    if (!options.save.isEmpty() && !station_file::write(api.station(), options.save, &error))
        return failRun(transcript, error);
    if (!options.render.isEmpty() && !renderStation(api, options.render, renderSize, &error))
        return failRun(transcript, error);
    return code;
}

int runWindow(const RunOptions& options)
{
    if (!options.verbose)
        quietenDebugLog();
    Transcript transcript;
    int code = 0;
    std::unique_ptr<Station> station = startRun(options, transcript, false, &code);
    if (!station)
        return code;
    QString error;

    RunMonitor monitor(transcript);
    StationWatch watch(monitor);
    SimHostApi api(std::move(station), &watch);
    HostWindow window{HostSetup()};
    api.setWindow(&window, window.statusBar(), false);
    showWindow(window, api);
    PluginHost plugin;
    if (!plugin.open(options.plugin, &error))
        return failRun(transcript, error);
    startPlugin(plugin, window, api);
    if (!options.screenshot.isEmpty() && !writeScreenshot(window, api, options.screenshot, &error)) {
        plugin.unload();
        return failRun(transcript, error);
    }
    if (options.gui || options.screenshot.isEmpty()) {
        code = workInWindow(api, watch, plugin, window, options.station);
    } else {
        plugin.plugin()->pluginEvent(HostEvent::StationClosing);
        plugin.unload();
    }
    if (!options.save.isEmpty() && !station_file::write(api.station(), options.save, &error))
        return failRun(transcript, error);
    return code;
}
