// The planner's settings and their defaults.
#pragma once

#include "planner_parameters.h"

// The planner's settings for one station, as users set them and the station
// stores them: the defaults are those of a fresh station and of "Clear".
struct PlannerSettings {
    int samples = 100;            // samples of a map ("Samples")
    int edgesPerSample = 25;      // nearest older samples each new one is tried against ("Edges")
    double robotStepDeg = 4.0;    // joint step of the collision check along a move; also the reuse distance
    int newNodeEdges = 5;         // edges wanted for an inserted configuration ("NewNodeEdges")
    bool displaySamples = false;  // draw the map in the host's 3D view ("Display")
    bool shortenRoutes = false;   // shorten routes before writing them ("Shortcut"); stored apart
    int growLimit = 0;            // samples a failed link may add to the map before it gives up ("GrowMap"); 0: off
    bool checkRoutes = false;     // test a route's moves again before writing it ("CheckRoutes")

    // What construction and node insertion read.
    PlannerParameters parameters() const
    {
        return {samples, edgesPerSample, newNodeEdges, robotStepDeg};
    }
};
