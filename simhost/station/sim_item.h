// An item of the simulated station, as the plug-in sees it.
#pragma once

#include "cell_world.h"
#include "joint_oracle.h"

#include "vorlik/host_item.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <vector>

class Station;
class SimItem;

// Type code of a reference frame; robots, targets and programs use the SDK's codes.
constexpr int FrameType = 3;
// Type code of an environment object (a solid of the work cell).
constexpr int ObjectType = 5;

// testJointMove's answer for a move it cannot check: not a robot's, an end
// the robot cannot take, or more points than a 3D check may take in one call.
constexpr int MoveNotCheckable = 2;
// The most points of one move the 3D model checks (about half a second).
constexpr int MostPointsOfAMove = 1000000;

// One program instruction: a joint move to a target, or a call of a program by name.
struct Instruction {
    SimItem* target = nullptr;
    QString call;
    QJsonObject keptFields;  // the file's fields the host does not know
};

// One item of the simulated station. Robots hold joints, limits, obstacle
// boxes and optionally an arm; targets hold joints and their robot; programs
// hold instructions; objects hold a solid (the arm and the solid are its CellPart).
// Deleted items stay alive (marked deleted) so that handles remain safe to use.
// The calls the plug-in makes on an item need the whole station: they are
// answered in sim_item_host_calls.cpp, above the station in the include graph.
class SimItem final : public HostItem, public CellPart {
public:
    SimItem(Station* station, int type, const QString& name, int id);
    virtual ~SimItem() = default;

    Station* station() const { return station_; }
    int itemType() const { return type_; }
    int id() const { return id_; }
    const QString& itemName() const { return name_; }
    int jointCount() const { return static_cast<int>(lower.size()); }
    // Instructions as the station file writes them: targets by name and id;
    // with the fields the file gave that the host does not know, if asked.
    QJsonArray instructionsJson(bool withKeptFields = false) const;

    SimItem* parentItem = nullptr;
    SimItem* robot = nullptr;    // a target's or program's robot
    SimItem* carried = nullptr;  // the robot a mechanism (rail) carries
    std::vector<double> jointValues;
    std::vector<double> lower;
    std::vector<double> upper;
    std::vector<JointBox> boxes;
    std::vector<Instruction> instructions;
    // Placement relative to the parent, [x, y, z, rx, ry, rz]; empty: none.
    std::vector<double> pose;
    // The file's fields of this item, and of each of its joint boxes, that the host does not know.
    QJsonObject keptFields;
    std::vector<QJsonObject> keptBoxFields;
    bool optionA = false;
    bool optionB = false;
    bool deleted = false;

    // HostItem
    int type() override;
    void deleteItem() override;
    HostItem* parent() override;
    QString name() override;
    void setName(const QString& name) override;
    HostPose& poseTool(HostPose& out) override;
    HostPose& poseAbs(HostPose& out) override;
    void setAsJointTarget() override;
    JointVector& joints(JointVector& out) override;
    HostItem* getLink(int itemType) override;
    void setJoints(const JointVector& joints) override;
    void jointLimits(JointVector& lowerOut, JointVector& upperOut) override;
    HostPose& solveFK(HostPose& out, const JointVector& joints, const HostPose& tool,
                      HostItem* reference) override;
    void addJointMove(HostItem* target) override;
    int testJointMove(const JointVector& from, const JointVector& to, double stepDeg) override;
    void showJointSequence(const RoadmapMatrix* configurations) override;
    void finishProgram(const QString& text) override;
    void addProgramCall(const QString& programName, int option) override;
    void setProgramOptionB(bool on) override;
    void setProgramOptionA(bool on) override;
    bool jointsValid(const JointVector& joints) override;

    // CellPart
    Eigen::Isometry3d cellBase() const override;

private:
    void hostCalled() const;
    void record(const QJsonObject& record) const;

    Station* station_;
    int type_;
    QString name_;
    int id_;
};
