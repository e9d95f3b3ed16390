#pragma once

#include "vorlik/host_api.h"
#include "vorlik/host_item.h"
#include "vorlik/item_types.h"

#include "joint_oracle.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

class FakeHost;

// A station item of any type, with a name and a parent.
class FakeItem : public HostItem {
public:
    FakeItem(FakeHost* host, int itemType, const QString& name);
    virtual ~FakeItem() = default;

    int type() override { return itemType_; }
    void deleteItem() override;
    HostItem* parent() override { return parent_; }
    QString name() override { return name_; }
    void setName(const QString& name) override { name_ = name; }
    HostPose& poseTool(HostPose& out) override;
    HostPose& poseAbs(HostPose& out) override;
    void setAsJointTarget() override;
    JointVector& joints(JointVector& out) override;
    HostItem* getLink(int itemType) override;
    void setJoints(const JointVector& joints) override { joints_ = joints; }
    void jointLimits(JointVector& lower, JointVector& upper) override;
    HostPose& solveFK(HostPose& out, const JointVector& joints, const HostPose& tool, HostItem* reference) override;
    void addJointMove(HostItem* target) override;
    int testJointMove(const JointVector& from, const JointVector& to, double stepDeg) override;
    void showJointSequence(const RoadmapMatrix* configurations) override;
    void finishProgram(const QString& text) override;
    void addProgramCall(const QString& programName, int option) override;
    void setProgramOptionB(bool on) override { optionB = on; }
    void setProgramOptionA(bool on) override { optionA = on; }
    bool jointsValid(const JointVector& joints) override;

    void setParent(HostItem* parent) { parent_ = parent; }
    const JointVector& currentJoints() const { return joints_; }

    // Program content, as "move <target>" and "call <program>" lines.
    QStringList instructions;
    QString finishedWith;
    bool finished = false;
    bool deleted = false;
    bool optionA = true;
    bool optionB = true;
    HostItem* robot = nullptr;  // the robot a target or program belongs to
    int shownRows = -1;         // last showJointSequence
    int shownColumns = -1;

protected:
    FakeHost* host_;
    int itemType_;
    QString name_;
    HostItem* parent_ = nullptr;
    JointVector joints_;
};

// A robot with joint limits and joint-space obstacle boxes.
class FakeRobot : public FakeItem {
public:
    FakeRobot(FakeHost* host, const QString& name, std::vector<double> lower, std::vector<double> upper);

    void jointLimits(JointVector& lower, JointVector& upper) override;
    int testJointMove(const JointVector& from, const JointVector& to, double stepDeg) override;
    bool jointsValid(const JointVector& joints) override;
    HostItem* getLink(int itemType) override;

    int jointCount() const { return static_cast<int>(lower_.size()); }
    // True when a configuration lies inside one of the boxes (the host's oracle).
    bool collides(const double* q) const;
    // The host's joint-move oracle without counting a test: true when any
    // checked point of the straight move from a to b collides.
    bool moveCollides(const double* a, const double* b, double step) const;

    std::vector<JointBox> boxes;
    // When set, replaces the limit check of jointsValid.
    std::function<bool(const JointVector&)> accepts;
    // What testJointMove answers for a colliding move.
    int blockedAnswer = 1;
    int jointMoveTests = 0;
    int validityChecks = 0;
    std::vector<double> lastStep;  // step argument of every testJointMove
    std::vector<std::pair<JointVector, JointVector>> moves;  // from, to of every testJointMove

private:
    std::vector<double> lower_;
    std::vector<double> upper_;
};

// An in-memory host: robots and other items, host parameters, data
// parameters, messages, and a counter of collision tests (configuration
// checks through collisions() and joint moves).
class FakeHost : public HostApi {
public:
    FakeHost();
    virtual ~FakeHost() = default;

    FakeRobot* addRobot(const QString& name, std::vector<double> lower, std::vector<double> upper);
    FakeItem* addItem(int itemType, const QString& name, HostItem* robotOfItem = nullptr);

    HostItem* getItem(const QString& name, int itemType) override;
    QList<Item>& getItemList(QList<Item>& out, int itemType) override;
    bool isValidItem(HostItem* item) override;
    HostItem* pickItem(const QString& message, int itemType) override;
    void showMessage(const QString& text, bool popup) override;
    HostItem* addTarget(const QString& name, HostItem* parent, HostItem* robot) override;
    HostItem* addProgram(const QString& name, HostItem* robot) override;
    void update(int flags) override { updates.push_back(flags); }
    void setRenderMode(int mode) override { renderMode_ = mode; }
    int collisions() override;
    QString& command(QString& out, const QString& name, const QString& value) override;
    QList<Item>& getSelectedItems(QList<Item>& out) override;
    QByteArray getDataParam(const QString& key) override { return dataParams.value(key); }
    void setDataParam(const QString& key, const QByteArray& bytes) override { dataParams[key] = bytes; }
    int renderMode() override { return renderMode_; }
    void drawGeometry(int primitive, const double* points, int pointCount, const float color[4], float lineWidth,
                      int flag) override;

    // The host's "PathStepCollisionDeg" as a number.
    double collisionStep() const;
    // Counts one collision test and runs the hook with its 1-based number.
    void countCollisionTest();
    void forget(HostItem* item);
    // Removes every item but the first count ones, as if never added.
    void keepFirstItems(size_t count);
    size_t itemCount() const { return items_.size(); }

    int collisionTests = 0;
    // Called at every collision test with its 1-based number, before the answer.
    std::function<void(int)> onCollisionTest;
    QMap<QString, QString> params;
    QMap<QString, QByteArray> dataParams;
    QList<QPair<QString, bool>> messages;
    std::vector<int> updates;
    QList<Item> selection;
    QList<HostItem*> pickAnswers;  // answered in order; null = cancel
    int drawCalls = 0;
    int lastDrawPointCount = 0;

private:
    std::vector<std::unique_ptr<FakeItem>> items_;
    int renderMode_ = 0;
};
