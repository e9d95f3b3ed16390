#include "probe_station.h"
#include "sim_process.h"

#include <gtest/gtest.h>

namespace {

// Files a run must leave alone when it cannot use its input.
const QByteArray untouched = "left as it was";

class BadInput : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder.write(QStringLiteral("station.json"), probeStation);
        folder.write(QStringLiteral("keep.json"), untouched);
    }

    SimRun runScenario(const QByteArray& scenario)
    {
        folder.write(QStringLiteral("scenario.json"), scenario);
        return folder.run(QStringLiteral("station.json"), QStringLiteral("scenario.json"),
                          {QStringLiteral("--save"), folder.path(QStringLiteral("keep.json"))});
    }

    SimRun runStation(const QByteArray& station)
    {
        folder.write(QStringLiteral("bad-station.json"), station);
        folder.write(QStringLiteral("scenario.json"), R"({"steps": [{"saveStation": "keep.json"}]})");
        return folder.run(QStringLiteral("bad-station.json"), QStringLiteral("scenario.json"),
                          {QStringLiteral("--save"), folder.path(QStringLiteral("keep.json"))});
    }

    // One error record and the same message on stderr, both naming the file and
    // the problem; a failing exit; nothing overwritten.
    void expectRefused(const SimRun& run, const QString& file, const QString& problem)
    {
        EXPECT_EQ(run.exitCode, 1);
        const QString text = run.single(QStringLiteral("error")).value(QStringLiteral("text")).toString();
        EXPECT_TRUE(text.startsWith(folder.path(file) + QStringLiteral(": "))) << text.toStdString();
        EXPECT_TRUE(text.contains(problem)) << text.toStdString();
        EXPECT_TRUE(run.errorOutput.contains(text)) << run.errorOutput.toStdString();
        EXPECT_EQ(folder.read(QStringLiteral("keep.json")), untouched);
    }

    SimFolder folder{QStringLiteral(PROBE_PLUGIN_PATH)};
};

TEST_F(BadInput, StationThatIsNotJson)
{
    expectRefused(runStation("{ \"robots\": [ "), QStringLiteral("bad-station.json"), QStringLiteral("not valid JSON"));
}

TEST_F(BadInput, StationWithJointsOfTheWrongLength)
{
    const SimRun run = runStation(R"({"robots": [{"name": "Arm1", "lower": [0, 0], "upper": [1, 1], "joints": [0]}]})");
    expectRefused(run, QStringLiteral("bad-station.json"), QStringLiteral("robot 1 \"Arm1\": \"joints\" has the wrong length"));
}

TEST_F(BadInput, StationNamingAnUnknownItem)
{
    const SimRun run = runStation(R"({"targets": [{"name": "T1", "robot": "Ghost"}]})");
    expectRefused(run, QStringLiteral("bad-station.json"), QStringLiteral("robot \"Ghost\" is not in the station"));
}

TEST_F(BadInput, MissingStation)
{
    folder.write(QStringLiteral("scenario.json"), R"({"steps": []})");
    const SimRun run = folder.run(QStringLiteral("absent.json"), QStringLiteral("scenario.json"),
                                  {QStringLiteral("--save"), folder.path(QStringLiteral("keep.json"))});
    expectRefused(run, QStringLiteral("absent.json"), QStringLiteral("cannot open the station"));
}

TEST_F(BadInput, ScenarioThatIsNotJson)
{
    expectRefused(runScenario("{\"steps\": [ {"), QStringLiteral("scenario.json"), QStringLiteral("not valid JSON"));
}

TEST_F(BadInput, UnknownStepStopsTheRunBeforeThePluginLoads)
{
    const SimRun run = runScenario(R"({"steps": [{"saveStation": "keep.json"}, {"teleport": "Arm1"}]})");
    expectRefused(run, QStringLiteral("scenario.json"), QStringLiteral("step 2: unknown step {\"teleport\"}"));
    // The plug-in was never loaded: it logs as it loads.
    int pluginLines = 0;
    for (const QJsonObject& log : run.ofType(QStringLiteral("log")))
        pluginLines += log.value("text").toString().startsWith(QStringLiteral("Probe")) ? 1 : 0;
    EXPECT_EQ(pluginLines, 0);
}

TEST_F(BadInput, MissingScenario)
{
    const SimRun run = folder.run(QStringLiteral("station.json"), QStringLiteral("absent.json"),
                                  {QStringLiteral("--save"), folder.path(QStringLiteral("keep.json"))});
    expectRefused(run, QStringLiteral("absent.json"), QStringLiteral("cannot open the scenario"));
}

TEST_F(BadInput, UnknownItemNameStopsAtItsStep)
{
    const SimRun run = runScenario(R"({"steps": [{"command": "message", "value": "before"}, {"select": ["Ghost"]},
                                                  {"saveStation": "saved.json"}]})");
    expectRefused(run, QStringLiteral("scenario.json"), QStringLiteral("step 2: unknown item \"Ghost\""));
    EXPECT_EQ(run.single(QStringLiteral("reply")).value("step").toInt(), 1);
    EXPECT_TRUE(folder.read(QStringLiteral("saved.json")).isEmpty());
}

TEST_F(BadInput, UnknownItemAsSlotArgument)
{
    const SimRun run = runScenario(R"({"steps": [{"invoke": "IsTarget", "args": ["Ghost"]}]})");
    expectRefused(run, QStringLiteral("scenario.json"), QStringLiteral("argument 1 of \"IsTarget\": unknown item \"Ghost\""));
}

TEST_F(BadInput, UnknownSlot)
{
    const SimRun run = runScenario(R"({"steps": [{"invoke": "IsTarget", "args": ["Home", true]}]})");
    expectRefused(run, QStringLiteral("scenario.json"), QStringLiteral("no public slot \"IsTarget\" taking 2 arguments"));
}

TEST_F(BadInput, JointArrayOfTheWrongLength)
{
    const SimRun run = runScenario(R"({"steps": [{"setJoints": {"robot": "Arm1", "joints": [1, 2]}}]})");
    expectRefused(run, QStringLiteral("scenario.json"), QStringLiteral("robot \"Arm1\" has 3 joints, the step gives 2"));
}

TEST_F(BadInput, JointArrayThatIsNotNumbers)
{
    const SimRun run = runScenario(R"({"steps": [{"setJoints": {"robot": "Arm1", "joints": [1, "x", 3]}}]})");
    expectRefused(run, QStringLiteral("scenario.json"), QStringLiteral("invalid \"setJoints\" step"));
}

TEST_F(BadInput, OpeningAMissingStation)
{
    const SimRun run = runScenario(R"({"steps": [{"openStation": "absent.json"}]})");
    expectRefused(run, QStringLiteral("scenario.json"), folder.path(QStringLiteral("absent.json")) + ": cannot open");
}

TEST_F(BadInput, PluginThatCannotBeLoaded)
{
    folder.write(QStringLiteral("scenario.json"), R"({"steps": []})");
    const SimRun run = folder.runWith({folder.path(QStringLiteral("station.json")), QStringLiteral("--script"),
                                       folder.path(QStringLiteral("scenario.json")), QStringLiteral("--transcript"),
                                       folder.path(QStringLiteral("out.jsonl")), QStringLiteral("--plugin"),
                                       folder.path(QStringLiteral("keep.json"))});
    expectRefused(run, QStringLiteral("keep.json"), QStringLiteral("cannot load the plug-in"));
}

TEST_F(BadInput, OutputOverAnInputIsRefused)
{
    folder.write(QStringLiteral("scenario.json"), R"({"steps": []})");
    const SimRun run = folder.runWith({folder.path(QStringLiteral("station.json")), QStringLiteral("--script"),
                                       folder.path(QStringLiteral("scenario.json")), QStringLiteral("--save"),
                                       folder.path(QStringLiteral("station.json"))});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.errorOutput.contains(QStringLiteral("an output file cannot also be an input")));
    EXPECT_EQ(folder.read(QStringLiteral("station.json")), QByteArray(probeStation));
}

}  // namespace
