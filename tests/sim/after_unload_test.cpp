// What the host does with each kind of step once the plug-in is unloaded:
// steps that would call the plug-in are refused with an error that names the
// file and the step; steps of the host and the window go on without it.
#include "probe_station.h"
#include "sim_process.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

class AfterUnload : public ::testing::Test {
protected:
    void SetUp() override { folder.write(QStringLiteral("station.json"), probeStation); }

    // Runs an unload, then the step, then a step that would show a later step ran.
    SimRun runAfterUnload(const QByteArray& step)
    {
        folder.write(QStringLiteral("scenario.json"),
                     R"({"steps": [{"command": "message", "value": "before"}, {"unload": true}, )" + step
                         + R"(, {"saveStation": "after.json"}]})");
        return folder.run(QStringLiteral("station.json"), QStringLiteral("scenario.json"));
    }

    void expectRefused(const QByteArray& step, const QString& kind)
    {
        SCOPED_TRACE(step.toStdString());
        const SimRun run = runAfterUnload(step);
        EXPECT_EQ(run.exitCode, 1);
        const QString text = run.single(QStringLiteral("error")).value(QStringLiteral("text")).toString();
        EXPECT_EQ(text, folder.path(QStringLiteral("scenario.json"))
                            + QStringLiteral(": step 3: the plug-in is not loaded (an \"unload\" step came before): \"")
                            + kind + QStringLiteral("\" cannot reach it"));
        EXPECT_TRUE(run.errorOutput.contains(text)) << run.errorOutput.toStdString();
        // The steps after it did not run.
        EXPECT_TRUE(folder.read(QStringLiteral("after.json")).isEmpty());
        EXPECT_EQ(run.ofType(QStringLiteral("reply")).size(), 1u);
    }

    void expectRuns(const QByteArray& step)
    {
        SCOPED_TRACE(step.toStdString());
        const SimRun run = runAfterUnload(step);
        EXPECT_EQ(run.exitCode, 0) << run.errorOutput.toStdString();
        EXPECT_TRUE(run.ofType(QStringLiteral("error")).empty());
        EXPECT_FALSE(folder.read(QStringLiteral("after.json")).isEmpty());
        // Nothing reached the plug-in after its unload: no event, no save data.
        int events = 0;
        for (const QJsonObject& log : run.ofType(QStringLiteral("log")))
            events += log.value("text").toString().startsWith(QStringLiteral("Probe event")) ? 1 : 0;
        EXPECT_EQ(events, 1);  // event 4 as the station opened
        EXPECT_FALSE(QJsonDocument::fromJson(folder.read(QStringLiteral("after.json"))).object()
                         .value("data").toObject().contains("Probe"));
    }

    SimFolder folder{QStringLiteral(PROBE_PLUGIN_PATH)};
};

TEST_F(AfterUnload, StepsThatCallThePluginAreRefusedByName)
{
    expectRefused(R"({"command": "message", "value": "after"})", QStringLiteral("command"));
    expectRefused(R"({"event": 3})", QStringLiteral("event"));
    expectRefused(R"({"event": 1})", QStringLiteral("event"));
    expectRefused(R"({"invoke": "IsTarget", "args": ["Home"]})", QStringLiteral("invoke"));
    expectRefused(R"({"invoke": "Nothing"})", QStringLiteral("invoke"));
    expectRefused(R"({"contextMenu": ["Home"]})", QStringLiteral("contextMenu"));
    expectRefused(R"({"unload": true})", QStringLiteral("unload"));
}

TEST_F(AfterUnload, StepsOfTheHostGoOnWithoutThePlugin)
{
    expectRuns(R"({"select": ["Home", "P1"]})");
    expectRuns(R"({"setJoints": {"robot": "Arm1", "joints": [20, 0, 0]}})");
    expectRuns(R"({"deleteItem": "Far"})");
    expectRuns(R"({"answer": {"pick": "Arm1"}})");
    expectRuns(R"({"answer": {"question": "Yes"}})");
    expectRuns(R"({"cancelAt": {"collisionTest": 2}})");
    // Opening and saving tell a loaded plug-in only.
    expectRuns(R"({"openStation": "station.json"})");
    expectRuns(R"({"saveStation": "saved.json"})");
}

TEST_F(AfterUnload, WindowStepsSeeTheWindowAsThePluginLeftIt)
{
    // The probe adds no form and no window action: the form reads as closed, and a
    // click or an action finds nothing to work, as in the window of any host.
    expectRuns(R"({"form": true})");
    const SimRun click = runAfterUnload(R"({"click": "calcButton"})");
    EXPECT_EQ(click.exitCode, 1);
    EXPECT_TRUE(click.single(QStringLiteral("error")).value("text").toString().endsWith(
        QStringLiteral("step 3: no widget \"calcButton\" in the window")));
    const SimRun action = runAfterUnload(R"({"action": "Probe the targets"})");
    EXPECT_EQ(action.exitCode, 1);
    EXPECT_TRUE(action.single(QStringLiteral("error")).value("text").toString().contains(
        QStringLiteral("step 3: no action \"Probe the targets\"")));
    const SimRun value = runAfterUnload(R"({"setValue": {"widget": "samplesSpin", "value": 5}})");
    EXPECT_EQ(value.exitCode, 1);
    EXPECT_TRUE(value.single(QStringLiteral("error")).value("text").toString().contains(QStringLiteral("step 3: no widget")));
}

TEST_F(AfterUnload, LoadingAgainBringsThePluginBack)
{
    const SimRun run = runAfterUnload(R"({"load": true}, {"command": "message", "value": "after"}, {"event": 3})");
    EXPECT_EQ(run.exitCode, 0) << run.errorOutput.toStdString();
    ASSERT_EQ(run.ofType(QStringLiteral("reply")).size(), 2u);
    EXPECT_EQ(run.ofType(QStringLiteral("reply"))[1].value("reply"), QJsonValue("shown"));
    // Loaded again, the plug-in hears of the save and of the end of the run.
    EXPECT_TRUE(QJsonDocument::fromJson(folder.read(QStringLiteral("after.json"))).object()
                    .value("data").toObject().contains("Probe"));
}

TEST_F(AfterUnload, LoadingALoadedPluginIsRefused)
{
    folder.write(QStringLiteral("scenario.json"), R"({"steps": [{"load": true}]})");
    const SimRun run = folder.run(QStringLiteral("station.json"), QStringLiteral("scenario.json"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.single(QStringLiteral("error")).value("text").toString(),
              folder.path(QStringLiteral("scenario.json")) + QStringLiteral(": step 1: the plug-in is already loaded"));
}

}  // namespace
