#include "fake_station.h"

#include <algorithm>

namespace {
QString onOff(bool on)
{
    return on ? QStringLiteral("true") : QStringLiteral("false");
}
}  // namespace

QString jointText(const JointVector& joints)
{
    return joints.toText(QStringLiteral(", "), 3);
}

// ------------------------------------------------------------- StationItem

StationItem::StationItem(FakeStation* station, int itemType, const QString& name)
    : FakeItem(station, itemType, name), station_(station)
{
}

void StationItem::deleteItem()
{
    station_->log("deleteItem " + name_);
    FakeItem::deleteItem();
}

void StationItem::setJoints(const JointVector& joints)
{
    station_->log(name_ + " setJoints " + jointText(joints));
    FakeItem::setJoints(joints);
}

void StationItem::setAsJointTarget()
{
    // The target keeps the joints it was just given.
    station_->log(name_ + " setAsJointTarget");
}

void StationItem::addJointMove(HostItem* target)
{
    station_->log(name_ + " addJointMove " + (target ? target->name() : QString()));
    moves << target;
    FakeItem::addJointMove(target);
}

void StationItem::jointLimits(JointVector& lower, JointVector& upper)
{
    lower = JointVector(0);
    upper = JointVector(0);
    if (itemType_ != ItemType::Program || moves.isEmpty())
        return;
    moves.first()->joints(lower);
    moves.last()->joints(upper);
}

void StationItem::finishProgram(const QString& text)
{
    station_->log(name_ + " finishProgram \"" + text + "\"");
    FakeItem::finishProgram(text);
}

void StationItem::addProgramCall(const QString& programName, int option)
{
    station_->log(name_ + " addProgramCall " + programName + " " + QString::number(option));
    FakeItem::addProgramCall(programName, option);
}

void StationItem::setProgramOptionB(bool on)
{
    station_->log(name_ + " setProgramOptionB " + onOff(on));
    FakeItem::setProgramOptionB(on);
}

void StationItem::setProgramOptionA(bool on)
{
    station_->log(name_ + " setProgramOptionA " + onOff(on));
    FakeItem::setProgramOptionA(on);
}

// ------------------------------------------------------------- LoggedRobot

LoggedRobot::LoggedRobot(FakeStation* station, const QString& name, std::vector<double> lower,
                         std::vector<double> upper)
    : FakeRobot(station, name, std::move(lower), std::move(upper)), station_(station)
{
}

void LoggedRobot::setJoints(const JointVector& joints)
{
    station_->log(name_ + " setJoints " + jointText(joints));
    FakeRobot::setJoints(joints);
}

// ------------------------------------------------------------- FakeStation

StationItem* FakeStation::own(std::unique_ptr<StationItem> item)
{
    StationItem* raw = item.get();
    ownItems_.push_back(std::move(item));
    return raw;
}

LoggedRobot* FakeStation::addLoggedRobot(const QString& name, std::vector<double> lower, std::vector<double> upper)
{
    auto robotItem = std::make_unique<LoggedRobot>(this, name, std::move(lower), std::move(upper));
    LoggedRobot* raw = robotItem.get();
    ownItems_.push_back(std::move(robotItem));
    return raw;
}

StationItem* FakeStation::addStationTarget(const QString& name, HostItem* robotOfTarget,
                                           const std::vector<double>& joints)
{
    StationItem* target = own(std::make_unique<StationItem>(this, ItemType::Target, name));
    target->robot = robotOfTarget;
    target->setParent(robotOfTarget ? robotOfTarget->parent() : nullptr);
    target->FakeItem::setJoints(JointVector(joints.data(), static_cast<int>(joints.size())));
    return target;
}

StationItem* FakeStation::addStationProgram(const QString& name, HostItem* robotOfProgram,
                                            const QList<HostItem*>& targets)
{
    StationItem* program = own(std::make_unique<StationItem>(this, ItemType::Program, name));
    program->robot = robotOfProgram;
    program->moves = targets;
    return program;
}

QList<HostItem*> FakeStation::itemsOfType(int itemType)
{
    QList<Item> items;
    FakeHost::getItemList(items, itemType);
    for (const auto& item : ownItems_)
        if (!item->deleted && item->type() == itemType)
            items << item.get();
    return items;
}

HostItem* FakeStation::getItem(const QString& name, int itemType)
{
    if (name.isEmpty())
        return nullptr;
    for (HostItem* item : itemsOfType(itemType))
        if (item->name() == name)
            return item;
    return nullptr;
}

QList<Item>& FakeStation::getItemList(QList<Item>& out, int itemType)
{
    out = itemsOfType(itemType);
    return out;
}

bool FakeStation::isValidItem(HostItem* item)
{
    for (const auto& own : ownItems_)
        if (own.get() == item)
            return !own->deleted;
    return FakeHost::isValidItem(item);
}

void FakeStation::showMessage(const QString& text, bool popup)
{
    log("showMessage " + text + (popup ? " [popup]" : ""));
    FakeHost::showMessage(text, popup);
}

HostItem* FakeStation::addTarget(const QString& name, HostItem* parent, HostItem* robotOfTarget)
{
    log("addTarget " + name);
    StationItem* target = own(std::make_unique<StationItem>(this, ItemType::Target, name));
    target->robot = robotOfTarget;
    target->setParent(parent);
    return target;
}

HostItem* FakeStation::addProgram(const QString& name, HostItem* robotOfProgram)
{
    log("addProgram " + name);
    StationItem* program = own(std::make_unique<StationItem>(this, ItemType::Program, name));
    program->robot = robotOfProgram;
    return program;
}

void FakeStation::update(int flags)
{
    log("update " + QString::number(flags));
    FakeHost::update(flags);
}

void FakeStation::setRenderMode(int mode)
{
    log("setRenderMode " + QString::number(mode));
    FakeHost::setRenderMode(mode);
}

int FakeStation::collisions()
{
    // FakeHost counts the test and its own robots; the robots made here are added.
    int pairs = FakeHost::collisions();
    for (const auto& item : ownItems_) {
        const auto* robotItem = dynamic_cast<const FakeRobot*>(item.get());
        if (robotItem && !robotItem->deleted) {
            const double* q = robotItem->currentJoints().values();
            pairs += joint_oracle::boxesHolding(robotItem->boxes, q);
        }
    }
    return pairs;
}

QStringList FakeStation::messageTexts() const
{
    QStringList texts;
    for (const auto& message : messages)
        texts << message.first;
    return texts;
}
