#pragma once

// How much work the 3D collision model did: configurations checked and the
// time spent checking them.
struct CellStats {
    long long configurations = 0;
    double seconds = 0.0;

    double perSecond() const { return seconds > 0.0 ? configurations / seconds : 0.0; }
};
