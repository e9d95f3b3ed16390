// Exact distances between points, segments, boxes and cylinders.
#pragma once

#include <Eigen/Geometry>

// Exact squared distances between the simple pieces the cell's solids are
// made of: points, segments, boxes and cylinders. Boxes and cylinders are
// given in their own frame (centred, a cylinder along z), so the callers
// turn the other piece into that frame first.
namespace cell_distance {

// The point of segment [a, b] closest to p, as its parameter t in [0, 1].
double closestOnSegment(const Eigen::Vector3d& p, const Eigen::Vector3d& a, const Eigen::Vector3d& b);

double pointSegment(const Eigen::Vector3d& p, const Eigen::Vector3d& a, const Eigen::Vector3d& b);

// Segments [p0, p1] and [q0, q1]; s and t answer the parameters of a closest pair.
double segmentSegment(const Eigen::Vector3d& p0, const Eigen::Vector3d& p1, const Eigen::Vector3d& q0,
                      const Eigen::Vector3d& q1, double* s, double* t);

// A point and the box [-half, half].
double pointBox(const Eigen::Vector3d& p, const Eigen::Vector3d& half);

// Segment [a, b] and the box [-half, half]; t answers the parameter of the
// segment's closest point.
double segmentBox(const Eigen::Vector3d& a, const Eigen::Vector3d& b, const Eigen::Vector3d& half, double* t);

// A point and the solid cylinder of that radius along z, from -halfLength to halfLength.
double pointCylinder(const Eigen::Vector3d& p, double radius, double halfLength);

}  // namespace cell_distance
