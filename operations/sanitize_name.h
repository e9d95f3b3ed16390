// Program names made from item names.
#pragma once

#include <QString>

// Name of a program the planner creates from item names: only ASCII letters,
// digits and whitespace other than blanks survive ("Pt 3 (S12)" -> "Pt3S12").
QString sanitizeName(const QString& text);
