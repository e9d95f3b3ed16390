// Stored maps and settings that are damaged, or not the robot's: the plug-in
// says what is wrong, keeps the map empty, leaves the stored record as it was
// until a new map is computed, and a new map then works.
#include "plugin_fixture.h"

#include "log_capture.h"
#include "matrix_record.h"
#include "planner_session.h"

#include <QDataStream>

#include <cmath>
#include <limits>
#include <vector>

namespace {

// A good map of the 3-joint robot: 3 samples on a line, joined 1-2 and 2-3.
QByteArray goodSamples()
{
    return matrixRecord(2, {3, 3}, {0, 0, 0, 10, 0, 0, 20, 0, 0});
}

QByteArray goodGraph()
{
    return matrixRecord(2, {3, 3}, {0, 10, 0, 10, 0, 10, 0, 10, 0});
}

QByteArray emptyRoute()
{
    return matrixRecord(2, {0, 0}, {});
}

class DamagedRecord : public LoadedPlugin {
protected:
    void SetUp() override
    {
        load();
        robot = addRobot("Arm1");
    }

    // Loads the record as the map of Arm1 and checks that it is refused for
    // `reason`, that saving does not touch it, and that a new map replaces it.
    void expectRefused(const QByteArray& record, const QString& reason)
    {
        host.dataParams["Zelvane-Rob Arm1"] = record;
        session().setRobot(robot);
        plugin->loadRobotMap();
        EXPECT_EQ(map().sampleCount(), 0);
        EXPECT_EQ(map().graph()->nodeCount(), 0);
        EXPECT_EQ(columns(map().route()), 0);
        bool told = false;
        for (const auto& message : host.messages)
            told = told || (message.first.startsWith("The map stored for robot Arm1 cannot be used (") &&
                            message.first.contains(reason));
        EXPECT_TRUE(told) << "no message naming the robot and '" << reason.toStdString() << "'";

        session().markChanged();
        plugin->saveSettings();
        EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm1"), record) << "a merely opened record is left as it was";

        EXPECT_EQ(plugin->pluginCommand("Samples", "12"), "OK");
        EXPECT_EQ(plugin->pluginCommand("Calc", ""), "Done");
        EXPECT_EQ(map().sampleCount(), 12);
        EXPECT_EQ(plugin->pluginCommand("Add", ""), "Done");
        EXPECT_EQ(map().sampleCount(), 13) << "the robot's position is added to it";
        plugin->saveSettings();
        EXPECT_NE(host.dataParams.value("Zelvane-Rob Arm1"), record) << "a computed map is stored";
        plugin->loadRobotMap();
        EXPECT_EQ(map().sampleCount(), 13) << "and reads back";
        expectJoinWorks(robot, 3, "AfterRepair");
    }

    FakeRobot* robot = nullptr;
};

}  // namespace

TEST_F(DamagedRecord, AGoodRecordLoads)
{
    host.dataParams["Zelvane-Rob Arm1"] = goodSamples() + goodGraph() + emptyRoute();
    session().setRobot(robot);
    plugin->loadRobotMap();
    EXPECT_EQ(map().sampleCount(), 3);
    EXPECT_EQ(map().edgeCount(), 2);
    EXPECT_EQ(map().robot(), robot);
}

TEST_F(DamagedRecord, SamplesClaimingMoreElementsThanTheRecordHolds)
{
    expectRefused(matrixRecord(2, {6, 2147483647}, {}), "more than the record holds");
}

TEST_F(DamagedRecord, SizesWhoseByteCountOverflowsSixtyFourBits)
{
    // 2^31-1 squared, times 8 bytes, wraps around in 64 bits.
    expectRefused(matrixRecord(2, {2147483647, 2147483647}, {}), "more than the record holds");
}

TEST_F(DamagedRecord, AMillionDimensions)
{
    expectRefused(matrixRecord(1000000, {}, {}), "1000000 dimensions");
}

TEST_F(DamagedRecord, NegativeSizes)
{
    expectRefused(matrixRecord(2, {-3, 5}, {}), "negative size");
}

TEST_F(DamagedRecord, NegativeDimensionCount)
{
    expectRefused(matrixRecord(-2, {}, {}), "-2 dimensions");
}

TEST_F(DamagedRecord, TheLargestDimensionCount)
{
    expectRefused(matrixRecord(2147483647, {}, {}), "dimensions instead of 2");
}

TEST_F(DamagedRecord, SamplesOfAnotherJointCount)
{
    expectRefused(matrixRecord(2, {2, 2}, {0, 0, 10, 0}) + matrixRecord(2, {2, 2}, {0, 10, 10, 0}) + emptyRoute(),
                  "built for 2 joints, the robot has 3");
}

TEST_F(DamagedRecord, GraphSmallerThanTheSamples)
{
    expectRefused(goodSamples() + matrixRecord(2, {2, 2}, {0, 10, 10, 0}) + emptyRoute(), "2 nodes for 3 samples");
}

TEST_F(DamagedRecord, AGraphAheadOfTheSamplesByCancelledInsertionsLoadsAndIsKeptAsStored)
{
    // Two cancelled insertions: the graph is two nodes ahead, the first extra
    // one with the edges made before the cancel.
    std::vector<double> graph(25, 0.0);
    const auto set = [&graph](int a, int b, double length) {
        graph[size_t(a + 5 * b)] = length;
        graph[size_t(b + 5 * a)] = length;
    };
    set(0, 1, 10);
    set(1, 2, 10);
    set(2, 3, 4);
    const QByteArray record = goodSamples() + matrixRecord(2, {5, 5}, graph) + emptyRoute();
    host.dataParams["Zelvane-Rob Arm1"] = record;
    session().setRobot(robot);
    plugin->loadRobotMap();
    EXPECT_EQ(map().sampleCount(), 3);
    EXPECT_EQ(map().graph()->nodeCount(), 5);
    EXPECT_EQ(plugin->pluginCommand("Info", ""), "3-3-Arm1");
    for (const auto& message : host.messages)
        EXPECT_FALSE(message.first.startsWith("The map stored for robot Arm1")) << message.first.toStdString();
    session().markChanged();
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm1"), record) << "written back as it was";
}

TEST_F(DamagedRecord, ARouteOfNoRowsButSomeColumns)
{
    // 0 x 3: a shape no link writes, with no node numbers in it.
    expectRefused(goodSamples() + goodGraph() + matrixRecord(2, {0, 3}, {}), "0 rows instead of 1");
}

TEST_F(DamagedRecord, GraphThatIsNotSquare)
{
    // Three by four: no graph of a map.
    expectRefused(goodSamples() + matrixRecord(2, {3, 4}, std::vector<double>(12, 0.0)) + emptyRoute(),
                  "not square (3 x 4)");
}

TEST_F(DamagedRecord, GraphWithEntriesOnlyBelowTheDiagonal)
{
    expectRefused(goodSamples() + matrixRecord(2, {3, 3}, {0, 10, 5, 0, 0, 10, 0, 0, 0}) + emptyRoute(),
                  "not symmetric");
}

TEST_F(DamagedRecord, GraphWithANegativeLength)
{
    expectRefused(goodSamples() + matrixRecord(2, {3, 3}, {0, -10, 0, -10, 0, 10, 0, 10, 0}) + emptyRoute(),
                  "not a length (2, 1)");
}

TEST_F(DamagedRecord, GraphJoiningANodeToItself)
{
    expectRefused(goodSamples() + matrixRecord(2, {3, 3}, {0, 10, 0, 10, 7, 10, 0, 10, 0}) + emptyRoute(),
                  "joins node 2 to itself");
}

TEST_F(DamagedRecord, SamplesThatAreNotNumbers)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    expectRefused(matrixRecord(2, {3, 3}, {0, 0, 0, nan, 0, 0, 20, 0, 0}) + goodGraph() + emptyRoute(),
                  "not a finite number");
}

TEST_F(DamagedRecord, GraphWithAnInfiniteLength)
{
    const double inf = std::numeric_limits<double>::infinity();
    expectRefused(goodSamples() + matrixRecord(2, {3, 3}, {0, inf, 0, inf, 0, 10, 0, 10, 0}) + emptyRoute(),
                  "not a length");
}

TEST_F(DamagedRecord, RouteWithTwoRows)
{
    expectRefused(goodSamples() + goodGraph() + matrixRecord(2, {2, 2}, {1, 2, 3, 1}), "2 rows instead of 1");
}

TEST_F(DamagedRecord, RouteThroughSomethingThatIsNoNode)
{
    expectRefused(goodSamples() + goodGraph() + matrixRecord(2, {1, 3}, {1, 2.5, 3}), "not a node number");
    expectRefused(goodSamples() + goodGraph() + matrixRecord(2, {1, 2}, {0, 3}), "not a node number");
}

TEST_F(DamagedRecord, RecordCutShort)
{
    expectRefused(goodSamples().left(30), "more than the record holds");
    expectRefused(goodSamples() + goodGraph().left(6), "cut short");
}

TEST_F(DamagedRecord, AnOldRouteThroughNodesTheMapLacksIsKeptAsStored)
{
    // A link, then a smaller map computed: the route of the link stays with it.
    const QByteArray record = goodSamples() + goodGraph() + matrixRecord(2, {1, 3}, {1, 40, 7});
    host.dataParams["Zelvane-Rob Arm1"] = record;
    session().setRobot(robot);
    plugin->loadRobotMap();
    EXPECT_EQ(map().sampleCount(), 3);
    EXPECT_EQ(columns(map().route()), 3);
    session().markChanged();
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm1"), record) << "written back as it was";
}

TEST_F(DamagedRecord, SettingsRecordCutShortFallsBackToTheDefaults)
{
    QByteArray bytes;
    {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << qint32(60) << qint32(8);
    }
    host.dataParams["Zelvane"] = bytes;
    setSettings([](PlannerSettings& s) { s.samples = 7; });
    EXPECT_FALSE(plugin->loadSettings());
    EXPECT_EQ(settings().samples, 100);
    EXPECT_EQ(settings().edgesPerSample, 25);
    EXPECT_TRUE(hasMessage("The planner's settings stored in the station are damaged: the defaults are used.", false));
}

TEST_F(DamagedRecord, SettingsRecordWhoseRobotNameClaimsMoreThanItHoldsFallsBackToTheDefaults)
{
    QByteArray bytes;
    {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << qint32(60) << qint32(8) << 2.0 << qint32(5) << true;
        stream << quint32(0x7ffffffe);  // a name of 2 GB, then nothing
        stream.writeRawData("\0A\0r\0m", 6);
    }
    host.dataParams["Zelvane"] = bytes;
    setSettings([](PlannerSettings& s) { s.samples = 7; });
    EXPECT_FALSE(plugin->loadSettings());
    EXPECT_EQ(settings().samples, 100);
    EXPECT_TRUE(hasMessage("The planner's settings stored in the station are damaged: the defaults are used.", false));
}

TEST_F(DamagedRecord, SettingsOutOfRangeFallBackToTheirDefaults)
{
    QByteArray bytes;
    {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << qint32(0) << qint32(-4) << std::numeric_limits<double>::quiet_NaN() << qint32(3) << true
               << QString("Arm1");
    }
    host.dataParams["Zelvane"] = bytes;
    EXPECT_TRUE(plugin->loadSettings());
    EXPECT_EQ(settings().samples, 100);
    EXPECT_EQ(settings().edgesPerSample, 25);
    EXPECT_EQ(settings().robotStepDeg, 4.0);
    EXPECT_EQ(settings().newNodeEdges, 3) << "in range, kept";
    EXPECT_TRUE(settings().displaySamples);
    EXPECT_EQ(session().robot(), robot);
    EXPECT_TRUE(hasMessage("Some of the planner's settings stored in the station are out of range and were set to "
                           "their defaults: samples, edges per sample, robot step.",
                           false));
}
