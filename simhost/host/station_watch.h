// A host monitor that also says when the station may have changed.
#pragma once

#include "host_monitor.h"

#include <functional>

// Passes everything on to another monitor and also says, on every call the
// plug-in makes, that the station may have changed: the window then looks.
class StationWatch final : public HostMonitor {
public:
    explicit StationWatch(HostMonitor& next) : next_(next) {}

    std::function<void()> onHostCalled;
    // Told of every record the host makes (a program finished, a sequence shown).
    std::function<void(const QJsonObject&)> onRecord;

    void hostCalled() override
    {
        next_.hostCalled();
        if (onHostCalled)
            onHostCalled();
    }
    void collisionTested() override { next_.collisionTested(); }
    void record(const QJsonObject& record) override
    {
        next_.record(record);
        if (onRecord)
            onRecord(record);
    }
    bool recording() const override { return next_.recording(); }

private:
    HostMonitor& next_;
};
