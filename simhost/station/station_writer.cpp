// Writes a station to a station file.
#include "cell_model.h"
#include "station.h"
#include "station_fields.h"
#include "station_file.h"
#include "station_records.h"

#include "vorlik/item_types.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

namespace {

QJsonArray numbers(const std::vector<double>& values)
{
    QJsonArray array;
    for (double value : values)
        array.append(value);
    return array;
}

// Writes a reference by name and id; a reference to an item that is gone is null.
void putReference(QJsonObject& object, const QString& field, const SimItem* item)
{
    const bool live = item && !item->deleted;
    object.insert(field, live ? QJsonValue(item->itemName()) : QJsonValue());
    if (live)
        object.insert(field + QStringLiteral("Id"), item->id());
}

// The id and name, and the fields the file gave that the host does not know.
QJsonObject itemHead(const SimItem* item)
{
    QJsonObject object{{QStringLiteral("id"), item->id()}, {QStringLiteral("name"), item->itemName()}};
    station_fields::addKept(object, item->keptFields);
    return object;
}

// The placement as it was read; nothing when the item has none.
void putPose(QJsonObject& object, const SimItem* item)
{
    if (!item->pose.empty())
        object.insert(QStringLiteral("pose"), numbers(item->pose));
}

// Fields kept as they were read (an arm's or an object's model).
void putFields(QJsonObject& object, const QJsonObject& fields)
{
    for (auto it = fields.begin(); it != fields.end(); ++it)
        object.insert(it.key(), it.value());
}

QJsonObject objectJson(const SimItem* item)
{
    QJsonObject object = itemHead(item);
    putReference(object, QStringLiteral("parent"), item->parentItem);
    putPose(object, item);
    if (item->object)
        putFields(object, item->object->source);
    return object;
}

QJsonObject robotJson(const SimItem* robot)
{
    QJsonObject object = itemHead(robot);
    putReference(object, QStringLiteral("parent"), robot->parentItem);
    object.insert(QStringLiteral("lower"), numbers(robot->lower));
    object.insert(QStringLiteral("upper"), numbers(robot->upper));
    object.insert(QStringLiteral("joints"), numbers(robot->jointValues));
    QJsonArray boxes;
    for (size_t i = 0; i < robot->boxes.size(); ++i) {
        QJsonObject box{{QStringLiteral("lower"), numbers(robot->boxes[i].lower)},
                        {QStringLiteral("upper"), numbers(robot->boxes[i].upper)}};
        if (i < robot->keptBoxFields.size())
            station_fields::addKept(box, robot->keptBoxFields[i]);
        boxes.append(box);
    }
    object.insert(QStringLiteral("jointBoxes"), boxes);
    putReference(object, QStringLiteral("carries"), robot->carried);
    putPose(object, robot);
    if (robot->arm)
        putFields(object, robot->arm->source);
    return object;
}

QJsonObject targetJson(const SimItem* target)
{
    QJsonObject object = itemHead(target);
    putReference(object, QStringLiteral("robot"), target->robot);
    putReference(object, QStringLiteral("parent"), target->parentItem);
    object.insert(QStringLiteral("joints"), numbers(target->jointValues));
    return object;
}

QJsonObject programJson(const SimItem* program)
{
    QJsonObject object = itemHead(program);
    putReference(object, QStringLiteral("robot"), program->robot);
    object.insert(QStringLiteral("instructions"), program->instructionsJson(true));
    if (program->optionA)
        object.insert(QStringLiteral("optionA"), true);
    if (program->optionB)
        object.insert(QStringLiteral("optionB"), true);
    return object;
}

}  // namespace

namespace station_file {

QJsonObject toJson(const Station& station, const QMap<QString, QJsonObject>& apart)
{
    // Numbers stay numbers: their text is the shortest that reads back as the same number.
    QJsonObject params;
    for (auto it = station.params.begin(); it != station.params.end(); ++it) {
        bool isNumber = false;
        const double number = station.numberParams.contains(it.key()) ? it.value().toDouble(&isNumber) : 0.0;
        params.insert(it.key(), isNumber ? QJsonValue(number) : QJsonValue(it.value()));
    }
    QJsonObject data;
    for (auto it = station.data.begin(); it != station.data.end(); ++it) {
        if (apart.contains(it.key()))
            data.insert(it.key(), apart.value(it.key()));
        else
            data.insert(it.key(), QString::fromLatin1(it.value().toBase64()));
    }

    QJsonArray frames;
    for (const SimItem* frame : station.items(FrameType)) {
        QJsonObject object = itemHead(frame);
        putReference(object, QStringLiteral("parent"), frame->parentItem);
        putPose(object, frame);
        frames.append(object);
    }
    QJsonArray robots;
    for (const SimItem* robot : station.items(ItemType::Robot))
        robots.append(robotJson(robot));
    QJsonArray targets;
    for (const SimItem* target : station.items(ItemType::Target))
        targets.append(targetJson(target));
    QJsonArray programs;
    for (const SimItem* program : station.items(ItemType::Program))
        programs.append(programJson(program));

    QJsonObject root{{QStringLiteral("params"), params},   {QStringLiteral("data"), data},
                     {QStringLiteral("frames"), frames},   {QStringLiteral("robots"), robots},
                     {QStringLiteral("targets"), targets}, {QStringLiteral("programs"), programs}};
    // A station without objects is written as it always was.
    if (!station.items(ObjectType).empty()) {
        QJsonArray objects;
        for (const SimItem* item : station.items(ObjectType))
            objects.append(objectJson(item));
        root.insert(QStringLiteral("objects"), objects);
    }
    station_fields::addKept(root, station.keptFields);
    return root;
}

bool write(const Station& station, const QString& path, QString* error)
{
    station_records::RecordFiles records(path);
    QMap<QString, QJsonObject> apart;
    for (const QString& key : station_records::keptApart(station.data)) {
        QString problem;
        const QJsonObject reference = records.write(key, station.data.value(key), &problem);
        if (reference.isEmpty()) {
            records.discard();
            *error = QStringLiteral("%1: cannot write the station: %2").arg(path, problem);
            return false;
        }
        apart.insert(key, reference);
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        records.discard();
        *error = QStringLiteral("%1: cannot write the station: %2").arg(path, file.errorString());
        return false;
    }
    file.write(QJsonDocument(toJson(station, apart)).toJson(QJsonDocument::Indented));
    if (!file.commit()) {
        records.discard();
        *error = QStringLiteral("%1: cannot write the station: %2").arg(path, file.errorString());
        return false;
    }
    records.commit();
    return true;
}

}  // namespace station_file
