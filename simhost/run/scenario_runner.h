// Runs a scenario's steps against the loaded plug-in.
#pragma once

#include "scenario.h"

#include <QDir>
#include <QJsonValue>
#include <QString>

#include <vector>

class HostWindow;
class PluginHost;
class QuestionAnswerer;
class RunMonitor;
class SimHostApi;
class SimItem;

// Runs the steps of a scenario against the loaded plug-in, one after the
// other, recording replies and results (with the time each took) and context
// menus. The steps of a "during" run later, from inside a collision test that
// the host answers while the plug-in is busy.
class ScenarioRunner {
public:
    struct Host {
        SimHostApi& api;
        RunMonitor& monitor;
        QuestionAnswerer& answerer;
        HostWindow& window;
        PluginHost& plugin;
    };

    ScenarioRunner(const Scenario& scenario, const QString& scenarioPath, Host host);

    // False at the first step that cannot be used, with a message naming the
    // file and the step; the steps after it do not run.
    bool run(QString* error);

private:
    bool runSteps(const std::vector<Step>& steps, QString* error);
    bool runStep(const Step& step, QString* problem);
    bool checkLoaded(const Step& step, QString* problem) const;
    void armDuring(const Step& step);
    void runDuring(const Step& step);
    bool checkDuringRan(QString* problem) const;
    void sendEvent(int code);
    bool runCommand(const Step& step);
    bool runInvoke(const Step& step, QString* problem);
    bool runAnswer(const QJsonObject& answer, QString* problem);
    bool runSetJoints(const QJsonObject& move, QString* problem);
    bool runContextMenu(const Step& step, QString* problem);
    bool runWidgetStep(const Step& step, QString* problem);
    bool saveStation(const QString& name, QString* problem);
    bool openStation(const QString& name, QString* problem);
    bool lookUp(const QJsonValue& name, SimItem** item, QString* problem) const;
    bool lookUpAll(const QJsonValue& names, QList<SimItem*>* items, QString* problem) const;

    const Scenario& scenario_;
    QString path_;
    QDir folder_;
    Host host_;
    // The first problem of a step run by a "during"; it ends the run once the busy step returns.
    QString nestedError_;
};
