// Which station file fields the host reads, and keeping the rest.
#include "station_fields.h"

#include <QStringList>

namespace station_fields {

namespace {

const QStringList& knownFields(Place place)
{
    // Every reference may come with its id ("parentId"...); an arm's model fields are kept with the arm.
    static const QStringList root{"params", "data", "frames", "robots", "targets", "programs", "objects"};
    static const QStringList frame{"id", "name", "parent", "parentId", "pose"};
    static const QStringList robot{"id",     "name",       "parent",  "parentId", "lower",     "upper",
                                   "joints", "jointBoxes", "carries", "carriesId", "pose",     "kinematics",
                                   "tool",   "solids",     "selfCollision",        "model"};
    static const QStringList target{"id", "name", "robot", "robotId", "parent", "parentId", "joints"};
    static const QStringList program{"id", "name", "robot", "robotId", "instructions", "optionA", "optionB"};
    static const QStringList instruction{"moveJoint", "id", "call"};
    static const QStringList jointBox{"lower", "upper"};
    switch (place) {
    case Place::Root: return root;
    case Place::Frame: return frame;
    case Place::Robot: return robot;
    case Place::Target: return target;
    case Place::Program: return program;
    case Place::Instruction: return instruction;
    case Place::JointBox: break;
    }
    return jointBox;
}

}  // namespace

QJsonObject unknownFields(const QJsonObject& object, Place place)
{
    QJsonObject unknown = object;
    for (const QString& field : knownFields(place))
        unknown.remove(field);
    return unknown;
}

void addKept(QJsonObject& object, const QJsonObject& kept)
{
    for (auto it = kept.begin(); it != kept.end(); ++it) {
        if (!object.contains(it.key()))
            object.insert(it.key(), it.value());
    }
}

}  // namespace station_fields
