// A map unchanged since its record was written is not encoded again: the host
// gets the very bytes it has; any change to the map, its route or the robot's
// name makes a new record.
#include "plugin_fixture.h"

#include "robot_map_record.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"
#include "written_map_record.h"

#include "vorlik/iappvorlik.h"

namespace {

class WrittenMap : public LoadedPlugin {
protected:
    void SetUp() override
    {
        load();
        arm = addRobot("Arm1");
        ASSERT_EQ(plugin->pluginCommand("SelectRobot", "Arm1"), "Arm1");
        ASSERT_EQ(plugin->pluginCommand("Samples", "40"), "OK");
        ASSERT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    }

    // Saves the station as the host does, after a change of the settings
    // (without one nothing is written at all); the map record written.
    QByteArray saveAfterASettingsChange(const QString& samples)
    {
        EXPECT_EQ(plugin->pluginCommand("Samples", samples), "OK");
        host.dataParams.remove("Zelvane-Rob Arm1");
        plugin->pluginEvent(HostEvent::StationSaving);
        return host.dataParams.value("Zelvane-Rob Arm1");
    }

    // What encoding the map in hand gives now.
    QByteArray encodedNow()
    {
        QString problem;
        return encodeRobotMap(map().samples(), map().graph(), map().route(), &problem);
    }

    FakeRobot* arm = nullptr;
};

}  // namespace

TEST_F(WrittenMap, AnUnchangedMapIsHandedOverAgainWithoutANewEncoding)
{
    const QByteArray first = saveAfterASettingsChange("41");
    ASSERT_FALSE(first.isEmpty());
    EXPECT_EQ(first, encodedNow());
    const QByteArray second = saveAfterASettingsChange("42");
    EXPECT_EQ(second, first);
    EXPECT_EQ(second.constData(), first.constData()) << "the same bytes, not a second encoding";
}

TEST_F(WrittenMap, ANewRouteMakesANewRecord)
{
    const QByteArray first = saveAfterASettingsChange("41");
    editLayout([](RoadmapMatrix*, RoadmapGraph*, RoadmapMatrix* route) {
        setSize(route, 1, 2);
        route->values[0] = 1;
        route->values[1] = 2;
    });
    const QByteArray second = saveAfterASettingsChange("42");
    EXPECT_NE(second.constData(), first.constData());
    EXPECT_NE(second, first);
    EXPECT_EQ(second, encodedNow());
}

TEST_F(WrittenMap, ASampleChangedInItsLastBitMakesANewRecord)
{
    const QByteArray first = saveAfterASettingsChange("41");
    editLayout([](RoadmapMatrix* samples, RoadmapGraph*, RoadmapMatrix*) {
        samples->values[5] = std::nextafter(samples->values[5], 1e300);
    });
    const QByteArray second = saveAfterASettingsChange("42");
    EXPECT_NE(second, first);
    EXPECT_EQ(second, encodedNow());
}

TEST_F(WrittenMap, AnEdgeOfAnotherLengthMakesANewRecord)
{
    const QByteArray first = saveAfterASettingsChange("41");
    ASSERT_GT(map().edgeCount(), 0);
    editLayout([](RoadmapMatrix*, RoadmapGraph* graph, RoadmapMatrix*) {
        for (int node = 0; node < graph->nodeCount(); ++node) {
            if (!graph->edgesOf(node).empty()) {
                const RoadmapGraph::Edge edge = graph->edgesOf(node).front();
                graph->setLength(node, edge.node, edge.length * 2);
                return;
            }
        }
    });
    const QByteArray second = saveAfterASettingsChange("42");
    EXPECT_NE(second, first);
    EXPECT_EQ(second, encodedNow());
}

TEST_F(WrittenMap, ARenamedRobotGetsItsRecordEncodedUnderItsNewName)
{
    const QByteArray first = saveAfterASettingsChange("41");
    arm->setName("Arm2");
    EXPECT_EQ(plugin->pluginCommand("Samples", "42"), "OK");
    plugin->pluginEvent(HostEvent::StationSaving);
    const QByteArray second = host.dataParams.value("Zelvane-Rob Arm2");
    EXPECT_EQ(second, first);
    EXPECT_NE(second.constData(), first.constData()) << "another key: encoded anew";
}

TEST_F(WrittenMap, AfterTheStationClosedTheBytesAreNotKept)
{
    const QByteArray first = saveAfterASettingsChange("41");
    plugin->pluginEvent(HostEvent::StationClosing);
    host.dataParams.clear();
    EXPECT_TRUE(first.isDetached()) << "only this test holds the bytes now";
}

TEST_F(WrittenMap, AnotherStationLetsTheBytesGo)
{
    const QByteArray first = saveAfterASettingsChange("41");
    host.dataParams.clear();
    plugin->pluginEvent(HostEvent::StationOpened);
    EXPECT_TRUE(first.isDetached()) << "only this test holds the bytes now";
}

TEST_F(WrittenMap, AfterAnUnloadTheBytesAreNotKept)
{
    const QByteArray first = saveAfterASettingsChange("41");
    plugin->pluginUnload();
    host.dataParams.clear();
    EXPECT_TRUE(first.isDetached()) << "only this test holds the bytes now";
}

TEST(WrittenMapRecord, ForgottenItGivesNothingBack)
{
    RobotMap map;
    WrittenMapRecord written;
    EXPECT_TRUE(written.reuse("key", map).isNull());
    written.remember("key", map, QByteArray("bytes"));
    EXPECT_EQ(written.reuse("key", map), QByteArray("bytes"));
    EXPECT_TRUE(written.reuse("other key", map).isNull());
    written.forget();
    EXPECT_TRUE(written.reuse("key", map).isNull());
}
