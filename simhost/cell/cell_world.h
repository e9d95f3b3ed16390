#pragma once

// What the 3D checks read of the station they check, owned here so that the
// cell model knows nothing of stations: the station implements CellWorld, and
// its items carry a CellPart.

#include "cell_model.h"
#include "cell_stats.h"

#include <Eigen/Geometry>

#include <memory>
#include <vector>

// The part of a station item that the 3D model reads.
class CellPart {
public:
    std::shared_ptr<const ArmModel> arm;       // a robot's kinematics and solids; null: joint space only
    std::shared_ptr<const CellObject> object;  // an object's solid

    // Where a robot's base stands in the world (on its rail's carriage when a rail carries it).
    virtual Eigen::Isometry3d cellBase() const = 0;

protected:
    ~CellPart() = default;
};

// The cell around the robot being checked.
class CellWorld {
public:
    // The solids of the objects, in station order.
    virtual std::vector<std::shared_ptr<const CellObject>> cellObjects() const = 0;
    // Where the checks count their work; counted even in checks that change nothing.
    virtual CellStats& cellWork() const = 0;

protected:
    ~CellWorld() = default;
};
