#include "host_monitor.h"
#include "sim_host_api.h"
#include "sim_item.h"
#include "station_file.h"

#include "vorlik/item_types.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

// Keeps what the host reports, for the tests to look at.
class RecordingMonitor final : public HostMonitor {
public:
    void hostCalled() override { ++calls; }
    void collisionTested() override { ++tests; }
    void record(const QJsonObject& record) override { records.push_back(record); }
    bool recording() const override { return true; }

    int calls = 0;
    int tests = 0;
    std::vector<QJsonObject> records;
};

const char* const station = R"({
  "frames":   [ { "name": "Cell" } ],
  "robots":   [ { "name": "Rail", "parent": "Cell", "lower": [0], "upper": [1000], "carries": "Arm1" },
                { "name": "Arm1", "parent": "Rail", "lower": [-180, -90, -90], "upper": [180, 90, 90],
                  "joints": [0, 0, 0], "jointBoxes": [ { "lower": [10, -20, -90], "upper": [40, 20, 90] } ] } ],
  "targets":  [ { "name": "Home", "robot": "Arm1", "parent": "Cell", "joints": [1, 2, 3] },
                { "name": "Far", "robot": "Arm1", "parent": "Cell", "joints": [60, 0, 0] } ],
  "programs": [ { "name": "P1", "robot": "Arm1", "instructions": [ { "moveJoint": "Home" }, { "call": "P0" },
                                                                    { "moveJoint": "Far" } ] },
                { "name": "Empty", "robot": "Arm1" } ]
})";

class HostApiTest : public ::testing::Test {
protected:
    HostApiTest() : api(load(), &monitor) {}

    static std::unique_ptr<Station> load()
    {
        QString problem;
        auto parsed = station_file::parse(station, &problem);
        EXPECT_TRUE(parsed) << problem.toStdString();
        return parsed;
    }

    HostItem* arm() { return api.getItem(QStringLiteral("Arm1"), ItemType::Robot); }

    RecordingMonitor monitor;
    SimHostApi api;
};

TEST_F(HostApiTest, FindsItemsByNameAndTypeButNotByEmptyName)
{
    EXPECT_NE(arm(), nullptr);
    EXPECT_EQ(api.getItem(QStringLiteral("Arm1"), ItemType::Target), nullptr);
    EXPECT_EQ(api.getItem(QString(), ItemType::Robot), nullptr);
    QList<Item> robots;
    ASSERT_EQ(api.getItemList(robots, ItemType::Robot).size(), 2);
    EXPECT_EQ(robots[0]->name(), QStringLiteral("Rail"));
    QList<Item> none;
    EXPECT_TRUE(api.getItemList(none, 99).isEmpty());
    EXPECT_GT(monitor.calls, 0);
}

TEST_F(HostApiTest, DeletedItemsStayUsableButInvalid)
{
    HostItem* home = api.getItem(QStringLiteral("Home"), ItemType::Target);
    EXPECT_TRUE(api.isValidItem(home));
    home->deleteItem();
    EXPECT_FALSE(api.isValidItem(home));
    EXPECT_EQ(home->name(), QStringLiteral("Home"));
    EXPECT_EQ(api.getItem(QStringLiteral("Home"), ItemType::Target), nullptr);
    EXPECT_FALSE(api.isValidItem(nullptr));
}

TEST_F(HostApiTest, ReplacedStationInvalidatesOldHandles)
{
    HostItem* old = arm();
    api.replaceStation(load());
    EXPECT_FALSE(api.isValidItem(old));
    EXPECT_TRUE(api.isValidItem(arm()));
    EXPECT_NE(arm(), old);
}

TEST_F(HostApiTest, LinksLeadToTheRobot)
{
    HostItem* rail = api.getItem(QStringLiteral("Rail"), ItemType::Robot);
    EXPECT_EQ(rail->getLink(ItemType::Robot), arm());
    EXPECT_EQ(arm()->getLink(ItemType::Robot), arm());
    EXPECT_EQ(arm()->parent(), rail);
    EXPECT_EQ(api.getItem(QStringLiteral("Home"), ItemType::Target)->getLink(ItemType::Robot), arm());
    EXPECT_EQ(api.getItem(QStringLiteral("P1"), ItemType::Program)->getLink(ItemType::Robot), arm());
    EXPECT_EQ(api.getItem(QStringLiteral("Cell"), FrameType)->getLink(ItemType::Robot), nullptr);
}

TEST_F(HostApiTest, JointLimitsOfRobotsAndPrograms)
{
    JointVector lower;
    JointVector upper;
    arm()->jointLimits(lower, upper);
    EXPECT_EQ(lower.count(), 3);
    EXPECT_EQ(upper[1], 90.0);
    api.getItem(QStringLiteral("P1"), ItemType::Program)->jointLimits(lower, upper);
    EXPECT_EQ(lower.toText(QStringLiteral(","), 0), QStringLiteral("1,2,3"));
    EXPECT_EQ(upper.toText(QStringLiteral(","), 0), QStringLiteral("60,0,0"));
    api.getItem(QStringLiteral("Empty"), ItemType::Program)->jointLimits(lower, upper);
    EXPECT_EQ(lower.count(), 0);
    EXPECT_EQ(upper.count(), 0);
}

TEST_F(HostApiTest, CollisionsFollowTheRobotsJoints)
{
    EXPECT_EQ(api.collisions(), 0);
    const double inside[] = {20, 0, 0};
    arm()->setJoints(JointVector(inside, 3));
    EXPECT_EQ(api.collisions(), 1);
    EXPECT_EQ(monitor.tests, 2);
    JointVector now;
    EXPECT_EQ(arm()->joints(now).toText(QStringLiteral(","), 0), QStringLiteral("20,0,0"));
}

TEST_F(HostApiTest, JointMoveStepComesFromTheHostParameterWhenNotGiven)
{
    const double a[] = {0, 0, 0};
    const double b[] = {60, 0, 0};
    const JointVector from(a, 3);
    const JointVector to(b, 3);
    // Default step 4: points 0, 4, ..., 60, and 12 is inside.
    EXPECT_EQ(arm()->testJointMove(from, to, -1.0), 1);
    QString reply;
    EXPECT_EQ(api.command(reply, QStringLiteral("PathStepCollisionDeg"), QStringLiteral("60")), QStringLiteral("OK"));
    // Step 60: only the end points, both outside.
    EXPECT_EQ(arm()->testJointMove(from, to, 0.0), 0);
    EXPECT_EQ(arm()->testJointMove(from, to, 1.0), 1);
    EXPECT_EQ(monitor.tests, 3);
}

TEST_F(HostApiTest, AJointMoveTheRobotCannotTakeCannotBeChecked)
{
    const double home[] = {0, 0, 0};
    const double beyond[] = {0, 90.5, 0};
    const double far[] = {1e15, 0, 0};
    const double twoJoints[] = {0, 0};
    const JointVector from(home, 3);
    EXPECT_EQ(arm()->testJointMove(from, JointVector(beyond, 3), -1.0), MoveNotCheckable);
    EXPECT_EQ(arm()->testJointMove(JointVector(beyond, 3), from, -1.0), MoveNotCheckable);
    EXPECT_EQ(arm()->testJointMove(from, JointVector(far, 3), -1.0), MoveNotCheckable);
    EXPECT_EQ(arm()->testJointMove(from, JointVector(twoJoints, 2), -1.0), MoveNotCheckable) << "another joint count";
    EXPECT_EQ(arm()->testJointMove(JointVector(), JointVector(), -1.0), MoveNotCheckable) << "no configuration";
    HostItem* target = api.getItem(QStringLiteral("Home"), ItemType::Target);
    EXPECT_EQ(target->testJointMove(from, from, -1.0), MoveNotCheckable) << "a target is no robot";
    // The limits themselves can be taken; every call counts as a test.
    const double onLimits[] = {-180, 90, -90};
    EXPECT_EQ(arm()->testJointMove(from, JointVector(onLimits, 3), -1.0), 0);
    EXPECT_EQ(monitor.tests, 7);
}

TEST_F(HostApiTest, AJointMoveOfFinePointsIsAnsweredAtOnce)
{
    // Across the whole joint range at a step of 1e-9 degrees: the points are
    // not visited one by one, and the box in the middle is found.
    const double a[] = {-180, 0, 0};
    const double b[] = {180, 0, 0};
    EXPECT_EQ(arm()->testJointMove(JointVector(a, 3), JointVector(b, 3), 1e-9), 1);
    const double c[] = {-180, 50, 0};
    const double d[] = {180, 50, 0};
    EXPECT_EQ(arm()->testJointMove(JointVector(c, 3), JointVector(d, 3), 1e-9), 0);
}

TEST_F(HostApiTest, ParametersAnswerAndRecordTheirChanges)
{
    QString reply;
    EXPECT_EQ(api.command(reply, QStringLiteral("PathStepCollisionDeg"), QString()), QStringLiteral("4.0"));
    api.command(reply, QStringLiteral("PathStepCollisionDeg"), QStringLiteral("2.0"));
    EXPECT_EQ(api.command(reply, QStringLiteral("PathStepCollisionDeg"), QString()), QStringLiteral("2.0"));
    ASSERT_EQ(monitor.records.size(), 1u);
    EXPECT_EQ(monitor.records[0], (QJsonObject{{"type", "param"}, {"name", "PathStepCollisionDeg"}, {"value", "2.0"}}));
}

TEST_F(HostApiTest, JointsValidWithinLimitsOnly)
{
    const double ok[] = {180, -90, 0};
    const double beyond[] = {181, 0, 0};
    EXPECT_TRUE(arm()->jointsValid(JointVector(ok, 3)));
    EXPECT_FALSE(arm()->jointsValid(JointVector(beyond, 3)));
    EXPECT_FALSE(arm()->jointsValid(JointVector(ok, 2)));
}

TEST_F(HostApiTest, TargetsKeepTheirJointsAndProgramsAreRecordedWhenFinished)
{
    HostItem* program = api.addProgram(QStringLiteral("Route"), arm());
    const double moved[] = {7, 8, 9};
    arm()->setJoints(JointVector(moved, 3));
    HostItem* target = api.addTarget(QStringLiteral("Pt 1 (S12)"), arm()->parent(), arm());
    EXPECT_EQ(target->getLink(ItemType::Robot), arm());
    // A new target given no joints takes the robot's.
    target->setAsJointTarget();
    JointVector kept;
    EXPECT_EQ(target->joints(kept).toText(QStringLiteral(","), 0), QStringLiteral("7,8,9"));
    // A target given joints keeps them, wherever the robot is.
    const double own[] = {1, 2, 3};
    target->setJoints(JointVector(own, 3));
    arm()->setJoints(JointVector(3));
    target->setAsJointTarget();
    EXPECT_EQ(target->joints(kept).toText(QStringLiteral(","), 0), QStringLiteral("1,2,3"));
    program->addJointMove(target);
    program->addProgramCall(QStringLiteral("P1"), 0);
    program->finishProgram(QString());
    ASSERT_EQ(monitor.records.size(), 1u);
    const QJsonObject record = monitor.records[0];
    EXPECT_EQ(record.value("type"), QStringLiteral("program"));
    EXPECT_EQ(record.value("name"), QStringLiteral("Route"));
    EXPECT_EQ(record.value("robot"), QStringLiteral("Arm1"));
    const QJsonArray instructions = record.value("instructions").toArray();
    ASSERT_EQ(instructions.size(), 2);
    EXPECT_EQ(instructions[0].toObject().value("moveJoint"), QStringLiteral("Pt 1 (S12)"));
    EXPECT_EQ(instructions[0].toObject().value("id").toInt(), static_cast<SimItem*>(target)->id());
    EXPECT_EQ(instructions[1].toObject(), (QJsonObject{{"call", "P1"}}));
}

TEST_F(HostApiTest, DrawingAndSequencesAreRecorded)
{
    const double points[] = {0, 1, 2, 3, 4, 5};
    const float color[] = {0.999f, 0.999f, 0.999f, 1.0f};
    api.drawGeometry(2, points, 2, color, 1.0f, 0);
    double values[] = {1, 2, 3, 4, 5, 6};
    int32_t extents[] = {3, 2};
    RoadmapMatrix matrix;
    matrix.values = values;
    matrix.extents = extents;
    matrix.dimensionCount = 2;
    arm()->showJointSequence(&matrix);
    ASSERT_EQ(monitor.records.size(), 2u);
    EXPECT_EQ(monitor.records[0], (QJsonObject{{"type", "draw"}, {"primitive", 2}, {"count", 2},
                                               {"color", QJsonArray{0.999, 0.999, 0.999, 1.0}}, {"width", 1.0},
                                               {"points", QJsonArray{QJsonArray{0, 1, 2}, QJsonArray{3, 4, 5}}}}));
    EXPECT_EQ(monitor.records[1], (QJsonObject{{"type", "sequence"}, {"robot", "Arm1"}, {"rows", 3}, {"cols", 2}}));
}

TEST_F(HostApiTest, PicksTakeQueuedAnswersAndCancelWithoutOne)
{
    api.queuePick(api.station().find(QStringLiteral("Rail"), ItemType::Robot));
    EXPECT_EQ(api.pickItem(QStringLiteral("Choose"), ItemType::Robot),
              api.getItem(QStringLiteral("Rail"), ItemType::Robot));
    EXPECT_EQ(api.pickItem(QStringLiteral("Choose"), ItemType::Robot), nullptr);
    ASSERT_EQ(monitor.records.size(), 2u);
    EXPECT_EQ(monitor.records[1].value("answer"), QJsonValue());
}

TEST_F(HostApiTest, DataParametersAndSelection)
{
    EXPECT_TRUE(api.getDataParam(QStringLiteral("Zelvane")).isEmpty());
    api.setDataParam(QStringLiteral("Zelvane"), QByteArray("abc"));
    EXPECT_EQ(api.getDataParam(QStringLiteral("Zelvane")), QByteArray("abc"));
    api.station().selection = {api.station().find(QStringLiteral("Far"), ItemType::Target)};
    QList<Item> selected;
    ASSERT_EQ(api.getSelectedItems(selected).size(), 1);
    EXPECT_EQ(selected[0]->name(), QStringLiteral("Far"));
    api.setRenderMode(1);
    EXPECT_EQ(api.renderMode(), 1);
}

}  // namespace
