#include "scenario.h"

#include <gtest/gtest.h>

namespace {

QString problemOf(const QByteArray& text)
{
    Scenario scenario;
    QString problem;
    EXPECT_FALSE(scenario_file::parse(text, &scenario, &problem));
    return problem;
}

TEST(ScenarioFile, ReadsEveryKindOfStepInOrder)
{
    const QByteArray text = R"({
      "host": {"utilitiesActions": 99, "collisionMenu": false},
      "steps": [
        {"command": "Samples", "value": "50"}, {"event": 3}, {"select": ["T1", "P2"]},
        {"invoke": "Join_Joints", "args": [true, [1, 2, 3], [4, 5, 6], "Prog"]},
        {"answer": {"pick": "Arm2"}}, {"answer": {"pick": null}}, {"answer": {"question": "Yes"}},
        {"cancelAt": {"collisionTest": 3}}, {"setJoints": {"robot": "Arm1", "joints": [0, 0, 0]}},
        {"deleteItem": "T1"}, {"saveStation": "out.json"}, {"openStation": "in.json"},
        {"contextMenu": ["T1", "P1"]}, {"unload": true}, {"load": true}
      ]})";
    Scenario scenario;
    QString problem;
    ASSERT_TRUE(scenario_file::parse(text, &scenario, &problem)) << problem.toStdString();
    EXPECT_EQ(scenario.host.utilitiesActions, 99);
    EXPECT_FALSE(scenario.host.collisionMenu);
    ASSERT_EQ(scenario.steps.size(), 15u);
    EXPECT_EQ(scenario.steps[0].kind, QStringLiteral("command"));
    EXPECT_EQ(scenario.steps[3].kind, QStringLiteral("invoke"));
    EXPECT_EQ(scenario.steps[14].kind, QStringLiteral("load"));
    EXPECT_EQ(scenario.steps[14].number, 15);
}

TEST(ScenarioFile, DuringStepsHoldStepsOfEveryKindNumberedInsideTheirStep)
{
    const QByteArray text = R"({"steps": [
        {"command": "Samples", "value": "50"},
        {"during": {"collisionTest": 7, "steps": [
            {"command": "Info"}, {"unload": true},
            {"during": {"collisionTest": 1, "steps": [{"deleteItem": "T1"}]}}, {"command": "Calc"}]}},
        {"command": "Calc"}]})";
    Scenario scenario;
    QString problem;
    ASSERT_TRUE(scenario_file::parse(text, &scenario, &problem)) << problem.toStdString();
    ASSERT_EQ(scenario.steps.size(), 3u);
    const Step& during = scenario.steps[1];
    EXPECT_EQ(during.kind, QStringLiteral("during"));
    EXPECT_EQ(during.label(), QStringLiteral("step 2"));
    ASSERT_EQ(during.steps.size(), 4u);
    EXPECT_EQ(during.steps[1].kind, QStringLiteral("unload"));
    EXPECT_EQ(during.steps[1].number, 2);
    EXPECT_EQ(during.steps[1].nested, QList<int>{2});
    EXPECT_EQ(during.steps[1].label(), QStringLiteral("step 2, nested step 2"));
    const Step& deepest = during.steps[2].steps.at(0);
    EXPECT_EQ(deepest.kind, QStringLiteral("deleteItem"));
    EXPECT_EQ(deepest.label(), QStringLiteral("step 2, nested step 3.1"));
    EXPECT_TRUE(scenario.steps[2].steps.empty());
}

TEST(ScenarioFile, DuringStepsAreCheckedStepByStep)
{
    EXPECT_EQ(problemOf(R"({"steps": [{"during": {"collisionTest": 2, "steps": [{"event": 4}, {"fly": 1}]}}]})"),
              QStringLiteral("step 1, nested step 2: unknown step {\"fly\"}"));
    EXPECT_EQ(problemOf(R"({"steps": [{"event": 1}, {"during": {"collisionTest": 1, "steps": [
                            {"during": {"collisionTest": 1, "steps": [{"select": "T1"}]}}]}}]})"),
              QStringLiteral("step 2, nested step 1.1: invalid \"select\" step; expected {\"select\": [item names]}"));
    for (const QByteArray during : {R"({"collisionTest": 0, "steps": []})", R"({"collisionTest": 1.5, "steps": []})",
                                    R"({"collisionTest": 1})", R"({"steps": []})", R"({"collisionTest": 1, "steps": {}})",
                                    R"({"collisionTest": 1, "steps": [], "then": 1})", R"([1, []])"}) {
        EXPECT_EQ(problemOf(R"({"steps": [{"during": )" + during + "}]}"),
                  QStringLiteral("step 1: invalid \"during\" step; expected {\"during\": {\"collisionTest\": whole "
                                 "number from 1, \"steps\": [steps]}}"))
            << during.toStdString();
    }
}

TEST(ScenarioFile, HostDefaultsToEmptyUtilitiesAndACollisionMenu)
{
    Scenario scenario;
    QString problem;
    ASSERT_TRUE(scenario_file::parse(R"({"steps": []})", &scenario, &problem));
    EXPECT_EQ(scenario.host.utilitiesActions, 0);
    EXPECT_TRUE(scenario.host.collisionMenu);
}

TEST(ScenarioFile, RejectsStepsThatCannotBeRun)
{
    EXPECT_TRUE(problemOf(R"({"steps": [)").contains("not valid JSON"));
    EXPECT_TRUE(problemOf(R"({"step": []})").contains("\"steps\" array"));
    EXPECT_EQ(problemOf(R"({"steps": [{"event": 4}, {"fly": 1}]})"), QStringLiteral("step 2: unknown step {\"fly\"}"));
    EXPECT_TRUE(problemOf(R"({"steps": [{"event": 4, "command": "Info"}]})").contains("two steps"));
    EXPECT_TRUE(problemOf(R"({"steps": [{"command": "Info", "valeu": "x"}]})").contains("invalid \"command\" step"));
    EXPECT_TRUE(problemOf(R"({"steps": [{"event": "4"}]})").contains("step 1: invalid \"event\" step"));
    EXPECT_TRUE(problemOf(R"({"steps": [{"setJoints": {"robot": "A", "joints": []}}]})").contains("setJoints"));
    EXPECT_TRUE(problemOf(R"({"steps": [{"setJoints": {"robot": "A", "joints": [1,2,3,4,5,6,7,8,9,10,11,12,13]}}]})")
                    .contains("setJoints"));
    EXPECT_TRUE(problemOf(R"({"steps": [{"invoke": "X", "args": [[1, "a"]]}]})").contains("invoke"));
    EXPECT_TRUE(problemOf(R"({"steps": [{"answer": {"question": "Maybe"}}]})").contains("answer"));
    EXPECT_TRUE(problemOf(R"({"steps": [{"cancelAt": {"collisionTest": 0}}]})").contains("cancelAt"));
    EXPECT_TRUE(problemOf(R"({"steps": [{"unload": false}]})").contains("unload"));
    EXPECT_TRUE(problemOf(R"({"host": {"utilitiesActions": -2}, "steps": []})").contains("host"));
    // A menu of a hundred million actions is no host's.
    EXPECT_TRUE(problemOf(R"({"host": {"utilitiesActions": 100000000}, "steps": []})").contains("from -1 to 10000"));
    EXPECT_TRUE(problemOf(R"({"host": {"menus": 1}, "steps": []})").contains("host"));
}

}  // namespace
