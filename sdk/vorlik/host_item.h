// A handle to one item of the host's station, as the plug-in calls it.
#pragma once

#include "vorlik/host_pose.h"
#include "vorlik/joint_vector.h"
#include "vorlik/roadmap_matrix.h"

#include <QList>
#include <QMetaType>
#include <QString>

// Handle to one object of the host station (robot, target, program, frame...).
// The host owns every item; plug-ins hold plain pointers and never free them.
// Operations are listed in the order of their virtual slots. Output arguments
// come first and are also returned.
class HostItem {
public:
    virtual int type() = 0;
    virtual void deleteItem() = 0;
    virtual HostItem* parent() = 0;
    virtual QString name() = 0;
    virtual void setName(const QString& name) = 0;
    virtual HostPose& poseTool(HostPose& out) = 0;
    virtual HostPose& poseAbs(HostPose& out) = 0;
    virtual void setAsJointTarget() = 0;
    virtual JointVector& joints(JointVector& out) = 0;
    virtual HostItem* getLink(int itemType) = 0;
    virtual void setJoints(const JointVector& joints) = 0;
    virtual void jointLimits(JointVector& lower, JointVector& upper) = 0;
    virtual HostPose& solveFK(HostPose& out, const JointVector& joints, const HostPose& tool, HostItem* reference) = 0;
    virtual void addJointMove(HostItem* target) = 0;
    virtual int testJointMove(const JointVector& from, const JointVector& to, double stepDeg) = 0;
    virtual void showJointSequence(const RoadmapMatrix* configurations) = 0;
    virtual void finishProgram(const QString& text) = 0;
    virtual void addProgramCall(const QString& programName, int option) = 0;
    virtual void setProgramOptionB(bool on) = 0;
    virtual void setProgramOptionA(bool on) = 0;
    virtual bool jointsValid(const JointVector& joints) = 0;

protected:
    ~HostItem() = default;
};

// The item handle as slots and signals name it.
typedef HostItem* Item;
Q_DECLARE_METATYPE(Item)
Q_DECLARE_METATYPE(QList<Item>)
