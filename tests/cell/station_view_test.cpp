#include "cell_fixture.h"
#include "run_monitor.h"
#include "sim_host_api.h"
#include "station_view.h"
#include "transcript.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

namespace {

class StationViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        QString error;
        auto station = station_file::read(QStringLiteral(WORKCELL_PATH), &error);
        ASSERT_TRUE(station) << error.toStdString();
        api = std::make_unique<SimHostApi>(std::move(station), &monitor);
        view = std::make_unique<StationView>(*api);
        view->resize(640, 480);
    }

    void draw(double x)
    {
        const double points[6] = {0, 0, 1000, x, 0, 1000};
        const float color[4] = {0.999f, 0.999f, 0.999f, 1.0f};
        api->drawGeometry(2, points, 2, color, 1.0f, 0);
    }

    QImage grab()
    {
        QImage image(view->size(), QImage::Format_ARGB32);
        view->render(&image);
        return image;
    }

    Transcript transcript;
    RunMonitor monitor{transcript};
    std::unique_ptr<SimHostApi> api;
    std::unique_ptr<StationView> view;
};

TEST_F(StationViewTest, DrawingsStayUntilTheNextRedrawWhichStartsFromNone)
{
    draw(100);
    draw(200);
    EXPECT_EQ(api->drawings().shown().size(), 2u) << "drawings between two redraws add up";
    grab();
    EXPECT_EQ(api->drawings().shown().size(), 2u) << "a repaint keeps them";
    // The redraw (event 1): a plug-in that draws nothing for it leaves nothing.
    api->sendRedrawn(nullptr);
    EXPECT_TRUE(api->drawings().shown().empty());
    draw(300);
    ASSERT_EQ(api->drawings().shown().size(), 1u);
    EXPECT_EQ(api->drawings().shown().front().points[3], 300.0);
}

TEST_F(StationViewTest, EachRepaintSignalsOnceFromTheEventLoop)
{
    QSignalSpy repainted(view.get(), &StationView::repainted);
    grab();
    EXPECT_EQ(repainted.count(), 0) << "not from inside the paint";
    QApplication::processEvents();
    EXPECT_EQ(repainted.count(), 1);
}

TEST_F(StationViewTest, TheMouseOrbitsPansAndZooms)
{
    view->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    const ViewCamera before = view->camera();
    QTest::mousePress(view.get(), Qt::LeftButton, {}, QPoint(100, 100));
    QMouseEvent move(QEvent::MouseMove, QPointF(150, 120), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.get(), &move);
    EXPECT_NE(view->camera().azimuth, before.azimuth);
    EXPECT_NE(view->camera().elevation, before.elevation);
    QMouseEvent pan(QEvent::MouseMove, QPointF(180, 120), Qt::NoButton, Qt::RightButton, Qt::NoModifier);
    QApplication::sendEvent(view.get(), &pan);
    EXPECT_NE(view->camera().target, before.target);
    QWheelEvent wheel(QPointF(100, 100), view->mapToGlobal(QPoint(100, 100)), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.get(), &wheel);
    EXPECT_LT(view->camera().distance, before.distance);
}

TEST_F(StationViewTest, AShownJointSequenceIsPlayedOnAVisibleViewAndOnlyKeptOnAHiddenOne)
{
    SimItem* arm = api->station().find(QStringLiteral("Arm1"), ItemType::Robot);
    double values[12] = {0, 90, -90, 0, 0, 0, 70, 9.5, -168, 0, -21.5, -47};
    int32_t extents[2] = {6, 2};
    RoadmapMatrix sequence;
    sequence.values = values;
    sequence.extents = extents;
    sequence.dimensionCount = 2;
    sequence.ownsValues = false;
    arm->showJointSequence(&sequence);
    EXPECT_FALSE(view->playing());
    EXPECT_EQ(api->station().shownSequence.configurations.size(), 2u);

    view->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    const QImage still = grab();
    arm->showJointSequence(&sequence);
    EXPECT_TRUE(view->playing());
    QTest::qWait(150);
    ASSERT_NE(view->scene().posedRobot, nullptr);
    EXPECT_NE(grab(), still) << "the arm is shown at a played configuration";
    EXPECT_TRUE(QTest::qWaitFor([&] { return !view->playing(); }, 2000));
    EXPECT_EQ(view->scene().posedRobot, nullptr) << "back at its own joints";
}

}  // namespace
