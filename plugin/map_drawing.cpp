// Draws the map in the host's 3D view: a segment between the tool positions of
// every two connected samples.
#include "map_drawing.h"

#include "edge_list.h"
#include "planner_session.h"
#include "vorlik/host_api.h"
#include "roadmap_matrix.h"
#include "vorlik/item_types.h"

#include <QDebug>

#include <vector>

namespace {
// The rail or other mechanism that carries the robot, if any: the first
// ancestor that is a robot-type item linked to the robot.
HostItem* carryingMechanism(HostItem* robot)
{
    for (HostItem* item = robot->parent(); item; item = item->parent()) {
        if (item->type() == ItemType::Robot && item->getLink(ItemType::Robot) == robot)
            return item;
    }
    return nullptr;
}
}  // namespace

void MapDrawing::draw(PlannerSession& session)
{
    if (!session.settings().displaySamples)
        return;
    if (!session.requireRobot(true))
        return;
    HostItem* robot = session.robot();
    const RoadmapMatrix* samples = session.map().samples();
    RoadmapMatrix* samplePositions = samplePositions_.get();

    const int jointCount = rows(samples);
    const int sampleCount = columns(samples);
    setSize(samplePositions, 3, sampleCount);

    HostPose tool;
    robot->poseTool(tool);
    HostPose base;
    robot->poseAbs(base);
    if (HostItem* rail = carryingMechanism(robot)) {
        qDebug().noquote().nospace() << "Rail found: " << rail->name();
        rail->poseAbs(base);
    }

    for (int k = 0; k < sampleCount; ++k) {
        const JointVector joints(column(samples, k), jointCount);
        HostPose reached;
        robot->solveFK(reached, joints, tool, nullptr);
        const HostPose pose = base * reached;
        double* position = column(samplePositions, k);
        for (int axis = 0; axis < 3; ++axis)
            position[axis] = double(pose(axis, 3));
    }

    ScopedMatrix edges = makeScopedMatrix();
    edgeListFromGraph(session.map().graph(), edges.get());
    const int edgeTotal = columns(edges.get());
    std::vector<double> points(static_cast<size_t>(6 * edgeTotal), 0.0);
    for (int k = 0; k < edgeTotal; ++k) {
        const int a = int(at(edges.get(), 0, k)) - 1;
        const int b = int(at(edges.get(), 1, k)) - 1;
        // Both indices are checked so that a damaged graph cannot read past the positions.
        if (a < 0 || a >= sampleCount || b < 0 || b >= sampleCount)
            continue;
        std::copy_n(column(samplePositions, a), 3, &points[size_t(6 * k)]);
        std::copy_n(column(samplePositions, b), 3, &points[size_t(6 * k + 3)]);
    }
    const float color[4] = {0.999f, 0.999f, 0.999f, 1.0f};
    session.host()->drawGeometry(2, points.data(), 2 * edgeTotal, color, 1.0f, 0);
}
