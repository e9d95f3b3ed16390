#pragma once

#include "desktop_host.h"
#include "host_window.h"
#include "plugin_host.h"
#include "run_monitor.h"
#include "sim_host_api.h"
#include "station_tree.h"
#include "station_view.h"
#include "station_watch.h"
#include "transcript.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QStatusBar>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

// The host window as vorlik-sim runs it for a person, in this process, with
// a plug-in loaded from its file. Pop-ups are recorded, not shown.
class WindowHost : public ::testing::Test {
protected:
    // With the 3D view when asked, as vorlik-sim shows it to a person.
    void start(const QString& pluginPath, bool withView = false)
    {
        api = std::make_unique<SimHostApi>(std::make_unique<Station>(), &watch);
        window = std::make_unique<HostWindow>(HostSetup());
        api->setWindow(window.get(), window->statusBar(), true);
        if (withView) {
            view = new StationView(*api);
            window->setView(view);
        }
        QString error;
        ASSERT_TRUE(plugin.open(pluginPath, &error)) << error.toStdString();
        plugin.load(*window, api.get());
        plugin.plugin()->pluginLoadToolbar(window.get(), 24);
        desktop = std::make_unique<DesktopHost>(*api, plugin, *window, QString());
        watch.onHostCalled = [this] { desktop->hostCalled(); };
        watch.onRecord = [this](const QJsonObject& record) { desktop->recorded(record); };
        if (view)
            QObject::connect(view, &StationView::repainted, desktop.get(), &DesktopHost::viewRepainted);
    }

    void TearDown() override
    {
        watch.onHostCalled = nullptr;
        watch.onRecord = nullptr;
        if (plugin.loaded())
            plugin.unload();
        desktop.reset();
        window.reset();
        api.reset();
    }

    // Runs the event loop for a while, as the host would between two things a person does.
    static void settle(int milliseconds = 150)
    {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < milliseconds) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    // Runs the event loop until the condition holds, for at most the given time; whether it holds.
    static bool settleUntil(const std::function<bool()>& condition, int milliseconds)
    {
        QElapsedTimer clock;
        clock.start();
        while (!condition() && clock.elapsed() < milliseconds)
            settle(20);
        return condition();
    }

    void openWorkcell()
    {
        QString error;
        ASSERT_TRUE(desktop->openStation(WORKCELL_PATH, &error)) << error.toStdString();
    }

    Transcript transcript;
    RunMonitor monitor{transcript};
    StationWatch watch{monitor};
    std::unique_ptr<SimHostApi> api;
    std::unique_ptr<HostWindow> window;
    StationView* view = nullptr;  // the window's, when started with one
    PluginHost plugin;
    std::unique_ptr<DesktopHost> desktop;
};
