// The window's 3D view of the station.
#pragma once

#include "station.h"
#include "station_painter.h"
#include "view_camera.h"

#include <QPoint>
#include <QTimer>
#include <QWidget>

class SimHostApi;

// The host's 3D view of the station: robots, objects, what plug-ins drew
// (kept until the next redraw) and the selected program's path. Drag with the
// left button to orbit, with the right or middle button to pan; the wheel
// zooms. A joint sequence a plug-in shows is played, one configuration every
// tenth of a second, while the view is visible; a hidden view only keeps it.
class StationView final : public QWidget, public SceneListener {
    Q_OBJECT
public:
    explicit StationView(SimHostApi& api, QWidget* parent = nullptr);
    ~StationView() override;

    ViewCamera& camera() { return camera_; }
    // Turns the camera to take in the whole station.
    void frameStation();
    // The scene as the view shows it now.
    ViewScene scene() const;
    bool playing() const { return player_.isActive(); }

    // SceneListener
    void sceneChanged() override;

    QSize sizeHint() const override { return {800, 600}; }

signals:
    // After each repaint, from the event loop (never from inside a call of a plug-in).
    void repainted();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void nextFrame();

    SimHostApi& api_;
    ViewCamera camera_;
    QTimer player_;
    int sequenceSerial_ = 0;
    int frame_ = -1;
    std::vector<SceneDrawing> painted_;
    QPoint lastMouse_;
};
