// Flat shapes of 3D solids, painted far ones first.
#include "shape_batch.h"

#include "cell_model.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

const Eigen::Vector3d lightDirection = Eigen::Vector3d(0.4, 0.3, 1.0).normalized();
constexpr int roundSides = 20;

QColor shaded(const QColor& base, const Eigen::Vector3d& normal)
{
    const double light = 0.45 + 0.55 * std::max(0.0, normal.normalized().dot(lightDirection));
    return QColor::fromRgbF(std::min(1.0, base.redF() * light), std::min(1.0, base.greenF() * light),
                            std::min(1.0, base.blueF() * light), base.alphaF());
}

}  // namespace

void ShapeBatch::face(const std::vector<Eigen::Vector3d>& corners, const QColor& color)
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

void ShapeBatch::stroke(const Eigen::Vector3d& a, const Eigen::Vector3d& b, double radius, const QColor& color)
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

void ShapeBatch::disc(const Eigen::Vector3d& centre, double radius, const QColor& color)
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

void ShapeBatch::paint(QPainter& painter)
{
    std::stable_sort(shapes_.begin(), shapes_.end(),
                     [](const Shape2d& a, const Shape2d& b) { return a.depth > b.depth; });
    for (const Shape2d& shape : shapes_)
        paintShape(painter, shape);
}

void ShapeBatch::paintShape(QPainter& painter, const Shape2d& shape)
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
