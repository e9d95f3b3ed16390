// What a robot at some joints collides with, in words.
#include "collision_report.h"

#include "cell_checker.h"
#include "station.h"

#include "vorlik/item_types.h"

namespace {

QString linkName(const SimItem* robot, int link)
{
    if (link == 0)
        return QStringLiteral("the base");
    if (robot->arm && link == robot->arm->toolLink())
        return QStringLiteral("the tool");
    return QStringLiteral("link %1").arg(link);
}

// The station's objects that hold a solid, in the order the 3D check numbers them.
std::vector<const SimItem*> solidObjects(const Station& station)
{
    std::vector<const SimItem*> objects;
    for (const SimItem* item : station.items(ObjectType)) {
        if (item->object)
            objects.push_back(item);
    }
    return objects;
}

}  // namespace

QStringList collisionReport(const Station& station, const SimItem* robot, const std::vector<double>& joints)
{
    QStringList report;
    if (!station.holds(robot) || int(joints.size()) != robot->jointCount())
        return report;
    for (size_t i = 0; i < robot->boxes.size(); ++i) {
        if (joint_oracle::boxHolds(robot->boxes[i], joints.data()))
            report << QStringLiteral("joint box %1 (joint space)").arg(i + 1);
    }
    if (!robot->arm)
        return report;
    const std::vector<const SimItem*> objects = solidObjects(station);
    for (const CellChecker::Contact& contact : station.cellChecker(robot).contacts(joints.data())) {
        const QString link = linkName(robot, contact.link);
        if (contact.object >= 0 && contact.object < int(objects.size()))
            report << QStringLiteral("%1 with object %2").arg(link, objects[size_t(contact.object)]->itemName());
        else if (contact.otherLink >= 0)
            report << QStringLiteral("%1 with %2").arg(link, linkName(robot, contact.otherLink));
    }
    return report;
}

bool targetCollides(const Station& station, const SimItem* target)
{
    if (!station.holds(target) || target->itemType() != ItemType::Target || !station.holds(target->robot))
        return false;
    const SimItem* robot = target->robot;
    const std::vector<double>& joints = target->jointValues;
    if (int(joints.size()) != robot->jointCount())
        return false;
    // The first colliding pair is enough to know.
    return joint_oracle::boxesHolding(robot->boxes, joints.data()) > 0
        || (robot->arm && station.cellChecker(robot).collidingPairs(joints.data(), true) > 0);
}
