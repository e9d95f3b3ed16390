#pragma once

#include "fake_host.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class FakeStation;

// A station item whose calls are written to the station's call log. As a
// program it remembers its joint moves, and answers jointLimits with the
// joints of its first and last moved target, as a host does for programs.
class StationItem : public FakeItem {
public:
    StationItem(FakeStation* station, int itemType, const QString& name);

    void deleteItem() override;
    void setJoints(const JointVector& joints) override;
    void setAsJointTarget() override;
    void addJointMove(HostItem* target) override;
    void jointLimits(JointVector& lower, JointVector& upper) override;
    void finishProgram(const QString& text) override;
    void addProgramCall(const QString& programName, int option) override;
    void setProgramOptionB(bool on) override;
    void setProgramOptionA(bool on) override;

    QList<HostItem*> moves;  // targets of the joint moves, in order

private:
    FakeStation* station_;
};

// A robot whose moves are written to the station's call log.
class LoggedRobot : public FakeRobot {
public:
    LoggedRobot(FakeStation* station, const QString& name, std::vector<double> lower, std::vector<double> upper);

    void setJoints(const JointVector& joints) override;

private:
    FakeStation* station_;
};

// FakeHost with a log of the calls that change the station or the display, in
// the order they were made, and with programs that know their moves. Items it
// creates itself come after FakeHost's own in station order.
class FakeStation : public FakeHost {
public:
    LoggedRobot* addLoggedRobot(const QString& name, std::vector<double> lower, std::vector<double> upper);
    // A target of `robotOfTarget` holding `joints`, parented like the robot.
    StationItem* addStationTarget(const QString& name, HostItem* robotOfTarget, const std::vector<double>& joints);
    // A program of `robotOfProgram` moving through `targets`.
    StationItem* addStationProgram(const QString& name, HostItem* robotOfProgram, const QList<HostItem*>& targets);

    HostItem* getItem(const QString& name, int itemType) override;
    QList<Item>& getItemList(QList<Item>& out, int itemType) override;
    bool isValidItem(HostItem* item) override;
    void showMessage(const QString& text, bool popup) override;
    HostItem* addTarget(const QString& name, HostItem* parent, HostItem* robot) override;
    HostItem* addProgram(const QString& name, HostItem* robot) override;
    void update(int flags) override;
    void setRenderMode(int mode) override;
    int collisions() override;

    // Live items of one type, FakeHost's first, then this station's.
    QList<HostItem*> itemsOfType(int itemType);
    // Messages shown, texts only.
    QStringList messageTexts() const;

    void log(const QString& entry) { calls << entry; }
    QStringList calls;

private:
    StationItem* own(std::unique_ptr<StationItem> item);

    std::vector<std::unique_ptr<FakeItem>> ownItems_;
};

// Joint values as "a, b, c" with three decimals, for logs and messages.
QString jointText(const JointVector& joints);
