// Settings and maps travel inside the station as data parameters.
#include "plugin_autoprm.h"

#include "roadmap_graph.h"
#include "roadmap_matrix.h"
#include "robot_map_record.h"
#include "translate.h"
#include "vorlik/item_types.h"

#include <QDataStream>
#include <QDebug>

namespace {
QString robotMapKey(const QString& pluginName, const QString& robotName)
{
    return pluginName + "-Rob " + robotName;
}
}  // namespace

bool PluginAutoPRM::loadSettings()
{
    settingsChanged = false;
    const QByteArray bytes = hostApi->getDataParam(pluginName());
    if (bytes.isEmpty())
        return false;

    qDebug().noquote().nospace() << "Loading PRM plugin settings...";
    QDataStream stream(bytes);
    qint32 samplesSetting = 0;
    stream >> samplesSetting;
    nSamples = samplesSetting;
    if (nSamples < 0) {
        // A negative sample count marks a record written by a later version.
        qDebug().noquote().nospace() << "Warning: Settings not loaded. Future version?";
        nSamples = 100;
        return false;
    }
    qint32 edges = 0;
    qint32 newNodeEdges = 0;
    QString storedRobot;
    stream >> edges >> robotStepDeg >> newNodeEdges >> displaySamples >> storedRobot;
    nEdgesPerSample = edges;
    nNewNodeEdges = newNodeEdges;

    robot = hostApi->getItem(storedRobot, ItemType::Robot);
    if (robot) {
        loadRobotMap();
    } else {
        // The stored robot is gone: take the first one, keeping whatever map is held.
        QList<Item> robots;
        hostApi->getItemList(robots, ItemType::Robot);
        robot = robots.isEmpty() ? nullptr : robots.first();
    }
    emit UpdateForm();
    qDebug().noquote().nospace() << "Done";
    return true;
}

void PluginAutoPRM::saveSettings()
{
    if (!settingsChanged)
        return;
    qDebug().noquote().nospace() << "Saving PRM plugin settings...";
    QByteArray bytes;
    {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << qint32(nSamples) << qint32(nEdgesPerSample) << robotStepDeg << qint32(nNewNodeEdges)
               << displaySamples << (robot ? robot->name() : QString(""));
    }
    hostApi->setDataParam(pluginName(), bytes);
    saveRobotMap();
    settingsChanged = false;
    qDebug().noquote().nospace() << "Done";
}

void PluginAutoPRM::loadRobotMap()
{
    setSize(samples, 0, 0);
    graph->clear();
    setSize(route, 0, 0);
    if (!requireRobot(true)) {
        emit UpdateForm();
        return;
    }
    const QByteArray bytes = hostApi->getDataParam(robotMapKey(pluginName(), robot->name()));
    if (!bytes.isEmpty()) {
        qDebug().noquote().nospace() << "Loading robot settings...";
        JointVector lower;
        JointVector upper;
        robot->jointLimits(lower, upper);
        QString problem;
        if (!decodeRobotMap(bytes, lower.count(), samples, graph, route, &problem)) {
            qDebug().noquote().nospace() << "Stored map not loaded: " << problem;
            hostApi->showMessage(planTr("The map stored for robot %1 cannot be used (%2). Compute a new map.")
                                     .arg(robot->name(), problem),
                                 false);
        }
    }
    emit UpdateForm();
}

void PluginAutoPRM::saveRobotMap()
{
    if (!requireRobot(true))
        return;
    qDebug().noquote().nospace() << "Saving robot settings...";
    QString problem;
    const QByteArray bytes = encodeRobotMap(samples, graph, route, &problem);
    if (bytes.isNull()) {
        qDebug().noquote().nospace() << "Map not saved: " << problem;
        hostApi->showMessage(planTr("The map of robot %1 cannot be saved in the station: %2").arg(robot->name(), problem),
                             true);
        return;
    }
    hostApi->setDataParam(robotMapKey(pluginName(), robot->name()), bytes);
}
