#include "host_run.h"

#include "host_window.h"
#include "plugin_host.h"
#include "question_answerer.h"
#include "run_monitor.h"
#include "scenario_runner.h"
#include "sim_host_api.h"
#include "station_file.h"
#include "transcript.h"

#include <QApplication>
#include <QStatusBar>

#include <cstdio>

namespace {

constexpr int toolbarIconSize = 24;

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
    SimHostApi api(std::move(station), &monitor);
    HostWindow window(scenario.host);
    api.setWindow(&window, window.statusBar(), true);
    QuestionAnswerer answerer(&monitor);
    qApp->installEventFilter(&answerer);

    PluginHost plugin;
    if (!plugin.open(options.plugin, &error))
        return failRun(transcript, error);
    startPlugin(plugin, window, api);

    ScenarioRunner runner(scenario, options.script, {api, monitor, answerer, window, plugin});
    const bool completed = runner.run(&error);
    if (completed && plugin.loaded()) {
        plugin.plugin()->pluginEvent(HostEvent::StationClosing);
        processHostEvents();
    }
    if (plugin.loaded())
        plugin.unload();
    qApp->removeEventFilter(&answerer);
    if (!completed)
        return failRun(transcript, error);
    if (!options.save.isEmpty() && !station_file::write(api.station(), options.save, &error))
        return failRun(transcript, error);
    return 0;
}

int runWindow(const RunOptions& options)
{
    Transcript transcript;
    int code = 0;
    std::unique_ptr<Station> station = startRun(options, transcript, false, &code);
    if (!station)
        return code;
    QString error;

    RunMonitor monitor(transcript);
    SimHostApi api(std::move(station), &monitor);
    HostWindow window{HostSetup()};
    api.setWindow(&window, window.statusBar(), false);
    PluginHost plugin;
    if (!plugin.open(options.plugin, &error))
        return failRun(transcript, error);
    startPlugin(plugin, window, api);
    window.show();
    code = QApplication::exec();
    plugin.plugin()->pluginEvent(HostEvent::StationClosing);
    plugin.unload();
    if (!options.save.isEmpty() && !station_file::write(api.station(), options.save, &error))
        return failRun(transcript, error);
    return code;
}
