// Paints the station in 3D with QPainter.
#pragma once

#include "scene_drawings.h"
#include "view_camera.h"

#include <vector>

class QPainter;
class SimItem;
class Station;

// What the 3D view shows: the station, what plug-ins drew, the path of one
// program, and optionally one robot at other joints (a sequence being played).
struct ViewScene {
    const Station* station = nullptr;
    const std::vector<SceneDrawing>* drawings = nullptr;
    const SimItem* program = nullptr;
    const SimItem* posedRobot = nullptr;
    std::vector<double> posedJoints;
};

// Paints the scene on the whole view of the camera: floor, objects and robots
// as shaded solids sorted by depth (software only, so it works offscreen),
// then the drawings, the program's tool path and the names of targets.
void paintStation(QPainter& painter, const ViewScene& scene, const ViewCamera& camera);

// The box that holds the station's objects and robots' reach, for framing the view.
void stationBounds(const Station& station, Eigen::Vector3d* low, Eigen::Vector3d* high);

// The program a view shows: the first selected program, else the last program of the station.
const SimItem* shownProgram(const Station& station);
