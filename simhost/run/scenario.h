// The scenario file: its steps, read and checked for their shape.
#pragma once

#include "host_setup.h"

#include <QJsonObject>
#include <QList>
#include <QString>

#include <vector>

// One step of a scenario, checked for its shape; item names are looked up
// only when the step runs, since the plug-in creates items as it goes.
struct Step {
    int number = 0;     // 1-based position in "steps" (of the outermost step that holds it)
    QList<int> nested;  // 1-based positions inside "during" steps; empty for a step of "steps"
    QString kind;       // the step's key: "command", "event", "select", "invoke"...
    QJsonObject object;
    std::vector<Step> steps;  // a "during" step's own steps

    // "step 3", or "step 3, nested step 2" (and "2.1" further in) for the steps of a "during".
    QString label() const;
};

struct Scenario {
    HostSetup host;
    std::vector<Step> steps;
};

namespace scenario_file {

// Reads and checks a scenario; false and a message naming the file and the problem.
bool read(const QString& path, Scenario* scenario, QString* error);
bool parse(const QByteArray& contents, Scenario* scenario, QString* problem);

// Joint values of a step: 1 to 12 numbers.
bool isJointArray(const QJsonValue& value);

}  // namespace scenario_file
