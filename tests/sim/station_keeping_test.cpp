// Station files keep what they were given: fields the host does not know,
// numbers to the last bit, and item ids, which are checked.
#include "host_monitor.h"
#include "sim_host_api.h"
#include "station.h"
#include "station_file.h"

#include "vorlik/item_types.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <set>

namespace {

const char* const annotatedStation = R"({
  "comment": "made by hand", "version": {"tool": 3},
  "params": { "PathStepCollisionDeg": 2.123456789, "Label": "x" },
  "frames": [ { "name": "Cell", "note": "the floor", "pose": [0, 0, 0, 0, 0, 0] } ],
  "robots": [ { "name": "Arm1", "parent": "Cell", "color": "#ff8800", "lower": [-180, -90], "upper": [180, 90],
                "jointBoxes": [ { "lower": [10, -20], "upper": [40, 20], "label": "pillar" } ] } ],
  "targets": [ { "name": "Home", "robot": "Arm1", "joints": [0, 0], "tag": ["a", 1] } ],
  "programs": [ { "name": "P1", "robot": "Arm1", "owner": "cell team",
                  "instructions": [ { "moveJoint": "Home", "speed": 50 }, { "call": "P2", "why": "tidy" } ] } ],
  "objects": [ { "name": "Table", "parent": "Cell", "box": { "size": [1, 2, 3], "finish": "oak" }, "mass": 40 } ]
})";

std::unique_ptr<Station> parsed(const QByteArray& text)
{
    QString problem;
    auto station = station_file::parse(text, &problem);
    EXPECT_TRUE(station) << problem.toStdString();
    return station;
}

QString problemOf(const QByteArray& text)
{
    QString problem;
    EXPECT_EQ(station_file::parse(text, &problem), nullptr);
    return problem;
}

QJsonObject first(const QJsonObject& saved, const char* list)
{
    return saved.value(QLatin1String(list)).toArray().at(0).toObject();
}

class QuietMonitor final : public HostMonitor {
public:
    void hostCalled() override {}
    void collisionTested() override {}
    void record(const QJsonObject&) override {}
    bool recording() const override { return false; }
};

bool sameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(StationKeeping, FieldsTheHostDoesNotKnowSurviveASave)
{
    const auto station = parsed(annotatedStation);
    ASSERT_TRUE(station);
    const QJsonObject saved = station_file::toJson(*station);
    EXPECT_EQ(saved.value("comment"), QJsonValue("made by hand"));
    EXPECT_EQ(saved.value("version"), (QJsonObject{{"tool", 3}}));
    EXPECT_EQ(first(saved, "frames").value("note"), QJsonValue("the floor"));
    const QJsonObject robot = first(saved, "robots");
    EXPECT_EQ(robot.value("color"), QJsonValue("#ff8800"));
    EXPECT_EQ(robot.value("jointBoxes").toArray().at(0).toObject().value("label"), QJsonValue("pillar"));
    EXPECT_EQ(first(saved, "targets").value("tag"), (QJsonArray{"a", 1}));
    const QJsonObject program = first(saved, "programs");
    EXPECT_EQ(program.value("owner"), QJsonValue("cell team"));
    const QJsonArray instructions = program.value("instructions").toArray();
    EXPECT_EQ(instructions.at(0).toObject().value("speed"), QJsonValue(50));
    EXPECT_EQ(instructions.at(1).toObject(), (QJsonObject{{"call", "P2"}, {"why", "tidy"}}));
    const QJsonObject object = first(saved, "objects");
    EXPECT_EQ(object.value("mass"), QJsonValue(40));
    EXPECT_EQ(object.value("box").toObject().value("finish"), QJsonValue("oak"));
    // What the host writes itself is written once, as the host knows it.
    EXPECT_EQ(robot.value("parentId"), QJsonValue(station->find(QStringLiteral("Cell"), FrameType)->id()));
    // And a second save writes the same file.
    const auto again = parsed(QJsonDocument(saved).toJson());
    ASSERT_TRUE(again);
    EXPECT_EQ(station_file::toJson(*again), saved);
}

TEST(StationKeeping, NumbersReadBackToTheLastBit)
{
    // Random doubles of every size, in limits, joints, boxes, poses and parameters.
    std::mt19937_64 bits(20240611);
    const auto any = [&bits] {
        for (;;) {
            const uint64_t word = bits();
            double value = 0.0;
            std::memcpy(&value, &word, sizeof value);
            if (std::isfinite(value))
                return value;
        }
    };
    for (int round = 0; round < 200; ++round) {
        const double a = any(), b = any(), c = any(), d = any();
        QJsonArray pose;
        for (int i = 0; i < 6; ++i)
            pose.append(std::fmod(any(), 1000.0));
        const QJsonObject file{
            {"params", QJsonObject{{"PathStepCollisionDeg", std::abs(a)}}},
            {"robots", QJsonArray{QJsonObject{{"name", "R"}, {"lower", QJsonArray{std::min(a, b)}},
                                              {"upper", QJsonArray{std::max(a, b)}}, {"joints", QJsonArray{c}},
                                              {"pose", pose},
                                              {"jointBoxes", QJsonArray{QJsonObject{{"lower", QJsonArray{d}},
                                                                                    {"upper", QJsonArray{c}}}}}}}},
            {"targets", QJsonArray{QJsonObject{{"name", "T"}, {"robot", "R"}, {"joints", QJsonArray{d}}}}}};
        const auto station = parsed(QJsonDocument(file).toJson());
        ASSERT_TRUE(station);
        const auto again = parsed(QJsonDocument(station_file::toJson(*station)).toJson());
        ASSERT_TRUE(again);
        const SimItem* robot = again->find(QStringLiteral("R"), ItemType::Robot);
        EXPECT_TRUE(sameBits(robot->lower[0], std::min(a, b)));
        EXPECT_TRUE(sameBits(robot->upper[0], std::max(a, b)));
        EXPECT_TRUE(sameBits(robot->jointValues[0], c));
        EXPECT_TRUE(sameBits(robot->boxes[0].lower[0], d));
        for (int i = 0; i < 6; ++i)
            EXPECT_TRUE(sameBits(robot->pose[size_t(i)], pose[i].toDouble()));
        EXPECT_TRUE(sameBits(again->find(QStringLiteral("T"), ItemType::Target)->jointValues[0], d));
        EXPECT_TRUE(sameBits(again->pathStepDeg(), std::abs(a)) || !(std::abs(a) > 0.0));
    }
}

TEST(StationKeeping, ANumericParameterIsUsedAndSavedAsGiven)
{
    const auto station = parsed(annotatedStation);
    ASSERT_TRUE(station);
    EXPECT_EQ(station->params.value(QStringLiteral("PathStepCollisionDeg")), QStringLiteral("2.123456789"));
    EXPECT_TRUE(sameBits(station->pathStepDeg(), 2.123456789));
    const QJsonObject params = station_file::toJson(*station).value("params").toObject();
    EXPECT_TRUE(params.value("PathStepCollisionDeg").isDouble());
    EXPECT_TRUE(sameBits(params.value("PathStepCollisionDeg").toDouble(), 2.123456789));
    EXPECT_EQ(params.value("Label"), QJsonValue("x"));
}

TEST(StationKeeping, AParameterSetByThePluginIsKeptAsItsText)
{
    QuietMonitor quiet;
    SimHostApi host(parsed(annotatedStation), &quiet);
    QString out;
    host.command(out, QStringLiteral("PathStepCollisionDeg"), QStringLiteral("2.50"));
    host.command(out, QStringLiteral("Fresh"), QStringLiteral("0.1000000000000000055511151231257827"));
    EXPECT_EQ(host.command(out, QStringLiteral("PathStepCollisionDeg"), QString()), QStringLiteral("2.50"));
    const QJsonObject params = station_file::toJson(host.station()).value("params").toObject();
    EXPECT_EQ(params.value("PathStepCollisionDeg"), QJsonValue("2.50"));
    EXPECT_EQ(params.value("Fresh"), QJsonValue("0.1000000000000000055511151231257827"));
}

TEST(StationKeeping, TheLargestIdIsUsableAndNewItemsStillGetUniqueIds)
{
    const auto station = parsed(R"({"frames": [{"name": "F", "id": 2147483647}, {"name": "G", "id": 1},
                                               {"name": "H", "id": 3}, {"name": "Later"}],
                                    "targets": [{"name": "T", "parent": "F", "parentId": 2147483647}]})");
    ASSERT_TRUE(station);
    std::set<int> ids;
    for (const SimItem* item : station->allItems())
        ids.insert(item->id());
    for (int k = 0; k < 5; ++k)
        ids.insert(station->create(ItemType::Target, QStringLiteral("New"))->id());
    EXPECT_EQ(ids.size(), 10u);
    EXPECT_GE(*ids.begin(), 1);
    EXPECT_EQ(*ids.rbegin(), 2147483647);
    EXPECT_EQ(station->find(QStringLiteral("T"), ItemType::Target)->parentItem->id(), 2147483647);
    const auto again = parsed(QJsonDocument(station_file::toJson(*station)).toJson());
    ASSERT_TRUE(again);
    EXPECT_EQ(again->items(ItemType::Target).size(), 6u);
}

TEST(StationKeeping, ItemsWithoutIdsBeforeTheLargestIdDoNotTakeAnIdGivenLaterInTheFile)
{
    const auto station = parsed(R"({"frames": [{"name": "Cell"}, {"name": "Top"}],
                                    "robots": [{"name": "Rail", "id": 2, "parent": "Cell", "lower": [0],
                                                "upper": [1000], "joints": [0], "carries": null}],
                                    "targets": [{"name": "T", "id": 2147483647, "robot": "Rail", "joints": [5]}]})");
    ASSERT_TRUE(station);
    std::set<int> ids;
    for (const SimItem* item : station->allItems())
        ids.insert(item->id());
    EXPECT_EQ(ids.size(), 4u);
    EXPECT_EQ(station->find(QStringLiteral("Rail"), ItemType::Robot)->id(), 2);
    EXPECT_TRUE(parsed(QJsonDocument(station_file::toJson(*station)).toJson()));
}

TEST(StationKeeping, IdsThatAreNotWholeNumbersInRangeOrAreRepeatedAreRefused)
{
    const QString range = QStringLiteral("must be a whole number from 1 to 2147483647");
    for (const char* id : {"0", "-3", "1.5", "2147483648", "1e300", "\"7\"", "true", "null", "[1]"}) {
        EXPECT_EQ(problemOf(QByteArray(R"({"frames": [{"name": "F", "id": )") + id + "}]}"),
                  QStringLiteral("frame 1 \"F\": \"id\" ") + range)
            << id;
    }
    EXPECT_EQ(problemOf(R"({"robots": [{"name": "A", "id": 5, "lower": [0], "upper": [1]}],
                           "targets": [{"name": "T", "id": 5}]})"),
              QStringLiteral("target 1 \"T\": id 5 is used twice"));
    EXPECT_EQ(problemOf(R"({"frames": [{"name": "F", "id": 1}], "targets": [{"name": "T", "parentId": 2147483648}]})"),
              QStringLiteral("target 1 \"T\": \"parentId\" ") + range);
    EXPECT_EQ(problemOf(R"({"frames": [{"name": "F", "id": 1}], "targets": [{"name": "T", "parentId": 2}]})"),
              QStringLiteral("target 1 \"T\": \"parentId\" 2 names no suitable item"));
    EXPECT_EQ(problemOf(R"({"robots": [{"name": "A", "lower": [0], "upper": [1]}], "targets": [{"name": "T", "robot": "A"}],
                           "programs": [{"name": "P", "instructions": [{"moveJoint": "T", "id": -1}]}]})"),
              QStringLiteral("program 1 \"P\": instruction 1: \"id\" ") + range);
}

TEST(StationKeeping, AFileWithABadIdIsNamedWithTheItem)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("ids.json"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"robots": [{"name": "Arm1", "id": 4294967296, "lower": [0], "upper": [1]}]})");
    file.close();
    QString error;
    EXPECT_EQ(station_file::read(path, &error), nullptr);
    EXPECT_EQ(error, path + QStringLiteral(": robot 1 \"Arm1\": \"id\" must be a whole number from 1 to 2147483647"));
}

}  // namespace
