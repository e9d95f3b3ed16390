// The host API the plug-in calls, answered from the in-memory station.
#include "sim_host_api.h"

#include "host_monitor.h"

#include "vorlik/iappvorlik.h"
#include "vorlik/item_types.h"

#include <QInputDialog>
#include <QJsonArray>
#include <QJsonObject>
#include <QMessageBox>
#include <QStatusBar>

#include <algorithm>

namespace {

const QString pathStepParam = QStringLiteral("PathStepCollisionDeg");

// Floats as they were meant (0.999f reads back as 0.999, not 0.99900001).
double plainFloat(float value)
{
    return QString::number(double(value), 'g', 7).toDouble();
}

}  // namespace

SimHostApi::SimHostApi(std::unique_ptr<Station> station, HostMonitor* monitor)
    : station_(std::move(station)), monitor_(monitor)
{
    station_->monitor = monitor_;
}

void SimHostApi::replaceStation(std::unique_ptr<Station> station)
{
    station_->retire();
    retired_.push_back(std::move(station_));
    station_ = std::move(station);
    station_->monitor = monitor_;
    station_->scene = scene_;
    drawings_.clear();
}

void SimHostApi::sendRedrawn(IAppVorlik* plugin)
{
    drawings_.clear();
    if (plugin)
        plugin->pluginEvent(HostEvent::Redrawn);
    if (scene_)
        scene_->sceneChanged();
}

void SimHostApi::setSceneListener(SceneListener* listener)
{
    scene_ = listener;
    station_->scene = listener;
}

void SimHostApi::setWindow(QWidget* window, QStatusBar* statusBar, bool headless)
{
    window_ = window;
    statusBar_ = statusBar;
    headless_ = headless;
}

HostItem* SimHostApi::getItem(const QString& name, int itemType)
{
    hostCalled();
    return name.isEmpty() ? nullptr : station_->find(name, itemType);
}

QList<Item>& SimHostApi::getItemList(QList<Item>& out, int itemType)
{
    hostCalled();
    out.clear();
    for (SimItem* item : station_->items(itemType))
        out.append(item);
    return out;
}

bool SimHostApi::isValidItem(HostItem* item)
{
    hostCalled();
    return station_->holds(item);
}

HostItem* SimHostApi::pickItem(const QString& message, int itemType)
{
    hostCalled();
    SimItem* answer = nullptr;
    if (!picks_.empty()) {
        answer = picks_.front();
        picks_.pop_front();
        // A name shared by items of several types means the one of the asked type.
        if (answer && answer->itemType() != itemType) {
            if (SimItem* sameName = station_->find(answer->itemName(), itemType))
                answer = sameName;
        }
        if (!station_->holds(answer))
            answer = nullptr;
    } else if (!headless_) {
        answer = askUser(message, itemType);
    }
    monitor_->record(QJsonObject{{QStringLiteral("type"), QStringLiteral("pick")},
                                 {QStringLiteral("message"), message},
                                 {QStringLiteral("itemType"), itemType},
                                 {QStringLiteral("answer"), answer ? QJsonValue(answer->itemName()) : QJsonValue()}});
    return answer;
}

SimItem* SimHostApi::askUser(const QString& message, int itemType)
{
    QStringList names;
    for (SimItem* item : station_->items(itemType))
        names << item->itemName();
    bool chosen = false;
    const QString name = QInputDialog::getItem(window_, QStringLiteral("Vorlik"), message, names, 0, false, &chosen);
    if (!chosen)
        return nullptr;
    const int index = names.indexOf(name);
    return index < 0 ? nullptr : station_->items(itemType)[size_t(index)];
}

void SimHostApi::showMessage(const QString& text, bool popup)
{
    hostCalled();
    monitor_->record(QJsonObject{{QStringLiteral("type"), QStringLiteral("message")},
                                 {QStringLiteral("text"), text},
                                 {QStringLiteral("popup"), popup}});
    if (statusBar_)
        statusBar_->showMessage(text);
    if (popup && !headless_)
        QMessageBox::information(window_, QStringLiteral("Vorlik"), text);
}

HostItem* SimHostApi::addTarget(const QString& name, HostItem* parent, HostItem* robot)
{
    hostCalled();
    SimItem* target = station_->create(ItemType::Target, name);
    target->parentItem = live(parent, 0);
    target->robot = live(robot, ItemType::Robot);
    if (target->robot)
        target->jointValues = target->robot->jointValues;
    return target;
}

HostItem* SimHostApi::addProgram(const QString& name, HostItem* robot)
{
    hostCalled();
    SimItem* program = station_->create(ItemType::Program, name);
    program->robot = live(robot, ItemType::Robot);
    return program;
}

void SimHostApi::update(int flags)
{
    hostCalled();
    // Render mode 1 asks for no refresh while a long computation moves the robot.
    if (scene_ && renderMode_ != 1)
        scene_->refresh();
}

void SimHostApi::setRenderMode(int mode)
{
    hostCalled();
    renderMode_ = mode;
}

int SimHostApi::collisions()
{
    hostCalled();
    monitor_->collisionTested();
    ++station_->cellStats.configurationTests;
    return station_->collisions();
}

QString& SimHostApi::command(QString& out, const QString& name, const QString& value)
{
    hostCalled();
    if (value.isEmpty()) {
        out = station_->params.value(name, name == pathStepParam ? QStringLiteral("4.0") : QString());
        return out;
    }
    // Kept as the plug-in gave it, text, whatever the file had.
    station_->changed();
    station_->params.insert(name, value);
    station_->numberParams.remove(name);
    monitor_->record(QJsonObject{{QStringLiteral("type"), QStringLiteral("param")},
                                 {QStringLiteral("name"), name},
                                 {QStringLiteral("value"), value}});
    out = QStringLiteral("OK");
    return out;
}

QList<Item>& SimHostApi::getSelectedItems(QList<Item>& out)
{
    hostCalled();
    out.clear();
    for (SimItem* item : station_->selection)
        out.append(item);
    return out;
}

QByteArray SimHostApi::getDataParam(const QString& key)
{
    hostCalled();
    return station_->data.value(key);
}

void SimHostApi::setDataParam(const QString& key, const QByteArray& bytes)
{
    hostCalled();
    station_->changed();
    station_->data.insert(key, bytes);
}

int SimHostApi::renderMode()
{
    hostCalled();
    return renderMode_;
}

void SimHostApi::drawGeometry(int primitive, const double* points, int pointCount, const float color[4],
                              float lineWidth, int flag)
{
    hostCalled();
    SceneDrawing drawing;
    drawing.primitive = primitive;
    drawing.width = lineWidth;
    if (points)
        drawing.points.assign(points, points + 3 * std::max(pointCount, 0));
    for (int i = 0; color && i < 4; ++i)
        drawing.color[size_t(i)] = color[i];
    QJsonObject record;
    if (monitor_->recording()) {
        QJsonArray pointList;
        for (int i = 0; points && i < pointCount; ++i)
            pointList.append(QJsonArray{points[3 * i], points[3 * i + 1], points[3 * i + 2]});
        QJsonArray rgba;
        for (int i = 0; color && i < 4; ++i)
            rgba.append(plainFloat(color[i]));
        record = QJsonObject{{QStringLiteral("type"), QStringLiteral("draw")},
                             {QStringLiteral("primitive"), primitive},
                             {QStringLiteral("count"), pointCount},
                             {QStringLiteral("color"), rgba},
                             {QStringLiteral("width"), plainFloat(lineWidth)},
                             {QStringLiteral("points"), pointList}};
    }
    drawings_.add(std::move(drawing));
    if (scene_)
        scene_->sceneChanged();
    if (!record.isEmpty())
        monitor_->record(record);
}

void SimHostApi::hostCalled()
{
    monitor_->hostCalled();
}

SimItem* SimHostApi::live(HostItem* item, int type) const
{
    if (!station_->holds(item))
        return nullptr;
    SimItem* simItem = static_cast<SimItem*>(item);
    return type == 0 || simItem->itemType() == type ? simItem : nullptr;
}
