// The L1 joint distance, with the loop over the joints unrolled where it can be.
#pragma once

#include "vorlik/joint_vector.h"

#include <cmath>

// The distance for a joint count known when compiled (the common robots'):
// the same sums in the same order as JointVector::distance, unrolled.
template <int Joints>
struct FixedJointDistance {
    static double of(const double* a, const double* b, int)
    {
        double sum = 0.0;
        for (int i = 0; i < Joints; ++i)
            sum += std::fabs(a[i] - b[i]);
        return sum;
    }
};

// Any joint count.
struct AnyJointDistance {
    static double of(const double* a, const double* b, int count) { return JointVector::distance(a, b, count); }
};

// Calls `work` with the distance type for `jointCount`: a fixed one for six
// and seven joints, the general one otherwise.
template <typename Work>
void withJointDistance(int jointCount, Work&& work)
{
    switch (jointCount) {
    case 6:
        work(FixedJointDistance<6>());
        break;
    case 7:
        work(FixedJointDistance<7>());
        break;
    default:
        work(AnyJointDistance());
        break;
    }
}
