// Paints the station in 3D with QPainter.
#include "station_painter.h"

#include "cell_model.h"
#include "shape_batch.h"
#include "cell_placement.h"
#include "collision_report.h"
#include "station.h"

#include "vorlik/item_types.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <set>

namespace {

constexpr int pathStepsPerMove = 16;

bool armJoints(const SimItem* robot, const std::vector<double>& joints)
{
    return robot && robot->arm && static_cast<int>(joints.size()) == robot->jointCount();
}

void addRobot(ShapeBatch& batch, const SimItem* robot, const std::vector<double>& joints, const QColor& color)
{
    if (!armJoints(robot, joints))
        return;
    std::vector<Eigen::Isometry3d> frames;
    robot->arm->linkFrames(cell_placement::absolutePose(robot), joints.data(), frames);
    if (robot->arm->solids.empty()) {
        // An arm without solids shows as a chain of thin links.
        for (size_t i = 1; i < frames.size(); ++i)
            batch.stroke(frames[i - 1].translation(), frames[i].translation(), 15.0, color);
        return;
    }
    for (const LinkSolid& solid : robot->arm->solids)
        batch.solid(solid.solid, frames[size_t(solid.link)], color);
}

QColor objectColor(const Solid& solid)
{
    switch (solid.kind) {
    case Solid::Kind::Box: return QColor(120, 140, 165);
    case Solid::Kind::Cylinder: return QColor(90, 160, 150);
    default: return QColor(160, 110, 170);
    }
}

void paintFloor(QPainter& painter, const ViewCamera& camera)
{
    painter.setPen(QPen(QColor(70, 78, 92), 1.0));
    constexpr int half = 2000, spacing = 250;
    for (int v = -half; v <= half; v += spacing) {
        QPointF a, b;
        if (camera.project({double(v), -half, 0.0}, &a) && camera.project({double(v), half, 0.0}, &b))
            painter.drawLine(a, b);
        if (camera.project({-half, double(v), 0.0}, &a) && camera.project({half, double(v), 0.0}, &b))
            painter.drawLine(a, b);
    }
}

void paintDrawings(QPainter& painter, const std::vector<SceneDrawing>& drawings, const ViewCamera& camera)
{
    for (const SceneDrawing& drawing : drawings) {
        QColor color = QColor::fromRgbF(std::clamp(double(drawing.color[0]), 0.0, 1.0),
                                        std::clamp(double(drawing.color[1]), 0.0, 1.0),
                                        std::clamp(double(drawing.color[2]), 0.0, 1.0),
                                        0.45 * std::clamp(double(drawing.color[3]), 0.0, 1.0));
        painter.setPen(QPen(color, std::max(1.0, double(drawing.width))));
        std::vector<QPointF> points;
        std::vector<bool> seen;
        for (size_t i = 0; i + 2 < drawing.points.size(); i += 3) {
            QPointF at;
            seen.push_back(camera.project({drawing.points[i], drawing.points[i + 1], drawing.points[i + 2]}, &at));
            points.push_back(at);
        }
        // Primitive 2: segments of two points each; others: one line through all points.
        const size_t stride = drawing.primitive == 2 ? 2 : 1;
        for (size_t i = 0; i + 1 < points.size(); i += stride) {
            if (seen[i] && seen[i + 1])
                painter.drawLine(points[i], points[i + 1]);
        }
    }
}

// The tool positions along the program's joint moves, and at its targets.
void programPath(const SimItem* program, std::vector<Eigen::Vector3d>* path, std::vector<const SimItem*>* stops)
{
    const SimItem* robot = program->robot;
    const std::vector<double>* previous = nullptr;
    const Eigen::Isometry3d base = cell_placement::absolutePose(robot);
    for (const Instruction& instruction : program->instructions) {
        const SimItem* target = instruction.target;
        if (!target || target->deleted || !armJoints(robot, target->jointValues))
            continue;
        stops->push_back(target);
        const std::vector<double>& joints = target->jointValues;
        const int steps = previous ? pathStepsPerMove : 0;
        std::vector<double> q(joints.size());
        for (int k = previous ? 1 : 0; k <= steps; ++k) {
            for (size_t i = 0; i < q.size(); ++i)
                q[i] = previous ? (*previous)[i] + (joints[i] - (*previous)[i]) * k / steps : joints[i];
            path->push_back((base * robot->arm->toolPose(q.data())).translation());
        }
        previous = &joints;
    }
}

void paintLabel(QPainter& painter, const QPointF& at, const QString& text, const QColor& color)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(at, 4.0, 4.0);
    painter.setPen(QColor(235, 240, 250));
    painter.drawText(at + QPointF(7, -6), text);
}

}  // namespace

void paintStation(QPainter& painter, const ViewScene& scene, const ViewCamera& camera)
{
    const QSize size = camera.viewSize();
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0.0, QColor(38, 44, 58));
    sky.setColorAt(1.0, QColor(16, 18, 24));
    painter.fillRect(QRect(QPoint(0, 0), size), sky);
    painter.setRenderHint(QPainter::Antialiasing, true);
    paintFloor(painter, camera);
    if (!scene.station)
        return;
    const Station& station = *scene.station;

    const SimItem* program = scene.program;
    std::vector<Eigen::Vector3d> path;
    std::vector<const SimItem*> stops;
    if (program && program->robot && program->robot->arm)
        programPath(program, &path, &stops);

    ShapeBatch batch(camera);
    for (const SimItem* item : station.items(ObjectType)) {
        if (item->object)
            batch.solid(item->object->solid, item->object->world, objectColor(item->object->solid));
    }
    for (const SimItem* robot : station.items(ItemType::Robot)) {
        const bool posed = robot == scene.posedRobot;
        addRobot(batch, robot, posed ? scene.posedJoints : robot->jointValues, QColor(230, 150, 60));
    }
    batch.paint(painter);

    if (scene.drawings)
        paintDrawings(painter, *scene.drawings, camera);

    if (path.size() >= 2) {
        QPolygonF line;
        for (const auto& point : path) {
            QPointF at;
            if (camera.project(point, &at))
                line << at;
        }
        painter.setPen(QPen(QColor(255, 200, 40), 3.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolyline(line);
    }
    for (const SimItem* stop : stops) {
        QPointF at;
        if (camera.project(cell_placement::absolutePose(stop).translation(), &at))
            paintLabel(painter, at, QString(), QColor(255, 200, 40));
    }
    // Targets no program goes through, by name (a path's own points would
    // crowd the view), and every target in collision, marked so.
    std::set<const SimItem*> used;
    for (const SimItem* other : station.items(ItemType::Program)) {
        for (const Instruction& instruction : other->instructions)
            used.insert(instruction.target);
    }
    for (const SimItem* target : station.items(ItemType::Target)) {
        const bool collides = targetCollides(station, target);
        QPointF at;
        if ((collides || !used.count(target)) && target->robot && target->robot->arm
            && camera.project(cell_placement::absolutePose(target).translation(), &at)) {
            if (collides)
                paintLabel(painter, at, target->itemName() + QStringLiteral(" (collides)"), QColor(255, 80, 70));
            else
                paintLabel(painter, at, target->itemName(), QColor(120, 200, 255));
        }
    }

    QStringList legend;
    for (const SimItem* robot : station.items(ItemType::Robot))
        legend << QStringLiteral("Robot %1").arg(robot->itemName());
    int segments = 0;
    if (scene.drawings) {
        for (const SceneDrawing& drawing : *scene.drawings)
            segments += drawing.primitive == 2 ? int(drawing.points.size() / 6) : 0;
    }
    legend << (segments > 0 ? QStringLiteral("Map: %1 segments shown").arg(segments)
                            : QStringLiteral("Map: not shown (\"Display map\" in the planner's form shows it)"));
    if (program)
        legend << QStringLiteral("Path: %1 (%2 targets)").arg(program->itemName()).arg(stops.size());
    painter.setPen(QColor(220, 225, 235));
    painter.drawText(QRect(12, 8, size.width() - 24, 80), Qt::AlignLeft | Qt::AlignTop, legend.join('\n'));
}

void stationBounds(const Station& station, Eigen::Vector3d* low, Eigen::Vector3d* high)
{
    *low = Eigen::Vector3d::Constant(1e300);
    *high = Eigen::Vector3d::Constant(-1e300);
    auto hold = [&](const Eigen::Vector3d& centre, double radius) {
        *low = low->cwiseMin(centre - Eigen::Vector3d::Constant(radius));
        *high = high->cwiseMax(centre + Eigen::Vector3d::Constant(radius));
    };
    for (const SimItem* item : station.items(ObjectType)) {
        if (item->object)
            hold(item->object->world * item->object->solid.boundCentre, item->object->solid.boundRadius);
    }
    for (const SimItem* robot : station.items(ItemType::Robot)) {
        if (!robot->arm)
            continue;
        // An arm reaches about as far as its links and tool are long.
        double reach = robot->arm->tool.translation().norm();
        for (const DhJoint& joint : robot->arm->joints)
            reach += std::abs(joint.a) + std::abs(joint.d);
        hold(cell_placement::absolutePose(robot).translation(), 0.8 * reach);
    }
    if ((*low)(0) > (*high)(0)) {
        *low = Eigen::Vector3d::Constant(-1000.0);
        *high = Eigen::Vector3d::Constant(1000.0);
    }
}

const SimItem* shownProgram(const Station& station)
{
    for (const SimItem* item : station.selection) {
        if (item->itemType() == ItemType::Program)
            return item;
    }
    const auto& programs = station.items(ItemType::Program);
    return programs.empty() ? nullptr : programs.back();
}
