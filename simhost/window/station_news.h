// What the status bar says of a change in the station.
#pragma once

#include <QString>

#include <utility>
#include <vector>

class SimItem;

namespace station_news {

// The items of a station and their types.
using Items = std::vector<std::pair<const SimItem*, int>>;

// "Added 4 targets and 1 program", "Deleted 1 target", both joined by "; ",
// or an empty text when no item came or went.
QString itemsAddedOrDeleted(const Items& before, const Items& after);

// "Program LeftToRight written: 5 joint moves".
QString programWritten(const QString& name, int moves, int calls);

}  // namespace station_news
