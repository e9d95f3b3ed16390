// Fuzzes the reading of the plug-in's stored settings record together with
// the stored map of the robot it names: a fake station holds the input as the
// two records. Whatever they hold, the settings end in their ranges and a map
// read is the robot's.
#include "map_store.h"
#include "written_map_record.h"

#include "quiet_log.h"

#include "fake_host.h"
#include "planner_session.h"

#include <QByteArray>
#include <QtGlobal>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    silenceDebugLog();
    // The first byte splits the input into the settings record and the map record.
    if (size < 1)
        return 0;
    const size_t split = std::min<size_t>(data[0], size - 1);
    const QByteArray settings(reinterpret_cast<const char*>(data + 1), static_cast<int>(split));
    const QByteArray map(reinterpret_cast<const char*>(data + 1 + split), static_cast<int>(size - 1 - split));

    FakeHost host;
    FakeRobot* robot = host.addRobot("Arm1", {-180, -90, -90}, {180, 90, 90});
    host.addRobot("Arm2", {-180, -90}, {180, 90});
    host.dataParams["Zelvane"] = settings;
    host.dataParams["Zelvane-Rob Arm1"] = map;
    host.dataParams["Zelvane-Rob Arm2"] = map;
    auto session = std::make_shared<PlannerSession>(&host, nullptr, SessionCallbacks());
    WrittenMapRecord written;
    MapStore store(*session, &host, QStringLiteral("Zelvane"), written);
    if (store.loadSettings()) {
        const PlannerSettings& s = session->settings();
        if (s.samples < 1 || s.edgesPerSample < 0 || s.newNodeEdges < 0 || !std::isfinite(s.robotStepDeg) ||
            s.robotStepDeg < 0)
            std::abort();
        if (session->robot() == robot && session->map().hasSamples() && rows(session->map().samples()) != 3)
            std::abort();
    }
    // Saving what was read leaves an unusable stored map as it was.
    session->markChanged();
    store.saveSettings();
    if (session->robot() && session->map().robot() != session->robot() &&
        host.dataParams.value("Zelvane-Rob " + session->robot()->name()) != map)
        std::abort();
    return 0;
}
