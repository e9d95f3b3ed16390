// Runs a scenario's steps against the loaded plug-in.
#include "scenario_runner.h"

#include "host_window.h"
#include "number_text.h"
#include "play_step.h"
#include "plugin_host.h"
#include "question_answerer.h"
#include "run_monitor.h"
#include "sim_host_api.h"
#include "slot_invoker.h"
#include "station_file.h"
#include "widget_steps.h"

#include "vorlik/item_types.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QMenu>

namespace {

QJsonObject stepRecord(const QString& type, const Step& step)
{
    QJsonObject record{{QStringLiteral("type"), type}, {QStringLiteral("step"), step.number}};
    if (!step.nested.isEmpty()) {
        QJsonArray positions;
        for (int position : step.nested)
            positions.append(position);
        record.insert(QStringLiteral("nested"), positions);
    }
    return record;
}

// Wall milliseconds since the clock started, to the microsecond.
double millisecondsSince(const QElapsedTimer& clock)
{
    return double(clock.nsecsElapsed() / 1000) / 1000.0;
}

// Steps that ask something of the next operation rather than doing something themselves.
bool armsNextOperation(const Step& step)
{
    return step.kind == QLatin1String("cancelAt") || step.kind == QLatin1String("answer")
        || step.kind == QLatin1String("during");
}

// Steps that call the plug-in itself: a host calls none of these on a plug-in it unloaded.
bool callsPlugin(const Step& step)
{
    static const QStringList kinds{QStringLiteral("command"), QStringLiteral("event"), QStringLiteral("invoke"),
                                   QStringLiteral("contextMenu"), QStringLiteral("unload")};
    return kinds.contains(step.kind);
}

}  // namespace

ScenarioRunner::ScenarioRunner(const Scenario& scenario, const QString& scenarioPath, Host host)
    : scenario_(scenario), path_(scenarioPath), folder_(QFileInfo(scenarioPath).absoluteDir()), host_(host)
{
}

bool ScenarioRunner::run(QString* error)
{
    const bool ran = runSteps(scenario_.steps, error);
    host_.monitor.disarm();
    return ran;
}

bool ScenarioRunner::runSteps(const std::vector<Step>& steps, QString* error)
{
    for (const Step& step : steps) {
        QString problem;
        bool ran = runStep(step, &problem);
        processHostEvents();
        host_.monitor.checkProgress();
        // What a step asks of the coming collision tests holds for the operation that follows it only.
        if (!armsNextOperation(step)) {
            ran = ran && checkDuringRan(&problem);
            host_.monitor.disarm();
        }
        if (!nestedError_.isEmpty()) {
            *error = nestedError_;
            return false;
        }
        if (!ran) {
            *error = QStringLiteral("%1: %2: %3").arg(path_, step.label(), problem);
            return false;
        }
    }
    // A "during" with no step after it: nothing can run its steps.
    QString problem;
    if (!checkDuringRan(&problem)) {
        *error = QStringLiteral("%1: %2").arg(path_, problem);
        return false;
    }
    return true;
}

bool ScenarioRunner::checkLoaded(const Step& step, QString* problem) const
{
    if (step.kind == QLatin1String("load") && host_.plugin.loaded()) {
        *problem = QStringLiteral("the plug-in is already loaded");
        return false;
    }
    if (callsPlugin(step) && !host_.plugin.loaded()) {
        *problem = QStringLiteral("the plug-in is not loaded (an \"unload\" step came before): "
                                  "\"%1\" cannot reach it").arg(step.kind);
        return false;
    }
    return true;
}

bool ScenarioRunner::runStep(const Step& step, QString* problem)
{
    if (!checkLoaded(step, problem))
        return false;
    const QJsonValue value = step.object.value(step.kind);
    IAppVorlik* plugin = host_.plugin.plugin();
    Station& station = host_.api.station();
    if (step.kind == QLatin1String("command"))
        return runCommand(step);
    if (step.kind == QLatin1String("event")) {
        // A redraw replaces what plug-ins drew before it.
        if (value.toInt() == HostEvent::Redrawn)
            host_.api.sendRedrawn(plugin);
        else
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
    if (step.kind == QLatin1String("during")) {
        armDuring(step);
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
    if (step.kind == QLatin1String("play")) {
        QJsonObject record = stepRecord(QStringLiteral("play"), step);
        if (!play_step::play(station, host_.window, value.toString(), &record, problem))
            return false;
        host_.monitor.record(record);
        return true;
    }
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
    const QString value = given.isDouble() ? exactNumberText(given.toDouble()) : given.toString();
    QElapsedTimer clock;
    clock.start();
    const QString reply = host_.plugin.plugin()->pluginCommand(command, value);
    QJsonObject record = stepRecord(QStringLiteral("reply"), step);
    record.insert(QStringLiteral("command"), command);
    record.insert(QStringLiteral("value"), value);
    record.insert(QStringLiteral("reply"), reply);
    record.insert(QStringLiteral("ms"), millisecondsSince(clock));
    host_.monitor.record(record);
    return true;
}

bool ScenarioRunner::runInvoke(const Step& step, QString* problem)
{
    const QString slot = step.object.value(QStringLiteral("invoke")).toString();
    QJsonValue value;
    QElapsedTimer clock;
    clock.start();
    if (!slot_invoker::invoke(host_.plugin.object(), slot, step.object.value(QStringLiteral("args")).toArray(),
                              host_.api.station(), &value, problem))
        return false;
    QJsonObject record = stepRecord(QStringLiteral("result"), step);
    record.insert(QStringLiteral("slot"), slot);
    record.insert(QStringLiteral("value"), value);
    record.insert(QStringLiteral("ms"), millisecondsSince(clock));
    host_.monitor.record(record);
    return true;
}

void ScenarioRunner::armDuring(const Step& step)
{
    const int count = step.object.value(step.kind).toObject().value(QStringLiteral("collisionTest")).toInt();
    host_.monitor.runAtCollisionTest(count, step.label(), [this, &step] { runDuring(step); });
}

void ScenarioRunner::runDuring(const Step& step)
{
    QJsonObject record = stepRecord(QStringLiteral("during"), step);
    record.insert(QStringLiteral("collisionTest"),
                  step.object.value(step.kind).toObject().value(QStringLiteral("collisionTest")));
    host_.monitor.record(record);
    // After a failed step nothing more of the scenario runs.
    if (!nestedError_.isEmpty())
        return;
    QString error;
    if (!runSteps(step.steps, &error) && nestedError_.isEmpty())
        nestedError_ = error;
}

bool ScenarioRunner::checkDuringRan(QString* problem) const
{
    const auto pending = host_.monitor.pendingWork();
    if (pending.empty())
        return true;
    *problem = QStringLiteral("the steps of the \"during\" at %1 never ran: they wait for collision test %2, "
                              "and the host answered %3 after it")
                   .arg(pending.front().what).arg(pending.front().at).arg(pending.front().seen);
    return false;
}

void ScenarioRunner::sendEvent(int code)
{
    // A host tells only a loaded plug-in what happens to the station.
    if (!host_.plugin.loaded())
        return;
    host_.plugin.plugin()->pluginEvent(code);
    processHostEvents();
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
        const QJsonObject form = widget_steps::formRecord(host_.window);
        for (auto it = form.begin(); it != form.end(); ++it)
            record.insert(it.key(), it.value());
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
    sendEvent(HostEvent::StationSaving);
    return station_file::write(host_.api.station(), folder_.absoluteFilePath(name), problem);
}

bool ScenarioRunner::openStation(const QString& name, QString* problem)
{
    std::unique_ptr<Station> station = station_file::read(folder_.absoluteFilePath(name), problem);
    if (!station)
        return false;
    host_.api.replaceStation(std::move(station));
    sendEvent(HostEvent::StationOpened);
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
