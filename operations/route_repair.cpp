// Checking a found route against the cell as it is now.
#include "route_repair.h"

#include "collision_checker.h"
#include "host_collision_checker.h"
#include "operation_scope.h"
#include "roadmap_graph.h"
#include "roadmap_matrix.h"
#include "shortest_path.h"

#include <QDebug>

namespace {

// The first move of the route that the host refuses now, as its two 0-based
// nodes; false when every move is free. A move to a node that is no sample
// (a cancelled insertion's) cannot be tested and counts as refused.
bool firstRefusedMove(CollisionChecker& checker, const RobotMap& map, int* from, int* to)
{
    const RoadmapMatrix* route = map.route();
    const RoadmapMatrix* samples = map.samples();
    const int length = rows(route) == 1 ? columns(route) : 0;
    for (int i = 0; i + 1 < length; ++i) {
        const int a = static_cast<int>(at(route, 0, i)) - 1;
        const int b = static_cast<int>(at(route, 0, i + 1)) - 1;
        const bool samplesBoth = a >= 0 && b >= 0 && a < map.sampleCount() && b < map.sampleCount();
        const int joints = rows(samples);
        if (!samplesBoth
            || checker.jointMove(JointVector(column(samples, a), joints), JointVector(column(samples, b), joints))
                   != 0) {
            *from = a;
            *to = b;
            return true;
        }
    }
    return false;
}

}  // namespace

bool repairRoute(OperationScope& operation, int start, int end, int* removed)
{
    RobotMap& map = operation.map();
    HostCollisionChecker checker(operation.session().host(), operation.session().robot());
    int from = 0;
    int to = 0;
    while (!operation.abandoned() && firstRefusedMove(checker, map, &from, &to)) {
        qDebug().noquote().nospace() << "Route move refused by the cell: nodes " << from + 1 << " and " << to + 1;
        Roadmap& roadmap = map.roadmap();
        if (from < 0 || to < 0 || from >= roadmap.nodeCount() || to >= roadmap.nodeCount() || from == to
            || roadmap.graph().length(from, to) <= 0.0)
            return false;  // no edge of the map to take out: the route cannot be trusted
        roadmap.join(from, to, 0.0);
        ++*removed;
        double cost = NoPathCost;
        shortestPath(&roadmap.graph(), end, start, &cost, map.route());
        if (cost >= NoPathCost)
            return false;
    }
    return !operation.abandoned();
}
