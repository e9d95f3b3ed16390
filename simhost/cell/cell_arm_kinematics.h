// Forward kinematics of one arm, fast enough to run at every collision check.
#pragma once

#include "cell_model.h"

#include <vector>

// Forward kinematics of one arm for the collision checks: the cosines and
// sines of the joints' fixed twists are worked out once, each joint's
// transform is chained in by its known shape rather than as a full product,
// and the frames go into storage the caller keeps, so that a configuration
// allocates nothing. Agrees with ArmModel::linkFrames to rounding.
class ArmKinematics {
public:
    explicit ArmKinematics(const ArmModel& arm);

    // Frames 0 (the base) to last for joints q; last is at most the tool link.
    void frames(const Eigen::Isometry3d& base, const double* q, int last, Eigen::Isometry3d* out) const;

    // out = a * b, for rigid placements; out must not be a or b.
    static void compose(const Eigen::Isometry3d& a, const Eigen::Isometry3d& b, Eigen::Isometry3d& out);
    // a * point.
    static Eigen::Vector3d apply(const Eigen::Isometry3d& a, const Eigen::Vector3d& point);

private:
    const ArmModel& arm_;
    std::vector<double> cosAlpha_;
    std::vector<double> sinAlpha_;
};
