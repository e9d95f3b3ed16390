// Paints the station in 3D with QPainter.
#include "station_painter.h"

#include "cell_model.h"
#include "cell_placement.h"
#include "station.h"

#include "vorlik/item_types.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

const Eigen::Vector3d lightDirection = Eigen::Vector3d(0.4, 0.3, 1.0).normalized();
constexpr int roundSides = 20;
constexpr int pathStepsPerMove = 16;

// One flat thing to paint; the batch paints far ones first.
struct Shape2d {
    enum class Kind { Polygon, Stroke, Disc };
    Kind kind = Kind::Polygon;
    double depth = 0.0;
    QPolygonF points;
    QColor fill;
    double width = 0.0;  // stroke width, disc radius
};

QColor shaded(const QColor& base, const Eigen::Vector3d& normal)
{
    const double light = 0.45 + 0.55 * std::max(0.0, normal.normalized().dot(lightDirection));
    return QColor::fromRgbF(std::min(1.0, base.redF() * light), std::min(1.0, base.greenF() * light),
                            std::min(1.0, base.blueF() * light), base.alphaF());
}

class ShapeBatch {
public:
    explicit ShapeBatch(const ViewCamera& camera) : camera_(camera) {}

    // A flat face given by its corners, drawn when it faces the camera.
    void face(const std::vector<Eigen::Vector3d>& corners, const QColor& color)
    {
        const Eigen::Vector3d normal = (corners[1] - corners[0]).cross(corners[2] - corners[0]);
        Eigen::Vector3d centre = Eigen::Vector3d::Zero();
        for (const auto& corner : corners)
            centre += corner / double(corners.size());
        if (normal.dot(camera_.eye() - centre) <= 0.0)
            return;
        Shape2d shape;
        double depthSum = 0.0;
        for (const auto& corner : corners) {
            QPointF at;
            double depth = 0.0;
            if (!camera_.project(corner, &at, &depth))
                return;
            shape.points << at;
            depthSum += depth;
        }
        shape.depth = depthSum / corners.size();
        shape.fill = shaded(color, normal);
        shapes_.push_back(shape);
    }

    // A round-ended thick segment of that radius (a capsule seen from anywhere).
    void stroke(const Eigen::Vector3d& a, const Eigen::Vector3d& b, double radius, const QColor& color)
    {
        Shape2d shape;
        shape.kind = Shape2d::Kind::Stroke;
        QPointF pa, pb;
        double da = 0.0, db = 0.0;
        if (!camera_.project(a, &pa, &da) || !camera_.project(b, &pb, &db))
            return;
        shape.points << pa << pb;
        shape.depth = 0.5 * (da + db);
        shape.width = std::max(1.0, 2.0 * radius * camera_.scaleAt(shape.depth));
        shape.fill = color;
        shapes_.push_back(shape);
    }

    void disc(const Eigen::Vector3d& centre, double radius, const QColor& color)
    {
        Shape2d shape;
        shape.kind = Shape2d::Kind::Disc;
        QPointF at;
        if (!camera_.project(centre, &at, &shape.depth))
            return;
        shape.points << at;
        shape.width = radius * camera_.scaleAt(shape.depth);
        shape.fill = color;
        shapes_.push_back(shape);
    }

    void solid(const Solid& solid, const Eigen::Isometry3d& world, const QColor& color);

    void paint(QPainter& painter)
    {
        std::stable_sort(shapes_.begin(), shapes_.end(),
                         [](const Shape2d& a, const Shape2d& b) { return a.depth > b.depth; });
        for (const Shape2d& shape : shapes_)
            paintShape(painter, shape);
    }

private:
    static void paintShape(QPainter& painter, const Shape2d& shape)
    {
        const QColor edge = shape.fill.darker(170);
        switch (shape.kind) {
        case Shape2d::Kind::Polygon:
            // Faint edges: the facets of a round solid should not look striped.
            painter.setPen(QPen(shape.fill.darker(115), 1.0));
            painter.setBrush(shape.fill);
            painter.drawPolygon(shape.points);
            break;
        case Shape2d::Kind::Stroke:
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(edge, shape.width + 2.0, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(shape.points[0], shape.points[1]);
            painter.setPen(QPen(shape.fill, shape.width, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(shape.points[0], shape.points[1]);
            break;
        case Shape2d::Kind::Disc: {
            QRadialGradient gradient(shape.points[0] + QPointF(-0.3 * shape.width, -0.3 * shape.width), shape.width * 1.3);
            gradient.setColorAt(0.0, shape.fill.lighter(140));
            gradient.setColorAt(1.0, shape.fill.darker(150));
            painter.setPen(QPen(edge, 1.0));
            painter.setBrush(gradient);
            painter.drawEllipse(shape.points[0], shape.width, shape.width);
            break;
        }
        }
    }

    const ViewCamera& camera_;
    std::vector<Shape2d> shapes_;
};

void ShapeBatch::solid(const Solid& solid, const Eigen::Isometry3d& world, const QColor& color)
{
    const Eigen::Isometry3d at = world * solid.local;
    switch (solid.kind) {
    case Solid::Kind::Box: {
        const Eigen::Vector3d h = 0.5 * solid.size;
        auto corner = [&](int x, int y, int z) { return at * Eigen::Vector3d(x * h.x(), y * h.y(), z * h.z()); };
        // Corners listed counter-clockwise seen from outside.
        face({corner(-1, -1, 1), corner(1, -1, 1), corner(1, 1, 1), corner(-1, 1, 1)}, color);
        face({corner(-1, -1, -1), corner(-1, 1, -1), corner(1, 1, -1), corner(1, -1, -1)}, color);
        face({corner(1, -1, -1), corner(1, 1, -1), corner(1, 1, 1), corner(1, -1, 1)}, color);
        face({corner(-1, -1, -1), corner(-1, -1, 1), corner(-1, 1, 1), corner(-1, 1, -1)}, color);
        face({corner(-1, 1, -1), corner(-1, 1, 1), corner(1, 1, 1), corner(1, 1, -1)}, color);
        face({corner(-1, -1, -1), corner(1, -1, -1), corner(1, -1, 1), corner(-1, -1, 1)}, color);
        break;
    }
    case Solid::Kind::Cylinder: {
        const double h = 0.5 * solid.length;
        std::vector<Eigen::Vector3d> top, bottom;
        for (int i = 0; i < roundSides; ++i) {
            const double angle = 2.0 * M_PI * i / roundSides;
            const double x = solid.radius * std::cos(angle), y = solid.radius * std::sin(angle);
            top.push_back(at * Eigen::Vector3d(x, y, h));
            bottom.push_back(at * Eigen::Vector3d(x, y, -h));
        }
        for (int i = 0; i < roundSides; ++i) {
            const int j = (i + 1) % roundSides;
            face({bottom[size_t(i)], bottom[size_t(j)], top[size_t(j)], top[size_t(i)]}, color);
        }
        face(top, color);
        std::reverse(bottom.begin(), bottom.end());
        face(bottom, color);
        break;
    }
    case Solid::Kind::Sphere:
        disc(at.translation(), solid.radius, color);
        break;
    case Solid::Kind::Capsule: {
        const double h = 0.5 * solid.length;
        stroke(at * Eigen::Vector3d(0, 0, -h), at * Eigen::Vector3d(0, 0, h), solid.radius, color);
        break;
    }
    }
}

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
    // Targets no program goes through, by name (a path's own points would crowd the view).
    for (const SimItem* target : station.items(ItemType::Target)) {
        bool used = false;
        for (const SimItem* other : station.items(ItemType::Program)) {
            for (const Instruction& instruction : other->instructions)
                used = used || instruction.target == target;
        }
        QPointF at;
        if (!used && target->robot && target->robot->arm &&
            camera.project(cell_placement::absolutePose(target).translation(), &at))
            paintLabel(painter, at, target->itemName(), QColor(120, 200, 255));
    }

    QStringList legend;
    for (const SimItem* robot : station.items(ItemType::Robot))
        legend << QStringLiteral("Robot %1").arg(robot->itemName());
    int segments = 0;
    if (scene.drawings) {
        for (const SceneDrawing& drawing : *scene.drawings)
            segments += drawing.primitive == 2 ? int(drawing.points.size() / 6) : 0;
    }
    legend << QStringLiteral("Map: %1 segments").arg(segments);
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
