// The lines --print shows for transcript records.
#pragma once

#include <QJsonObject>
#include <QString>

// One line for a person reading a run as it happens; empty for records that
// only a program reading the transcript needs (debug log, progress, draws).
QString describeRecord(const QJsonObject& record);
