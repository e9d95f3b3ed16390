// The demo with routes shortened: Pick to Place on the bundled cell as a
// shorter program that starts and ends at its targets, stays free when its
// moves are checked ten times finer, and is drawn in the picture and the view.
#include "cell_fixture.h"
#include "sim_process.h"
#include "station_view.h"
#include "sim_host_api.h"

#include <QColor>
#include <QImage>

namespace {

class ShortenedRoute : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        folder = new SimFolder(QStringLiteral(ZELVANE_PLUGIN_PATH));
        for (const auto& [scenario, name] : {std::pair{QStringLiteral(DEMO_SCENARIO_PATH), QStringLiteral("plain")},
                                             std::pair{QStringLiteral(SHORTENED_SCENARIO_PATH), QStringLiteral("short")}}) {
            runs.push_back(folder->runWith({QStringLiteral(WORKCELL_PATH), QStringLiteral("--script"), scenario,
                                            QStringLiteral("--plugin"), QStringLiteral(ZELVANE_PLUGIN_PATH),
                                            QStringLiteral("--transcript"), folder->path(name + ".jsonl"),
                                            QStringLiteral("--save"), folder->path(name + ".json"),
                                            QStringLiteral("--render"), folder->path(name + ".png")}));
        }
    }
    static void TearDownTestSuite()
    {
        runs.clear();
        delete folder;
    }

    // The joints of the program's stops, in the saved station.
    static std::vector<std::vector<double>> stops(const Station& station)
    {
        std::vector<std::vector<double>> joints;
        const SimItem* program = station.find(QStringLiteral("PickToPlace"), ItemType::Program);
        if (program)
            for (const Instruction& instruction : program->instructions)
                if (instruction.target)
                    joints.push_back(instruction.target->jointValues);
        return joints;
    }

    static double travel(const std::vector<std::vector<double>>& route)
    {
        double total = 0.0;
        for (size_t i = 1; i < route.size(); ++i)
            for (size_t j = 0; j < route[i].size(); ++j)
                total += std::abs(route[i][j] - route[i - 1][j]);
        return total;
    }

    static std::unique_ptr<Station> planned(const char* name)
    {
        QString error;
        auto station = station_file::read(folder->path(QLatin1String(name) + ".json"), &error);
        EXPECT_TRUE(station) << error.toStdString();
        return station;
    }

    static int pathPixels(const QImage& picture)
    {
        int path = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor c = picture.pixelColor(x, y);
                path += c.red() > 240 && c.green() > 180 && c.green() < 215 && c.blue() < 70;
            }
        }
        return path;
    }

    static SimFolder* folder;
    static std::vector<SimRun> runs;
};

SimFolder* ShortenedRoute::folder = nullptr;
std::vector<SimRun> ShortenedRoute::runs;

TEST_F(ShortenedRoute, IsShorterStartsAndEndsAtItsTargetsAndStaysFree)
{
    ASSERT_EQ(runs.size(), 2u);
    ASSERT_EQ(runs[0].exitCode, 0) << runs[0].errorOutput.toStdString();
    ASSERT_EQ(runs[1].exitCode, 0) << runs[1].errorOutput.toStdString();
    const auto plainStation = planned("plain");
    const auto shortStation = planned("short");
    ASSERT_TRUE(plainStation && shortStation);
    const auto plain = stops(*plainStation);
    const auto shortened = stops(*shortStation);
    ASSERT_GE(plain.size(), 3u);
    ASSERT_GE(shortened.size(), 2u);
    EXPECT_LT(travel(shortened), travel(plain));

    SimItem* arm = shortStation->find(QStringLiteral("Arm1"), ItemType::Robot);
    ASSERT_TRUE(arm && arm->arm);
    EXPECT_EQ(shortened.front(), shortStation->find(QStringLiteral("Pick"), ItemType::Target)->jointValues);
    EXPECT_EQ(shortened.back(), shortStation->find(QStringLiteral("Place"), ItemType::Target)->jointValues);
    const double step = shortStation->pathStepDeg();
    for (size_t i = 0; i + 1 < shortened.size(); ++i) {
        const JointVector from(shortened[i].data(), 6), to(shortened[i + 1].data(), 6);
        EXPECT_EQ(arm->testJointMove(from, to, step / 10.0), 0) << "move " << i + 1;
    }
    // The map is the plain run's: only the program differs.
    EXPECT_EQ(shortStation->data.value("Zelvane-Rob Arm1"), plainStation->data.value("Zelvane-Rob Arm1"));
    EXPECT_TRUE(shortStation->data.contains("Zelvane-Options"));
    EXPECT_FALSE(plainStation->data.contains("Zelvane-Options")) << "a station that never had the option gets none";
}

TEST_F(ShortenedRoute, IsDrawnInThePictureAndInTheView)
{
    ASSERT_EQ(runs.size(), 2u);
    const QImage picture(folder->path("short.png"));
    ASSERT_FALSE(picture.isNull());
    EXPECT_GT(pathPixels(picture), 300);

    // In the window's view, with the program selected, as a person sees it.
    auto station = planned("short");
    ASSERT_TRUE(station);
    SimItem* program = station->find(QStringLiteral("PickToPlace"), ItemType::Program);
    ASSERT_TRUE(program);
    station->selection = {program};
    SimHostApi api(std::move(station), nullptr);
    StationView view(api);
    view.resize(800, 600);
    EXPECT_GT(pathPixels(view.grab().toImage()), 200);
}

}  // namespace
