#pragma once

#include "planner_parameters.h"

#include <QString>

class HostApi;
class HostItem;
class QMainWindow;
class QObject;
class QStatusBar;
class RoadmapGraph;
struct RoadmapMatrix;

// What the user-facing operations need of the plug-in object: its settings,
// its chosen robot, its map, and the few plug-in services they call back.
class PlannerSession {
public:
    QMainWindow* mainWindow = nullptr;
    QStatusBar* statusBar = nullptr;
    HostApi* hostApi = nullptr;
    bool settingsChanged = false;
    HostItem* robot = nullptr;
    int nSamples = 100;
    int nEdgesPerSample = 25;
    double robotStepDeg = 4.0;
    int nNewNodeEdges = 5;
    bool displaySamples = false;
    RoadmapMatrix* samples = nullptr;
    RoadmapGraph* graph = nullptr;
    RoadmapMatrix* route = nullptr;
    RoadmapMatrix* samplePositions = nullptr;
    RoadmapMatrix* workSamples = nullptr;
    RoadmapGraph* workGraph = nullptr;

    // The settings as construction and node insertion read them.
    PlannerParameters plannerParameters() const
    {
        return {0.0, double(nSamples), double(nEdgesPerSample), double(nNewNodeEdges), robotStepDeg};
    }

    virtual bool requireRobot(bool silent) = 0;
    virtual bool selectRobot(bool autoSelect, const QString& name) = 0;
    virtual QString robotName() = 0;
    // Emits the plug-in's UpdateForm() signal.
    virtual void emitUpdateForm() = 0;
    // The object that emits UpdateForm(), for connections.
    virtual QObject* sessionObject() = 0;

protected:
    ~PlannerSession() = default;
};
