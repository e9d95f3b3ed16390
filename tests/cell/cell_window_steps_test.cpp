// What the host shows of the bundled cell, through scenarios run as a process:
// a map switched off leaves nothing in the picture, and a program played
// passes through its targets in order at a readable pace.
#include "cell_fixture.h"
#include "sim_process.h"

#include "program_playback.h"

#include <QImage>
#include <QJsonArray>

#include <cmath>

namespace {

class CellWindowSteps : public ::testing::Test {
protected:
    // Runs the steps on the bundled cell; the picture of the view after them.
    QImage render(const QByteArray& steps, const QString& name)
    {
        folder.write(name + ".json", "{\"steps\": " + steps + "}");
        const SimRun done = folder.runWith({QStringLiteral(WORKCELL_PATH), QStringLiteral("--script"),
                                            folder.path(name + ".json"), QStringLiteral("--plugin"),
                                            QStringLiteral(ZELVANE_PLUGIN_PATH), QStringLiteral("--render"),
                                            folder.path(name + ".png")});
        EXPECT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
        return QImage(folder.path(name + ".png"));
    }

    // Runs the scenario of the folder on the bundled cell, with a transcript.
    SimRun run(const QString& scenario)
    {
        return folder.runWith({QStringLiteral(WORKCELL_PATH), QStringLiteral("--script"), folder.path(scenario),
                               QStringLiteral("--plugin"), QStringLiteral(ZELVANE_PLUGIN_PATH),
                               QStringLiteral("--transcript"), folder.path("out.jsonl")});
    }

    SimFolder folder{QStringLiteral(ZELVANE_PLUGIN_PATH)};
};

TEST_F(CellWindowSteps, AMapShownThenSwitchedOffLeavesThePictureAsIfNeverShown)
{
    const QImage never = render(R"([{"command": "Samples", "value": "30"}, {"command": "Calc"}])", "never");
    const QImage shown = render(R"([{"command": "Samples", "value": "30"}, {"command": "Calc"},
                                    {"command": "Display", "value": "1"}, {"event": 1}])",
                                "shown");
    const QImage hidden = render(R"([{"command": "Samples", "value": "30"}, {"command": "Calc"},
                                     {"command": "Display", "value": "1"}, {"event": 1},
                                     {"command": "Display", "value": "0"}, {"event": 1}])",
                                 "hidden");
    ASSERT_FALSE(never.isNull());
    EXPECT_NE(shown, never) << "the map's lines are in the picture while it is shown";
    EXPECT_EQ(hidden, never) << "the redraw after switching it off leaves none of them";
}

TEST_F(CellWindowSteps, APlayedProgramPassesThroughItsTargetsInOrder)
{
    folder.write("play.json", R"({"steps": [{"command": "Samples", "value": "60"},
                                            {"command": "Join=PickToPlace", "value": "Pick|Place"},
                                            {"play": "PickToPlace"}]})");
    const SimRun done = run("play.json");
    ASSERT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
    const QJsonObject program = done.single("program");
    const QJsonObject played = done.single("play");
    EXPECT_EQ(played.value("program").toString(), "PickToPlace");
    EXPECT_EQ(played.value("robot").toString(), "Arm1");
    const QJsonArray configurations = played.value("configurations").toArray();
    const QJsonArray moves = program.value("instructions").toArray();
    ASSERT_GE(moves.size(), 2);
    ASSERT_GT(configurations.size(), moves.size()) << "the moves are shown on the way, not only their ends";
    EXPECT_EQ(configurations.first(), moves.first().toObject().value("joints"));
    EXPECT_EQ(configurations.last(), moves.last().toObject().value("joints"));
    // Every target of the program comes by, in order, and no step of the
    // playback turns any joint by more than the playback's pace.
    int nextMove = 0;
    for (int i = 0; i < configurations.size(); ++i) {
        if (nextMove < moves.size() && configurations[i] == moves[nextMove].toObject().value("joints"))
            ++nextMove;
        if (i == 0)
            continue;
        const QJsonArray a = configurations[i - 1].toArray();
        const QJsonArray b = configurations[i].toArray();
        ASSERT_EQ(a.size(), 6);
        for (int joint = 0; joint < 6; ++joint)
            EXPECT_LE(std::fabs(b[joint].toDouble() - a[joint].toDouble()), ProgramPlayback::DegreesPerFrame + 1e-9)
                << "frame " << i << ", joint " << joint + 1;
    }
    EXPECT_EQ(nextMove, moves.size());
}

TEST_F(CellWindowSteps, PlayingAProgramThatIsNotThereStopsTheRun)
{
    folder.write("ghost.json", R"({"steps": [{"play": "Ghost"}]})");
    const SimRun done = run("ghost.json");
    EXPECT_NE(done.exitCode, 0);
    EXPECT_TRUE(done.errorOutput.contains("step 1: no program \"Ghost\" to play")) << done.errorOutput.toStdString();
}

}  // namespace
