// Reads the 3D fields of the station file into the cell model.
#include "cell_reader.h"

#include <QJsonArray>

#include <cmath>

namespace cell_reader {

namespace {

const char* const shapeNames[] = {"box", "cylinder", "sphere", "capsule"};

QString numbers(const QJsonValue& value, const QString& what, int count, std::vector<double>* out)
{
    const QJsonArray array = value.toArray();
    if (!value.isArray() || array.size() != count)
        return QStringLiteral("%1 must be an array of %2 numbers").arg(what).arg(count);
    out->clear();
    for (const QJsonValue& element : array) {
        if (!element.isDouble())
            return QStringLiteral("%1 must hold numbers only").arg(what);
        out->push_back(element.toDouble());
    }
    return QString();
}

// A positive number field; problem text when missing or not positive.
QString positive(const QJsonObject& object, const QString& field, const QString& what, double* out)
{
    const QJsonValue value = object.value(field);
    if (!value.isDouble() || !(value.toDouble() > 0.0) || !std::isfinite(value.toDouble()))
        return QStringLiteral("%1 needs a positive \"%2\"").arg(what, field);
    *out = value.toDouble();
    return QString();
}

// [x, y, z, rx, ry, rz]; absent or null leaves it empty.
QString readPlacement(const QJsonValue& value, const QString& what, std::vector<double>* pose)
{
    pose->clear();
    if (value.isUndefined() || value.isNull())
        return QString();
    QString problem = numbers(value, what, 6, pose);
    for (double v : *pose) {
        if (problem.isEmpty() && !std::isfinite(v))
            problem = QStringLiteral("%1 must hold finite numbers").arg(what);
    }
    return problem.isEmpty() ? problem : problem + QStringLiteral(" [x, y, z, rx, ry, rz]");
}

QString readCapsuleEnds(const QJsonObject& shape, Solid* solid)
{
    std::vector<double> from, to;
    QString problem = numbers(shape.value(QStringLiteral("from")), QStringLiteral("capsule \"from\""), 3, &from);
    if (problem.isEmpty())
        problem = numbers(shape.value(QStringLiteral("to")), QStringLiteral("capsule \"to\""), 3, &to);
    if (!problem.isEmpty())
        return problem;
    const Eigen::Vector3d a(from[0], from[1], from[2]);
    const Eigen::Vector3d b(to[0], to[1], to[2]);
    solid->length = (b - a).norm();
    if (!(solid->length > 0.0))
        return QStringLiteral("capsule \"from\" and \"to\" must differ");
    // The capsule lies along its z: turn z onto the segment, centred between the ends.
    Eigen::Isometry3d along = Eigen::Isometry3d::Identity();
    along.translation() = 0.5 * (a + b);
    along.linear() = Eigen::Quaterniond::FromTwoVectors(Eigen::Vector3d::UnitZ(), b - a).toRotationMatrix();
    solid->local = solid->local * along;
    return QString();
}

QString readShape(const QString& name, const QJsonObject& shape, Solid* solid)
{
    if (name == QLatin1String("box")) {
        std::vector<double> size;
        QString problem = numbers(shape.value(QStringLiteral("size")), QStringLiteral("box \"size\""), 3, &size);
        if (problem.isEmpty() && !(size[0] > 0.0 && size[1] > 0.0 && size[2] > 0.0))
            problem = QStringLiteral("box \"size\" must be positive");
        solid->kind = Solid::Kind::Box;
        solid->size = Eigen::Vector3d(problem.isEmpty() ? size[0] : 0, problem.isEmpty() ? size[1] : 0,
                                      problem.isEmpty() ? size[2] : 0);
        return problem;
    }
    QString problem = positive(shape, QStringLiteral("radius"), name, &solid->radius);
    if (!problem.isEmpty())
        return problem;
    if (name == QLatin1String("sphere")) {
        solid->kind = Solid::Kind::Sphere;
        return QString();
    }
    solid->kind = name == QLatin1String("cylinder") ? Solid::Kind::Cylinder : Solid::Kind::Capsule;
    if (solid->kind == Solid::Kind::Capsule && shape.contains(QStringLiteral("from")))
        return readCapsuleEnds(shape, solid);
    return positive(shape, QStringLiteral("length"), name, &solid->length);
}

QString readJoint(const QJsonObject& object, DhJoint* joint)
{
    for (const char* field : {"a", "alpha", "d", "offset", "sign"}) {
        const QJsonValue value = object.value(QLatin1String(field));
        if (!value.isUndefined() && (!value.isDouble() || !std::isfinite(value.toDouble())))
            return QStringLiteral("\"%1\" must be a number").arg(QLatin1String(field));
    }
    joint->a = object.value(QStringLiteral("a")).toDouble(0.0);
    joint->alpha = object.value(QStringLiteral("alpha")).toDouble(0.0);
    joint->d = object.value(QStringLiteral("d")).toDouble(0.0);
    joint->offset = object.value(QStringLiteral("offset")).toDouble(0.0);
    joint->sign = object.value(QStringLiteral("sign")).toDouble(1.0);
    if (joint->sign != 1.0 && joint->sign != -1.0)
        return QStringLiteral("\"sign\" must be 1 or -1");
    const QString type = object.value(QStringLiteral("type")).toString(QStringLiteral("revolute"));
    if (type != QLatin1String("revolute") && type != QLatin1String("prismatic"))
        return QStringLiteral("\"type\" must be \"revolute\" or \"prismatic\"");
    joint->prismatic = type == QLatin1String("prismatic");
    return QString();
}

QString readKinematics(const QJsonValue& value, int jointCount, ArmModel* arm)
{
    if (!value.isObject())
        return QStringLiteral("\"kinematics\" must be an object");
    const QJsonObject kinematics = value.toObject();
    const QString convention = kinematics.value(QStringLiteral("convention")).toString(QStringLiteral("standard"));
    if (convention != QLatin1String("standard"))
        return QStringLiteral("\"kinematics\": only the \"standard\" Denavit-Hartenberg convention is known, not \"%1\"")
            .arg(convention);
    const QJsonArray joints = kinematics.value(QStringLiteral("joints")).toArray();
    if (joints.size() != jointCount)
        return QStringLiteral("\"kinematics\" must list %1 \"joints\" (one per joint), not %2")
            .arg(jointCount).arg(joints.size());
    for (int i = 0; i < joints.size(); ++i) {
        DhJoint joint;
        const QString problem = joints[i].isObject() ? readJoint(joints[i].toObject(), &joint)
                                                     : QStringLiteral("must be an object");
        if (!problem.isEmpty())
            return QStringLiteral("\"kinematics\" joint %1: %2").arg(i + 1).arg(problem);
        arm->joints.push_back(joint);
    }
    return QString();
}

QString readLinkSolid(const QJsonValue& value, int jointCount, LinkSolid* linkSolid)
{
    if (!value.isObject())
        return QStringLiteral("must be an object");
    const QJsonObject object = value.toObject();
    const QJsonValue link = object.value(QStringLiteral("link"));
    if (link.toString() == QLatin1String("base"))
        linkSolid->link = 0;
    else if (link.toString() == QLatin1String("tool"))
        linkSolid->link = jointCount + 1;
    else if (link.isDouble() && link.toDouble() == link.toInt() && link.toInt() >= 0 && link.toInt() <= jointCount)
        linkSolid->link = link.toInt();
    else
        return QStringLiteral("\"link\" must be \"base\", \"tool\" or a link number 0 to %1").arg(jointCount);
    return readSolid(object, true, &linkSolid->solid);
}

}  // namespace

QString readPose(const QJsonObject& item, std::vector<double>* pose)
{
    return readPlacement(item.value(QStringLiteral("pose")), QStringLiteral("\"pose\""), pose);
}

QString readSolid(const QJsonObject& object, bool ownPose, Solid* solid)
{
    std::vector<double> pose;
    QString problem = ownPose ? readPose(object, &pose) : QString();
    if (!problem.isEmpty())
        return problem;
    solid->local = pose.empty() ? Eigen::Isometry3d::Identity() : placementFromValues(pose.data());
    QString found;
    for (const char* name : shapeNames) {
        if (!object.contains(QLatin1String(name)))
            continue;
        if (!found.isEmpty())
            return QStringLiteral("give one shape, not both \"%1\" and \"%2\"").arg(found, QLatin1String(name));
        found = QLatin1String(name);
    }
    if (found.isEmpty())
        return QStringLiteral("needs a shape: \"box\", \"cylinder\", \"sphere\" or \"capsule\"");
    if (!object.value(found).isObject())
        return QStringLiteral("\"%1\" must be an object").arg(found);
    problem = readShape(found, object.value(found).toObject(), solid);
    if (problem.isEmpty())
        prepareSolid(*solid);
    return problem;
}

bool hasArmFields(const QJsonObject& item)
{
    for (const char* field : {"tool", "solids", "selfCollision"}) {
        if (item.contains(QLatin1String(field)))
            return true;
    }
    return false;
}

QString readArm(const QJsonObject& robot, int jointCount, std::shared_ptr<const ArmModel>* out)
{
    out->reset();
    if (!robot.contains(QStringLiteral("kinematics"))) {
        if (hasArmFields(robot))
            return QStringLiteral("\"tool\", \"solids\" and \"selfCollision\" need \"kinematics\"");
        return QString();
    }
    auto arm = std::make_shared<ArmModel>();
    QString problem = readKinematics(robot.value(QStringLiteral("kinematics")), jointCount, arm.get());
    if (!problem.isEmpty())
        return problem;
    std::vector<double> tool;
    problem = readPlacement(robot.value(QStringLiteral("tool")), QStringLiteral("\"tool\""), &tool);
    if (!problem.isEmpty())
        return problem;
    if (!tool.empty())
        arm->tool = placementFromValues(tool.data());
    const QJsonValue solids = robot.value(QStringLiteral("solids"));
    if (!solids.isUndefined() && !solids.isArray())
        return QStringLiteral("\"solids\" must be an array");
    const QJsonArray list = solids.toArray();
    for (int i = 0; i < list.size(); ++i) {
        LinkSolid linkSolid;
        problem = readLinkSolid(list[i], jointCount, &linkSolid);
        if (!problem.isEmpty())
            return QStringLiteral("solid %1: %2").arg(i + 1).arg(problem);
        arm->solids.push_back(linkSolid);
    }
    // The checker takes a link's solids one after the other.
    std::stable_sort(arm->solids.begin(), arm->solids.end(),
                     [](const LinkSolid& a, const LinkSolid& b) { return a.link < b.link; });
    const QJsonValue self = robot.value(QStringLiteral("selfCollision"));
    if (!self.isUndefined() && !self.isBool())
        return QStringLiteral("\"selfCollision\" must be true or false");
    arm->selfCollision = self.toBool(true);
    arm->findSelfPairs();
    for (const char* field : {"kinematics", "tool", "solids", "selfCollision", "model"}) {
        if (robot.contains(QLatin1String(field)))
            arm->source.insert(QLatin1String(field), robot.value(QLatin1String(field)));
    }
    *out = std::move(arm);
    return QString();
}

}  // namespace cell_reader
