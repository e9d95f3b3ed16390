// Collision-free configurations: seeds first, then random draws.
#include "free_configuration.h"

#include "collision_checker.h"
#include "planner_progress.h"
#include "progress_steps.h"
#include "random_generator.h"
#include "roadmap_matrix.h"


FreeConfigurationSearch::FreeConfigurationSearch(CollisionChecker& checker, PlannerProgress& progress,
                                                 MersenneTwister& random, const RoadmapMatrix* seeds)
    : checker_(checker), progress_(progress), random_(random), seeds_(seeds)
{
    checker_.jointLimits(lower_, upper_);
}

bool FreeConfigurationSearch::isFree(const JointVector& configuration)
{
    return checker_.accepts(configuration) && checker_.collisionCount(configuration) == 0;
}

bool FreeConfigurationSearch::next(JointVector& configuration)
{
    const int joints = jointCount();
    configuration = JointVector(joints);
    int attempts = 0;

    // A refused seed is not an attempt: the user gave it, nothing was searched.
    if (seeds_ && joints <= rows(seeds_)) {
        while (nextSeed_ < columns(seeds_)) {
            if (progress_.abandoned())
                return false;
            const double* seed = column(seeds_, nextSeed_);
            configuration.assign(seed, joints);
            ++nextSeed_;
            if (!checker_.accepts(configuration))
                continue;
            ++attempts;
            if (checker_.collisionCount(configuration) == 0)
                return true;
            if (showAttempt(progress_, attempts))
                return false;
        }
    }

    // Random draws within the limits; here a refused draw is a failed attempt
    // like a colliding one, and only the user's cancel ends the search.
    double range[JointVector::MaxJoints] = {};
    for (int i = 0; i < joints; ++i)
        range[i] = upper_[i] - lower_[i];
    double draws[JointVector::MaxJoints] = {};
    for (;;) {
        // An abandoned step's robot may be gone: not one more question about it.
        if (progress_.abandoned())
            return false;
        ++attempts;
        for (int i = 0; i < joints; ++i)
            draws[i] = random_.nextUniform();
        for (int i = 0; i < joints; ++i)
            configuration[i] = draws[i] * range[i] + lower_[i];
        if (isFree(configuration))
            return true;
        if (showAttempt(progress_, attempts))
            return false;
    }
}
