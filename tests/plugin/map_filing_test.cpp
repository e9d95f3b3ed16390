// A map is stored only under the robot it was built or loaded for, whatever
// happens to stations and robots in between.
#include "plugin_fixture.h"

#include "planner_session.h"

namespace {

const QByteArray EmptyMap = QByteArray::fromHex("000000020000000000000000"
                                                "000000020000000000000000"
                                                "000000020000000000000000");

class MapFiling : public LoadedPlugin {
protected:
    void SetUp() override
    {
        load();
        arm = addRobot("Arm1");
        ASSERT_EQ(plugin->pluginCommand("SelectRobot", "Arm1"), "Arm1");
        ASSERT_EQ(plugin->pluginCommand("Samples", "15"), "OK");
    }

    FakeRobot* arm = nullptr;
};

}  // namespace

TEST_F(MapFiling, AnotherStationDropsTheRobotEvenWithAnEmptyMap)
{
    ASSERT_EQ(map().sampleCount(), 0);
    // The host replaces the station: Arm1 is gone, the new one has Arm9.
    arm->deleteItem();
    addRobot("Arm9");
    host.dataParams.clear();
    plugin->pluginEvent(4);
    EXPECT_EQ(session().robot(), nullptr) << "no handle of the old station survives";
    session().markChanged();
    plugin->pluginEvent(5);
    EXPECT_FALSE(host.dataParams.contains("Zelvane-Rob Arm1")) << "nothing is saved under a robot the station lacks";
}

TEST_F(MapFiling, ARenamedRobotKeepsItsMapAndTheOldRecordStays)
{
    ASSERT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    plugin->pluginEvent(5);
    const QByteArray stored = host.dataParams.value("Zelvane-Rob Arm1");
    ASSERT_FALSE(stored.isEmpty());
    arm->setName("Arm1b");
    plugin->pluginEvent(3);
    EXPECT_EQ(session().robot(), arm) << "still the same robot";
    EXPECT_EQ(map().sampleCount(), 15);
    session().markChanged();
    plugin->pluginEvent(5);
    EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm1b"), stored) << "its map, under its new name";
    EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm1"), stored) << "the old record is not overwritten";
}

TEST_F(MapFiling, ADeletedRobotsMapIsNotSavedUnderItOrAnother)
{
    FakeRobot* second = addRobot("Arm2");
    ASSERT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    arm->deleteItem();
    plugin->pluginEvent(3);
    EXPECT_EQ(session().robot(), second);
    EXPECT_EQ(map().sampleCount(), 0) << "Arm2's own map, none yet";
    session().markChanged();
    plugin->pluginEvent(5);
    EXPECT_FALSE(host.dataParams.contains("Zelvane-Rob Arm1"));
    EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm2"), EmptyMap);
}

TEST_F(MapFiling, ARobotWhoseStoredMapWasUnusableKeepsItUntilANewMapIsComputed)
{
    const QByteArray damaged = QByteArray::fromHex("00000002ffffffff00000001");
    host.dataParams["Zelvane-Rob Arm1"] = damaged;
    plugin->loadRobotMap();
    EXPECT_EQ(map().sampleCount(), 0);
    session().markChanged();
    plugin->pluginEvent(5);
    plugin->pluginEvent(6);
    EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm1"), damaged);
    ASSERT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    plugin->pluginEvent(5);
    EXPECT_NE(host.dataParams.value("Zelvane-Rob Arm1"), damaged);
}

TEST_F(MapFiling, SwitchingRobotsStoresEachMapUnderItsOwnRobot)
{
    addRobot("Arm2");
    ASSERT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    ASSERT_EQ(plugin->pluginCommand("SelectRobot", "Arm2"), "Arm2");
    const QByteArray first = host.dataParams.value("Zelvane-Rob Arm1");
    EXPECT_NE(first, EmptyMap) << "Arm1's map was saved as the robot changed";
    ASSERT_EQ(plugin->pluginCommand("Samples", "9"), "OK");
    ASSERT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    ASSERT_EQ(plugin->pluginCommand("SelectRobot", "Arm1"), "Arm1");
    EXPECT_EQ(map().sampleCount(), 15);
    EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm1"), first);
    ASSERT_EQ(plugin->pluginCommand("SelectRobot", "Arm2"), "Arm2");
    EXPECT_EQ(map().sampleCount(), 9);
}
