// The window's 3D view of the station.
#include "station_view.h"

#include "program_playback.h"
#include "sim_host_api.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

namespace {

constexpr int sequencePeriodMs = 100;
constexpr int programPeriodMs = 40;

// At most `most` of the configurations, evenly spread, the first and the last among them.
std::vector<std::vector<double>> spread(const std::vector<std::vector<double>>& all, int most)
{
    const int count = static_cast<int>(all.size());
    if (count <= most)
        return all;
    std::vector<std::vector<double>> some;
    for (int i = 0; i < most; ++i)
        some.push_back(all[size_t(qint64(i) * (count - 1) / (most - 1))]);
    return some;
}

bool isInput(const QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress)
        return true;
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key != Qt::Key_Shift && key != Qt::Key_Control && key != Qt::Key_Alt && key != Qt::Key_Meta;
}

}  // namespace

StationView::StationView(SimHostApi& api, QWidget* parent) : QWidget(parent), api_(api)
{
    setObjectName(QStringLiteral("vorlik-StationView"));
    setMinimumSize(320, 240);
    setFocusPolicy(Qt::StrongFocus);
    connect(&player_, &QTimer::timeout, this, &StationView::nextFrame);
    api_.setSceneListener(this);
    sequenceSerial_ = api_.station().shownSequence.serial;
    frameStation();
}

StationView::~StationView()
{
    qApp->removeEventFilter(this);
    api_.setSceneListener(nullptr);
}

void StationView::frameStation()
{
    Eigen::Vector3d low, high;
    stationBounds(api_.station(), &low, &high);
    camera_.setViewSize(size());
    camera_.frame(low, high);
    update();
}

void StationView::resetView()
{
    const ViewCamera first;
    camera_.azimuth = first.azimuth;
    camera_.elevation = first.elevation;
    frameStation();
}

ViewScene StationView::scene() const
{
    const Station& station = api_.station();
    ViewScene scene;
    scene.station = &station;
    scene.drawings = &api_.drawings().shown();
    scene.program = shownProgram(station);
    if (animated_ && station.holds(animated_) && frame_ < static_cast<int>(frames_.size())) {
        scene.posedRobot = animated_;
        scene.posedJoints = frames_[size_t(frame_)];
    }
    return scene;
}

bool StationView::playProgram(const SimItem* program)
{
    ProgramPlayback playback = playbackOf(api_.station(), program);
    if (playback.empty())
        return false;
    play(playback.robot, std::move(playback.configurations), programPeriodMs, false);
    return true;
}

void StationView::togglePause()
{
    if (!animated_)
        return;
    if (player_.isActive())
        player_.stop();
    else
        player_.start();
    emit playingChanged();
}

void StationView::stopPlaying()
{
    if (!animated_)
        return;
    player_.stop();
    qApp->removeEventFilter(this);
    animated_ = nullptr;
    frames_.clear();
    update();
    emit playingChanged();
}

void StationView::play(const SimItem* robot, std::vector<std::vector<double>> frames, int periodMs, bool stopOnInput)
{
    stopPlaying();
    animated_ = robot;
    frames_ = std::move(frames);
    frame_ = 0;
    stopOnInput_ = stopOnInput;
    if (stopOnInput_)
        qApp->installEventFilter(this);
    player_.start(periodMs);
    update();
    emit playingChanged();
}

void StationView::sceneChanged()
{
    const JointSequence& sequence = api_.station().shownSequence;
    if (sequence.serial != sequenceSerial_) {
        sequenceSerial_ = sequence.serial;
        if (isVisible() && !sequence.configurations.empty())
            play(sequence.robot, spread(sequence.configurations, MostSequenceFrames), sequencePeriodMs, true);
    }
    // The plug-in draws again after every repaint; only a new picture needs another.
    if (api_.drawings().shown() != painted_)
        update();
}

void StationView::nextFrame()
{
    if (++frame_ >= static_cast<int>(frames_.size()) || !api_.station().holds(animated_)) {
        stopPlaying();
        return;
    }
    update();
}

void StationView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    camera_.setViewSize(size());
    paintStation(painter, scene(), camera_);
    painted_ = api_.drawings().shown();
    QMetaObject::invokeMethod(this, &StationView::repainted, Qt::QueuedConnection);
}

bool StationView::eventFilter(QObject* watched, QEvent* event)
{
    // Whatever the user does next stops a sequence a plug-in shows.
    if (stopOnInput_ && animated_ && isInput(event))
        stopPlaying();
    return QWidget::eventFilter(watched, event);
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
