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

// What plug-ins drew in the 3D view. A redraw of the view starts from none:
// what plug-ins draw while they hear of it (event 1), and after it until the
// next one, is what shows. A plug-in that no longer draws (its map switched
// off) leaves nothing behind.
class SceneDrawings {
public:
    void add(SceneDrawing drawing) { shown_.push_back(std::move(drawing)); }
    void clear() { shown_.clear(); }
    const std::vector<SceneDrawing>& shown() const { return shown_; }

private:
    std::vector<SceneDrawing> shown_;
};
