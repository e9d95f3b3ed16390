// The "during" step: nested steps run from inside a collision test the host
// answers while the plug-in is busy, as a person clicking in the open progress
// dialog would. The probe's "progress" command makes one configuration check
// a step under an open dialog; its MoveFree slot makes one joint-move test.
#include "probe_station.h"
#include "sim_process.h"
#include "step_time.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

class DuringStep : public ::testing::Test {
protected:
    void SetUp() override { folder.write(QStringLiteral("station.json"), probeStation); }

    SimRun run(const QByteArray& steps)
    {
        folder.write(QStringLiteral("scenario.json"), R"({"steps": )" + steps + "}");
        return folder.run(QStringLiteral("station.json"), QStringLiteral("scenario.json"));
    }

    // "type" of every record but the debug log, with the reply or label where it tells more.
    static QStringList story(const SimRun& done)
    {
        QStringList lines;
        for (const QJsonObject& record : done.records) {
            const QString type = record.value("type").toString();
            if (type == QLatin1String("reply"))
                lines << QStringLiteral("reply %1").arg(record.value("reply").toString());
            else if (type == QLatin1String("progress"))
                lines << QStringLiteral("progress %1").arg(record.value("label").toString());
            else if (type != QLatin1String("log"))
                lines << type;
        }
        return lines;
    }

    static QStringList replyTexts(const SimRun& done)
    {
        QStringList texts;
        for (const QJsonObject& reply : done.ofType(QStringLiteral("reply")))
            texts << reply.value("reply").toString();
        return texts;
    }

    QString errorText(const SimRun& done) const
    {
        EXPECT_EQ(done.exitCode, 1);
        const QString text = done.single(QStringLiteral("error")).value("text").toString();
        EXPECT_TRUE(done.errorOutput.contains(text)) << done.errorOutput.toStdString();
        return text;
    }

    QString scenarioPath() const { return folder.path(QStringLiteral("scenario.json")); }

    SimFolder folder{QStringLiteral(PROBE_PLUGIN_PATH)};
};

TEST_F(DuringStep, NestedStepsRunInsideTheChosenCollisionTestAndAreRecordedThere)
{
    const SimRun done = run(R"([
        {"during": {"collisionTest": 3, "steps": [{"command": "message", "value": "inside"},
                                                   {"select": ["Far"]}, {"command": "selected"}]}},
        {"command": "progress", "value": "5"}, {"command": "selected"}])");
    ASSERT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
    EXPECT_EQ(story(done), (QStringList{"progress test 1", "progress test 2", "progress test 3", "during", "message",
                                        "reply shown", "reply Far", "progress test 4", "progress test 5", "reply done",
                                        "reply Far"}));
    const auto replies = done.ofType(QStringLiteral("reply"));
    ASSERT_EQ(replies.size(), 4u);
    EXPECT_EQ(withoutStepTime(replies[0]), (QJsonObject{{"type", "reply"}, {"step", 1}, {"nested", QJsonArray{1}},
                                                        {"command", "message"}, {"value", "inside"}, {"reply", "shown"}}));
    EXPECT_EQ(replies[1].value("nested"), (QJsonArray{3}));
    EXPECT_EQ(withoutStepTime(replies[2]).value("step"), QJsonValue(2));
    EXPECT_FALSE(replies[2].contains("nested"));
    EXPECT_EQ(done.single(QStringLiteral("during")), (QJsonObject{{"type", "during"}, {"step", 1}, {"collisionTest", 3}}));
    // The busy step took at least as long as the steps inside it.
    EXPECT_GE(replies[2].value("ms").toDouble(), replies[0].value("ms").toDouble());
}

TEST_F(DuringStep, AJointMoveTestCountsAsACollisionTest)
{
    const SimRun done = run(R"([{"during": {"collisionTest": 1, "steps": [{"invoke": "IsTarget", "args": ["Far"]}]}},
                                {"invoke": "MoveFree", "args": ["Arm1", [0, 0, 0], [60, 0, 0]]}])");
    ASSERT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
    const auto results = done.ofType(QStringLiteral("result"));
    ASSERT_EQ(results.size(), 2u);
    EXPECT_EQ(withoutStepTime(results[0]), (QJsonObject{{"type", "result"}, {"step", 1}, {"nested", QJsonArray{1}},
                                                        {"slot", "IsTarget"}, {"value", true}}));
    EXPECT_EQ(withoutStepTime(results[1]).value("value"), QJsonValue(false));
}

TEST_F(DuringStep, EveryKindOfStepMayRunNested)
{
    const SimRun done = run(R"([
        {"during": {"collisionTest": 2, "steps": [
            {"select": ["Home"]}, {"setJoints": {"robot": "Arm1", "joints": [20, 0, 0]}}, {"command": "collisions"},
            {"command": "keep", "value": "Far"}, {"deleteItem": "Far"}, {"command": "valid"},
            {"answer": {"question": "No"}}, {"command": "question", "value": "Inside?"},
            {"saveStation": "inside.json"}, {"openStation": "station.json"}, {"event": 3},
            {"invoke": "Nothing"}, {"contextMenu": ["Home"]}, {"form": true}, {"unload": true}, {"load": true},
            {"command": "joints", "value": "Arm1"}]}},
        {"command": "progress", "value": "3"}])");
    ASSERT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
    EXPECT_EQ(replyTexts(done), (QStringList{"1", "kept", "gone", "No", "0.0,0.0,0.0", "done"}));
    EXPECT_EQ(done.single(QStringLiteral("contextMenu")).value("nested"), (QJsonArray{13}));
    EXPECT_EQ(done.single(QStringLiteral("form")).value("nested"), (QJsonArray{14}));
    EXPECT_EQ(done.single(QStringLiteral("result")).value("nested"), (QJsonArray{12}));
    const QJsonObject saved = QJsonDocument::fromJson(folder.read(QStringLiteral("inside.json"))).object();
    EXPECT_EQ(saved.value("targets").toArray().size(), 1);
}

TEST_F(DuringStep, ADuringInsideADuringRunsInTheNestedOperation)
{
    const SimRun done = run(R"([
        {"during": {"collisionTest": 1, "steps": [
            {"during": {"collisionTest": 2, "steps": [{"command": "message", "value": "deep"}]}},
            {"command": "progress", "value": "3"}]}},
        {"command": "progress", "value": "2"}])");
    ASSERT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
    const auto replies = done.ofType(QStringLiteral("reply"));
    ASSERT_EQ(replies.size(), 3u);
    EXPECT_EQ(replies[0].value("nested"), (QJsonArray{1, 1}));
    EXPECT_EQ(replies[0].value("reply"), QJsonValue("shown"));
    EXPECT_EQ(replies[1].value("nested"), (QJsonArray{2}));
    EXPECT_EQ(replies[2].value("step"), QJsonValue(2));
    const auto durings = done.ofType(QStringLiteral("during"));
    ASSERT_EQ(durings.size(), 2u);
    EXPECT_EQ(durings[1], (QJsonObject{{"type", "during"}, {"step", 1}, {"nested", QJsonArray{1}}, {"collisionTest", 2}}));
}

TEST_F(DuringStep, NestedOperationsCancelOnTheirOwnAndDoNotCountForTheOuterOne)
{
    const SimRun done = run(R"([
        {"cancelAt": {"collisionTest": 4}},
        {"during": {"collisionTest": 2, "steps": [{"cancelAt": {"collisionTest": 2}},
                                                   {"command": "progress", "value": "5"}]}},
        {"command": "progress", "value": "6"}])");
    ASSERT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
    EXPECT_EQ(replyTexts(done), (QStringList{"cancelled after 2", "cancelled after 4"}));
}

TEST_F(DuringStep, StepsThatAskOfTheNextOperationLeaveTheDuringArmed)
{
    const SimRun done = run(R"([
        {"during": {"collisionTest": 2, "steps": [{"command": "message", "value": "inside"}]}},
        {"answer": {"question": "Yes"}}, {"cancelAt": {"collisionTest": 3}},
        {"command": "progress", "value": "5"}])");
    ASSERT_EQ(done.exitCode, 0) << done.errorOutput.toStdString();
    EXPECT_EQ(story(done), (QStringList{"progress test 1", "progress test 2", "during", "message", "reply shown",
                                        "progress test 3", "cancel", "reply cancelled after 3"}));
}

TEST_F(DuringStep, ANestedUnloadLeavesThePluginUnloadedForTheStepsAfter)
{
    const SimRun done = run(R"([{"during": {"collisionTest": 2, "steps": [{"unload": true}]}},
                                {"command": "progress", "value": "3"}, {"command": "message", "value": "after"}])");
    EXPECT_TRUE(errorText(done).endsWith(QStringLiteral("step 3: the plug-in is not loaded (an \"unload\" step came "
                                                        "before): \"command\" cannot reach it")));
    EXPECT_EQ(done.single(QStringLiteral("reply")).value("reply"), QJsonValue("done"));
}

TEST_F(DuringStep, AFailedNestedStepIsReportedOnceTheBusyStepReturns)
{
    const SimRun done = run(R"([
        {"during": {"collisionTest": 2, "steps": [{"command": "message", "value": "first"}, {"select": ["Ghost"]},
                                                   {"command": "message", "value": "never"}]}},
        {"command": "progress", "value": "4"}, {"command": "message", "value": "after"}])");
    EXPECT_EQ(errorText(done), scenarioPath() + QStringLiteral(": step 1, nested step 2: unknown item \"Ghost\""));
    // The busy operation ran to its end; nothing after the failed step ran.
    EXPECT_EQ(replyTexts(done), (QStringList{"shown", "done"}));
    EXPECT_EQ(story(done).last(), QStringLiteral("error"));
}

TEST_F(DuringStep, NestedStepsThatNeverRunAreAnError)
{
    const SimRun tooFew = run(R"([{"during": {"collisionTest": 10, "steps": [{"command": "message", "value": "x"}]}},
                                  {"command": "progress", "value": "3"}, {"command": "progress", "value": "20"}])");
    EXPECT_EQ(errorText(tooFew), scenarioPath() + QStringLiteral(": step 2: the steps of the \"during\" at step 1 never "
                                                                 "ran: they wait for collision test 10, and the host "
                                                                 "answered 3 after it"));
    EXPECT_TRUE(tooFew.ofType(QStringLiteral("message")).empty());

    const SimRun nothingAfter = run(R"([{"command": "progress", "value": "1"},
                                        {"during": {"collisionTest": 1, "steps": []}}])");
    EXPECT_EQ(errorText(nothingAfter), scenarioPath() + QStringLiteral(": the steps of the \"during\" at step 2 never "
                                                                       "ran: they wait for collision test 1, and the "
                                                                       "host answered 0 after it"));
}

}  // namespace
