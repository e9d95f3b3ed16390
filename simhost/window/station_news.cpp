// What the status bar says of a change in the station.
#include "station_news.h"

#include "sim_item.h"

#include "vorlik/item_types.h"

#include <QStringList>

#include <map>
#include <set>

namespace station_news {

namespace {

QString counted(int count, const char* one, const char* many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

QString kindsOf(const std::map<int, int>& counts)
{
    QStringList parts;
    for (const auto& [type, count] : counts) {
        switch (type) {
        case ItemType::Robot: parts << counted(count, "robot", "robots"); break;
        case ItemType::Target: parts << counted(count, "target", "targets"); break;
        case ItemType::Program: parts << counted(count, "program", "programs"); break;
        case FrameType: parts << counted(count, "frame", "frames"); break;
        case ObjectType: parts << counted(count, "object", "objects"); break;
        default: parts << counted(count, "item", "items"); break;
        }
    }
    if (parts.size() < 2)
        return parts.join(QString());
    const QString last = parts.takeLast();
    return parts.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
}

// The types of the items of `of` that `in` does not hold, counted.
std::map<int, int> missing(const Items& of, const Items& in)
{
    const std::set<std::pair<const SimItem*, int>> there(in.begin(), in.end());
    std::map<int, int> counts;
    for (const auto& item : of) {
        if (!there.count(item))
            ++counts[item.second];
    }
    return counts;
}

}  // namespace

QString itemsAddedOrDeleted(const Items& before, const Items& after)
{
    QStringList news;
    const std::map<int, int> added = missing(after, before);
    const std::map<int, int> deleted = missing(before, after);
    if (!added.empty())
        news << QStringLiteral("Added ") + kindsOf(added);
    if (!deleted.empty())
        news << QStringLiteral("Deleted ") + kindsOf(deleted);
    return news.join(QStringLiteral("; "));
}

QString programWritten(const QString& name, int moves, int calls)
{
    QString text = QStringLiteral("Program %1 written: %2").arg(name, counted(moves, "joint move", "joint moves"));
    if (calls > 0)
        text += QStringLiteral(", ") + counted(calls, "call", "calls");
    return text;
}

}  // namespace station_news
