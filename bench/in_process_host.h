#pragma once

// What the benchmarks that run the planner in process on the simulated host
// share: a target's joints as the planner takes them, a message handler that
// keeps the debug log quiet, and a host monitor that only counts collision tests.
#include "host_monitor.h"
#include "sim_item.h"
#include "vorlik/joint_vector.h"

#include <QJsonObject>
#include <QString>

#include <cstdio>

namespace in_process_host {

// A target's joint values as the planner takes them.
inline JointVector jointsOf(const SimItem& target)
{
    return JointVector(target.jointValues.data(), static_cast<int>(target.jointValues.size()));
}

// Prints warnings and errors; the planner's debug log would drown the table.
inline void quiet(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtDebugMsg)
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

// Counts the collision tests the host answers and keeps no records.
class CollisionCounter final : public HostMonitor {
public:
    void hostCalled() override {}
    void collisionTested() override { ++tests; }
    void record(const QJsonObject&) override {}
    bool recording() const override { return false; }
    long long tests = 0;
};

}  // namespace in_process_host
