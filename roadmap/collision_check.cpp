// Joint limits, the host's collision test of a configuration, and the search for a free one.
#include "collision_check.h"

#include "host_access.h"
#include "progress_reporter.h"
#include "random_generator.h"
#include "roadmap_matrix.h"

#include "vorlik/host_api.h"
#include "vorlik/host_item.h"

#include <QDebug>

#include <algorithm>

namespace {
// Refresh flags that make the host recompute collisions for the new joints.
constexpr int RefreshAll = 255;

bool foundFree(HostItem* robot, const double* configuration, int jointCount)
{
    return collisionCount(robot, configuration, jointCount) == 0;
}

// Reports a failed attempt; the result is the cancel value (1 or 0).
double reportAttempt(double attempts)
{
    return progressReporter().attempt(static_cast<int>(attempts)) ? 1.0 : 0.0;
}

// An abandoned operation's robot may be gone: not one more question about it.
bool stopAtOnce(double* cancelValue)
{
    if (!progressReporter().abandoned())
        return false;
    *cancelValue = 1.0;
    return true;
}
}  // namespace

int readJointLimits(HostItem* robot, double lower[JointVector::MaxJoints], double upper[JointVector::MaxJoints])
{
    JointVector lowerLimits(0);
    JointVector upperLimits(0);
    robot->jointLimits(lowerLimits, upperLimits);
    lowerLimits.copyInto(lower);
    upperLimits.copyInto(upper);
    return lowerLimits.count();
}

int collisionCount(HostItem* robot, const double* configuration, int jointCount)
{
    const JointVector joints(configuration, jointCount);
    qDebug().noquote().nospace() << "Collision checking for: " << robot->name() << " " << joints.toText(", ", 3);
    robot->setJoints(joints);
    HostApi* host = roadmapHost();
    host->update(RefreshAll);
    const int found = host->collisions();
    qDebug().nospace() << "Collisions found: " << found;
    return found;
}

bool configurationRejected(HostItem* robot, const double* configuration, int jointCount)
{
    return !robot->jointsValid(JointVector(configuration, jointCount));
}

void findFreeConfiguration(HostItem* robot, const double* lower, const double* upper, int jointCount,
                           const RoadmapMatrix* seeds, double* seedCursor, Configuration& configuration,
                           double* cancelValue)
{
    *cancelValue = 0.0;
    configuration.fill(0.0);
    double attempts = 0.0;

    // Seeds first: the robot's own targets are the likeliest free places. A
    // refused seed is not an attempt: the user gave it, nothing was searched.
    if (seeds && jointCount <= rows(seeds)) {
        while (*seedCursor <= columns(seeds)) {
            if (stopAtOnce(cancelValue))
                return;
            const double* seed = column(seeds, static_cast<int>(*seedCursor) - 1);
            std::copy(seed, seed + jointCount, configuration.begin());
            *seedCursor += 1.0;
            if (configurationRejected(robot, configuration.data(), jointCount))
                continue;
            attempts += 1.0;
            if (foundFree(robot, configuration.data(), jointCount))
                return;
            *cancelValue = reportAttempt(attempts);
            if (*cancelValue > 0)
                return;
        }
    }

    // Random draws within the limits; here a refused draw is a failed attempt
    // like a colliding one, and only the user's cancel ends the search.
    double range[JointVector::MaxJoints] = {};
    for (int i = 0; i < jointCount; ++i)
        range[i] = upper[i] - lower[i];
    RoadmapMatrix* draws = nullptr;
    createMatrix(&draws, 1);
    const ScopedMatrix drawOwner(draws);
    for (;;) {
        if (stopAtOnce(cancelValue))
            return;
        attempts += 1.0;
        randomVector(jointCount, draws);
        for (int i = 0; i < jointCount; ++i)
            configuration[i] = draws->values[i] * range[i] + lower[i];
        if (!configurationRejected(robot, configuration.data(), jointCount)
            && foundFree(robot, configuration.data(), jointCount))
            return;
        *cancelValue = reportAttempt(attempts);
        if (*cancelValue > 0)
            return;
    }
}
