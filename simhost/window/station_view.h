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
// zooms.
//
// It also moves a robot through configurations without changing the station:
// a joint sequence a plug-in shows (at most MostSequenceFrames of it, evenly
// spread, a tenth of a second each, while the view is visible; any key or
// click stops it), or a program played (its moves at a readable speed, with
// pause and stop).
class StationView final : public QWidget, public SceneListener {
    Q_OBJECT
public:
    static constexpr int MostSequenceFrames = 30;

    explicit StationView(SimHostApi& api, QWidget* parent = nullptr);
    ~StationView() override;

    ViewCamera& camera() { return camera_; }
    // Turns the camera to take in the whole station.
    void frameStation();
    // Back to the first view of the station: the camera's own direction, framed.
    void resetView();
    // The scene as the view shows it now.
    ViewScene scene() const;

    // A sequence or a program is being shown (or paused).
    bool playing() const { return animated_ != nullptr; }
    bool paused() const { return animated_ && !player_.isActive(); }
    // The configurations of what is being shown, and the period of each in milliseconds.
    int frameCount() const { return static_cast<int>(frames_.size()); }
    int framePeriod() const { return player_.interval(); }
    // Plays the program's moves; false when it has none a robot can take.
    bool playProgram(const SimItem* program);
    void togglePause();
    // Stops a sequence or a program; the robot shows its own joints again.
    void stopPlaying();

    // SceneListener
    void sceneChanged() override;
    void refresh() override { update(); }

    QSize sizeHint() const override { return {800, 600}; }

signals:
    // After each repaint, from the event loop (never from inside a call of a plug-in).
    void repainted();
    // A sequence or a program began or ended being shown.
    void playingChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void play(const SimItem* robot, std::vector<std::vector<double>> frames, int periodMs, bool stopOnInput);
    void nextFrame();

    SimHostApi& api_;
    ViewCamera camera_;
    QTimer player_;
    int sequenceSerial_ = 0;
    const SimItem* animated_ = nullptr;
    std::vector<std::vector<double>> frames_;
    int frame_ = 0;
    bool stopOnInput_ = false;
    std::vector<SceneDrawing> painted_;
    QPoint lastMouse_;
};
