// What the plug-in object owns for its whole life and lends to its sessions.
#pragma once

#include "progress_reporter.h"
#include "random_generator.h"

// What the plug-in object owns for as long as it exists, across loads and
// unloads, and lends to the sessions it makes and to its entry points: the
// generator every map is drawn from, the one progress dialog, and the count of
// operations running in any of its sessions (one that an unload let go of and
// that is still unwinding included), of which only one may run at a time.
class PlannerResources {
public:
    MersenneTwister& random() { return random_; }
    ProgressReporter& progress() { return progress_; }

    bool operationRunning() const { return operationsRunning_ > 0; }
    void operationStarted() { ++operationsRunning_; }
    void operationEnded() { --operationsRunning_; }

private:
    MersenneTwister random_;     // seeded at its first draw, then one sequence across maps
    ProgressReporter progress_;  // the dialog every long operation shows
    int operationsRunning_ = 0;  // operations started and not yet ended
};
