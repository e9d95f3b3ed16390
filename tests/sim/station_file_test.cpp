#include "station.h"
#include "station_file.h"

#include "vorlik/item_types.h"

#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const char* const sampleStation = R"({
  "params":   { "PathStepCollisionDeg": "2.5" },
  "data":     { "Zelvane": "AAECAw==" },
  "frames":   [ { "name": "Cell", "parent": null } ],
  "robots":   [ { "name": "Rail", "parent": "Cell", "lower": [0], "upper": [1000], "joints": [0],
                  "carries": "Arm1" },
                { "name": "Arm1", "parent": "Rail",
                  "lower": [-180, -90, -90], "upper": [180, 90, 90], "joints": [1, 2, 3],
                  "jointBoxes": [ { "lower": [10, -20, -90], "upper": [40, 20, 90] } ],
                  "carries": null } ],
  "targets":  [ { "name": "Home", "robot": "Arm1", "parent": "Cell", "joints": [0, 0, 0] },
                { "name": "Pt", "robot": "Arm1", "parent": "Cell", "joints": [5, 5, 5] },
                { "name": "Pt", "robot": "Arm1", "parent": "Cell", "joints": [6, 6, 6] } ],
  "programs": [ { "name": "P1", "robot": "Arm1",
                  "instructions": [ { "moveJoint": "Home" }, { "call": "P2" }, { "moveJoint": "Pt" } ] } ]
})";

std::unique_ptr<Station> parsed(const QByteArray& text, QString* problem)
{
    return station_file::parse(text, problem);
}

// The problem reported for a station that is not usable.
QString problemOf(const QByteArray& text)
{
    QString problem;
    EXPECT_EQ(parsed(text, &problem), nullptr);
    return problem;
}

TEST(StationFile, ReadsItemsInFileOrderWithTheirLinks)
{
    QString problem;
    const auto station = parsed(sampleStation, &problem);
    ASSERT_TRUE(station) << problem.toStdString();
    ASSERT_EQ(station->items(ItemType::Robot).size(), 2u);
    SimItem* rail = station->items(ItemType::Robot)[0];
    SimItem* arm = station->items(ItemType::Robot)[1];
    EXPECT_EQ(arm->parentItem, rail);
    EXPECT_EQ(rail->carried, arm);
    EXPECT_EQ(arm->jointValues, (std::vector<double>{1, 2, 3}));
    ASSERT_EQ(arm->boxes.size(), 1u);
    EXPECT_EQ(arm->boxes[0].upper, (std::vector<double>{40, 20, 90}));
    EXPECT_EQ(station->params.value(QStringLiteral("PathStepCollisionDeg")), QStringLiteral("2.5"));
    EXPECT_EQ(station->data.value(QStringLiteral("Zelvane")), QByteArray("\x00\x01\x02\x03", 4));
    // The first item of a repeated name is the one found.
    SimItem* pt = station->find(QStringLiteral("Pt"), ItemType::Target);
    ASSERT_TRUE(pt);
    EXPECT_EQ(pt->jointValues[0], 5.0);
    const SimItem* program = station->find(QStringLiteral("P1"), ItemType::Program);
    ASSERT_EQ(program->instructions.size(), 3u);
    EXPECT_EQ(program->instructions[0].target, station->find(QStringLiteral("Home"), ItemType::Target));
    EXPECT_EQ(program->instructions[1].call, QStringLiteral("P2"));
}

TEST(StationFile, SavedFileReadsBackTheSameStation)
{
    QString problem;
    const auto first = parsed(sampleStation, &problem);
    ASSERT_TRUE(first) << problem.toStdString();
    const QJsonObject saved = station_file::toJson(*first);
    const auto second = parsed(QJsonDocument(saved).toJson(), &problem);
    ASSERT_TRUE(second) << problem.toStdString();
    EXPECT_EQ(station_file::toJson(*second), saved);
    // Every item got an id, and joint moves name their target by name and id.
    const QJsonObject move = saved.value("programs").toArray()[0].toObject()
                                 .value("instructions").toArray()[2].toObject();
    EXPECT_EQ(move.value("moveJoint").toString(), QStringLiteral("Pt"));
    EXPECT_EQ(move.value("id").toInt(), first->find(QStringLiteral("Pt"), ItemType::Target)->id());
}

TEST(StationFile, WritesAndReadsFilesOnDisk)
{
    QTemporaryDir folder;
    QString problem;
    const auto station = parsed(sampleStation, &problem);
    ASSERT_TRUE(station);
    const QString path = folder.filePath(QStringLiteral("saved.json"));
    QString error;
    ASSERT_TRUE(station_file::write(*station, path, &error)) << error.toStdString();
    const auto again = station_file::read(path, &error);
    ASSERT_TRUE(again) << error.toStdString();
    EXPECT_EQ(station_file::toJson(*again), station_file::toJson(*station));
}

TEST(StationFile, AnIdWinsOverTheName)
{
    QString problem;
    const auto station = parsed(R"({
      "robots": [ { "id": 1, "name": "Arm", "lower": [0], "upper": [10] } ],
      "targets": [ { "id": 7, "name": "Pt", "robot": "Arm", "joints": [1] },
                   { "id": 9, "name": "Pt", "robot": "Arm", "joints": [2] } ],
      "programs": [ { "id": 3, "name": "P", "robot": "Arm", "instructions": [ { "moveJoint": "Pt", "id": 9 } ] } ]
    })", &problem);
    ASSERT_TRUE(station) << problem.toStdString();
    const SimItem* program = station->find(QStringLiteral("P"), ItemType::Program);
    EXPECT_EQ(program->instructions[0].target->jointValues[0], 2.0);
    // Items created later take ids above the file's.
    EXPECT_EQ(station->create(ItemType::Target, QStringLiteral("New"))->id(), 10);
}

TEST(StationFile, RemovedTargetsLeaveTheSavedProgram)
{
    QString problem;
    const auto station = parsed(sampleStation, &problem);
    ASSERT_TRUE(station);
    station->remove(station->find(QStringLiteral("Home"), ItemType::Target));
    const QJsonObject saved = station_file::toJson(*station);
    EXPECT_EQ(saved.value("programs").toArray()[0].toObject().value("instructions").toArray().size(), 2);
    EXPECT_TRUE(parsed(QJsonDocument(saved).toJson(), &problem)) << problem.toStdString();
}

TEST(StationFile, RejectsUnusableStationsWithTheProblem)
{
    EXPECT_TRUE(problemOf("{ \"robots\": [ ").contains("not valid JSON"));
    EXPECT_TRUE(problemOf("[1, 2]").contains("JSON object"));
    EXPECT_TRUE(problemOf(R"({"robots": [{"name": "A", "lower": [0, 0], "upper": [1, 1], "joints": [0]}]})")
                    .contains("robot 1 \"A\": \"joints\" has the wrong length: 1 values instead of 2"));
    EXPECT_TRUE(problemOf(R"({"robots": [{"name": "A", "lower": [0], "upper": [1],
                              "jointBoxes": [{"lower": [0, 0], "upper": [1]}]}]})")
                    .contains("joint box 1"));
    EXPECT_TRUE(problemOf(R"({"targets": [{"name": "T", "robot": "Ghost"}]})")
                    .contains("target 1 \"T\": robot \"Ghost\" is not in the station"));
    EXPECT_TRUE(problemOf(R"({"robots": [{"name": "A", "lower": [0], "upper": [1]}],
                              "programs": [{"name": "P", "robot": "A", "instructions": [{"moveJoint": "Nowhere"}]}]})")
                    .contains("instruction 1"));
    EXPECT_TRUE(problemOf(R"({"frames": [{"name": "F", "id": 2}, {"name": "G", "id": 2}]})").contains("id 2 is used twice"));
    EXPECT_TRUE(problemOf(R"({"frames": [{"name": "F", "parent": "G"}, {"name": "G", "parent": "F"}]})")
                    .contains("loop"));
    EXPECT_TRUE(problemOf(R"({"data": {"Zelvane": "***"}})").contains("base64"));
    EXPECT_TRUE(problemOf(R"({"robots": [{"name": "A", "lower": [5], "upper": [1]}]})").contains("lower limit above"));
}

TEST(StationFile, MissingFileIsNamed)
{
    QString error;
    EXPECT_EQ(station_file::read(QStringLiteral("/nonexistent/station.json"), &error), nullptr);
    EXPECT_TRUE(error.startsWith(QStringLiteral("/nonexistent/station.json: cannot open"))) << error.toStdString();
}

}  // namespace
