// The scenario file: its steps, read and checked for their shape.
#include "scenario.h"

#include "question_answerer.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>

namespace {

bool isWholeNumber(const QJsonValue& value)
{
    return value.isDouble() && value.toDouble() == double(value.toInt(0)) && std::abs(value.toDouble()) < 1e9;
}

bool isCollisionTestNumber(const QJsonValue& value)
{
    return isWholeNumber(value) && value.toInt() >= 1;
}

bool isNameList(const QJsonValue& value)
{
    if (!value.isArray())
        return false;
    for (const QJsonValue& element : value.toArray()) {
        if (!element.isString())
            return false;
    }
    return true;
}

bool isArgument(const QJsonValue& value)
{
    return value.isBool() || value.isDouble() || value.isString() || value.isNull()
        || scenario_file::isJointArray(value) || isNameList(value);
}

bool hasOnly(const QJsonObject& object, const QStringList& keys)
{
    for (const QString& key : object.keys()) {
        if (!keys.contains(key))
            return false;
    }
    return true;
}

// The shape each step must have: its other allowed keys, a check, and what it should look like.
struct StepRule {
    QStringList otherKeys;
    std::function<bool(const QJsonObject&)> valid;
    QString expected;
};

const std::map<QString, StepRule>& stepRules()
{
    static const std::map<QString, StepRule> rules{
        {"command", {{"value"}, [](const QJsonObject& o) {
             const QJsonValue v = o.value("value");
             return o.value("command").isString() && (v.isUndefined() || v.isString() || v.isDouble());
         }, "{\"command\": text, \"value\": text}"}},
        {"event", {{}, [](const QJsonObject& o) { return isWholeNumber(o.value("event")); },
                   "{\"event\": whole number}"}},
        {"select", {{}, [](const QJsonObject& o) { return isNameList(o.value("select")); },
                    "{\"select\": [item names]}"}},
        {"invoke", {{"args"}, [](const QJsonObject& o) {
             const QJsonValue args = o.value("args");
             if (!o.value("invoke").isString() || !(args.isUndefined() || args.isArray()))
                 return false;
             const QJsonArray list = args.toArray();
             return list.size() <= 10 && std::all_of(list.begin(), list.end(), isArgument);
         }, "{\"invoke\": slot name, \"args\": [up to 10 of: bool, number, text, null, joint values]}"}},
        {"answer", {{}, [](const QJsonObject& o) {
             const QJsonObject a = o.value("answer").toObject();
             if (a.size() != 1)
                 return false;
             if (a.contains("pick"))
                 return a.value("pick").isString() || a.value("pick").isNull();
             return QuestionAnswerer::isButtonName(a.value("question").toString());
         }, "{\"answer\": {\"pick\": name or null}} or {\"answer\": {\"question\": \"Yes\", \"No\" or \"Cancel\"}}"}},
        {"cancelAt", {{}, [](const QJsonObject& o) {
             const QJsonObject c = o.value("cancelAt").toObject();
             return c.size() == 1 && isCollisionTestNumber(c.value("collisionTest"));
         }, "{\"cancelAt\": {\"collisionTest\": whole number from 1}}"}},
        // The nested steps are checked one by one after the shape.
        {"during", {{}, [](const QJsonObject& o) {
             const QJsonObject d = o.value("during").toObject();
             return hasOnly(d, {"collisionTest", "steps"}) && isCollisionTestNumber(d.value("collisionTest"))
                 && d.value("steps").isArray();
         }, "{\"during\": {\"collisionTest\": whole number from 1, \"steps\": [steps]}}"}},
        {"setJoints", {{}, [](const QJsonObject& o) {
             const QJsonObject s = o.value("setJoints").toObject();
             return hasOnly(s, {"robot", "joints"}) && s.value("robot").isString()
                 && scenario_file::isJointArray(s.value("joints"));
         }, "{\"setJoints\": {\"robot\": name, \"joints\": [1 to 12 numbers]}}"}},
        {"deleteItem", {{}, [](const QJsonObject& o) { return o.value("deleteItem").isString(); },
                        "{\"deleteItem\": item name}"}},
        {"saveStation", {{}, [](const QJsonObject& o) { return !o.value("saveStation").toString().isEmpty(); },
                         "{\"saveStation\": file name}"}},
        {"openStation", {{}, [](const QJsonObject& o) { return !o.value("openStation").toString().isEmpty(); },
                         "{\"openStation\": file name}"}},
        {"contextMenu", {{}, [](const QJsonObject& o) { return isNameList(o.value("contextMenu")); },
                         "{\"contextMenu\": [item names]}"}},
        {"unload", {{}, [](const QJsonObject& o) { return o.value("unload") == QJsonValue(true); },
                    "{\"unload\": true}"}},
        {"load", {{}, [](const QJsonObject& o) { return o.value("load") == QJsonValue(true); },
                  "{\"load\": true}"}},
        {"action", {{}, [](const QJsonObject& o) { return !o.value("action").toString().isEmpty(); },
                    "{\"action\": the text of a menu or toolbar action}"}},
        {"click", {{}, [](const QJsonObject& o) { return !o.value("click").toString().isEmpty(); },
                   "{\"click\": a button's object name}"}},
        {"setValue", {{}, [](const QJsonObject& o) {
             const QJsonObject s = o.value("setValue").toObject();
             const QJsonValue v = s.value("value");
             return hasOnly(s, {"widget", "value"}) && !s.value("widget").toString().isEmpty()
                 && (v.isDouble() || v.isBool());
         }, "{\"setValue\": {\"widget\": object name, \"value\": number or true/false}}"}},
        {"form", {{}, [](const QJsonObject& o) { return o.value("form") == QJsonValue(true); },
                  "{\"form\": true}"}},
        {"play", {{}, [](const QJsonObject& o) { return !o.value("play").toString().isEmpty(); },
                  "{\"play\": program name}"}},
    };
    return rules;
}

bool parseStep(const QJsonValue& value, Step* step, QString* problem)
{
    const QString where = step->label();
    if (!value.isObject()) {
        *problem = where + QStringLiteral(": a step must be a JSON object");
        return false;
    }
    const QJsonObject object = value.toObject();
    const auto& rules = stepRules();
    QStringList kinds;
    for (const QString& key : object.keys()) {
        if (rules.count(key))
            kinds << key;
    }
    if (kinds.size() != 1) {
        const QString keys = object.keys().join(QStringLiteral("\", \""));
        *problem = kinds.isEmpty() ? QStringLiteral("%1: unknown step {\"%2\"}").arg(where, keys)
                                   : QStringLiteral("%1: one step holds two steps: \"%2\"").arg(where, kinds.join("\", \""));
        return false;
    }
    const StepRule& rule = rules.at(kinds.first());
    if (!hasOnly(object, rule.otherKeys + kinds) || !rule.valid(object)) {
        *problem = QStringLiteral("%1: invalid \"%2\" step; expected %3").arg(where, kinds.first(), rule.expected);
        return false;
    }
    step->kind = kinds.first();
    step->object = object;
    if (step->kind != QLatin1String("during"))
        return true;
    int position = 0;
    for (const QJsonValue& nested : object.value(step->kind).toObject().value(QStringLiteral("steps")).toArray()) {
        Step inner;
        inner.number = step->number;
        inner.nested = step->nested;
        inner.nested.append(++position);
        if (!parseStep(nested, &inner, problem))
            return false;
        step->steps.push_back(inner);
    }
    return true;
}

// A menu is not made of more actions than a person could read.
constexpr int MostUtilitiesActions = 10000;

bool parseHost(const QJsonValue& value, HostSetup* host, QString* problem)
{
    if (value.isUndefined())
        return true;
    const QJsonObject object = value.toObject();
    const QJsonValue actions = object.value(QStringLiteral("utilitiesActions"));
    const QJsonValue menu = object.value(QStringLiteral("collisionMenu"));
    if (!value.isObject() || !hasOnly(object, {"utilitiesActions", "collisionMenu"})
        || !(actions.isUndefined()
             || (isWholeNumber(actions) && actions.toInt() >= -1 && actions.toInt() <= MostUtilitiesActions))
        || !(menu.isUndefined() || menu.isBool())) {
        *problem = QStringLiteral("invalid \"host\"; expected {\"utilitiesActions\": whole number from -1 to 10000, "
                                  "\"collisionMenu\": true or false}");
        return false;
    }
    host->utilitiesActions = actions.toInt(0);
    host->collisionMenu = menu.toBool(true);
    return true;
}

}  // namespace

QString Step::label() const
{
    QString text = QStringLiteral("step %1").arg(number);
    if (nested.isEmpty())
        return text;
    QStringList positions;
    for (int position : nested)
        positions << QString::number(position);
    return text + QStringLiteral(", nested step ") + positions.join(QLatin1Char('.'));
}

namespace scenario_file {

bool isJointArray(const QJsonValue& value)
{
    const QJsonArray array = value.toArray();
    return value.isArray() && !array.isEmpty() && array.size() <= 12
        && std::all_of(array.begin(), array.end(), [](const QJsonValue& v) { return v.isDouble(); });
}

bool parse(const QByteArray& contents, Scenario* scenario, QString* problem)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(contents, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *problem = QStringLiteral("not valid JSON: %1 at offset %2").arg(parseError.errorString()).arg(parseError.offset);
        return false;
    }
    const QJsonObject root = document.object();
    if (!document.isObject() || !root.value(QStringLiteral("steps")).isArray()) {
        *problem = QStringLiteral("a scenario must be a JSON object with a \"steps\" array");
        return false;
    }
    if (!parseHost(root.value(QStringLiteral("host")), &scenario->host, problem))
        return false;
    int number = 0;
    for (const QJsonValue& value : root.value(QStringLiteral("steps")).toArray()) {
        Step step;
        step.number = ++number;
        if (!parseStep(value, &step, problem))
            return false;
        scenario->steps.push_back(step);
    }
    return true;
}

bool read(const QString& path, Scenario* scenario, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: cannot open the scenario: %2").arg(path, file.errorString());
        return false;
    }
    QString problem;
    if (!parse(file.readAll(), scenario, &problem)) {
        *error = QStringLiteral("%1: %2").arg(path, problem);
        return false;
    }
    return true;
}

}  // namespace scenario_file
