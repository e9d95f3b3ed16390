#include "probe_station.h"
#include "sim_process.h"
#include "step_time.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

class ProbeRun : public ::testing::Test {
protected:
    void SetUp() override { folder.write(QStringLiteral("station.json"), probeStation); }

    SimRun run(const QByteArray& scenario, const QStringList& more = {})
    {
        folder.write(QStringLiteral("scenario.json"), scenario);
        SimRun done = folder.run(QStringLiteral("station.json"), QStringLiteral("scenario.json"), more);
        EXPECT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
        return done;
    }

    static QStringList replies(const SimRun& done)
    {
        QStringList texts;
        for (const QJsonObject& record : done.ofType(QStringLiteral("reply")))
            texts << record.value("reply").toString();
        return texts;
    }

    static QStringList logLines(const SimRun& done)
    {
        QStringList lines;
        for (const QJsonObject& record : done.ofType(QStringLiteral("log")))
            lines << record.value("text").toString();
        return lines;
    }

    static QJsonValue resultOf(const SimRun& done, int step)
    {
        for (const QJsonObject& record : done.ofType(QStringLiteral("result"))) {
            if (record.value("step").toInt() == step)
                return record.value("value");
        }
        ADD_FAILURE() << "no result for step " << step;
        return QJsonValue(QJsonValue::Undefined);
    }

    SimFolder folder{QStringLiteral(PROBE_PLUGIN_PATH)};
};

TEST_F(ProbeRun, LifecycleCommandsAndMessagesAreRecordedInOrder)
{
    const SimRun done = run(R"({"steps": [{"command": "message", "value": "Hello"}]})");
    const QStringList lines = logLines(done);
    const int loaded = lines.indexOf(QStringLiteral("Probe loaded with vorlik-sim"));
    const int toolbar = lines.indexOf(QStringLiteral("Probe toolbar 24"));
    const int opened = lines.indexOf(QStringLiteral("Probe event 4"));
    const int closing = lines.indexOf(QStringLiteral("Probe event 6"));
    const int unloaded = lines.indexOf(QStringLiteral("Probe unloaded"));
    EXPECT_GE(loaded, 0);
    EXPECT_LT(loaded, toolbar);
    EXPECT_LT(toolbar, opened);
    EXPECT_LT(opened, closing);
    EXPECT_LT(closing, unloaded);
    EXPECT_EQ(withoutStepTime(done.single(QStringLiteral("reply"))),
              (QJsonObject{{"type", "reply"}, {"step", 1}, {"command", "message"}, {"value", "Hello"}, {"reply", "shown"}}));
    EXPECT_EQ(done.single(QStringLiteral("message")),
              (QJsonObject{{"type", "message"}, {"text", "Hello"}, {"popup", true}}));
    // The message comes before the reply that ends its command.
    QStringList order;
    for (const QJsonObject& record : done.records)
        if (record.value("type") != "log")
            order << record.value("type").toString();
    EXPECT_EQ(order, (QStringList{"message", "reply"}));
}

TEST_F(ProbeRun, ATranscriptKeepsWhatHappenedBeforeThePluginKilledTheHost)
{
    folder.write(QStringLiteral("scenario.json"),
                 R"({"steps": [{"command": "message", "value": "Hello"}, {"command": "crash"}]})");
    const SimRun done = folder.run(QStringLiteral("station.json"), QStringLiteral("scenario.json"));
    EXPECT_NE(done.exitCode, 0);
    EXPECT_EQ(replies(done), QStringList{QStringLiteral("shown")});
    ASSERT_FALSE(logLines(done).isEmpty());
    EXPECT_EQ(logLines(done).last(), QStringLiteral("Probe crashing"));
}

TEST_F(ProbeRun, SelectionAndSlotsByName)
{
    const SimRun done = run(R"({"steps": [
        {"select": ["Far", "P1"]}, {"command": "selected"},
        {"invoke": "IsTarget", "args": ["Home"]}, {"invoke": "IsTarget", "args": ["Arm1"]},
        {"invoke": "RobotOf", "args": ["Home"]}, {"invoke": "RobotOf", "args": [null]},
        {"invoke": "MoveFree", "args": ["Arm1", [0, 0, 0], [60, 0, 0]]},
        {"invoke": "MoveFree", "args": ["Arm1", [0, 0, 0], [0, 50, 0]]},
        {"invoke": "Describe", "args": ["x", 3, 2.5]}, {"invoke": "Nothing"}]})");
    EXPECT_EQ(replies(done), QStringList{"Far,P1"});
    EXPECT_EQ(resultOf(done, 3), QJsonValue(true));
    EXPECT_EQ(resultOf(done, 4), QJsonValue(false));
    EXPECT_EQ(resultOf(done, 5), QJsonValue("Arm1"));
    EXPECT_EQ(resultOf(done, 6), QJsonValue());
    EXPECT_EQ(resultOf(done, 7), QJsonValue(false));
    EXPECT_EQ(resultOf(done, 8), QJsonValue(true));
    EXPECT_EQ(resultOf(done, 9), QJsonValue("x 3 2.5"));
    EXPECT_EQ(resultOf(done, 10), QJsonValue());
    const QJsonObject result = done.ofType(QStringLiteral("result")).front();
    EXPECT_EQ(withoutStepTime(result), (QJsonObject{{"type", "result"}, {"step", 3}, {"slot", "IsTarget"}, {"value", true}}));
}

TEST_F(ProbeRun, PicksAndQuestionsTakeQueuedAnswers)
{
    const SimRun done = run(R"({"steps": [
        {"answer": {"pick": "Arm1"}}, {"command": "pick"}, {"command": "pick"},
        {"answer": {"pick": null}}, {"command": "pick"},
        {"answer": {"question": "No"}}, {"command": "question", "value": "Replace?"},
        {"command": "question", "value": "Again?"}]})");
    EXPECT_EQ(replies(done), (QStringList{"Arm1", "none", "none", "No", "Cancel"}));
    const auto questions = done.ofType(QStringLiteral("question"));
    ASSERT_EQ(questions.size(), 2u);
    EXPECT_EQ(questions[0], (QJsonObject{{"type", "question"}, {"title", "Replace map"}, {"text", "Replace?"}, {"answer", "No"}}));
    EXPECT_EQ(questions[1].value("answer"), QJsonValue("closed"));
    EXPECT_EQ(done.ofType(QStringLiteral("pick")).size(), 3u);
}

TEST_F(ProbeRun, ProgressIsRecordedAsItChanges)
{
    const SimRun done = run(R"({"steps": [{"command": "progress", "value": "3"}]})");
    EXPECT_EQ(replies(done), QStringList{"done"});
    const auto progress = done.ofType(QStringLiteral("progress"));
    ASSERT_EQ(progress.size(), 3u);
    EXPECT_EQ(progress[0], (QJsonObject{{"type", "progress"}, {"title", "Probing"}, {"label", "test 1"}, {"value", 25}}));
    EXPECT_EQ(progress[2].value("label"), QJsonValue("test 3"));
    EXPECT_EQ(progress[2].value("value"), QJsonValue(75));
}

TEST_F(ProbeRun, CancelAtTheChosenCollisionTestOfTheNextOperationOnly)
{
    const SimRun done = run(R"({"steps": [{"cancelAt": {"collisionTest": 3}}, {"command": "progress", "value": "10"},
                                          {"command": "progress", "value": "2"}]})");
    EXPECT_EQ(replies(done), (QStringList{"cancelled after 3", "done"}));
    EXPECT_EQ(done.single(QStringLiteral("cancel")).value("collisionTest"), QJsonValue(3));
}

TEST_F(ProbeRun, HostRecordsDrawingSequencesParametersAndPrograms)
{
    const SimRun done = run(R"({"steps": [{"command": "draw"}, {"command": "sequence"},
        {"command": "param", "value": "PathStepCollisionDeg="}, {"command": "param", "value": "PathStepCollisionDeg=2.0"},
        {"command": "program"}]})");
    EXPECT_EQ(replies(done), (QStringList{"drawn", "shown", "4.0", "OK", "Route 5,0,0 10,0,0"}));
    EXPECT_EQ(done.single(QStringLiteral("draw")).value("color"), (QJsonArray{0.999, 0.999, 0.999, 1.0}));
    EXPECT_EQ(done.single(QStringLiteral("sequence")),
              (QJsonObject{{"type", "sequence"}, {"robot", "Arm1"}, {"rows", 3}, {"cols", 2}}));
    EXPECT_EQ(done.single(QStringLiteral("param")),
              (QJsonObject{{"type", "param"}, {"name", "PathStepCollisionDeg"}, {"value", "2.0"}}));
    const QJsonObject program = done.single(QStringLiteral("program"));
    EXPECT_EQ(program.value("name"), QJsonValue("Route"));
    EXPECT_EQ(program.value("robot"), QJsonValue("Arm1"));
    const QJsonArray instructions = program.value("instructions").toArray();
    ASSERT_EQ(instructions.size(), 3);
    EXPECT_EQ(instructions[0].toObject().value("moveJoint"), QJsonValue("Pt 1 (S11)"));
    EXPECT_TRUE(instructions[0].toObject().value("id").isDouble());
    EXPECT_EQ(instructions[2].toObject(), (QJsonObject{{"call", "P1"}}));
}

TEST_F(ProbeRun, HostMenusFollowTheScenarioSetUp)
{
    EXPECT_EQ(replies(run(R"({"steps": [{"command": "menus"}]})")), QStringList{"utilities=0 collision=yes"});
    EXPECT_EQ(replies(run(R"({"host": {"utilitiesActions": 99}, "steps": [{"command": "menus"}]})")),
              QStringList{"utilities=99 collision=yes"});
    EXPECT_EQ(replies(run(R"({"host": {"utilitiesActions": -1, "collisionMenu": false}, "steps": [{"command": "menus"}]})")),
              QStringList{"utilities=-1 collision=no"});
}

TEST_F(ProbeRun, ContextMenusRecordTheActionsAdded)
{
    const SimRun done = run(R"({"steps": [{"contextMenu": ["Home", "P1"]}, {"contextMenu": ["P1", "Home"]}, {"contextMenu": []}]})");
    const auto menus = done.ofType(QStringLiteral("contextMenu"));
    ASSERT_EQ(menus.size(), 3u);
    EXPECT_EQ(menus[0], (QJsonObject{{"type", "contextMenu"}, {"step", 1}, {"items", QJsonArray{"Home", "P1"}},
                                     {"result", true}, {"actions", QJsonArray{"Probe the targets"}}}));
    EXPECT_EQ(menus[1].value("result"), QJsonValue(false));
    EXPECT_EQ(menus[1].value("actions"), QJsonValue(QJsonArray()));
    EXPECT_EQ(menus[2].value("result"), QJsonValue(false));
}

TEST_F(ProbeRun, StationStepsMoveDeleteSaveAndOpen)
{
    const SimRun done = run(R"({"steps": [
        {"setJoints": {"robot": "Arm1", "joints": [20, 0, 0]}}, {"command": "collisions"},
        {"command": "keep", "value": "Home"}, {"deleteItem": "Home"}, {"command": "valid"},
        {"saveStation": "saved.json"}, {"openStation": "saved.json"}, {"command": "joints", "value": "Arm1"},
        {"command": "keep", "value": "Far"}, {"command": "data", "value": "Probe"}]})");
    EXPECT_EQ(replies(done), (QStringList{"1", "kept", "gone", "20.0,0.0,0.0", "kept", "saved"}));
    const QJsonObject saved = QJsonDocument::fromJson(folder.read(QStringLiteral("saved.json"))).object();
    EXPECT_EQ(saved.value("targets").toArray().size(), 1);
    // Event 5 came before writing: the plug-in's data is in the file.
    EXPECT_EQ(saved.value("data").toObject().value("Probe"), QJsonValue(QString::fromLatin1(QByteArray("saved").toBase64())));
    EXPECT_EQ(logLines(done).count(QStringLiteral("Probe event 4")), 2);
}

TEST_F(ProbeRun, UnloadAndLoadAgain)
{
    const SimRun done = run(R"({"steps": [{"unload": true}, {"load": true}, {"command": "menus"}]})");
    const QStringList lines = logLines(done);
    EXPECT_EQ(lines.count(QStringLiteral("Probe loaded with vorlik-sim")), 2);
    EXPECT_EQ(lines.count(QStringLiteral("Probe unloaded")), 2);
    EXPECT_EQ(replies(done), QStringList{"utilities=0 collision=yes"});
}

TEST_F(ProbeRun, RepliesAndResultsTellHowLongTheirStepTookAndPrintShowsIt)
{
    folder.write(QStringLiteral("scenario.json"),
                 R"({"steps": [{"command": "progress", "value": "20"}, {"invoke": "IsTarget", "args": ["Home"]}]})");
    const QStringList arguments{folder.path(QStringLiteral("station.json")), QStringLiteral("--script"),
                                folder.path(QStringLiteral("scenario.json")), QStringLiteral("--transcript"),
                                folder.path(QStringLiteral("out.jsonl")), QStringLiteral("--plugin"),
                                QStringLiteral(PROBE_PLUGIN_PATH), QStringLiteral("--print")};
    QProcess process;
    process.start(QStringLiteral(VORLIK_SIM_PATH), arguments);
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
    const QString printed = QString::fromUtf8(process.readAllStandardOutput());
    const QRegularExpression timed(QStringLiteral("command progress \"20\" -> done  \\((\\d+\\.\\d) ms\\)"));
    const QRegularExpressionMatch match = timed.match(printed);
    ASSERT_TRUE(match.hasMatch()) << printed.toStdString();
    EXPECT_TRUE(QRegularExpression(QStringLiteral("IsTarget -> true  \\(\\d+\\.\\d ms\\)")).match(printed).hasMatch())
        << printed.toStdString();

    const SimRun done = folder.runWith(arguments);
    const QJsonObject reply = done.single(QStringLiteral("reply"));
    const QJsonObject result = done.single(QStringLiteral("result"));
    EXPECT_EQ(withoutStepTime(reply).value("reply"), QJsonValue("done"));
    EXPECT_EQ(withoutStepTime(result).value("value"), QJsonValue(true));
}

TEST_F(ProbeRun, SavedStationKeepsUnknownFieldsAndExactNumbers)
{
    QJsonObject station = QJsonDocument::fromJson(probeStation).object();
    station.insert("comment", "kept");
    station.insert("params", QJsonObject{{"PathStepCollisionDeg", 2.123456789}});
    QJsonArray robots = station.value("robots").toArray();
    QJsonObject robot = robots[0].toObject();
    robot.insert("color", "#ff8800");
    robot.insert("joints", QJsonArray{0.1, 1.0 / 3.0, -2.5e-7});
    robots[0] = robot;
    station.insert("robots", robots);
    folder.write(QStringLiteral("annotated.json"), QJsonDocument(station).toJson());
    folder.write(QStringLiteral("scenario.json"), R"({"steps": [{"command": "param", "value": "PathStepCollisionDeg="},
                                                                 {"command": "joints", "value": "Arm1"}]})");
    const SimRun done = folder.run(QStringLiteral("annotated.json"), QStringLiteral("scenario.json"),
                                   {QStringLiteral("--save"), folder.path(QStringLiteral("saved.json"))});
    ASSERT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
    // The plug-in reads the parameter as the file wrote it.
    EXPECT_EQ(replies(done).value(0), QStringLiteral("2.123456789"));
    const QJsonObject saved = QJsonDocument::fromJson(folder.read(QStringLiteral("saved.json"))).object();
    EXPECT_EQ(saved.value("comment"), QJsonValue("kept"));
    EXPECT_EQ(saved.value("params").toObject().value("PathStepCollisionDeg"), QJsonValue(2.123456789));
    const QJsonObject savedRobot = saved.value("robots").toArray()[0].toObject();
    EXPECT_EQ(savedRobot.value("color"), QJsonValue("#ff8800"));
    EXPECT_EQ(savedRobot.value("joints"), (QJsonArray{0.1, 1.0 / 3.0, -2.5e-7}));
}

TEST_F(ProbeRun, SavedStationRoundTripsThroughTheHost)
{
    run(R"({"steps": []})", {QStringLiteral("--save"), folder.path(QStringLiteral("first.json"))});
    folder.write(QStringLiteral("scenario.json"), R"({"steps": []})");
    const SimRun again = folder.run(QStringLiteral("first.json"), QStringLiteral("scenario.json"),
                                    {QStringLiteral("--save"), folder.path(QStringLiteral("second.json"))});
    EXPECT_EQ(again.exitCode, 0);
    const QByteArray first = folder.read(QStringLiteral("first.json"));
    EXPECT_FALSE(first.isEmpty());
    EXPECT_EQ(folder.read(QStringLiteral("second.json")), first);
    const QJsonObject station = QJsonDocument::fromJson(first).object();
    EXPECT_EQ(station.value("robots").toArray()[0].toObject().value("name"), QJsonValue("Arm1"));
    EXPECT_EQ(station.value("programs").toArray()[0].toObject().value("instructions").toArray().size(), 2);
}

}  // namespace
