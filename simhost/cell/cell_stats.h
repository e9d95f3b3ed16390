#pragma once

// How many collision tests the host answered, and how much work the 3D model
// did for them: configurations checked and the time spent checking them.
struct CellStats {
    long long configurationTests = 0;  // collisions() calls
    long long moveTests = 0;           // testJointMove calls
    long long configurations = 0;      // configurations the 3D model checked
    double seconds = 0.0;              // time the 3D model took for them

    double perSecond() const { return seconds > 0.0 ? configurations / seconds : 0.0; }
};
