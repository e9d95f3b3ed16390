// Reads the 3D fields of the station file into the cell model.
#pragma once

#include "cell_model.h"

#include <QJsonObject>
#include <QString>

#include <memory>
#include <vector>

// Reads the 3D fields of station items: "pose", an arm's "kinematics",
// "tool", "solids", "selfCollision" and "model", and an object's solid.
// Each answers an empty text when the fields can be used, else the problem.
namespace cell_reader {

// "pose": [x, y, z, rx, ry, rz] (millimetres, degrees); absent leaves pose empty.
QString readPose(const QJsonObject& item, std::vector<double>* pose);

// The arm of a robot with jointCount joints; null when the robot has no "kinematics".
QString readArm(const QJsonObject& robot, int jointCount, std::shared_ptr<const ArmModel>* arm);

// One solid: one of "box" {"size"}, "cylinder" {"radius", "length"}, "sphere"
// {"radius"}, "capsule" {"radius", "length"} or {"radius", "from", "to"};
// with ownPose, an optional "pose" places it within its owner (a link).
QString readSolid(const QJsonObject& object, bool ownPose, Solid* solid);

// True when the item has fields of the 3D model that only robots with kinematics may hold.
bool hasArmFields(const QJsonObject& item);

}  // namespace cell_reader
