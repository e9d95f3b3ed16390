// The map drawn in the host's 3D view.
#pragma once

#include "roadmap_matrix.h"

class PlannerSession;

// Draws the map in the host's 3D view, when the settings ask for it: a
// segment between the tool positions of every two joined samples. It keeps
// the tool positions of the last drawing.
class MapDrawing {
public:
    // Draws the session's map on its host; nothing without a chosen robot.
    void draw(PlannerSession& session);

    // The tool positions of the samples last drawn (3 x N).
    const RoadmapMatrix* samplePositions() const { return samplePositions_.get(); }

private:
    ScopedMatrix samplePositions_ = makeScopedMatrix();
};
