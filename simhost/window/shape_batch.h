// Flat shapes of 3D solids, painted far ones first.
#pragma once

#include "view_camera.h"

#include <QColor>
#include <QPolygonF>

#include <vector>

class QPainter;
struct Solid;

// One flat thing to paint; the batch paints far ones first.
struct Shape2d {
    enum class Kind { Polygon, Stroke, Disc };
    Kind kind = Kind::Polygon;
    double depth = 0.0;
    QPolygonF points;
    QColor fill;
    double width = 0.0;  // stroke width, disc radius
};

// Collects the faces, strokes and discs that show solids from the camera,
// shaded by a light from above, and paints them back to front (software
// only, so that it works offscreen).
class ShapeBatch {
public:
    explicit ShapeBatch(const ViewCamera& camera) : camera_(camera) {}

    // A flat face given by its corners, drawn when it faces the camera.
    void face(const std::vector<Eigen::Vector3d>& corners, const QColor& color);
    // A round-ended thick segment of that radius (a capsule seen from anywhere).
    void stroke(const Eigen::Vector3d& a, const Eigen::Vector3d& b, double radius, const QColor& color);
    void disc(const Eigen::Vector3d& centre, double radius, const QColor& color);
    void solid(const Solid& solid, const Eigen::Isometry3d& world, const QColor& color);

    void paint(QPainter& painter);

private:
    static void paintShape(QPainter& painter, const Shape2d& shape);

    const ViewCamera& camera_;
    std::vector<Shape2d> shapes_;
};
