// The planner session: settings, robot, map, and the running operation.
#include "planner_session.h"

#include "progress_reporter.h"
#include "translate.h"

#include "vorlik/host_api.h"
#include "vorlik/host_item.h"

#include <QCoreApplication>
#include <QDebug>
#include <QProgressDialog>

#include <utility>

namespace {
const char* const RobotGoneText = QT_TRANSLATE_NOOP(
    "PluginAutoPRM", "The robot was deleted: the running operation was stopped and nothing it computed was kept.");

const char* const BusyText = QT_TRANSLATE_NOOP(
    "PluginAutoPRM", "The collision-free planner is busy with another operation. Wait for it to finish or cancel it.");
}  // namespace

PlannerSession::PlannerSession(HostApi* host, QMainWindow* mainWindow, SessionCallbacks callbacks,
                               std::shared_ptr<PlannerResources> resources)
    : host_(host), mainWindow_(mainWindow), resources_(std::move(resources)), callbacks_(std::move(callbacks))
{
}

void PlannerSession::changeSettings(const PlannerSettings& settings)
{
    settings_ = settings;
    changed_ = true;
}

QString PlannerSession::robotName() const
{
    return robot_ ? robot_->name() : QString();
}

bool PlannerSession::requireRobot(bool silent)
{
    if (robot_)
        return true;
    host_->showMessage(QCoreApplication::translate("PluginAutoPRM", "Invalid robot: add a robot or load a project"),
                       !silent);
    return false;
}

bool PlannerSession::selectRobot(bool autoSelect, const QString& name)
{
    return callbacks_.selectRobot ? callbacks_.selectRobot(autoSelect, name) : false;
}

void PlannerSession::robotGone()
{
    // The handle may already dangle: the message cannot name the robot.
    if (operations_ > 0 && abandonment_ == Abandonment::None)
        host_->showMessage(planTr(RobotGoneText), false);
    abandonOperation(Abandonment::RobotDeleted);
    robot_ = nullptr;
    whenIdle([this] { selectRobot(true, QString()); });
}

bool PlannerSession::robotStillThere()
{
    if (!robot_ || host_->isValidItem(robot_))
        return true;
    qDebug().noquote().nospace() << "The robot is gone from the station";
    robotGone();
    return false;
}

void PlannerSession::notifyChanged()
{
    if (callbacks_.changed)
        callbacks_.changed();
}

void PlannerSession::forgetMap()
{
    map_.clear();
    map_.setRobot(nullptr);
}

void PlannerSession::resetToDefaults()
{
    if (!map_.hasSamples())
        return;
    restoreSettings(PlannerSettings());
    setRobot(nullptr);
    forgetMap();
    notifyChanged();
}

void PlannerSession::refuseWhileBusy(bool silent)
{
    qDebug().noquote().nospace() << "Refused while an operation runs";
    host_->showMessage(busyText(), !silent);
}

QString PlannerSession::busyText()
{
    return planTr(BusyText);
}

void PlannerSession::abandonOperation(Abandonment why)
{
    if (operations_ == 0 || why == Abandonment::None)
        return;
    if (abandonment_ == Abandonment::None)
        abandonment_ = why;
    progress().abandon();
}

void PlannerSession::whenIdle(std::function<void()> action)
{
    if (operations_ == 0) {
        action();
        return;
    }
    whenIdle_.push_back(std::move(action));
}

void PlannerSession::operationStarted()
{
    resources_->operationStarted();
    if (operations_++ == 0)
        abandonment_ = Abandonment::None;
}

void PlannerSession::operationEnded()
{
    resources_->operationEnded();
    if (--operations_ > 0)
        return;
    if (abandonment_ != Abandonment::None)
        progress().endAbandonment();
    abandonment_ = Abandonment::None;
    // What waited for the operation; an action may queue more.
    while (!whenIdle_.empty()) {
        std::vector<std::function<void()>> actions;
        actions.swap(whenIdle_);
        for (const auto& action : actions)
            action();
    }
}
