#pragma once

#include <QJsonObject>

#include <gtest/gtest.h>

// The record without its "ms", after checking that "ms" is there and is a
// number of milliseconds: replies and results tell how long their step took.
inline QJsonObject withoutStepTime(QJsonObject record)
{
    const QJsonValue ms = record.value(QStringLiteral("ms"));
    EXPECT_TRUE(ms.isDouble()) << "record of type " << record.value(QStringLiteral("type")).toString().toStdString()
                               << " without \"ms\"";
    EXPECT_GE(ms.toDouble(-1.0), 0.0);
    record.remove(QStringLiteral("ms"));
    return record;
}
