// A configuration's values as the planner's log writes them.
#pragma once

#include "vorlik/joint_vector.h"

#include <QString>

// The values with three decimals, separated by ", ": exactly what
// JointVector::toText(", ", 3) gives (Qt's fixed notation, an exact half
// rounded away from zero, no sign on a zero), written without Qt's number
// formatting, which costs more than the collision test whose line it is in.
QString jointValuesText(const JointVector& joints);
