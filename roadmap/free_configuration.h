// The search for collision-free configurations: seeds first, then random draws.
#pragma once

#include "vorlik/joint_vector.h"

class CollisionChecker;
class MersenneTwister;
class PlannerProgress;
struct RoadmapMatrix;

// Finds collision-free configurations of one robot, one after the other:
// the seeds first (the robot's own targets, the likeliest free places), in
// order and each once, then random draws within the joint limits. The limits
// are read once, when the search is made.
class FreeConfigurationSearch {
public:
    // `seeds` (J x S, may be null) must outlive the search.
    FreeConfigurationSearch(CollisionChecker& checker, PlannerProgress& progress, MersenneTwister& random,
                            const RoadmapMatrix* seeds);

    // The robot's joint count J.
    int jointCount() const { return lower_.count(); }
    // The robot's joint limits.
    const JointVector& lower() const { return lower_; }
    const JointVector& upper() const { return upper_; }

    // The next free configuration, of the robot's J joints; false when
    // cancelled, and the configuration is then unusable.
    bool next(JointVector& configuration);

private:
    // True when the robot takes the configuration and nothing collides there.
    bool isFree(const JointVector& configuration);

    CollisionChecker& checker_;     // the robot and its cell
    PlannerProgress& progress_;     // failed attempts are shown, cancels heard
    MersenneTwister& random_;       // the draws of the random phase
    const RoadmapMatrix* seeds_;    // may be null
    int nextSeed_ = 0;              // 0-based column of the next seed to try
    JointVector lower_;             // the robot's joint limits
    JointVector upper_;
};
