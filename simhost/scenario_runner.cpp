#include "scenario_runner.h"

#include "host_window.h"
#include "plugin_host.h"
#include "question_answerer.h"
#include "run_monitor.h"
#include "sim_host_api.h"
#include "slot_invoker.h"
#include "station_file.h"
#include "widget_steps.h"

#include "vorlik/item_types.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QMenu>

namespace {

QJsonObject stepRecord(const QString& type, const Step& step)
{
    return QJsonObject{{QStringLiteral("type"), type}, {QStringLiteral("step"), step.number}};
}

}  // namespace

ScenarioRunner::ScenarioRunner(const Scenario& scenario, const QString& scenarioPath, Host host)
    : scenario_(scenario), path_(scenarioPath), folder_(QFileInfo(scenarioPath).absoluteDir()), host_(host)
{
}

bool ScenarioRunner::run(QString* error)
{
    for (const Step& step : scenario_.steps) {
        QString problem;
        const bool ran = runStep(step, &problem);
        processHostEvents();
        host_.monitor.checkProgress();
        // A cancel request holds for the operation that follows it only.
        if (step.kind != QLatin1String("cancelAt") && step.kind != QLatin1String("answer"))
            host_.monitor.disarmCancel();
        if (!ran) {
            *error = QStringLiteral("%1: step %2: %3").arg(path_).arg(step.number).arg(problem);
            return false;
        }
    }
    return true;
}

bool ScenarioRunner::runStep(const Step& step, QString* problem)
{
    const QJsonValue value = step.object.value(step.kind);
    IAppVorlik* plugin = host_.plugin.plugin();
    Station& station = host_.api.station();
    if (step.kind == QLatin1String("command"))
        return runCommand(step);
    if (step.kind == QLatin1String("event")) {
        // A redraw replaces what plug-ins drew before it.
        if (value.toInt() == HostEvent::Redrawn)
            host_.api.drawings().redrawn();
        plugin->pluginEvent(value.toInt());
        return true;
    }
    if (step.kind == QLatin1String("select")) {
        QList<SimItem*> items;
        if (!lookUpAll(value, &items, problem))
            return false;
        station.selection = items;
        return true;
    }
    if (step.kind == QLatin1String("invoke"))
        return runInvoke(step, problem);
    if (step.kind == QLatin1String("answer"))
        return runAnswer(value.toObject(), problem);
    if (step.kind == QLatin1String("cancelAt")) {
        host_.monitor.cancelAtCollisionTest(value.toObject().value(QStringLiteral("collisionTest")).toInt());
        return true;
    }
    if (step.kind == QLatin1String("setJoints"))
        return runSetJoints(value.toObject(), problem);
    if (step.kind == QLatin1String("deleteItem")) {
        SimItem* item = nullptr;
        if (!lookUp(value, &item, problem))
            return false;
        station.remove(item);
        return true;
    }
    if (step.kind == QLatin1String("saveStation"))
        return saveStation(value.toString(), problem);
    if (step.kind == QLatin1String("openStation"))
        return openStation(value.toString(), problem);
    if (step.kind == QLatin1String("contextMenu"))
        return runContextMenu(step, problem);
    if (step.kind == QLatin1String("unload")) {
        host_.plugin.unload();
        return true;
    }
    if (step.kind == QLatin1String("load")) {
        host_.plugin.load(host_.window, &host_.api);
        return true;
    }
    if (step.kind == QLatin1String("action") || step.kind == QLatin1String("click")
        || step.kind == QLatin1String("setValue") || step.kind == QLatin1String("form")) {
        const bool ran = runWidgetStep(step, problem);
        // Actions reach the plug-in queued, and the form refreshes queued after them.
        for (int pass = 0; pass < 3; ++pass)
            processHostEvents();
        return ran;
    }
    *problem = QStringLiteral("unknown step \"%1\"").arg(step.kind);
    return false;
}

bool ScenarioRunner::runCommand(const Step& step)
{
    const QString command = step.object.value(QStringLiteral("command")).toString();
    const QJsonValue given = step.object.value(QStringLiteral("value"));
    const QString value = given.isDouble() ? QString::number(given.toDouble()) : given.toString();
    const QString reply = host_.plugin.plugin()->pluginCommand(command, value);
    QJsonObject record = stepRecord(QStringLiteral("reply"), step);
    record.insert(QStringLiteral("command"), command);
    record.insert(QStringLiteral("value"), value);
    record.insert(QStringLiteral("reply"), reply);
    host_.monitor.record(record);
    return true;
}

bool ScenarioRunner::runInvoke(const Step& step, QString* problem)
{
    const QString slot = step.object.value(QStringLiteral("invoke")).toString();
    QJsonValue value;
    if (!slot_invoker::invoke(host_.plugin.object(), slot, step.object.value(QStringLiteral("args")).toArray(),
                              host_.api.station(), &value, problem))
        return false;
    QJsonObject record = stepRecord(QStringLiteral("result"), step);
    record.insert(QStringLiteral("slot"), slot);
    record.insert(QStringLiteral("value"), value);
    host_.monitor.record(record);
    return true;
}

bool ScenarioRunner::runAnswer(const QJsonObject& answer, QString* problem)
{
    if (answer.contains(QStringLiteral("question"))) {
        host_.answerer.queueAnswer(answer.value(QStringLiteral("question")).toString());
        return true;
    }
    SimItem* item = nullptr;
    if (!lookUp(answer.value(QStringLiteral("pick")), &item, problem))
        return false;
    host_.api.queuePick(item);
    return true;
}

bool ScenarioRunner::runSetJoints(const QJsonObject& move, QString* problem)
{
    const QString name = move.value(QStringLiteral("robot")).toString();
    SimItem* robot = host_.api.station().find(name, ItemType::Robot);
    if (!robot) {
        *problem = QStringLiteral("unknown robot \"%1\"").arg(name);
        return false;
    }
    const QJsonArray joints = move.value(QStringLiteral("joints")).toArray();
    if (joints.size() != robot->jointCount()) {
        *problem = QStringLiteral("robot \"%1\" has %2 joints, the step gives %3")
                       .arg(name).arg(robot->jointCount()).arg(joints.size());
        return false;
    }
    for (int i = 0; i < joints.size(); ++i)
        robot->jointValues[size_t(i)] = joints[i].toDouble();
    return true;
}

bool ScenarioRunner::runContextMenu(const Step& step, QString* problem)
{
    QList<SimItem*> items;
    if (!lookUpAll(step.object.value(step.kind), &items, problem))
        return false;
    QList<Item> handles;
    QJsonArray names;
    for (SimItem* item : items) {
        handles.append(item);
        names.append(item->itemName());
    }
    QMenu menu;
    const bool added = host_.plugin.plugin()->pluginItemContextMenu(handles, &menu);
    QJsonArray actions;
    for (QAction* action : menu.actions())
        actions.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    QJsonObject record = stepRecord(QStringLiteral("contextMenu"), step);
    record.insert(QStringLiteral("items"), names);
    record.insert(QStringLiteral("result"), added);
    record.insert(QStringLiteral("actions"), actions);
    host_.monitor.record(record);
    return true;
}

bool ScenarioRunner::runWidgetStep(const Step& step, QString* problem)
{
    const QJsonValue value = step.object.value(step.kind);
    QJsonObject record = stepRecord(step.kind, step);
    if (step.kind == QLatin1String("form")) {
        record = widget_steps::formRecord(host_.window);
        record.insert(QStringLiteral("step"), step.number);
    } else if (step.kind == QLatin1String("setValue")) {
        QJsonValue taken;
        if (!widget_steps::setValue(host_.window, value.toObject(), &taken, problem))
            return false;
        record.insert(QStringLiteral("widget"), value.toObject().value(QStringLiteral("widget")));
        record.insert(QStringLiteral("value"), taken);
    } else {
        // Recorded first: what the action or click makes the plug-in do follows it.
        const bool isAction = step.kind == QLatin1String("action");
        record.insert(isAction ? QStringLiteral("text") : QStringLiteral("widget"), value);
        host_.monitor.record(record);
        return isAction ? widget_steps::triggerAction(host_.window, value.toString(), problem)
                        : widget_steps::click(host_.window, value.toString(), problem);
    }
    host_.monitor.record(record);
    return true;
}

bool ScenarioRunner::saveStation(const QString& name, QString* problem)
{
    host_.plugin.plugin()->pluginEvent(HostEvent::StationSaving);
    processHostEvents();
    return station_file::write(host_.api.station(), folder_.absoluteFilePath(name), problem);
}

bool ScenarioRunner::openStation(const QString& name, QString* problem)
{
    std::unique_ptr<Station> station = station_file::read(folder_.absoluteFilePath(name), problem);
    if (!station)
        return false;
    host_.api.replaceStation(std::move(station));
    host_.plugin.plugin()->pluginEvent(HostEvent::StationOpened);
    return true;
}

bool ScenarioRunner::lookUp(const QJsonValue& name, SimItem** item, QString* problem) const
{
    *item = nullptr;
    if (name.isNull())
        return true;
    *item = host_.api.station().findAny(name.toString());
    if (!*item)
        *problem = QStringLiteral("unknown item \"%1\"").arg(name.toString());
    return *item != nullptr;
}

bool ScenarioRunner::lookUpAll(const QJsonValue& names, QList<SimItem*>* items, QString* problem) const
{
    for (const QJsonValue& name : names.toArray()) {
        SimItem* item = nullptr;
        if (!lookUp(name, &item, problem))
            return false;
        items->append(item);
    }
    return true;
}
