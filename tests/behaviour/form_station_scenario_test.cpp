// The control form stays usable when another station is opened while it is
// open: it chooses a robot for the new station as it does when it opens.
#include "planner_run.h"

#include <QDataStream>
#include <QJsonArray>
#include <QJsonDocument>

namespace {

using FormStation = PlannerRun;

// A station of two robots; the stored settings, when given, name `storedRobot`.
QByteArray twoRobotStation(const QString& storedRobot)
{
    QJsonObject station = QJsonDocument::fromJson(wallStation).object();
    QJsonArray robots = station.value("robots").toArray();
    QJsonObject second = robots.first().toObject();
    second.insert("name", "Arm2");
    robots.append(second);
    station.insert("robots", robots);
    if (!storedRobot.isEmpty()) {
        QByteArray settings;
        QDataStream stream(&settings, QIODevice::WriteOnly);
        stream << qint32(30) << qint32(10) << 4.0 << qint32(5) << false << storedRobot;
        station.insert("data", QJsonObject{{"Zelvane", QString::fromLatin1(settings.toBase64())}});
    }
    return QJsonDocument(station).toJson();
}

TEST_F(FormStation, AnotherStationOpenedUnderTheOpenFormGetsItsRobot)
{
    folder.write("other.json", wallStation);
    const SimRun done = run(R"([{"action": "Create collision-free map"}, {"openStation": "other.json"},
                               {"click": "btnMakeMap"}, {"command": "Info"}])");
    const QStringList said = messages(done);
    EXPECT_FALSE(said.contains("Invalid robot: add a robot or load a project"))
        << said.join('\n').toStdString();
    EXPECT_FALSE(said.contains("Invalid robot: add a robot or load a project (popup)"));
    EXPECT_EQ(said.count("Selected robot for PRM: Arm1"), 2) << "as the form opened, and for the new station";
    ASSERT_EQ(done.ofType("sequence").size(), 1u) << "the map was computed";
    EXPECT_EQ(done.ofType("sequence").front().value("robot").toString(), "Arm1");
    EXPECT_TRUE(replies(done).last().endsWith("-Arm1"));
}

TEST_F(FormStation, TheNewStationsStoredSettingsChooseItsRobotFirst)
{
    folder.write("other.json", twoRobotStation("Arm2"));
    const SimRun done = run(R"([{"action": "Create collision-free map"}, {"openStation": "other.json"},
                               {"click": "btnMakeMap"}, {"command": "Info"}])");
    const QStringList said = messages(done);
    EXPECT_FALSE(said.join('\n').contains("Invalid robot")) << said.join('\n').toStdString();
    ASSERT_EQ(done.ofType("sequence").size(), 1u);
    EXPECT_EQ(done.ofType("sequence").front().value("robot").toString(), "Arm2");
    EXPECT_EQ(done.ofType("sequence").front().value("cols").toInt(), 30) << "with the stored sample count";
    EXPECT_TRUE(replies(done).last().endsWith("-Arm2"));
}

TEST_F(FormStation, WithoutTheFormAnotherStationWaitsForARobotAsBefore)
{
    // The form is what chooses; commands choose for themselves.
    folder.write("other.json", twoRobotStation(QString()));
    const SimRun done = run(R"([{"openStation": "other.json"}, {"invoke": "ShowSamples"}, {"command": "Info"}])");
    EXPECT_TRUE(messages(done).contains("Invalid robot: add a robot or load a project"));
    EXPECT_EQ(replies(done), QStringList{"0-0-Arm1"});
}

}  // namespace
