// The calls the plug-in makes on a station item (HostItem), answered from
// the item and the station that holds it; every call is reported to the
// station's monitor first.
#include "sim_item.h"

#include "cell_checker.h"
#include "cell_placement.h"
#include "host_monitor.h"
#include "station.h"

#include "vorlik/item_types.h"

#include <QJsonObject>

#include <algorithm>

namespace {

JointVector jointVector(const std::vector<double>& values)
{
    return JointVector(values.data(), static_cast<int>(values.size()));
}

}  // namespace

int SimItem::type()
{
    hostCalled();
    return type_;
}

void SimItem::deleteItem()
{
    hostCalled();
    station_->remove(this);
}

HostItem* SimItem::parent()
{
    hostCalled();
    return parentItem;
}

QString SimItem::name()
{
    hostCalled();
    return name_;
}

void SimItem::setName(const QString& name)
{
    hostCalled();
    station_->changed();
    name_ = name;
}

HostPose& SimItem::poseTool(HostPose& out)
{
    hostCalled();
    out = arm ? cell_placement::toHostPose(arm->tool) : HostPose();
    return out;
}

HostPose& SimItem::poseAbs(HostPose& out)
{
    hostCalled();
    out = cell_placement::toHostPose(cell_placement::absolutePose(this));
    return out;
}

void SimItem::setAsJointTarget()
{
    hostCalled();
    station_->changed();
    // A target keeps the joints it was given; one given none takes the robot's.
    if (type_ == ItemType::Target && robot && jointValues.empty())
        jointValues = robot->jointValues;
}

JointVector& SimItem::joints(JointVector& out)
{
    hostCalled();
    out = jointVector(jointValues);
    return out;
}

HostItem* SimItem::getLink(int itemType)
{
    hostCalled();
    if (itemType != ItemType::Robot)
        return nullptr;
    if (type_ == ItemType::Robot)
        return carried ? carried : this;
    if (type_ == ItemType::Target || type_ == ItemType::Program)
        return robot;
    return nullptr;
}

void SimItem::setJoints(const JointVector& joints)
{
    hostCalled();
    station_->changed();
    if (type_ == ItemType::Robot) {
        // A robot keeps its joint count; missing values keep their place.
        const int count = std::min(joints.count(), jointCount());
        jointValues.resize(static_cast<size_t>(jointCount()), 0.0);
        // A rail that moves carries its robot along.
        if (carried && !std::equal(joints.values(), joints.values() + count, jointValues.begin()))
            station_->geometryChanged();
        std::copy(joints.values(), joints.values() + count, jointValues.begin());
    } else if (type_ == ItemType::Target) {
        jointValues.assign(joints.values(), joints.values() + joints.count());
    }
}

void SimItem::jointLimits(JointVector& lowerOut, JointVector& upperOut)
{
    hostCalled();
    lowerOut = JointVector();
    upperOut = JointVector();
    if (type_ == ItemType::Robot) {
        lowerOut = jointVector(lower);
        upperOut = jointVector(upper);
    } else if (type_ == ItemType::Program) {
        const Instruction* first = nullptr;
        const Instruction* last = nullptr;
        for (const Instruction& instruction : instructions) {
            if (!instruction.target)
                continue;
            if (!first)
                first = &instruction;
            last = &instruction;
        }
        if (first) {
            lowerOut = jointVector(first->target->jointValues);
            upperOut = jointVector(last->target->jointValues);
        }
    }
}

HostPose& SimItem::solveFK(HostPose& out, const JointVector& joints, const HostPose& tool,
                           HostItem* reference)
{
    hostCalled();
    if (arm && type_ == ItemType::Robot && joints.count() == jointCount()) {
        // Relative to the reference, else to the rail that carries this robot,
        // else to the robot's own base: callers place the answer on that pose.
        const SimItem* rail = cell_placement::railOf(this);
        const SimItem* frame = reference && station_->holds(reference) ? static_cast<SimItem*>(reference)
                                                                      : rail ? rail : this;
        out = cell_placement::toHostPose(cell_placement::reachedPose(
            this, joints.values(), cell_placement::fromHostPose(tool), cell_placement::absolutePose(frame)));
        return out;
    }
    // A joint-space robot: its tool sits at its first three joint values.
    HostPose reached;
    reached.translate(joints.count() > 0 ? float(joints[0]) : 0.0f,
                      joints.count() > 1 ? float(joints[1]) : 0.0f,
                      joints.count() > 2 ? float(joints[2]) : 0.0f);
    out = reached * tool;
    return out;
}

void SimItem::addJointMove(HostItem* target)
{
    hostCalled();
    station_->changed();
    if (type_ != ItemType::Program || !station_->knows(target))
        return;
    Instruction move;
    move.target = static_cast<SimItem*>(target);
    instructions.push_back(move);
}

int SimItem::testJointMove(const JointVector& from, const JointVector& to, double stepDeg)
{
    hostCalled();
    if (station_->monitor)
        station_->monitor->collisionTested();
    ++station_->cellStats.moveTests;
    // A move of anything but a robot, or between configurations the robot
    // cannot take (another joint count, beyond its limits), cannot be checked.
    if (type_ != ItemType::Robot || !joint_oracle::withinLimits(lower, upper, from.values(), from.count())
        || !joint_oracle::withinLimits(lower, upper, to.values(), to.count()))
        return MoveNotCheckable;
    const double step = stepDeg > 0.0 ? stepDeg : station_->pathStepDeg();
    if (joint_oracle::testJointMove(boxes, jointCount(), from.values(), to.values(), step))
        return 1;
    if (!arm)
        return 0;
    // The same points as the joint-space check, in the 3D model, unless there
    // are so many that one answer would keep the user waiting without end.
    const int n = joint_oracle::moveSteps(from.values(), to.values(), jointCount(), step);
    if (n > MostPointsOfAMove)
        return MoveNotCheckable;
    return station_->cellChecker(this).testMove(from.values(), to.values(), n);
}

void SimItem::showJointSequence(const RoadmapMatrix* configurations)
{
    hostCalled();
    int rows = 0;
    int cols = 0;
    if (configurations && configurations->extents && configurations->dimensionCount >= 2) {
        rows = configurations->extents[0];
        cols = configurations->extents[1];
    }
    if (type_ == ItemType::Robot && configurations && configurations->values && rows == jointCount()) {
        // Kept for the 3D view, which plays them; a run without a view only records them.
        JointSequence& shown = station_->shownSequence;
        shown.robot = this;
        shown.configurations.clear();
        for (int c = 0; c < cols; ++c) {
            const double* column = configurations->values + static_cast<size_t>(rows) * c;
            shown.configurations.emplace_back(column, column + rows);
        }
        ++shown.serial;
        if (station_->scene)
            station_->scene->sceneChanged();
    }
    record(QJsonObject{{QStringLiteral("type"), QStringLiteral("sequence")},
                       {QStringLiteral("robot"), name_},
                       {QStringLiteral("rows"), rows},
                       {QStringLiteral("cols"), cols}});
}

void SimItem::finishProgram(const QString& text)
{
    hostCalled();
    station_->changed();
    if (type_ != ItemType::Program)
        return;
    // The record also tells each move's joints, for a reader of the run.
    QJsonArray instructionList = instructionsJson();
    int written = 0;
    for (const Instruction& instruction : instructions) {
        if (instruction.target && instruction.target->deleted)
            continue;  // not written
        if (instruction.target) {
            QJsonObject move = instructionList[written].toObject();
            QJsonArray joints;
            for (double value : instruction.target->jointValues)
                joints.append(value);
            move.insert(QStringLiteral("joints"), joints);
            instructionList[written] = move;
        }
        ++written;
    }
    record(QJsonObject{{QStringLiteral("type"), QStringLiteral("program")},
                       {QStringLiteral("name"), name_},
                       {QStringLiteral("robot"), robot ? QJsonValue(robot->itemName()) : QJsonValue()},
                       {QStringLiteral("instructions"), instructionList}});
}

void SimItem::addProgramCall(const QString& programName, int option)
{
    hostCalled();
    station_->changed();
    if (type_ != ItemType::Program)
        return;
    Instruction call;
    call.call = programName;
    instructions.push_back(call);
}

void SimItem::setProgramOptionB(bool on)
{
    hostCalled();
    station_->changed();
    optionB = on;
}

void SimItem::setProgramOptionA(bool on)
{
    hostCalled();
    station_->changed();
    optionA = on;
}

bool SimItem::jointsValid(const JointVector& joints)
{
    hostCalled();
    if (type_ != ItemType::Robot)
        return false;
    return joint_oracle::withinLimits(lower, upper, joints.values(), joints.count());
}

Eigen::Isometry3d SimItem::cellBase() const
{
    return cell_placement::absolutePose(this);
}

void SimItem::hostCalled() const
{
    if (station_->monitor)
        station_->monitor->hostCalled();
}

void SimItem::record(const QJsonObject& record) const
{
    if (station_->monitor)
        station_->monitor->record(record);
}
