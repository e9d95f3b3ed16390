// Which station file fields the host reads, and keeping the rest.
#pragma once

#include <QJsonObject>

// The fields of a station file that the host reads, by where they stand.
// Everything else a file holds is kept as it was and written back on saving,
// so that a file made by another tool or a newer host loses nothing.
namespace station_fields {

// Objects keep their fields with their solid (CellObject::source).
enum class Place { Root, Frame, Robot, Target, Program, Instruction, JointBox };

// The object without the fields the host reads at that place.
QJsonObject unknownFields(const QJsonObject& object, Place place);

// Puts the fields into the object, leaving out any the object already has.
void addKept(QJsonObject& object, const QJsonObject& kept);

}  // namespace station_fields
