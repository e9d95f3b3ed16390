// The orbiting camera of the 3D view.
#pragma once

#include <Eigen/Geometry>

#include <QPointF>
#include <QSize>

// A camera that orbits a point of the station, z up: azimuth and elevation in
// degrees, distance in millimetres, perspective projection onto a view.
class ViewCamera {
public:
    Eigen::Vector3d target = Eigen::Vector3d::Zero();
    double azimuth = -130.0;
    double elevation = 30.0;
    double distance = 4000.0;
    double fieldOfView = 35.0;  // vertical, degrees

    // Where the camera stands.
    Eigen::Vector3d eye() const;
    // Sets the view size the projection fills.
    void setViewSize(const QSize& size) { size_ = size; }
    QSize viewSize() const { return size_; }
    // The view point of a station point, and its depth (distance along the line
    // of sight); false when the point lies behind the camera.
    bool project(const Eigen::Vector3d& point, QPointF* at, double* depth = nullptr) const;
    // View pixels per millimetre at that depth.
    double scaleAt(double depth) const;

    // Turns the camera around its target by view pixels dragged.
    void orbit(double dx, double dy);
    // Moves the target with the view by pixels dragged.
    void pan(double dx, double dy);
    // Moves closer (steps > 0) or away.
    void zoom(double steps);
    // Looks at the box from the current direction so that it fills the view.
    void frame(const Eigen::Vector3d& low, const Eigen::Vector3d& high);

private:
    void axes(Eigen::Vector3d* right, Eigen::Vector3d* up, Eigen::Vector3d* forward) const;
    double focal() const;

    QSize size_{1024, 768};
};
