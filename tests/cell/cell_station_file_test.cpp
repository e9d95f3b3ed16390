#include "cell_fixture.h"
#include "cell_model.h"
#include "cell_placement.h"

#include <QJsonDocument>
#include <QTemporaryDir>

namespace {

const char* const armStation = R"({
  "frames": [ { "name": "Cell", "parent": null, "pose": [100, 0, 0, 0, 0, 90] } ],
  "robots": [
    { "name": "Rail", "parent": "Cell", "pose": [0, 0, 0, 0, 90, 0], "lower": [0], "upper": [2000], "joints": [500],
      "carries": "Arm", "kinematics": { "joints": [ { "type": "prismatic" } ] } },
    { "name": "Arm", "parent": "Rail", "pose": [-50, 0, 0, 0, -90, 0], "lower": [-180, -180], "upper": [180, 180],
      "kinematics": { "convention": "standard", "joints": [ { "a": 300 }, { "a": 200, "sign": -1 } ] },
      "tool": [0, 0, 10, 0, 0, 0],
      "solids": [ { "link": 1, "capsule": { "radius": 20, "from": [-300, 0, 0], "to": [0, 0, 0] } },
                  { "link": "tool", "sphere": { "radius": 5 } } ] } ],
  "objects": [ { "name": "Block", "parent": "Cell", "pose": [0, 0, 0, 0, 0, 0], "box": { "size": [10, 10, 10] } } ]
})";

std::unique_ptr<Station> parsed(const QByteArray& text, QString* problem)
{
    return station_file::parse(text, problem);
}

QString problemWith(const QByteArray& text)
{
    QString problem;
    EXPECT_FALSE(parsed(text, &problem));
    return problem;
}

TEST(CellStationFile, ARailCarriesTheArmAndSolveFKIsRelativeToTheRail)
{
    QString problem;
    auto station = parsed(armStation, &problem);
    ASSERT_TRUE(station) << problem.toStdString();
    SimItem* rail = station->find("Rail", ItemType::Robot);
    SimItem* arm = station->find("Arm", ItemType::Robot);
    // The cell stands at (100, 0, 0), turned 90 degrees about z, so its x is
    // the station's y. The rail lies along the cell's x (its pose turns its z,
    // the prismatic joint's axis, onto x); the arm stands 50 above the
    // carriage, upright again. So the arm's base is at (100, q, 50).
    HostPose base;
    arm->poseAbs(base);
    EXPECT_NEAR(base(0, 3), 100.0, 1e-3);
    EXPECT_NEAR(base(1, 3), 500.0, 1e-3);
    EXPECT_NEAR(base(2, 3), 50.0, 1e-3);
    EXPECT_NEAR(base(2, 2), 1.0, 1e-6);
    rail->setJoints(JointVector(std::vector<double>{800}.data(), 1));
    arm->poseAbs(base);
    EXPECT_NEAR(base(1, 3), 800.0, 1e-3);

    // The plug-in draws a carried arm at railPose * solveFK: that must land on the tool.
    HostPose railPose, toolPose, reached;
    rail->poseAbs(railPose);
    arm->poseTool(toolPose);
    const double q[2] = {90, 90};
    arm->solveFK(reached, JointVector(q, 2), toolPose, nullptr);
    const HostPose tool = railPose * reached;
    // By hand, in the arm's base: joint 1 at 90 turns the 300 link onto y,
    // joint 2 (sign -1) turns the next 200 back onto x; the tool adds 10 up.
    const Eigen::Isometry3d armBase = cell_placement::fromHostPose(base);
    const Eigen::Vector3d expected = armBase * Eigen::Vector3d(200, 300, 10);
    EXPECT_NEAR(tool(0, 3), expected.x(), 1e-2);
    EXPECT_NEAR(tool(1, 3), expected.y(), 1e-2);
    EXPECT_NEAR(tool(2, 3), expected.z(), 1e-2);
    EXPECT_EQ(rail->getLink(ItemType::Robot), arm);
}

TEST(CellStationFile, SavedStationsKeepKinematicsSolidsObjectsAndPoses)
{
    QString problem;
    auto station = parsed(armStation, &problem);
    ASSERT_TRUE(station);
    const QByteArray saved = QJsonDocument(station_file::toJson(*station)).toJson();
    auto again = parsed(saved, &problem);
    ASSERT_TRUE(again) << problem.toStdString();
    EXPECT_EQ(QJsonDocument(station_file::toJson(*again)).toJson(), saved);
    const SimItem* arm = again->find("Arm", ItemType::Robot);
    ASSERT_TRUE(arm->arm);
    EXPECT_EQ(arm->arm->joints.size(), 2u);
    EXPECT_EQ(arm->arm->joints[1].sign, -1.0);
    EXPECT_EQ(arm->arm->solids.size(), 2u);
    EXPECT_EQ(again->items(ObjectType).size(), 1u);
    EXPECT_EQ(arm->pose, (std::vector<double>{-50, 0, 0, 0, -90, 0}));
}

TEST(CellStationFile, AStationWithoutTheNewFieldsSavesAsBefore)
{
    QString problem;
    auto station = parsed(R"({"robots": [{"name": "A", "lower": [0], "upper": [1]}]})", &problem);
    ASSERT_TRUE(station);
    const QJsonObject json = station_file::toJson(*station);
    EXPECT_FALSE(json.contains("objects"));
    const QJsonObject robot = json.value("robots").toArray().first().toObject();
    for (const char* field : {"pose", "kinematics", "tool", "solids"})
        EXPECT_FALSE(robot.contains(field)) << field;
    HostPose pose;
    station->find("A", ItemType::Robot)->poseAbs(pose);
    EXPECT_TRUE(pose.isIdentity());
}

TEST(CellStationFile, UnusableFieldsNameTheItemAndTheProblem)
{
    const QByteArray robotHead = R"({"robots": [{"name": "R", "lower": [0, 0], "upper": [1, 1], )";
    auto robot = [&](const char* fields) { return robotHead + fields + "}]}"; };
    EXPECT_EQ(problemWith(robot(R"("kinematics": {"joints": [{}]})")),
              R"(robot 1 "R": "kinematics" must list 2 "joints" (one per joint), not 1)");
    EXPECT_EQ(problemWith(robot(R"("kinematics": {"convention": "modified", "joints": [{}, {}]})")),
              R"(robot 1 "R": "kinematics": only the "standard" Denavit-Hartenberg convention is known, not "modified")");
    EXPECT_EQ(problemWith(robot(R"("kinematics": {"joints": [{"a": "x"}, {}]})")),
              R"(robot 1 "R": "kinematics" joint 1: "a" must be a number)");
    EXPECT_EQ(problemWith(robot(R"("kinematics": {"joints": [{}, {"sign": 2}]})")),
              R"(robot 1 "R": "kinematics" joint 2: "sign" must be 1 or -1)");
    EXPECT_EQ(problemWith(robot(R"("solids": [])")),
              R"(robot 1 "R": "tool", "solids" and "selfCollision" need "kinematics")");
    EXPECT_EQ(problemWith(robot(R"("kinematics": {"joints": [{}, {}]}, "solids": [{"link": 3, "sphere": {"radius": 1}}])")),
              R"(robot 1 "R": solid 1: "link" must be "base", "tool" or a link number 0 to 2)");
    EXPECT_EQ(problemWith(robot(R"("kinematics": {"joints": [{}, {}]}, "solids": [{"link": 1, "sphere": {"radius": 1}, "box": {"size": [1, 1, 1]}}])")),
              R"(robot 1 "R": solid 1: give one shape, not both "box" and "sphere")");
    EXPECT_EQ(problemWith(robot(R"("kinematics": {"joints": [{}, {}]}, "tool": [1, 2, 3])")),
              R"(robot 1 "R": "tool" must be an array of 6 numbers [x, y, z, rx, ry, rz])");
    EXPECT_EQ(problemWith(R"({"objects": [{"name": "O", "cylinder": {"radius": -1, "length": 2}}]})"),
              R"(object 1 "O": cylinder needs a positive "radius")");
    EXPECT_EQ(problemWith(R"({"objects": [{"name": "O"}]})"),
              R"(object 1 "O": needs a shape: "box", "cylinder", "sphere" or "capsule")");
    EXPECT_EQ(problemWith(R"({"robots": [{"name": "R", "lower": [0], "upper": [1]}], "objects": [{"name": "O", "parent": "R", "sphere": {"radius": 1}}]})"),
              R"(object 1 "O": parent "R" is not in the station)");
    EXPECT_EQ(problemWith(R"({"frames": [{"name": "F", "pose": [0, 0]}]})"),
              R"(frame 1 "F": "pose" must be an array of 6 numbers [x, y, z, rx, ry, rz])");
}

TEST(CellStationFile, AFileWithABadSolidIsNamedInTheError)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("bad.json");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"objects": [{"name": "Wall", "box": {"size": [1, 0, 1]}}]})");
    file.close();
    QString error;
    EXPECT_FALSE(station_file::read(path, &error));
    EXPECT_EQ(error, path + R"(: object 1 "Wall": box "size" must be positive)");
}

}  // namespace
