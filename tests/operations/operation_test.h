#pragma once

#include "fake_station.h"
#include "host_planning.h"
#include "progress_reporter.h"
#include "roadmap_matrix.h"
#include "dense_graph.h"
#include "test_session.h"

#include <QProgressDialog>

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

using Joints = std::vector<double>;

// A station with one two-joint robot "Arm" (limits -360..360) that the
// session has chosen, and helpers to lay out a map by hand.
class UiTest : public ::testing::Test {
protected:
    UiTest()
    {
        robot = station.addLoggedRobot("Arm", {-360, -360}, {360, 360});
        session.setRobot(robot);
    }
    ~UiTest() override
    {
        // A dialog an operation left open must not leak into the next test.
        resources.progress().finish();
    }

    static JointVector joints(const Joints& values)
    {
        return JointVector(values.data(), static_cast<int>(values.size()));
    }

    // Puts the robot somewhere without logging the move.
    void placeRobot(const Joints& values) { robot->FakeRobot::setJoints(joints(values)); }

    // The stored map: one sample per entry, and edges between 1-based samples,
    // weighted with their L1 distance.
    void setMap(const std::vector<Joints>& configurations, const std::vector<std::pair<int, int>>& edges)
    {
        const int jointCount = configurations.empty() ? 0 : static_cast<int>(configurations[0].size());
        const int count = static_cast<int>(configurations.size());
        session.editMap([&](RobotMap& map) {
            Roadmap& roadmap = map.roadmap();
            roadmap.reset(jointCount, count);
            for (int c = 0; c < count; ++c)
                roadmap.setSample(c, configurations[c].data());
            for (const auto& edge : edges) {
                double length = 0.0;
                for (int r = 0; r < jointCount; ++r)
                    length += std::abs(configurations[edge.first - 1][r] - configurations[edge.second - 1][r]);
                roadmap.join(edge.first - 1, edge.second - 1, length);
            }
            map.setRobot(robot);
        });
    }

    // `count` samples along the first joint, 10 apart from 0, each joined to the next.
    void setLineMap(int count)
    {
        std::vector<Joints> configurations;
        std::vector<std::pair<int, int>> edges;
        for (int k = 0; k < count; ++k) {
            configurations.push_back({10.0 * k, 0.0});
            if (k > 0)
                edges.push_back({k, k + 1});
        }
        setMap(configurations, edges);
    }

    Joints sample(int oneBased) const
    {
        return {at(session.samples(), 0, oneBased - 1), at(session.samples(), 1, oneBased - 1)};
    }

    // Cancels the open progress dialog at the given collision test.
    void cancelAtCollisionTest(int number)
    {
        station.onCollisionTest = [this, number](int test) {
            if (test == number && resources.progress().dialog())
                resources.progress().dialog()->cancel();
        };
    }

    // Remembers the title of the open progress dialog at every collision test.
    void recordProgressTitles()
    {
        station.onCollisionTest = [this](int) {
            const QString title = resources.progress().dialog() ? resources.progress().dialog()->windowTitle() : QString();
            if (progressTitles.isEmpty() || progressTitles.last() != title)
                progressTitles << title;
        };
    }

    QStringList callsStartingWith(const QString& prefix) const
    {
        QStringList found;
        for (const QString& call : station.calls)
            if (call.startsWith(prefix))
                found << call;
        return found;
    }

    FakeStation station;
    LoggedRobot* robot = nullptr;
    TestSession session{&station};
    // The session's generator and progress dialog.
    PlannerResources& resources = session.planner().resources();
    QStringList progressTitles;
};
