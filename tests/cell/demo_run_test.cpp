#include "cell_fixture.h"
#include "sim_process.h"

#include <QColor>
#include <QImage>

#include <set>

namespace {

// The demo, as tools/run-demo.sh runs it: the bundled cell and scenario, with
// the planned station saved and a picture rendered.
class DemoRun : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        folder = new SimFolder(QStringLiteral(ZELVANE_PLUGIN_PATH));
        result = new SimRun(folder->runWith(
            {QStringLiteral(WORKCELL_PATH), QStringLiteral("--script"), QStringLiteral(DEMO_SCENARIO_PATH),
             QStringLiteral("--plugin"), QStringLiteral(ZELVANE_PLUGIN_PATH), QStringLiteral("--transcript"),
             folder->path("out.jsonl"), QStringLiteral("--save"), folder->path("planned.json"),
             QStringLiteral("--render"), folder->path("cell.png")}));
    }
    static void TearDownTestSuite()
    {
        delete result;
        delete folder;
    }

    static SimFolder* folder;
    static SimRun* result;
};

SimFolder* DemoRun::folder = nullptr;
SimRun* DemoRun::result = nullptr;

std::vector<double> joints(const SimItem* target)
{
    return target ? target->jointValues : std::vector<double>();
}

TEST_F(DemoRun, LinksPickToPlaceWithAProgramThatStaysFreeAtATenthOfTheMapStep)
{
    ASSERT_EQ(result->exitCode, 0) << result->errorOutput.toStdString();
    bool linked = false;
    for (const QJsonObject& reply : result->ofType(QStringLiteral("reply")))
        linked = linked || (reply.value("command").toString().startsWith("Join") && reply.value("reply") == "Success");
    EXPECT_TRUE(linked);

    QString error;
    auto station = station_file::read(folder->path("planned.json"), &error);
    ASSERT_TRUE(station) << error.toStdString();
    SimItem* arm = station->find(QStringLiteral("Arm1"), ItemType::Robot);
    ASSERT_TRUE(arm && arm->arm) << "the saved station keeps the arm";
    const SimItem* program = station->find(QStringLiteral("PickToPlace"), ItemType::Program);
    ASSERT_TRUE(program);
    std::vector<std::vector<double>> stops;
    for (const Instruction& instruction : program->instructions) {
        if (instruction.target)
            stops.push_back(instruction.target->jointValues);
    }
    ASSERT_GE(stops.size(), 3u) << "a straight move would not do";
    EXPECT_EQ(stops.front(), joints(station->find(QStringLiteral("Pick"), ItemType::Target)));
    EXPECT_EQ(stops.back(), joints(station->find(QStringLiteral("Place"), ItemType::Target)));

    const double mapStep = station->pathStepDeg();
    for (size_t i = 0; i + 1 < stops.size(); ++i) {
        const JointVector from(stops[i].data(), 6), to(stops[i + 1].data(), 6);
        EXPECT_EQ(arm->testJointMove(from, to, mapStep / 10.0), 0) << "move " << i + 1;
    }
    for (const auto& stop : stops) {
        arm->setJoints(JointVector(stop.data(), 6));
        EXPECT_EQ(station->collisions(), 0);
    }
    // And the move the planner had to avoid really collides.
    const std::vector<double> pick = stops.front(), place = stops.back();
    EXPECT_EQ(arm->testJointMove(JointVector(pick.data(), 6), JointVector(place.data(), 6), mapStep), 1);
}

TEST_F(DemoRun, ThePictureShowsTheRobotTheTableTheMapAndThePath)
{
    ASSERT_EQ(result->exitCode, 0);
    QImage picture(folder->path("cell.png"));
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(picture.size(), QSize(1024, 768));
    int robot = 0, table = 0, map = 0, path = 0;
    std::set<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor c = picture.pixelColor(x, y);
            colours.insert(c.rgb());
            const int r = c.red(), g = c.green(), b = c.blue();
            // The arm is painted orange, the table blue-grey, the map near
            // white and the path a bright yellow (shading varies the first two).
            robot += r > 120 && r > g + 35 && g > b + 25;
            table += b > 110 && b > r + 20 && std::abs(g - (r + b) / 2) < 25 && r > 70;
            map += r > 170 && g > 170 && b > 170;
            path += r > 240 && g > 180 && g < 215 && b < 70;
        }
    }
    EXPECT_GT(colours.size(), 500u) << "not blank";
    EXPECT_GT(robot, 1500);
    EXPECT_GT(table, 20000);
    EXPECT_GT(map, 1500);
    EXPECT_GT(path, 300);
}

}  // namespace
