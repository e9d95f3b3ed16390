#pragma once

#include "scenario.h"

#include <QDir>
#include <QJsonValue>
#include <QString>

class HostWindow;
class PluginHost;
class QuestionAnswerer;
class RunMonitor;
class SimHostApi;
class SimItem;

// Runs the steps of a scenario against the loaded plug-in, one after the
// other, recording replies, results and context menus.
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
    bool runStep(const Step& step, QString* problem);
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
};
