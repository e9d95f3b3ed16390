#pragma once

// OMPL given the simulated host's own joint-space checker, for the benchmarks
// that run the planner beside OMPL: the robot's joint limits, the planner's L1
// joint distance, the station's box test for configurations and its discrete
// joint-move test for motions, each counted.
#include "joint_oracle.h"
#include "station.h"

#include <ompl/base/MotionValidator.h>
#include <ompl/base/SpaceInformation.h>
#include <ompl/base/StateValidityChecker.h>
#include <ompl/base/spaces/RealVectorStateSpace.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace ompl_joint_space {

namespace ob = ompl::base;

// Joint space with the planner's L1 distance.
class L1JointSpace : public ob::RealVectorStateSpace {
public:
    using RealVectorStateSpace::RealVectorStateSpace;
    double distance(const ob::State* a, const ob::State* b) const override
    {
        const double* p = a->as<StateType>()->values;
        const double* q = b->as<StateType>()->values;
        double sum = 0.0;
        for (unsigned i = 0; i < getDimension(); ++i)
            sum += std::fabs(p[i] - q[i]);
        return sum;
    }
};

// The station's obstacles and step, and the tests asked of them.
struct Checker {
    std::vector<JointBox> boxes;
    int joints = 0;
    double step = 4.0;
    mutable long configurations = 0;
    mutable long motions = 0;
};

inline const double* valuesOf(const ob::State* state)
{
    return state->as<ob::RealVectorStateSpace::StateType>()->values;
}

class BoxValidity : public ob::StateValidityChecker {
public:
    BoxValidity(const ob::SpaceInformationPtr& si, const Checker& checker) : StateValidityChecker(si), c_(checker) {}
    bool isValid(const ob::State* state) const override
    {
        ++c_.configurations;
        return joint_oracle::boxesHolding(c_.boxes, valuesOf(state)) == 0;
    }

private:
    const Checker& c_;
};

// A move is free or not as a whole: a blocked one reports its start as the
// last valid state, the planner's joint-move test knowing no more.
class WholeMoveValidator : public ob::MotionValidator {
public:
    using MotionValidator::MotionValidator;
    using MotionValidator::checkMotion;
    bool checkMotion(const ob::State* a, const ob::State* b, std::pair<ob::State*, double>& lastValid) const override
    {
        const bool free = checkMotion(a, b);
        if (!free) {
            si_->copyState(lastValid.first, a);
            lastValid.second = 0.0;
        }
        return free;
    }
};

class JointMoveValidator : public WholeMoveValidator {
public:
    JointMoveValidator(const ob::SpaceInformationPtr& si, const Checker& checker) : WholeMoveValidator(si), c_(checker) {}
    bool checkMotion(const ob::State* a, const ob::State* b) const override
    {
        ++c_.motions;
        return joint_oracle::testJointMove(c_.boxes, c_.joints, valuesOf(a), valuesOf(b), c_.step) == 0;
    }

private:
    const Checker& c_;
};

// The same tests written inline, as lean as OMPL's own checkers are: a
// configuration collides strictly inside a box, and a move is tested at
// n + 1 evenly spaced points, n = max(1, ceil(max |b - a| / step)). Nothing
// is counted, nothing allocated.
class LeanBoxValidity : public ob::StateValidityChecker {
public:
    LeanBoxValidity(const ob::SpaceInformationPtr& si, const Checker& checker) : StateValidityChecker(si), c_(checker)
    {
    }
    bool isValid(const ob::State* state) const override { return !inAnyBox(c_, valuesOf(state)); }

    static bool inAnyBox(const Checker& c, const double* q)
    {
        for (const JointBox& box : c.boxes) {
            bool inside = true;
            for (int i = 0; i < c.joints && inside; ++i)
                inside = box.lower[size_t(i)] < q[i] && q[i] < box.upper[size_t(i)];
            if (inside)
                return true;
        }
        return false;
    }

private:
    const Checker& c_;
};

class LeanJointMove : public WholeMoveValidator {
public:
    LeanJointMove(const ob::SpaceInformationPtr& si, const Checker& checker) : WholeMoveValidator(si), c_(checker) {}
    bool checkMotion(const ob::State* a, const ob::State* b) const override
    {
        const double* p = valuesOf(a);
        const double* q = valuesOf(b);
        double largest = 0.0;
        for (int i = 0; i < c_.joints; ++i)
            largest = std::max(largest, std::fabs(q[i] - p[i]));
        const int n = std::max(1, static_cast<int>(std::ceil(largest / c_.step)));
        double point[16];
        for (int k = 0; k <= n; ++k) {
            for (int i = 0; i < c_.joints; ++i)
                point[i] = p[i] + (q[i] - p[i]) * k / n;
            if (LeanBoxValidity::inAnyBox(c_, point))
                return false;
        }
        return true;
    }

private:
    const Checker& c_;
};

// The checker of the station's first robot.
inline Checker checkerOf(const Station& station)
{
    const SimItem& robot = *station.items(2).front();
    Checker checker;
    checker.boxes = robot.boxes;
    checker.joints = robot.jointCount();
    checker.step = station.pathStepDeg();
    return checker;
}

// The robot's joint space with the checker, set up: the station's own tests,
// counted, or the lean ones.
inline ob::SpaceInformationPtr spaceFor(const Station& station, const Checker& checker, bool lean = false)
{
    const SimItem& robot = *station.items(2).front();
    auto space = std::make_shared<L1JointSpace>(checker.joints);
    ob::RealVectorBounds bounds(checker.joints);
    for (int i = 0; i < checker.joints; ++i) {
        bounds.setLow(i, robot.lower[size_t(i)]);
        bounds.setHigh(i, robot.upper[size_t(i)]);
    }
    space->setBounds(bounds);
    auto si = std::make_shared<ob::SpaceInformation>(space);
    if (lean) {
        si->setStateValidityChecker(std::make_shared<LeanBoxValidity>(si, checker));
        si->setMotionValidator(std::make_shared<LeanJointMove>(si, checker));
    } else {
        si->setStateValidityChecker(std::make_shared<BoxValidity>(si, checker));
        si->setMotionValidator(std::make_shared<JointMoveValidator>(si, checker));
    }
    si->setup();
    return si;
}

}  // namespace ompl_joint_space
