// One run of the host as the command line asks: a scenario or the window.
#pragma once

#include <QString>

// What the command line asks of one run of the host.
struct RunOptions {
    QString station;     // the station file to open
    QString script;      // a scenario to run headless; empty: show the window
    QString transcript;  // JSON-lines transcript; empty: none
    QString plugin;      // the plug-in file
    QString save;        // where to save the station after a successful run; empty: nowhere
    bool print = false;  // print a readable account of the run on the standard output
    bool gui = false;    // show the window and leave it to a person (after the scenario, if any)
    QString screenshot;  // a PNG of the window, dock included, once the scenario has run; empty: none
    QString render;      // a PNG of the 3D view of the station once the scenario has run; empty: none
    bool verbose = false;  // the window prints the plug-in's debug log too, not only its warnings
};

// Runs a scenario, without showing anything unless a screenshot or the
// window is asked for; the process exit code.
int runScenario(const RunOptions& options);

// Shows the host window with the station and the plug-in until it is closed.
int runWindow(const RunOptions& options);
