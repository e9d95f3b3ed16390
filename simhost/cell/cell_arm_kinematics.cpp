// Forward kinematics of one arm, fast enough to run at every collision check.
#include "cell_arm_kinematics.h"

#include <algorithm>
#include <cmath>

namespace {

double radians(double degrees)
{
    return degrees * M_PI / 180.0;
}

}  // namespace

ArmKinematics::ArmKinematics(const ArmModel& arm) : arm_(arm)
{
    for (const DhJoint& joint : arm.joints) {
        cosAlpha_.push_back(std::cos(radians(joint.alpha)));
        sinAlpha_.push_back(std::sin(radians(joint.alpha)));
    }
}

void ArmKinematics::frames(const Eigen::Isometry3d& base, const double* q, int last, Eigen::Isometry3d* out) const
{
    const int joints = static_cast<int>(arm_.joints.size());
    out[0] = base;
    for (int i = 0; i < std::min(last, joints); ++i) {
        const DhJoint& joint = arm_.joints[size_t(i)];
        const double theta = radians(joint.prismatic ? joint.offset : joint.sign * q[i] + joint.offset);
        const double d = joint.prismatic ? joint.d + joint.sign * q[i] : joint.d;
        const double ct = std::cos(theta), st = std::sin(theta);
        const double ca = cosAlpha_[size_t(i)], sa = sinAlpha_[size_t(i)];
        // The columns of Rz(theta) * Tz(d) * Tx(a) * Rx(alpha): its third row starts with a zero.
        const double c1x = -st * ca, c1y = ct * ca, c2x = st * sa, c2y = -ct * sa, tx = joint.a * ct,
                     ty = joint.a * st;
        const Eigen::Matrix4d& f = out[i].matrix();
        Eigen::Matrix4d& g = out[i + 1].matrix();
        for (int r = 0; r < 3; ++r) {
            const double f0 = f(r, 0), f1 = f(r, 1), f2 = f(r, 2);
            g(r, 0) = f0 * ct + f1 * st;
            g(r, 1) = f0 * c1x + f1 * c1y + f2 * sa;
            g(r, 2) = f0 * c2x + f1 * c2y + f2 * ca;
            g(r, 3) = f0 * tx + f1 * ty + f2 * d + f(r, 3);
        }
        g.row(3) << 0.0, 0.0, 0.0, 1.0;
    }
    if (last > joints)
        compose(out[joints], arm_.tool, out[joints + 1]);
}

void ArmKinematics::compose(const Eigen::Isometry3d& a, const Eigen::Isometry3d& b, Eigen::Isometry3d& out)
{
    const Eigen::Matrix4d& x = a.matrix();
    const Eigen::Matrix4d& y = b.matrix();
    Eigen::Matrix4d& z = out.matrix();
    for (int r = 0; r < 3; ++r) {
        const double x0 = x(r, 0), x1 = x(r, 1), x2 = x(r, 2);
        for (int c = 0; c < 4; ++c)
            z(r, c) = x0 * y(0, c) + x1 * y(1, c) + x2 * y(2, c);
        z(r, 3) += x(r, 3);
    }
    z.row(3) << 0.0, 0.0, 0.0, 1.0;
}

Eigen::Vector3d ArmKinematics::apply(const Eigen::Isometry3d& a, const Eigen::Vector3d& point)
{
    const Eigen::Matrix4d& x = a.matrix();
    return Eigen::Vector3d(x(0, 0) * point.x() + x(0, 1) * point.y() + x(0, 2) * point.z() + x(0, 3),
                           x(1, 0) * point.x() + x(1, 1) * point.y() + x(1, 2) * point.z() + x(1, 3),
                           x(2, 0) * point.x() + x(2, 1) * point.y() + x(2, 2) * point.z() + x(2, 3));
}
