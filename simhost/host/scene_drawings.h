// What plug-ins drew into the 3D view.
#pragma once

#include <array>
#include <vector>

// One drawGeometry call: its primitive, points (x, y, z each), colour and width.
struct SceneDrawing {
    int primitive = 0;
    std::vector<double> points;
    std::array<float, 4> color{};
    float width = 1.0f;

    bool operator==(const SceneDrawing& other) const
    {
        return primitive == other.primitive && points == other.points && color == other.color &&
               width == other.width;
    }
};

// What plug-ins drew in the 3D view. The host keeps the last drawing until the
// next redraw: the first drawing after a redraw replaces all before it, the
// ones after it join it.
class SceneDrawings {
public:
    void add(SceneDrawing drawing)
    {
        if (redrawn_)
            shown_.clear();
        redrawn_ = false;
        shown_.push_back(std::move(drawing));
    }
    // The view was redrawn (or is about to be): the next drawing starts afresh.
    void redrawn() { redrawn_ = true; }
    void clear() { shown_.clear(); }
    const std::vector<SceneDrawing>& shown() const { return shown_; }

private:
    std::vector<SceneDrawing> shown_;
    bool redrawn_ = false;
};
