// Settings and maps in the station's data parameters.
#include "map_store.h"

#include "planner_session.h"
#include "robot_map_record.h"
#include "written_map_record.h"
#include "translate.h"
#include "vorlik/host_api.h"
#include "vorlik/item_types.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QDebug>
#include <QIODevice>
#include <QStringList>
#include <QtEndian>

#include <cmath>

namespace {
// Fields of a settings record outside what the planner can work with fall
// back to their defaults; their names, for the message.
QStringList settingsOutOfRange(PlannerSettings& settings)
{
    const PlannerSettings defaults;
    QStringList reset;
    if (settings.samples < 1) {
        settings.samples = defaults.samples;
        reset << QStringLiteral("samples");
    }
    if (settings.edgesPerSample < 0) {
        settings.edgesPerSample = defaults.edgesPerSample;
        reset << QStringLiteral("edges per sample");
    }
    if (!std::isfinite(settings.robotStepDeg) || settings.robotStepDeg < 0) {
        settings.robotStepDeg = defaults.robotStepDeg;
        reset << QStringLiteral("robot step");
    }
    if (settings.newNodeEdges < 0) {
        settings.newNodeEdges = defaults.newNodeEdges;
        reset << QStringLiteral("new sample edges");
    }
    return reset;
}

int jointCountOf(HostItem* robot)
{
    JointVector lower;
    JointVector upper;
    robot->jointLimits(lower, upper);
    return lower.count();
}

// Whether the string stored at offset (a 32-bit byte count, all ones for a
// null string, then the UTF-16 text) lies within the record.
bool storedStringFits(const QByteArray& bytes, qint64 offset)
{
    if (offset < 0 || offset + 4 > bytes.size())
        return false;
    const quint32 length = qFromBigEndian<quint32>(bytes.constData() + offset);
    return length == 0xffffffffu || length <= quint64(bytes.size() - offset - 4);
}

}  // namespace

MapStore::MapStore(PlannerSession& session, HostApi* host, QString pluginName, WrittenMapRecord& written)
    : session_(session), host_(host), pluginName_(std::move(pluginName)), written_(written)
{
}

void MapStore::loadOptions()
{
    session_.setKeepStoredOptions(false);
    // A station without the record has every option off: none comes over from the station before.
    PlannerSettings unset = session_.settings();
    const PlannerSettings defaults;
    unset.shortenRoutes = defaults.shortenRoutes;
    unset.growLimit = defaults.growLimit;
    unset.checkRoutes = defaults.checkRoutes;
    session_.restoreSettings(unset);
    const QByteArray bytes = host_->getDataParam(optionsKey());
    if (bytes.isEmpty())
        return;
    QDataStream stream(bytes);
    qint32 version = 0;
    stream >> version;
    if (version > 2) {
        // What a later version meant by its fields is not ours to guess, nor to overwrite.
        qDebug().noquote().nospace() << "Options of a later version kept: version " << version;
        session_.setKeepStoredOptions(true);
        host_->showMessage(QCoreApplication::translate("PluginAutoPRM",
                                                       "The planner's options stored in the station were written by "
                                                       "a later version of the planner: they are kept as they are "
                                                       "and not used."),
                           false);
        return;
    }
    bool shorten = false;
    qint32 growLimit = 0;
    bool checkRoutes = false;
    stream >> shorten;
    if (version == 2)
        stream >> growLimit >> checkRoutes;
    if (stream.status() != QDataStream::Ok || version < 1 || growLimit < 0) {
        qDebug().noquote().nospace() << "Options not loaded: version " << version;
        return;
    }
    PlannerSettings settings = session_.settings();
    settings.shortenRoutes = shorten;
    settings.growLimit = growLimit;
    settings.checkRoutes = checkRoutes;
    session_.restoreSettings(settings);
}

void MapStore::saveOptions()
{
    if (session_.keepsStoredOptions())
        return;
    const PlannerSettings& settings = session_.settings();
    // Version 1 holds "Shorten routes" alone, as it always did; version 2 adds
    // the options of a failed link, only when one of them is on.
    const bool second = settings.growLimit != 0 || settings.checkRoutes;
    if (!settings.shortenRoutes && !second && host_->getDataParam(optionsKey()).isEmpty())
        return;
    QByteArray bytes;
    {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << qint32(second ? 2 : 1) << settings.shortenRoutes;
        if (second)
            stream << qint32(settings.growLimit) << settings.checkRoutes;
    }
    host_->setDataParam(optionsKey(), bytes);
}

bool MapStore::loadSettings()
{
    session_.markSaved();
    loadOptions();
    const QByteArray bytes = host_->getDataParam(pluginName_);
    if (bytes.isEmpty())
        return false;

    qDebug().noquote().nospace() << "Loading PRM plugin settings...";
    QDataStream stream(bytes);
    PlannerSettings settings = session_.settings();
    qint32 samples = 0;
    stream >> samples;
    settings.samples = samples;
    if (samples < 0) {
        // A negative sample count marks a record written by a later version.
        qDebug().noquote().nospace() << "Warning: Settings not loaded. Future version?";
        settings.samples = 100;
        session_.restoreSettings(settings);
        return false;
    }
    qint32 edges = 0;
    qint32 newNodeEdges = 0;
    QString storedRobot;
    stream >> edges >> settings.robotStepDeg >> newNodeEdges >> settings.displaySamples;
    // The robot's name is read only when the record holds the length it claims:
    // the stream would first allocate up to 2 MB for a name that is not there.
    if (stream.status() == QDataStream::Ok && storedStringFits(bytes, stream.device()->pos()))
        stream >> storedRobot;
    else
        stream.setStatus(QDataStream::ReadPastEnd);
    settings.edgesPerSample = edges;
    settings.newNodeEdges = newNodeEdges;
    if (stream.status() != QDataStream::Ok) {
        qDebug().noquote().nospace() << "Settings record cut short";
        host_->showMessage(
            QCoreApplication::translate(
                "PluginAutoPRM", "The planner's settings stored in the station are damaged: the defaults are used."),
            false);
        PlannerSettings defaults;
        // From their own record.
        defaults.shortenRoutes = session_.settings().shortenRoutes;
        defaults.growLimit = session_.settings().growLimit;
        defaults.checkRoutes = session_.settings().checkRoutes;
        session_.restoreSettings(defaults);
        return false;
    }
    const QStringList reset = settingsOutOfRange(settings);
    if (!reset.isEmpty()) {
        host_->showMessage(QCoreApplication::translate(
                               "PluginAutoPRM",
                               "Some of the planner's settings stored in the station are out of range and were "
                               "set to their defaults: %1.")
                               .arg(reset.join(QStringLiteral(", "))),
                           false);
    }
    session_.restoreSettings(settings);

    HostItem* robot = host_->getItem(storedRobot, ItemType::Robot);
    if (!robot) {
        // The stored robot is gone (renamed, deleted): the first robot, with its own map.
        QList<Item> robots;
        host_->getItemList(robots, ItemType::Robot);
        robot = robots.isEmpty() ? nullptr : robots.first()->getLink(ItemType::Robot);
    }
    session_.setRobot(robot);
    loadRobotMap();
    session_.notifyChanged();
    qDebug().noquote().nospace() << "Done";
    return true;
}

void MapStore::saveSettings()
{
    if (!session_.settingsChanged())
        return;
    qDebug().noquote().nospace() << "Saving PRM plugin settings...";
    const PlannerSettings& settings = session_.settings();
    QByteArray bytes;
    {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << qint32(settings.samples) << qint32(settings.edgesPerSample) << settings.robotStepDeg
               << qint32(settings.newNodeEdges) << settings.displaySamples
               << (session_.robot() ? session_.robotName() : QStringLiteral(""));
    }
    host_->setDataParam(pluginName_, bytes);
    saveOptions();
    saveRobotMap();
    session_.markSaved();
    qDebug().noquote().nospace() << "Done";
}

void MapStore::loadRobotMap()
{
    session_.forgetMap();
    if (!session_.requireRobot(true)) {
        session_.notifyChanged();
        return;
    }
    HostItem* robot = session_.robot();
    RobotMap& map = session_.editMap(MapKey());
    const QByteArray bytes = host_->getDataParam(robotMapKey(robot->name()));
    if (bytes.isEmpty()) {
        map.setRobot(robot);
        session_.notifyChanged();
        return;
    }
    qDebug().noquote().nospace() << "Loading robot settings...";
    QString problem;
    ScopedMatrix samples = makeScopedMatrix();
    RoadmapGraph graph;
    const bool decoded = decodeRobotMap(bytes, jointCountOf(robot), samples.get(), &graph, map.route(), &problem);
    // The reader takes only what a roadmap holds.
    if (map.roadmap().assign(std::move(samples), std::move(graph)) && decoded) {
        map.setRobot(robot);
    } else {
        map.clear();
        // Not used, and not written over: the record stays until a new map is computed.
        qDebug().noquote().nospace() << "Stored map not loaded: " << problem;
        host_->showMessage(QCoreApplication::translate(
                               "PluginAutoPRM",
                               "The map stored for robot %1 cannot be used (%2); it is kept in the station until "
                               "a new map is computed.")
                               .arg(robot->name(), problem),
                           false);
    }
    session_.notifyChanged();
}

void MapStore::saveRobotMap()
{
    if (!session_.requireRobot(true))
        return;
    HostItem* robot = session_.robot();
    const RobotMap& map = session_.map();
    if (map.robot() != robot) {
        // The map in hand was not built or loaded for this robot (its stored one
        // could not be used, or none was loaded): what is stored stays.
        qDebug().noquote().nospace() << "Map of " << robot->name() << " not saved: none was built or loaded for it";
        return;
    }
    qDebug().noquote().nospace() << "Saving robot settings...";
    const QString key = robotMapKey(robot->name());
    QByteArray bytes = written_.reuse(key, map);
    if (!bytes.isNull()) {
        host_->setDataParam(key, bytes);
        return;
    }
    QString problem;
    bytes = encodeRobotMap(map.samples(), map.graph(), map.route(), &problem);
    if (bytes.isNull()) {
        qDebug().noquote().nospace() << "Map not saved: " << problem;
        host_->showMessage(
            QCoreApplication::translate("PluginAutoPRM", "The map of robot %1 cannot be saved in the station: %2")
                .arg(robot->name(), problem),
            true);
        return;
    }
    written_.remember(key, map, bytes);
    host_->setDataParam(key, bytes);
}
