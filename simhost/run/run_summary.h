// The summary record that ends a scripted run.
#pragma once

#include "cell_stats.h"

#include <QJsonObject>

// The "summary" record written at the end of a scenario: how long the steps
// took, how many collision tests the host answered, and how fast the 3D model
// checked configurations.
QJsonObject summaryRecord(const CellStats& stats, double seconds);
