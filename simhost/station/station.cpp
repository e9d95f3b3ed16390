// The in-memory station: its items, parameters and selection.
#include "station.h"

#include "cell_checker.h"

#include "vorlik/item_types.h"

#include <algorithm>
#include <limits>

namespace {

// Items whose coming and going changes what the 3D checks see.
bool holdsGeometry(int type)
{
    return type == ObjectType || type == FrameType || type == ItemType::Robot;
}

}  // namespace

SimItem* Station::create(int type, const QString& name, int id)
{
    if (id <= 0)
        id = freeId();
    reserveId(id);
    owned_.push_back(std::make_unique<SimItem>(this, type, name, id));
    SimItem* item = owned_.back().get();
    members_.insert(item);
    list(type).push_back(item);
    if (holdsGeometry(type))
        geometryChanged();
    changed();
    return item;
}

int Station::freeId()
{
    if (nextId_ <= std::numeric_limits<int>::max())
        return int(nextId_);
    // The file used the largest id there is: new items fill the gaps below it.
    // Ids are never given back, so the search goes on from where it stopped.
    while (usedIds_.count(lowestUnused_))
        ++lowestUnused_;
    return lowestUnused_;
}

SimItem* Station::find(const QString& name, int type) const
{
    for (SimItem* item : items(type)) {
        if (item->itemName() == name)
            return item;
    }
    return nullptr;
}

SimItem* Station::findAny(const QString& name) const
{
    for (int type : {ItemType::Target, ItemType::Program, ItemType::Robot, FrameType, ObjectType}) {
        if (SimItem* item = find(name, type))
            return item;
    }
    return nullptr;
}

SimItem* Station::findId(int id) const
{
    for (const auto& item : owned_) {
        if (item->id() == id && !item->deleted)
            return item.get();
    }
    return nullptr;
}

const std::vector<SimItem*>& Station::items(int type) const
{
    return const_cast<Station*>(this)->list(type);
}

std::vector<SimItem*> Station::allItems() const
{
    std::vector<SimItem*> all;
    for (int type : {FrameType, ItemType::Robot, ItemType::Target, ItemType::Program, ObjectType}) {
        const auto& of = items(type);
        all.insert(all.end(), of.begin(), of.end());
    }
    return all;
}

bool Station::holds(const HostItem* item) const
{
    return knows(item) && !static_cast<const SimItem*>(item)->deleted;
}

void Station::remove(SimItem* item)
{
    if (!holds(item))
        return;
    item->deleted = true;
    auto& of = list(item->itemType());
    of.erase(std::remove(of.begin(), of.end(), item), of.end());
    selection.removeAll(item);
    if (holdsGeometry(item->itemType()))
        geometryChanged();
    changed();
}

void Station::retire()
{
    for (const auto& item : owned_)
        item->deleted = true;
    frames_.clear();
    robots_.clear();
    targets_.clear();
    programs_.clear();
    objects_.clear();
    others_.clear();
    selection.clear();
}

double Station::pathStepDeg() const
{
    const auto found = params.constFind(QStringLiteral("PathStepCollisionDeg"));
    const QString text = found == params.constEnd() ? QString() : found.value();
    // Null and empty compare equal, and both read as no number.
    if (text == stepText_)
        return step_;
    bool ok = false;
    const double step = text.toDouble(&ok);
    stepText_ = text;
    step_ = ok && step > 0.0 ? step : 4.0;
    return step_;
}

int Station::collisions() const
{
    int count = 0;
    for (const SimItem* robot : robots_) {
        if (static_cast<int>(robot->jointValues.size()) < robot->jointCount())
            continue;
        count += joint_oracle::boxesHolding(robot->boxes, robot->jointValues.data());
        if (robot->arm)
            count += cellChecker(robot).collidingPairs(robot->jointValues.data(), false);
    }
    return count;
}

std::vector<std::shared_ptr<const CellObject>> Station::cellObjects() const
{
    std::vector<std::shared_ptr<const CellObject>> solids;
    for (const SimItem* item : objects_) {
        if (item->object)
            solids.push_back(item->object);
    }
    return solids;
}

std::vector<SimItem*>& Station::list(int type)
{
    switch (type) {
    case FrameType: return frames_;
    case ItemType::Robot: return robots_;
    case ItemType::Target: return targets_;
    case ItemType::Program: return programs_;
    case ObjectType: return objects_;
    default: return others_;
    }
}
