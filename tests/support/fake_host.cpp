#include "fake_host.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double DefaultStep = 4.0;
const char* const StepParameter = "PathStepCollisionDeg";
}  // namespace

// ---------------------------------------------------------------- FakeItem

FakeItem::FakeItem(FakeHost* host, int itemType, const QString& name)
    : host_(host), itemType_(itemType), name_(name)
{
}

void FakeItem::deleteItem()
{
    deleted = true;
    host_->forget(this);
}

HostPose& FakeItem::poseTool(HostPose& out)
{
    out.setToIdentity();
    return out;
}

HostPose& FakeItem::poseAbs(HostPose& out)
{
    out.setToIdentity();
    return out;
}

void FakeItem::setAsJointTarget()
{
    // A target keeps the joints it was given; one given none takes the robot's.
    if (robot && !joints_.isValid())
        robot->joints(joints_);
}

JointVector& FakeItem::joints(JointVector& out)
{
    out = joints_;
    return out;
}

HostItem* FakeItem::getLink(int itemType)
{
    return itemType == ItemType::Robot ? robot : nullptr;
}

void FakeItem::jointLimits(JointVector& lower, JointVector& upper)
{
    lower = JointVector(0);
    upper = JointVector(0);
}

HostPose& FakeItem::solveFK(HostPose& out, const JointVector& joints, const HostPose& tool, HostItem* reference)
{
    // A stand-in kinematics: the first three joints become the position.
    out = tool;
    for (int i = 0; i < std::min(3, joints.count()); ++i)
        out(i, 3) = static_cast<float>(joints[i]);
    return out;
}

void FakeItem::addJointMove(HostItem* target)
{
    instructions << "move " + (target ? target->name() : QString());
}

int FakeItem::testJointMove(const JointVector&, const JointVector&, double)
{
    host_->countCollisionTest();
    return 0;
}

void FakeItem::showJointSequence(const RoadmapMatrix* configurations)
{
    shownRows = configurations && configurations->dimensionCount > 0 ? configurations->extents[0] : 0;
    shownColumns = configurations && configurations->dimensionCount > 1 ? configurations->extents[1] : 0;
}

void FakeItem::finishProgram(const QString& text)
{
    finished = true;
    finishedWith = text;
}

void FakeItem::addProgramCall(const QString& programName, int)
{
    instructions << "call " + programName;
}

bool FakeItem::jointsValid(const JointVector& joints)
{
    return joints.isValid();
}

// --------------------------------------------------------------- FakeRobot

FakeRobot::FakeRobot(FakeHost* host, const QString& name, std::vector<double> lower, std::vector<double> upper)
    : FakeItem(host, ItemType::Robot, name), lower_(std::move(lower)), upper_(std::move(upper))
{
    joints_ = JointVector(jointCount());
    robot = this;
}

void FakeRobot::jointLimits(JointVector& lower, JointVector& upper)
{
    lower = JointVector(lower_.data(), jointCount());
    upper = JointVector(upper_.data(), static_cast<int>(upper_.size()));
}

bool FakeRobot::collides(const double* q) const
{
    return joint_oracle::boxesHolding(boxes, q) > 0;
}

bool FakeRobot::moveCollides(const double* a, const double* b, double step) const
{
    return joint_oracle::testJointMove(boxes, jointCount(), a, b, step) != 0;
}

int FakeRobot::testJointMove(const JointVector& from, const JointVector& to, double stepDeg)
{
    ++jointMoveTests;
    lastStep.push_back(stepDeg);
    moves.emplace_back(from, to);
    host_->countCollisionTest();
    const double step = stepDeg <= 0 ? host_->collisionStep() : stepDeg;
    return moveCollides(from.values(), to.values(), step) ? blockedAnswer : 0;
}

bool FakeRobot::jointsValid(const JointVector& joints)
{
    ++validityChecks;
    if (accepts)
        return accepts(joints);
    if (joints.count() != jointCount())
        return false;
    for (int i = 0; i < jointCount(); ++i)
        if (!(lower_[i] <= joints[i] && joints[i] <= upper_[i]))
            return false;
    return true;
}

HostItem* FakeRobot::getLink(int itemType)
{
    return itemType == ItemType::Robot ? this : nullptr;
}

// ---------------------------------------------------------------- FakeHost

FakeHost::FakeHost()
{
    registerHostMetaTypes();
}

FakeRobot* FakeHost::addRobot(const QString& name, std::vector<double> lower, std::vector<double> upper)
{
    auto robotItem = std::make_unique<FakeRobot>(this, name, std::move(lower), std::move(upper));
    FakeRobot* raw = robotItem.get();
    items_.push_back(std::move(robotItem));
    return raw;
}

FakeItem* FakeHost::addItem(int itemType, const QString& name, HostItem* robotOfItem)
{
    items_.push_back(std::make_unique<FakeItem>(this, itemType, name));
    FakeItem* raw = items_.back().get();
    raw->robot = robotOfItem;
    return raw;
}

HostItem* FakeHost::getItem(const QString& name, int itemType)
{
    for (const auto& item : items_)
        if (!item->deleted && item->type() == itemType && item->name() == name && !name.isEmpty())
            return item.get();
    return nullptr;
}

QList<Item>& FakeHost::getItemList(QList<Item>& out, int itemType)
{
    out.clear();
    for (const auto& item : items_)
        if (!item->deleted && item->type() == itemType)
            out << item.get();
    return out;
}

bool FakeHost::isValidItem(HostItem* item)
{
    for (const auto& own : items_)
        if (own.get() == item)
            return !own->deleted;
    return false;
}

HostItem* FakeHost::pickItem(const QString&, int)
{
    return pickAnswers.isEmpty() ? nullptr : pickAnswers.takeFirst();
}

void FakeHost::showMessage(const QString& text, bool popup)
{
    messages.append(qMakePair(text, popup));
}

HostItem* FakeHost::addTarget(const QString& name, HostItem* parent, HostItem* robotOfTarget)
{
    FakeItem* target = addItem(ItemType::Target, name, robotOfTarget);
    target->setParent(parent);
    return target;
}

HostItem* FakeHost::addProgram(const QString& name, HostItem* robotOfProgram)
{
    return addItem(ItemType::Program, name, robotOfProgram);
}

int FakeHost::collisions()
{
    countCollisionTest();
    int pairs = 0;
    for (const auto& item : items_) {
        auto* robotItem = dynamic_cast<FakeRobot*>(item.get());
        if (!robotItem || robotItem->deleted)
            continue;
        pairs += joint_oracle::boxesHolding(robotItem->boxes, robotItem->currentJoints().values());
    }
    return pairs;
}

QString& FakeHost::command(QString& out, const QString& name, const QString& value)
{
    if (!value.isEmpty())
        params[name] = value;
    out = params.value(name);
    if (out.isEmpty() && name == StepParameter)
        out = QString::number(DefaultStep, 'f', 1);
    return out;
}

QList<Item>& FakeHost::getSelectedItems(QList<Item>& out)
{
    out = selection;
    return out;
}

void FakeHost::drawGeometry(int, const double*, int pointCount, const float*, float, int)
{
    ++drawCalls;
    lastDrawPointCount = pointCount;
}

double FakeHost::collisionStep() const
{
    bool ok = false;
    const double step = params.value(StepParameter).toDouble(&ok);
    return ok && step > 0 ? step : DefaultStep;
}

void FakeHost::countCollisionTest()
{
    ++collisionTests;
    if (onCollisionTest)
        onCollisionTest(collisionTests);
}

void FakeHost::forget(HostItem* item)
{
    selection.removeAll(item);
}

void FakeHost::keepFirstItems(size_t count)
{
    while (items_.size() > count) {
        forget(items_.back().get());
        items_.pop_back();
    }
}
