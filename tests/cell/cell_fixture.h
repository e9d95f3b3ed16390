#pragma once

#include "station.h"
#include "station_file.h"

#include "vorlik/item_types.h"
#include "vorlik/joint_vector.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

// The bundled work cell, read afresh for each test.
class BundledCell : public ::testing::Test {
protected:
    void SetUp() override
    {
        QString error;
        station = station_file::read(QStringLiteral(WORKCELL_PATH), &error);
        ASSERT_TRUE(station) << error.toStdString();
        arm = station->find(QStringLiteral("Arm1"), ItemType::Robot);
        ASSERT_TRUE(arm);
    }

    std::vector<double> targetJoints(const char* name) const
    {
        const SimItem* target = station->find(QLatin1String(name), ItemType::Target);
        return target ? target->jointValues : std::vector<double>();
    }

    // Colliding pairs the station reports with the arm at these joints.
    int collisionsAt(const std::vector<double>& q)
    {
        arm->setJoints(JointVector(q.data(), int(q.size())));
        return station->collisions();
    }

    int moveCollides(const std::vector<double>& a, const std::vector<double>& b, double step)
    {
        return arm->testJointMove(JointVector(a.data(), int(a.size())), JointVector(b.data(), int(b.size())), step);
    }

    std::unique_ptr<Station> station;
    SimItem* arm = nullptr;
};
