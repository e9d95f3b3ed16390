// The orbiting camera of the 3D view.
#include "view_camera.h"

#include <algorithm>
#include <cmath>

namespace {

double radians(double degrees)
{
    return degrees * M_PI / 180.0;
}

}  // namespace

Eigen::Vector3d ViewCamera::eye() const
{
    const double az = radians(azimuth), el = radians(elevation);
    return target + distance * Eigen::Vector3d(std::cos(el) * std::cos(az), std::cos(el) * std::sin(az), std::sin(el));
}

void ViewCamera::axes(Eigen::Vector3d* right, Eigen::Vector3d* up, Eigen::Vector3d* forward) const
{
    *forward = (target - eye()).normalized();
    *right = forward->cross(Eigen::Vector3d::UnitZ()).normalized();
    *up = right->cross(*forward);
}

double ViewCamera::focal() const
{
    return 0.5 * size_.height() / std::tan(radians(fieldOfView) / 2.0);
}

bool ViewCamera::project(const Eigen::Vector3d& point, QPointF* at, double* depth) const
{
    Eigen::Vector3d right, up, forward;
    axes(&right, &up, &forward);
    const Eigen::Vector3d seen = point - eye();
    const double z = seen.dot(forward);
    if (depth)
        *depth = z;
    if (z < 1.0)
        return false;
    const double f = focal() / z;
    *at = QPointF(0.5 * size_.width() + f * seen.dot(right), 0.5 * size_.height() - f * seen.dot(up));
    return true;
}

double ViewCamera::scaleAt(double depth) const
{
    return focal() / std::max(depth, 1.0);
}

void ViewCamera::orbit(double dx, double dy)
{
    azimuth -= 0.4 * dx;
    elevation = std::clamp(elevation + 0.4 * dy, -89.0, 89.0);
}

void ViewCamera::pan(double dx, double dy)
{
    Eigen::Vector3d right, up, forward;
    axes(&right, &up, &forward);
    const double perPixel = 1.0 / scaleAt(distance);
    target += perPixel * (-dx * right + dy * up);
}

void ViewCamera::zoom(double steps)
{
    distance = std::clamp(distance * std::pow(0.85, steps), 50.0, 1e6);
}

void ViewCamera::frame(const Eigen::Vector3d& low, const Eigen::Vector3d& high)
{
    target = 0.5 * (low + high);
    const double radius = std::max(0.5 * (high - low).norm(), 100.0);
    const double aspect = size_.height() > 0 ? double(size_.width()) / size_.height() : 1.0;
    const double halfAngle = radians(fieldOfView) / 2.0 * std::min(1.0, aspect);
    // A box's corners rarely all face the camera: a little closer than the
    // bounding sphere fills the view better.
    distance = 0.75 * radius / std::sin(halfAngle);
}
