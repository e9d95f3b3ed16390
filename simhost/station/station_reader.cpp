// Reads a station file into a station, checking every field.
#include "cell_placement.h"
#include "cell_reader.h"
#include "station.h"
#include "station_fields.h"
#include "station_file.h"
#include "station_records.h"
#include "number_text.h"

#include "vorlik/item_types.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <optional>

namespace {

// Carries the first problem found out of the nested reading code.
struct Unusable {
    QString problem;
};

[[noreturn]] void fail(const QString& problem)
{
    throw Unusable{problem};
}

QString quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

const QString idRange = QStringLiteral("a whole number from 1 to %1").arg(std::numeric_limits<int>::max());

// An item id: a whole number from 1 to the largest int.
bool readId(const QJsonValue& value, int* id)
{
    const double number = value.toDouble(0.0);
    if (!value.isDouble() || !(number >= 1.0 && number <= std::numeric_limits<int>::max())
        || number != std::floor(number))
        return false;
    *id = int(number);
    return true;
}

// Reads one station file into a fresh station; every problem names the item
// and the field at fault.
class StationReader {
public:
    // `folder` holds the records the file keeps apart; empty for a station given as text.
    explicit StationReader(const QString& folder) : folder_(folder) {}
    std::unique_ptr<Station> read(const QJsonObject& root);

private:
    struct Pending {
        SimItem* item;
        QJsonObject object;
        QString label;
    };

    QJsonArray arrayField(const QJsonObject& object, const QString& field, const QString& label) const;
    std::vector<double> numbers(const QJsonValue& value, const QString& what, int expectedCount) const;
    void readParams(const QJsonObject& root);
    void createItems(const QJsonObject& root, const QString& field, const QString& kind, int type,
                     std::optional<station_fields::Place> place);
    // The item a field names, or the one its id field ("<field>Id" unless given) names first.
    SimItem* reference(const Pending& pending, const QString& field, std::initializer_list<int> types,
                       const QString& idField = QString()) const;
    void readRobot(const Pending& pending);
    void readTarget(const Pending& pending);
    void readProgram(const Pending& pending);
    void readObject(const Pending& pending);
    void readPose(const Pending& pending);
    void checkParentChains() const;

    QString folder_;
    std::unique_ptr<Station> station_;
    std::map<int, SimItem*> ids_;
    std::vector<Pending> frames_, robots_, targets_, programs_, objects_;
    std::vector<std::shared_ptr<CellObject>> placedObjects_;  // in the order of objects_
};

QJsonArray StationReader::arrayField(const QJsonObject& object, const QString& field,
                                     const QString& label) const
{
    const QJsonValue value = object.value(field);
    if (value.isUndefined() || value.isNull())
        return QJsonArray();
    if (!value.isArray())
        fail(QStringLiteral("%1: \"%2\" must be an array").arg(label, field));
    return value.toArray();
}

std::vector<double> StationReader::numbers(const QJsonValue& value, const QString& what,
                                           int expectedCount) const
{
    if (!value.isArray())
        fail(QStringLiteral("%1 must be an array of numbers").arg(what));
    const QJsonArray array = value.toArray();
    if (expectedCount >= 0 && array.size() != expectedCount)
        fail(QStringLiteral("%1 has the wrong length: %2 values instead of %3").arg(what).arg(array.size()).arg(expectedCount));
    std::vector<double> values;
    for (const QJsonValue& element : array) {
        if (!element.isDouble())
            fail(QStringLiteral("%1 must hold numbers only").arg(what));
        values.push_back(element.toDouble());
    }
    return values;
}

void StationReader::readParams(const QJsonObject& root)
{
    const QJsonValue params = root.value(QStringLiteral("params"));
    if (!params.isUndefined() && !params.isNull()) {
        if (!params.isObject())
            fail(QStringLiteral("\"params\" must be an object"));
        const QJsonObject object = params.toObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            if (it.value().isString())
                station_->params.insert(it.key(), it.value().toString());
            else if (it.value().isDouble()) {
                station_->params.insert(it.key(), exactNumberText(it.value().toDouble()));
                station_->numberParams.insert(it.key());
            }
            else
                fail(QStringLiteral("parameter %1 must be a text").arg(quoted(it.key())));
        }
    }
    const QJsonValue data = root.value(QStringLiteral("data"));
    if (data.isUndefined() || data.isNull())
        return;
    if (!data.isObject())
        fail(QStringLiteral("\"data\" must be an object"));
    QString problem;
    if (!station_records::readData(data.toObject(), folder_, &station_->data, &problem))
        fail(problem);
}

// Items of that type, in file order; each keeps the fields the host does not
// know at its place (objects have none: they keep theirs with their solid).
void StationReader::createItems(const QJsonObject& root, const QString& field, const QString& kind, int type,
                                std::optional<station_fields::Place> place)
{
    const QJsonArray array = arrayField(root, field, QStringLiteral("the station"));
    int index = 0;
    for (const QJsonValue& value : array) {
        ++index;
        QString label = QStringLiteral("%1 %2").arg(kind).arg(index);
        if (!value.isObject())
            fail(QStringLiteral("%1 must be an object").arg(label));
        const QJsonObject object = value.toObject();
        if (!object.value(QStringLiteral("name")).isString())
            fail(QStringLiteral("%1 has no \"name\" text").arg(label));
        const QString name = object.value(QStringLiteral("name")).toString();
        label += QLatin1Char(' ') + quoted(name);
        int id = 0;
        const QJsonValue idValue = object.value(QStringLiteral("id"));
        if (!idValue.isUndefined()) {
            if (!readId(idValue, &id))
                fail(QStringLiteral("%1: \"id\" must be %2").arg(label, idRange));
            if (ids_.count(id))
                fail(QStringLiteral("%1: id %2 is used twice").arg(label).arg(id));
        }
        SimItem* item = station_->create(type, name, id);
        if (id > 0)
            ids_[id] = item;
        if (place)
            item->keptFields = station_fields::unknownFields(object, *place);
        Pending pending{item, object, label};
        switch (type) {
        case FrameType: frames_.push_back(pending); break;
        case ItemType::Robot: robots_.push_back(pending); break;
        case ItemType::Target: targets_.push_back(pending); break;
        case ObjectType: objects_.push_back(pending); break;
        default: programs_.push_back(pending); break;
        }
    }
}

SimItem* StationReader::reference(const Pending& pending, const QString& field,
                                  std::initializer_list<int> types, const QString& idField) const
{
    const QString idKey = idField.isEmpty() ? field + QStringLiteral("Id") : idField;
    const QJsonValue idValue = pending.object.value(idKey);
    if (!idValue.isUndefined() && !idValue.isNull()) {
        int id = 0;
        if (!readId(idValue, &id))
            fail(QStringLiteral("%1: \"%2\" must be %3").arg(pending.label, idKey, idRange));
        const auto it = ids_.find(id);
        if (it == ids_.end() || std::find(types.begin(), types.end(), it->second->itemType()) == types.end())
            fail(QStringLiteral("%1: \"%2\" %3 names no suitable item").arg(pending.label, idKey).arg(id));
        return it->second;
    }
    const QJsonValue value = pending.object.value(field);
    if (value.isUndefined() || value.isNull())
        return nullptr;
    if (!value.isString())
        fail(QStringLiteral("%1: \"%2\" must be a name").arg(pending.label, field));
    for (int type : types) {
        if (SimItem* item = station_->find(value.toString(), type))
            return item;
    }
    fail(QStringLiteral("%1: %2 %3 is not in the station").arg(pending.label, field, quoted(value.toString())));
}

void StationReader::readRobot(const Pending& pending)
{
    SimItem* robot = pending.item;
    const QString& label = pending.label;
    robot->parentItem = reference(pending, QStringLiteral("parent"), {FrameType, ItemType::Robot});
    robot->carried = reference(pending, QStringLiteral("carries"), {ItemType::Robot});
    robot->lower = numbers(pending.object.value(QStringLiteral("lower")), label + QStringLiteral(": \"lower\""), -1);
    const int count = robot->jointCount();
    if (count < 1 || count > JointVector::MaxJoints)
        fail(QStringLiteral("%1: \"lower\" must hold 1 to %2 joints").arg(label).arg(JointVector::MaxJoints));
    robot->upper = numbers(pending.object.value(QStringLiteral("upper")), label + QStringLiteral(": \"upper\""), count);
    for (int i = 0; i < count; ++i) {
        if (robot->lower[size_t(i)] > robot->upper[size_t(i)])
            fail(QStringLiteral("%1: joint %2 has its lower limit above its upper limit").arg(label).arg(i + 1));
    }
    const QJsonValue joints = pending.object.value(QStringLiteral("joints"));
    robot->jointValues = joints.isUndefined() ? std::vector<double>(size_t(count), 0.0)
                                              : numbers(joints, label + QStringLiteral(": \"joints\""), count);
    int index = 0;
    for (const QJsonValue& value : arrayField(pending.object, QStringLiteral("jointBoxes"), label)) {
        const QString what = QStringLiteral("%1: joint box %2").arg(label).arg(++index);
        if (!value.isObject())
            fail(what + QStringLiteral(" must be an object"));
        JointBox box;
        box.lower = numbers(value.toObject().value(QStringLiteral("lower")), what + QStringLiteral(" \"lower\""), count);
        box.upper = numbers(value.toObject().value(QStringLiteral("upper")), what + QStringLiteral(" \"upper\""), count);
        robot->boxes.push_back(box);
        robot->keptBoxFields.push_back(station_fields::unknownFields(value.toObject(), station_fields::Place::JointBox));
    }
    readPose(pending);
    const QString problem = cell_reader::readArm(pending.object, count, &robot->arm);
    if (!problem.isEmpty())
        fail(QStringLiteral("%1: %2").arg(label, problem));
}

void StationReader::readPose(const Pending& pending)
{
    const QString problem = cell_reader::readPose(pending.object, &pending.item->pose);
    if (!problem.isEmpty())
        fail(QStringLiteral("%1: %2").arg(pending.label, problem));
}

void StationReader::readObject(const Pending& pending)
{
    // Objects stand still: they hang from frames only, never from a robot.
    pending.item->parentItem = reference(pending, QStringLiteral("parent"), {FrameType});
    readPose(pending);
    auto object = std::make_shared<CellObject>();
    const QString problem = cell_reader::readSolid(pending.object, false, &object->solid);
    if (!problem.isEmpty())
        fail(QStringLiteral("%1: %2").arg(pending.label, problem));
    object->source = pending.object;
    for (const char* field : {"id", "name", "parent", "parentId", "pose"})
        object->source.remove(QLatin1String(field));
    pending.item->object = object;
    placedObjects_.push_back(object);
}

void StationReader::readTarget(const Pending& pending)
{
    SimItem* target = pending.item;
    target->robot = reference(pending, QStringLiteral("robot"), {ItemType::Robot});
    target->parentItem = reference(pending, QStringLiteral("parent"), {FrameType, ItemType::Robot});
    const QJsonValue joints = pending.object.value(QStringLiteral("joints"));
    const int count = target->robot ? target->robot->jointCount() : -1;
    if (joints.isUndefined())
        target->jointValues = target->robot ? target->robot->jointValues : std::vector<double>();
    else
        target->jointValues = numbers(joints, pending.label + QStringLiteral(": \"joints\""), count);
}

void StationReader::readProgram(const Pending& pending)
{
    SimItem* program = pending.item;
    program->robot = reference(pending, QStringLiteral("robot"), {ItemType::Robot});
    program->optionA = pending.object.value(QStringLiteral("optionA")).toBool(false);
    program->optionB = pending.object.value(QStringLiteral("optionB")).toBool(false);
    int index = 0;
    for (const QJsonValue& value : arrayField(pending.object, QStringLiteral("instructions"), pending.label)) {
        const QString what = QStringLiteral("%1: instruction %2").arg(pending.label).arg(++index);
        const QJsonObject object = value.toObject();
        Instruction instruction;
        if (object.value(QStringLiteral("moveJoint")).isString()) {
            // The instruction is read like a reference whose id sits in "id".
            Pending move{program, QJsonObject{{QStringLiteral("target"), object.value(QStringLiteral("moveJoint"))},
                                              {QStringLiteral("id"), object.value(QStringLiteral("id"))}},
                         what};
            instruction.target = reference(move, QStringLiteral("target"), {ItemType::Target}, QStringLiteral("id"));
        } else if (object.value(QStringLiteral("call")).isString()) {
            instruction.call = object.value(QStringLiteral("call")).toString();
        } else {
            fail(what + QStringLiteral(" must be {\"moveJoint\": target} or {\"call\": program}"));
        }
        instruction.keptFields = station_fields::unknownFields(object, station_fields::Place::Instruction);
        program->instructions.push_back(instruction);
    }
}

void StationReader::checkParentChains() const
{
    for (SimItem* item : station_->allItems()) {
        size_t steps = 0;
        for (SimItem* parent = item->parentItem; parent; parent = parent->parentItem) {
            if (parent == item || ++steps > station_->allItems().size())
                fail(QStringLiteral("the parents of %1 form a loop").arg(quoted(item->itemName())));
        }
    }
}

std::unique_ptr<Station> StationReader::read(const QJsonObject& root)
{
    station_ = std::make_unique<Station>();
    // Items without an id take numbers above every id the file gives.
    for (const char* field : {"frames", "robots", "targets", "programs", "objects"}) {
        for (const QJsonValue& value : root.value(QLatin1String(field)).toArray()) {
            int id = 0;
            if (readId(value.toObject().value(QStringLiteral("id")), &id))
                station_->reserveId(id);
        }
    }
    readParams(root);
    using station_fields::Place;
    station_->keptFields = station_fields::unknownFields(root, Place::Root);
    createItems(root, QStringLiteral("frames"), QStringLiteral("frame"), FrameType, Place::Frame);
    createItems(root, QStringLiteral("robots"), QStringLiteral("robot"), ItemType::Robot, Place::Robot);
    createItems(root, QStringLiteral("targets"), QStringLiteral("target"), ItemType::Target, Place::Target);
    createItems(root, QStringLiteral("programs"), QStringLiteral("program"), ItemType::Program, Place::Program);
    createItems(root, QStringLiteral("objects"), QStringLiteral("object"), ObjectType, std::nullopt);
    for (const Pending& frame : frames_) {
        frame.item->parentItem = reference(frame, QStringLiteral("parent"), {FrameType, ItemType::Robot});
        readPose(frame);
    }
    for (const Pending& robot : robots_)
        readRobot(robot);
    for (const Pending& target : targets_)
        readTarget(target);
    for (const Pending& program : programs_)
        readProgram(program);
    for (const Pending& object : objects_)
        readObject(object);
    checkParentChains();
    // Frames stand still too, so an object's place is known once and for all.
    for (size_t i = 0; i < objects_.size(); ++i)
        placedObjects_[i]->world = cell_placement::absolutePose(objects_[i].item) * placedObjects_[i]->solid.local;
    station_->forgetChanges();  // as the file holds it
    return std::move(station_);
}

}  // namespace

namespace station_file {

std::unique_ptr<Station> parse(const QByteArray& contents, QString* problem, const QString& folder)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(contents, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *problem = QStringLiteral("not valid JSON: %1 at offset %2").arg(parseError.errorString()).arg(parseError.offset);
        return nullptr;
    }
    if (!document.isObject()) {
        *problem = QStringLiteral("a station must be a JSON object");
        return nullptr;
    }
    try {
        return StationReader(folder).read(document.object());
    } catch (const Unusable& unusable) {
        *problem = unusable.problem;
        return nullptr;
    }
}

std::unique_ptr<Station> read(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: cannot open the station: %2").arg(path, file.errorString());
        return nullptr;
    }
    QString problem;
    std::unique_ptr<Station> station = parse(file.readAll(), &problem, QFileInfo(path).absolutePath());
    if (!station)
        *error = QStringLiteral("%1: %2").arg(path, problem);
    return station;
}

}  // namespace station_file
