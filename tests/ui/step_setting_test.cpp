// The robot step edited in the form goes to the host's joint-move check and
// sets how finely every later edge is tested; the map is not rebuilt.
#include "form_fixture.h"
#include "dense_graph.h"

#include <QDoubleSpinBox>

namespace {

class StepSetting : public FormTest {
protected:
    // Puts the robot at (a, b, c) and adds that position to the map.
    bool addPosition(FakeRobot* robot, double a, double b, double c)
    {
        const double joints[] = {a, b, c};
        robot->setJoints(JointVector(joints, 3));
        return plugin->AddTargetsToMap(true, true);
    }
};

TEST_F(StepSetting, NewStepSetsTheFinenessOfLaterEdgeTestsWithoutRebuildingTheMap)
{
    FakeRobot* robot = addRobot("Arm1");
    // A wall across joint 0, thinner than a coarse step.
    robot->boxes.push_back({{45, -181, -181}, {46, 181, 181}});
    ASSERT_NE(openForm(), nullptr);
    giveMap(1);  // one sample at (0, 0, 0)
    auto* step = child<QDoubleSpinBox>("spnStepDeg");
    ASSERT_NE(step, nullptr);

    step->setValue(10.0);
    EXPECT_EQ(host.params.value("PathStepCollisionDeg"), "10.00000");
    EXPECT_EQ(host.collisionTests, 0) << "changing the step computes nothing";
    EXPECT_EQ(columns(map().samples()), 1);

    // Checked every 10 degrees, the move from (90, 0, 0) to the sample jumps the wall.
    EXPECT_TRUE(addPosition(robot, 90, 0, 0));
    ASSERT_EQ(columns(map().samples()), 2);
    EXPECT_EQ(at(map().graph(), 0, 1), 90.0);
    EXPECT_EQ(at(map().graph(), 1, 0), 90.0);

    const int testsBefore = host.collisionTests;
    step->setValue(0.5);
    EXPECT_EQ(host.params.value("PathStepCollisionDeg"), "0.50000");
    EXPECT_EQ(host.collisionTests, testsBefore) << "changing the step computes nothing";
    // The existing map keeps the edge that the coarse step let through.
    ASSERT_EQ(columns(map().samples()), 2);
    EXPECT_EQ(at(map().graph(), 0, 1), 90.0);

    // Checked every half degree, the move from (91, 5, 0) to the first sample
    // hits the wall; the move to (90, 0, 0) stays free.
    EXPECT_TRUE(addPosition(robot, 91, 5, 0));
    ASSERT_EQ(columns(map().samples()), 3);
    EXPECT_EQ(at(map().graph(), 0, 2), 0.0);
    EXPECT_EQ(at(map().graph(), 2, 0), 0.0);
    EXPECT_EQ(at(map().graph(), 1, 2), 6.0);
    EXPECT_EQ(at(map().graph(), 0, 1), 90.0);
    // The plug-in leaves the step to the host on every edge test.
    for (double asked : robot->lastStep)
        EXPECT_EQ(asked, -1.0);
}

}  // namespace
