// The option that shortens routes: its command, its record of its own in the
// station (the settings record keeps its format), and what it changes in a
// link: the program only, never the map or the route kept with it.
#include "plugin_fixture.h"

#include "planner_session.h"

#include <QDataStream>

namespace {

class RouteOption : public LoadedPlugin {
protected:
    void SetUp() override
    {
        load();
        robot = addRobot("Arm1");
        robot->boxes.push_back({{-20, -181, -181}, {20, 60, 181}});
        for (const auto& [name, x] : {std::pair{"A", -120.0}, std::pair{"B", 120.0}}) {
            FakeItem* target = host.addItem(ItemType::Target, name, robot);
            const double joints[3] = {x, 0, 0};
            target->setJoints(JointVector(joints, 3));
        }
        ASSERT_EQ(plugin->pluginCommand("SelectRobot", "Arm1"), "Arm1");
    }

    static QByteArray optionsRecord(qint32 version, bool shorten)
    {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << version << shorten;
        return bytes;
    }

    FakeRobot* robot = nullptr;
};

}  // namespace

TEST_F(RouteOption, TheCommandSwitchesItAndRepliesOK)
{
    EXPECT_FALSE(settings().shortenRoutes) << "off by default";
    session().markSaved();
    EXPECT_EQ(plugin->pluginCommand("Shortcut", "1"), "OK");
    EXPECT_TRUE(settings().shortenRoutes);
    EXPECT_TRUE(session().settingsChanged());
    EXPECT_EQ(plugin->pluginCommand("Shortcut", "0"), "OK");
    EXPECT_FALSE(settings().shortenRoutes);
    EXPECT_EQ(plugin->pluginCommand("Shortcut", "yes"), "Invalid value");
}

TEST_F(RouteOption, ItsRecordIsWrittenOnlyOnceTheOptionWasUsed)
{
    session().markChanged();
    plugin->saveSettings();
    EXPECT_FALSE(host.dataParams.contains("Zelvane-Options")) << "a station that never had the option gets none";
    const QByteArray settingsWithout = host.dataParams.value("Zelvane");

    plugin->pluginCommand("Shortcut", "1");
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Options"), optionsRecord(1, true));
    EXPECT_EQ(host.dataParams.value("Zelvane"), settingsWithout) << "the settings record keeps its format";

    plugin->pluginCommand("Shortcut", "0");
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Options"), optionsRecord(1, false)) << "switched off, it says so";
}

TEST_F(RouteOption, ItIsReadFromItsRecordAndClearSwitchesItOff)
{
    QByteArray settings;
    {
        QDataStream stream(&settings, QIODevice::WriteOnly);
        stream << qint32(30) << qint32(5) << 4.0 << qint32(5) << false << QString("Arm1");
    }
    host.dataParams["Zelvane"] = settings;
    host.dataParams["Zelvane-Options"] = optionsRecord(1, true);
    ASSERT_TRUE(plugin->loadSettings());
    EXPECT_TRUE(this->settings().shortenRoutes);
    host.dataParams["Zelvane-Options"] = optionsRecord(0, true);
    setSettings([](PlannerSettings& s) { s.shortenRoutes = false; });
    plugin->loadSettings();
    EXPECT_FALSE(this->settings().shortenRoutes) << "a record of no known version is not used";

    plugin->pluginCommand("Shortcut", "1");
    plugin->pluginCommand("Calc", "");
    plugin->pluginCommand("Clear", "");
    EXPECT_FALSE(this->settings().shortenRoutes) << "Clear restores the defaults";
}

TEST_F(RouteOption, OnlyTheProgramChangesNotTheMapNorItsRoute)
{
    ASSERT_EQ(plugin->pluginCommand("Samples", "40"), "OK");
    ASSERT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    session().markChanged();
    plugin->saveSettings();
    const QByteArray mapBefore = host.dataParams.value("Zelvane-Rob Arm1");

    ASSERT_EQ(plugin->pluginCommand("Join=Plain", "A|B"), "Success");
    plugin->saveSettings();
    const QByteArray mapAfterPlain = host.dataParams.value("Zelvane-Rob Arm1");
    HostItem* plain = host.getItem("Plain", ItemType::Program);
    ASSERT_NE(plain, nullptr);

    host.dataParams["Zelvane-Rob Arm1"] = mapBefore;
    plugin->loadRobotMap();
    plugin->pluginCommand("Shortcut", "1");
    ASSERT_EQ(plugin->pluginCommand("Join=Short", "A|B"), "Success");
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm1"), mapAfterPlain) << "the same map and route";

    auto* shortProgram = static_cast<FakeItem*>(host.getItem("Short", ItemType::Program));
    auto* plainProgram = static_cast<FakeItem*>(plain);
    ASSERT_NE(shortProgram, nullptr);
    // Both start at the start node and end at the end node: the same samples.
    const QRegExp sample(R"(\((S\d+)\)$)");
    auto sampleOf = [&sample](const QString& move) { return sample.indexIn(move) >= 0 ? sample.cap(1) : QString(); };
    EXPECT_EQ(sampleOf(shortProgram->instructions.first()), sampleOf(plainProgram->instructions.first()));
    EXPECT_EQ(sampleOf(shortProgram->instructions.last()), sampleOf(plainProgram->instructions.last()));
    EXPECT_FALSE(sampleOf(plainProgram->instructions.last()).isEmpty());
    for (const QString& move : shortProgram->instructions)
        EXPECT_TRUE(move.contains(QRegExp(R"(Pt \d+ \((S\d+|via)\))"))) << move.toStdString();
}

namespace {

QByteArray optionsRecord2(bool shorten, qint32 growLimit, bool checkRoutes)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << qint32(2) << shorten << growLimit << checkRoutes;
    return bytes;
}

}  // namespace

TEST_F(RouteOption, TheOptionsOfAFailedLinkGoIntoVersionTwoOfTheRecordOnlyWhenUsed)
{
    plugin->pluginCommand("Shortcut", "1");
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Options"), optionsRecord(1, true)) << "as before while they are off";
    EXPECT_EQ(plugin->pluginCommand("GrowMap", "400"), "OK");
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Options"), optionsRecord2(true, 400, false));
    EXPECT_EQ(plugin->pluginCommand("CheckRoutes", "1"), "OK");
    EXPECT_EQ(plugin->pluginCommand("Shortcut", "0"), "OK");
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Options"), optionsRecord2(false, 400, true));

    // Read back, and a version-1 record still reads with both off.
    setSettings([](PlannerSettings& s) {
        s.growLimit = 0;
        s.checkRoutes = false;
    });
    plugin->loadSettings();
    EXPECT_EQ(settings().growLimit, 400);
    EXPECT_TRUE(settings().checkRoutes);
    EXPECT_FALSE(settings().shortenRoutes);
    host.dataParams["Zelvane-Options"] = optionsRecord(1, true);
    plugin->loadSettings();
    EXPECT_TRUE(settings().shortenRoutes);
    EXPECT_EQ(settings().growLimit, 0);
    EXPECT_FALSE(settings().checkRoutes);
}

TEST_F(RouteOption, ARecordOfALaterVersionIsReportedAndNeverOverwritten)
{
    QByteArray later;
    {
        QDataStream stream(&later, QIODevice::WriteOnly);
        stream << qint32(3) << true << qint32(7) << true << QString("something new");
    }
    host.dataParams["Zelvane-Options"] = later;
    plugin->loadSettings();
    EXPECT_TRUE(hasMessage("The planner's options stored in the station were written by a later version of the "
                           "planner: they are kept as they are and not used.",
                           false));
    EXPECT_FALSE(settings().shortenRoutes) << "not used";
    EXPECT_EQ(settings().growLimit, 0);
    plugin->pluginCommand("Shortcut", "1");
    plugin->pluginCommand("GrowMap", "100");
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Options"), later) << "an older meaning never replaces it";
    // Another station's record (here none) is written again as usual.
    host.dataParams.remove("Zelvane-Options");
    plugin->loadSettings();
    plugin->pluginCommand("GrowMap", "100");
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Options"), optionsRecord2(false, 100, false));
}

TEST_F(RouteOption, AStationWithoutTheRecordHasEveryOptionOff)
{
    // Switched on for one station, they do not come over to the next.
    plugin->pluginCommand("Shortcut", "1");
    plugin->pluginCommand("GrowMap", "300");
    plugin->pluginCommand("CheckRoutes", "1");
    host.dataParams.remove("Zelvane-Options");
    plugin->loadSettings();
    EXPECT_FALSE(settings().shortenRoutes);
    EXPECT_EQ(settings().growLimit, 0);
    EXPECT_FALSE(settings().checkRoutes);
}
