// Maps a station could not keep, and joint values that are not numbers: both
// are refused before anything is done, and the planner goes on working.
#include "plugin_fixture.h"

#include "map_capacity.h"
#include "planner_session.h"

#include <limits>

namespace {

class MapLimits : public LoadedPlugin {
protected:
    void SetUp() override
    {
        load();
        robot = addRobot("Arm1", 6);
        ASSERT_EQ(plugin->pluginCommand("SelectRobot", "Arm1"), "Arm1");
        ASSERT_EQ(plugin->pluginCommand("Samples", "20"), "OK");
        ASSERT_EQ(plugin->pluginCommand("Calc", ""), "Done");
        ASSERT_EQ(map().sampleCount(), 20);
    }

    bool toldLargest(int samples)
    {
        const QString text = QString("A map of %1 samples is too large to be kept in the station. The largest map of "
                                     "this robot has %2 samples.")
                                 .arg(samples)
                                 .arg(largestKeepableSampleCount(6));
        return hasMessage(text, true);
    }

    FakeRobot* robot = nullptr;
};

}  // namespace

TEST(MapCapacity, TheLargestKeepableMapIsBelowSixteenThousandSamples)
{
    const int largest = largestKeepableSampleCount(6);
    EXPECT_TRUE(mapCanBeKept(6, largest));
    EXPECT_FALSE(mapCanBeKept(6, largest + 1));
    EXPECT_GT(largest, 16000);
    EXPECT_LT(largest, 16384);
    EXPECT_LE(robotMapRecordSize(6, largest + 64, largest + 64), largestRobotMapRecord());
}

TEST_F(MapLimits, HugeSampleCountsAreRefusedBeforeAnyWorkAndTheMapStays)
{
    for (const char* count : {"30000", "46341", "2147483647"}) {
        const int testsBefore = host.collisionTests;
        EXPECT_EQ(plugin->pluginCommand("Samples", count), "OK");
        EXPECT_EQ(plugin->pluginCommand("Calc", ""), "Done") << count;
        EXPECT_EQ(host.collisionTests, testsBefore) << "nothing was tried for " << count;
        EXPECT_EQ(map().sampleCount(), 20) << "the map is as it was";
        EXPECT_TRUE(toldLargest(QString(count).toInt())) << count;
    }
    EXPECT_EQ(plugin->pluginCommand("Samples", "25"), "OK");
    EXPECT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    EXPECT_EQ(map().sampleCount(), 25) << "a fresh map works afterwards";
    expectJoinWorks(robot, 6, "AfterRefusal");
}

TEST_F(MapLimits, FewerThanOneSampleIsRefused)
{
    EXPECT_EQ(plugin->pluginCommand("Samples", "0"), "OK");
    EXPECT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    EXPECT_TRUE(hasMessage("A map needs at least 1 sample; the number of samples is 0.", true));
    EXPECT_EQ(map().sampleCount(), 20);
}

TEST_F(MapLimits, LinkingConfigurationsThatAreNotNumbersIsRefused)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const double good[12] = {};
    for (double bad : {nan, inf, -inf}) {
        double wrong[12] = {};
        wrong[3] = bad;
        host.messages.clear();
        const int testsBefore = host.collisionTests;
        EXPECT_EQ(plugin->Join_Joints(true, good, wrong, "Bad"), nullptr);
        EXPECT_EQ(plugin->Join_Joints(true, wrong, good, "Bad"), nullptr);
        EXPECT_EQ(host.collisionTests, testsBefore);
        EXPECT_EQ(map().sampleCount(), 20) << "nothing was added";
        EXPECT_TRUE(hasMessage("The configurations to link hold joint values that are not numbers.", false));
        EXPECT_EQ(host.getItem("Bad", ItemType::Program), nullptr);
    }
}

TEST_F(MapLimits, ARobotPositionThatIsNotANumberIsNotAdded)
{
    double joints[6] = {0, 0, std::numeric_limits<double>::quiet_NaN(), 0, 0, 0};
    robot->setJoints(JointVector(joints, 6));
    EXPECT_EQ(plugin->pluginCommand("Add", ""), "Done");
    EXPECT_EQ(map().sampleCount(), 20);
    EXPECT_TRUE(hasMessage("The robot's joint values are not numbers: its position is not added.", false));
}

TEST_F(MapLimits, JointLimitsThatAreNotNumbersRefuseTheMap)
{
    FakeRobot* odd = host.addRobot("Odd", {0, -std::numeric_limits<double>::infinity()}, {1, 1});
    ASSERT_EQ(plugin->pluginCommand("SelectRobot", "Odd"), "Odd");
    const int testsBefore = host.collisionTests;
    EXPECT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    EXPECT_EQ(host.collisionTests, testsBefore);
    EXPECT_TRUE(hasMessage("The joint limits of robot Odd are not numbers a map can be sampled in.", true));
    (void)odd;
}
