#pragma once

#include "sim_process.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

#include <gtest/gtest.h>

#include <vector>

// A three-joint robot "Arm1" in a cell whose joint-space wall (joint 1 between
// -20 and 20 unless joint 2 is above 40) blocks the straight move between the
// targets "Left" and "Right"; "Home" lies above the wall.
extern const char* const wallStation;

// Scenario runs of the real planner in vorlik-sim.
class PlannerRun : public ::testing::Test {
protected:
    PlannerRun() : folder(QStringLiteral(ZELVANE_PLUGIN_PATH)) {}

    // Runs the steps (a JSON array text) on the station text; expects success.
    SimRun run(const QByteArray& steps, const QByteArray& station = wallStation, const QByteArray& host = "{}");
    // Runs and returns whatever happened, success or not.
    SimRun runRaw(const QByteArray& steps, const QByteArray& station = wallStation, const QByteArray& host = "{}");

    static QStringList replies(const SimRun& done);
    static QStringList logLines(const SimRun& done);
    // Message texts, with "(popup)" appended to those shown in a box.
    static QStringList messages(const SimRun& done);
    static std::vector<QJsonObject> programs(const SimRun& done);
    static QJsonObject readJson(const QByteArray& bytes);

    SimFolder folder;
};

// Joint-space oracle as the host states it: strict box interiors, the move
// checked at n = max(1, ceil(max |b - a| / step)) even steps.
struct JointBoxes {
    std::vector<std::vector<double>> lower;
    std::vector<std::vector<double>> upper;

    static JointBoxes ofRobot(const QJsonObject& robot);
    bool collides(const std::vector<double>& q) const;
    bool moveCollides(const std::vector<double>& a, const std::vector<double>& b, double step) const;
};

std::vector<double> jointsOf(const QJsonValue& array);
