// The window's 3D view of the station.
#include "station_view.h"

#include "sim_host_api.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

namespace {

constexpr int framePeriodMs = 100;

}  // namespace

StationView::StationView(SimHostApi& api, QWidget* parent) : QWidget(parent), api_(api)
{
    setObjectName(QStringLiteral("vorlik-StationView"));
    setMinimumSize(320, 240);
    setFocusPolicy(Qt::StrongFocus);
    player_.setInterval(framePeriodMs);
    connect(&player_, &QTimer::timeout, this, &StationView::nextFrame);
    api_.setSceneListener(this);
    sequenceSerial_ = api_.station().shownSequence.serial;
    frameStation();
}

StationView::~StationView()
{
    api_.setSceneListener(nullptr);
}

void StationView::frameStation()
{
    Eigen::Vector3d low, high;
    stationBounds(api_.station(), &low, &high);
    camera_.setViewSize(size());
    camera_.frame(low, high);
}

ViewScene StationView::scene() const
{
    const Station& station = api_.station();
    ViewScene scene;
    scene.station = &station;
    scene.drawings = &api_.drawings().shown();
    scene.program = shownProgram(station);
    const JointSequence& sequence = station.shownSequence;
    if (frame_ >= 0 && frame_ < static_cast<int>(sequence.configurations.size()) && station.holds(sequence.robot)) {
        scene.posedRobot = sequence.robot;
        scene.posedJoints = sequence.configurations[size_t(frame_)];
    }
    return scene;
}

void StationView::sceneChanged()
{
    const JointSequence& sequence = api_.station().shownSequence;
    if (sequence.serial != sequenceSerial_) {
        sequenceSerial_ = sequence.serial;
        frame_ = -1;
        if (isVisible() && !sequence.configurations.empty())
            player_.start();
    }
    // The plug-in draws again after every repaint; only a new picture needs another.
    if (api_.drawings().shown() != painted_)
        update();
}

void StationView::nextFrame()
{
    const int count = static_cast<int>(api_.station().shownSequence.configurations.size());
    if (++frame_ >= count) {
        frame_ = -1;
        player_.stop();
    }
    update();
}

void StationView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    camera_.setViewSize(size());
    paintStation(painter, scene(), camera_);
    painted_ = api_.drawings().shown();
    api_.drawings().redrawn();
    QMetaObject::invokeMethod(this, &StationView::repainted, Qt::QueuedConnection);
}

void StationView::mousePressEvent(QMouseEvent* event)
{
    lastMouse_ = event->pos();
}

void StationView::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint delta = event->pos() - lastMouse_;
    lastMouse_ = event->pos();
    if (event->buttons() & Qt::LeftButton)
        camera_.orbit(delta.x(), delta.y());
    else if (event->buttons() & (Qt::RightButton | Qt::MiddleButton))
        camera_.pan(delta.x(), delta.y());
    else
        return;
    update();
}

void StationView::wheelEvent(QWheelEvent* event)
{
    camera_.zoom(event->angleDelta().y() / 120.0);
    update();
}
