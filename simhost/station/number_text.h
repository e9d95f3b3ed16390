// Numbers written as the shortest text that reads back the same.
#pragma once

#include <QString>

// The shortest text that reads back as exactly the same double
// (2.123456789 stays "2.123456789", 4 is "4"), for numbers a file or a
// scenario gives where the plug-in takes text.
QString exactNumberText(double value);
