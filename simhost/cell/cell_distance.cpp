// Exact distances between points, segments, boxes and cylinders.
#include "cell_distance.h"

#include <algorithm>
#include <cmath>

namespace cell_distance {

namespace {

// How far a coordinate lies outside [-half, half], with its sign.
double beyond(double x, double half)
{
    return x - std::clamp(x, -half, half);
}

}  // namespace

double closestOnSegment(const Eigen::Vector3d& p, const Eigen::Vector3d& a, const Eigen::Vector3d& b)
{
    const Eigen::Vector3d d = b - a;
    const double length2 = d.squaredNorm();
    return length2 > 0.0 ? std::clamp((p - a).dot(d) / length2, 0.0, 1.0) : 0.0;
}

double pointSegment(const Eigen::Vector3d& p, const Eigen::Vector3d& a, const Eigen::Vector3d& b)
{
    return (a + closestOnSegment(p, a, b) * (b - a) - p).squaredNorm();
}

double segmentSegment(const Eigen::Vector3d& p0, const Eigen::Vector3d& p1, const Eigen::Vector3d& q0,
                      const Eigen::Vector3d& q1, double* s, double* t)
{
    const Eigen::Vector3d d1 = p1 - p0, d2 = q1 - q0, r = p0 - q0;
    const double a = d1.squaredNorm(), e = d2.squaredNorm();
    if (a <= 0.0 || e <= 0.0) {
        // A point and a segment, or two points.
        *s = a <= 0.0 ? 0.0 : closestOnSegment(q0, p0, p1);
        *t = e <= 0.0 ? 0.0 : closestOnSegment(p0 + *s * d1, q0, q1);
    } else {
        // The lines' closest parameter from cross products rather than
        // a * e - b * b, which cancels badly for nearly parallel segments.
        const Eigen::Vector3d normal = d1.cross(d2);
        const double normal2 = normal.squaredNorm();
        *s = normal2 > 1e-28 * a * e ? std::clamp(normal.dot(d2.cross(r)) / normal2, 0.0, 1.0) : 0.0;
        *t = (d1.dot(d2) * *s + d2.dot(r)) / e;
        if (*t < 0.0 || *t > 1.0) {
            *t = std::clamp(*t, 0.0, 1.0);
            *s = closestOnSegment(q0 + *t * d2, p0, p1);
        }
    }
    return (p0 + *s * d1 - q0 - *t * d2).squaredNorm();
}

double pointBox(const Eigen::Vector3d& p, const Eigen::Vector3d& half)
{
    double sum = 0.0;
    for (int i = 0; i < 3; ++i) {
        const double out = beyond(p[i], half[i]);
        sum += out * out;
    }
    return sum;
}

double segmentBox(const Eigen::Vector3d& a, const Eigen::Vector3d& b, const Eigen::Vector3d& half, double* t)
{
    // The squared distance along the segment is convex and piecewise
    // quadratic, with its pieces changing where the segment crosses a face
    // plane. Its slope is therefore piecewise linear and never falls: find
    // where it turns from negative to positive, piece by piece.
    const Eigen::Vector3d d = b - a;
    auto slope = [&](double at) {
        double sum = 0.0;
        for (int i = 0; i < 3; ++i)
            sum += d[i] * beyond(a[i] + at * d[i], half[i]);
        return sum;
    };
    double stops[8];
    int count = 0;
    stops[count++] = 0.0;
    for (int i = 0; i < 3; ++i) {
        if (d[i] == 0.0)
            continue;
        for (double face : {-half[i], half[i]}) {
            const double at = (face - a[i]) / d[i];
            if (!(at > 0.0 && at < 1.0))
                continue;
            // Kept in order as they come: there are six at most.
            int place = count++;
            for (; stops[place - 1] > at; --place)
                stops[place] = stops[place - 1];
            stops[place] = at;
        }
    }
    stops[count++] = 1.0;
    double low = stops[0], lowSlope = slope(low);
    *t = low;
    if (lowSlope < 0.0) {
        *t = 1.0;
        for (int k = 1; k < count; ++k) {
            const double high = stops[k], highSlope = slope(high);
            if (highSlope >= 0.0) {
                // Linear on this piece: its zero is exact.
                *t = highSlope > lowSlope ? low + (high - low) * (-lowSlope) / (highSlope - lowSlope) : high;
                break;
            }
            low = high;
            lowSlope = highSlope;
        }
    }
    return pointBox(a + *t * d, half);
}

double pointCylinder(const Eigen::Vector3d& p, double radius, double halfLength)
{
    // A cylinder is a disc times an interval: the two distances add in squares.
    const double radial = std::max(0.0, std::hypot(p.x(), p.y()) - radius);
    const double axial = std::max(0.0, std::abs(p.z()) - halfLength);
    return radial * radial + axial * axial;
}

}  // namespace cell_distance
