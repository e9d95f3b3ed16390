#include "cell_checker.h"
#include "cell_fixture.h"
#include "cell_model.h"
#include "cell_placement.h"

namespace {

// The station keeps each robot's view of the cell from check to check, and
// builds it again when the geometry changed in between.
class CheckerCache : public BundledCell {
protected:
    SimItem* object(const char* name) const { return station->find(QLatin1String(name), ObjectType); }

    // The object's solid moved to a new place, as a host would after a drag.
    void moveObject(SimItem* item, const Eigen::Vector3d& to)
    {
        auto moved = std::make_shared<CellObject>(*item->object);
        moved->world.translation() = to;
        item->object = moved;
        station->geometryChanged();
    }

    // Where the tool's box sits with the arm at home.
    Eigen::Vector3d toolAtHome()
    {
        const std::vector<double> home = targetJoints("Home");
        std::vector<Eigen::Isometry3d> frames;
        arm->arm->linkFrames(cell_placement::absolutePose(arm), home.data(), frames);
        return frames.back().translation();
    }
};

TEST_F(CheckerCache, OneViewServesEveryCheckUntilTheGeometryChanges)
{
    const std::vector<double> home = targetJoints("Home"), pick = targetJoints("Pick");
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(collisionsAt(home), 0);
        EXPECT_EQ(moveCollides(pick, targetJoints("Place"), 4.0), 1);
    }
    EXPECT_EQ(station->cellCheckerBuilds(), 1);
    // Targets and programs are no geometry.
    station->remove(station->find(QStringLiteral("Home"), ItemType::Target));
    EXPECT_EQ(collisionsAt(home), 0);
    EXPECT_EQ(station->cellCheckerBuilds(), 1);
    station->remove(object("Ball"));
    EXPECT_EQ(collisionsAt(home), 0);
    EXPECT_EQ(station->cellCheckerBuilds(), 2);
}

TEST_F(CheckerCache, AnObjectAddedBetweenChecksIsHitByTheNextOne)
{
    const std::vector<double> home = targetJoints("Home");
    EXPECT_EQ(collisionsAt(home), 0);
    SimItem* item = station->create(ObjectType, QStringLiteral("Lamp"));
    auto lamp = std::make_shared<CellObject>();
    lamp->solid.kind = Solid::Kind::Sphere;
    lamp->solid.radius = 30;
    prepareSolid(lamp->solid);
    lamp->world.translation() = toolAtHome();
    item->object = lamp;
    EXPECT_EQ(collisionsAt(home), 1);
}

TEST_F(CheckerCache, AnObjectMovedBetweenChecksIsWhereItWasMovedTo)
{
    const std::vector<double> home = targetJoints("Home");
    SimItem* ball = object("Ball");
    const Eigen::Vector3d was = ball->object->world.translation();
    EXPECT_EQ(collisionsAt(home), 0);
    moveObject(ball, toolAtHome());
    EXPECT_EQ(collisionsAt(home), 1);
    moveObject(ball, was);
    EXPECT_EQ(collisionsAt(home), 0);
}

TEST_F(CheckerCache, ARobotPlacedElsewhereChecksFromItsNewPlace)
{
    // Lowered by half a metre, the pedestal sinks into the table.
    const std::vector<double> pick = targetJoints("Pick");
    EXPECT_EQ(collisionsAt(pick), 0);
    arm->pose[2] -= 500;
    station->geometryChanged();
    EXPECT_GT(collisionsAt(pick), 0);
    arm->pose[2] += 500;
    station->geometryChanged();
    EXPECT_EQ(collisionsAt(pick), 0);
}

TEST_F(CheckerCache, ALongerToolReachesWhatTheOldOneDidNot)
{
    const std::vector<double> pick = targetJoints("Pick");
    EXPECT_EQ(collisionsAt(pick), 0);
    auto longer = std::make_shared<ArmModel>(*arm->arm);
    for (LinkSolid& solid : longer->solids) {
        if (solid.link == longer->toolLink()) {
            // 300 mm longer at the tip, reaching down into the fixture.
            solid.solid.size.z() += 300;
            solid.solid.local.translation().z() += 150;
            prepareSolid(solid.solid);
        }
    }
    arm->arm = longer;
    station->geometryChanged();
    EXPECT_GT(collisionsAt(pick), 0);
}

TEST(CheckerCacheOnARail, TheRailCarriesItsArmIntoTheBlock)
{
    // A rail along the station's y carries a one-link arm lying along x; a
    // block stands 800 along the rail.
    QString problem;
    auto station = station_file::parse(R"({
      "frames": [ { "name": "Cell", "parent": null } ],
      "robots": [
        { "name": "Rail", "parent": "Cell", "pose": [0, 0, 0, -90, 0, 0], "lower": [0], "upper": [2000],
          "joints": [0], "carries": "Arm", "kinematics": { "joints": [ { "type": "prismatic" } ] } },
        { "name": "Arm", "parent": "Rail", "lower": [-180], "upper": [180], "joints": [0],
          "kinematics": { "joints": [ { "a": 300 } ] },
          "solids": [ { "link": 1, "capsule": { "radius": 20, "from": [-300, 0, 0], "to": [0, 0, 0] } } ] } ],
      "objects": [ { "name": "Block", "parent": "Cell", "pose": [150, 800, 0, 0, 0, 0],
                     "box": { "size": [100, 100, 100] } } ]
    })", &problem);
    ASSERT_TRUE(station) << problem.toStdString();
    SimItem* rail = station->find(QStringLiteral("Rail"), ItemType::Robot);
    auto railTo = [&](double along) { rail->setJoints(JointVector(&along, 1)); };
    EXPECT_EQ(station->collisions(), 0);
    railTo(800);
    EXPECT_EQ(station->collisions(), 1);
    railTo(800);
    const long long builds = station->cellCheckerBuilds();
    EXPECT_EQ(station->collisions(), 1);
    EXPECT_EQ(station->cellCheckerBuilds(), builds) << "the rail did not move";
    railTo(0);
    EXPECT_EQ(station->collisions(), 0);
}

}  // namespace
