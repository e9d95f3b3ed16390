// The joint-space obstacle boxes and the checks over them.
#include "joint_oracle.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace joint_oracle {

bool boxHolds(const JointBox& box, const double* q)
{
    const size_t count = std::min(box.lower.size(), box.upper.size());
    for (size_t i = 0; i < count; ++i) {
        if (!(box.lower[i] < q[i] && q[i] < box.upper[i]))
            return false;
    }
    return true;
}

int boxesHolding(const std::vector<JointBox>& boxes, const double* q)
{
    return static_cast<int>(std::count_if(boxes.begin(), boxes.end(),
                                          [q](const JointBox& box) { return boxHolds(box, q); }));
}

bool withinLimits(const std::vector<double>& lower, const std::vector<double>& upper, const double* q,
                  int count)
{
    if (count != static_cast<int>(lower.size()) || lower.size() != upper.size())
        return false;
    for (int i = 0; i < count; ++i) {
        if (!(lower[i] <= q[i] && q[i] <= upper[i]))
            return false;
    }
    return true;
}

int moveSteps(const double* a, const double* b, int jointCount, double step)
{
    double largest = 0.0;
    for (int i = 0; i < jointCount; ++i)
        largest = std::max(largest, std::fabs(b[i] - a[i]));
    const double steps = std::ceil(largest / step);
    // A huge move on a tiny step must not overflow the counter.
    if (!(steps < 1e9))
        return 1000000000;
    return std::max(1, static_cast<int>(steps));
}

namespace {

// The checked points of one joint along a move: x(k) = a + (b - a) * k / n,
// evaluated as the walk along the move evaluates it. Rounding is monotonic,
// so x(k) never turns back: the k whose x(k) lies strictly between two
// bounds form one run, found by bisection instead of by visiting every k.
class JointAlongMove {
public:
    JointAlongMove(double a, double b, int n) : a_(a), delta_(b - a), n_(n) {}

    double at(int k) const { return a_ + delta_ * k / n_; }

    // The run of k in [0, n] with lower < x(k) < upper, as [first, last];
    // first > last when there is none.
    std::pair<int, int> inside(double lower, double upper) const
    {
        // With a value that is not a finite number every x(k) is NaN or
        // infinite, and none lies strictly between two bounds; nothing lies
        // strictly beyond a bound that is no number.
        if (!std::isfinite(delta_) || !std::isfinite(a_) || std::isnan(lower) || std::isnan(upper))
            return {1, 0};
        if (delta_ >= 0.0)
            return {firstWhere([&](double x) { return x > lower; }),
                    firstWhere([&](double x) { return x >= upper; }) - 1};
        return {firstWhere([&](double x) { return x < upper; }), firstWhere([&](double x) { return x <= lower; }) - 1};
    }

private:
    // The first k in [0, n] at which `holds` (false before, true from there
    // on along the move), or n + 1.
    template <typename Test> int firstWhere(Test holds) const
    {
        int low = 0;
        int high = n_ + 1;
        while (low < high) {
            const int middle = low + (high - low) / 2;
            if (holds(at(middle)))
                high = middle;
            else
                low = middle + 1;
        }
        return low;
    }

    double a_;
    double delta_;
    int n_;
};

}  // namespace

int testJointMove(const std::vector<JointBox>& boxes, int jointCount, const double* a, const double* b,
                  double step)
{
    const int n = moveSteps(a, b, jointCount, step);
    std::vector<JointAlongMove> joints;
    joints.reserve(static_cast<size_t>(std::max(jointCount, 0)));
    for (int i = 0; i < jointCount; ++i)
        joints.emplace_back(a[i], b[i], n);
    for (const JointBox& box : boxes) {
        // The k at which every joint is inside the box's range of that joint.
        int first = 0;
        int last = n;
        const size_t count = std::min({box.lower.size(), box.upper.size(), joints.size()});
        for (size_t i = 0; i < count && first <= last; ++i) {
            const auto [from, to] = joints[i].inside(box.lower[i], box.upper[i]);
            first = std::max(first, from);
            last = std::min(last, to);
        }
        if (first <= last)
            return 1;
    }
    return 0;
}

}  // namespace joint_oracle
