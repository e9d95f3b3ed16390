#include "progress_reporter.h"
#include "progress_steps.h"

#include "log_capture.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPaintEvent>
#include <QPointer>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {
const QString AttemptLine = "Looking for a collision-free robot position (attempt %1)";
const QString Warning =
    "<strong>Warning: You may need to cancel this operation and change your settings</strong><br>"
    "It looks like the robot unable to find a collision-free position.<br>"
    "Check that robot joint limits are valid and properly define the collision map in "
    "<i>Tools-Collision Map</i>.";

class ProgressReporterTest : public testing::Test {
protected:
    void TearDown() override { progress.finish(); }

    ProgressReporter progress;
};
}  // namespace

TEST_F(ProgressReporterTest, StartOpensAModalDialogWithTheTitle)
{
    progress.start(nullptr, "Building");
    QProgressDialog* dialog = progress.dialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isModal());
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->windowTitle(), QString("Building"));
    EXPECT_EQ(dialog->labelText(), QString("Building"));
    EXPECT_EQ(dialog->minimum(), 0);
    EXPECT_EQ(dialog->maximum(), 100);
    EXPECT_FALSE(progress.cancelled());
}

TEST_F(ProgressReporterTest, UpdateJoinsHeadlineAndDetailAndSetsTheBar)
{
    progress.start(nullptr, "Building");
    progress.setHeadline("Head");
    progress.setDetail("Detail");
    EXPECT_FALSE(progress.update(42));
    EXPECT_EQ(progress.dialog()->labelText(), QString("Head<br>Detail"));
    EXPECT_EQ(progress.dialog()->value(), 42);
    EXPECT_FALSE(progress.update(-1));
    EXPECT_EQ(progress.dialog()->value(), 42) << "-1 leaves the bar";
    EXPECT_FALSE(progress.update(100));
    EXPECT_TRUE(progress.dialog()->isVisible()) << "a full bar does not close the dialog";
}

TEST_F(ProgressReporterTest, UpdateProcessesPendingEventsOnce)
{
    progress.start(nullptr, "Building");
    int delivered = 0;
    QTimer::singleShot(0, [&] { ++delivered; });
    QMetaObject::invokeMethod(QCoreApplication::instance(), [&] { ++delivered; }, Qt::QueuedConnection);
    progress.update(1);
    EXPECT_EQ(delivered, 2);
}

TEST_F(ProgressReporterTest, UpdateWithoutADialogIsNotACancel)
{
    progress.finish();
    ASSERT_EQ(progress.dialog(), nullptr);
    EXPECT_FALSE(progress.update(10));
    EXPECT_FALSE(showAttempt(progress, 3));
}

TEST_F(ProgressReporterTest, CancelIsSeenAtTheNextUpdateAndSurvivesFinish)
{
    progress.start(nullptr, "Building");
    progress.dialog()->cancel();
    EXPECT_TRUE(progress.update(5));
    EXPECT_TRUE(progress.update(6)) << "stays cancelled";
    EXPECT_TRUE(progress.finish());
    EXPECT_EQ(progress.dialog(), nullptr);
    EXPECT_TRUE(progress.cancelled());
    EXPECT_TRUE(progress.update(1)) << "the flag holds until the next start";
    progress.start(nullptr, "Again");
    EXPECT_FALSE(progress.cancelled());
    EXPECT_FALSE(progress.update(1));
    EXPECT_FALSE(progress.finish());
}

TEST_F(ProgressReporterTest, StartReplacesAnOpenDialog)
{
    progress.start(nullptr, "First");
    QPointer<QProgressDialog> first = progress.dialog();
    progress.start(nullptr, "Second");
    EXPECT_NE(progress.dialog(), first.data());
    ASSERT_FALSE(first.isNull());
    EXPECT_FALSE(first->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(first.isNull()) << "the old dialog was scheduled for deletion";
    EXPECT_EQ(progress.dialog()->labelText(), QString("Second"));
}

TEST_F(ProgressReporterTest, FinishHidesAndSchedulesDeletion)
{
    progress.start(nullptr, "Building");
    QPointer<QProgressDialog> dialog = progress.dialog();
    EXPECT_FALSE(progress.finish());
    ASSERT_FALSE(dialog.isNull());
    EXPECT_FALSE(dialog->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(dialog.isNull());
}

TEST_F(ProgressReporterTest, AttemptHundredShowsOnlyTheAttemptLine)
{
    LogCapture log;
    progress.start(nullptr, "Building");
    EXPECT_FALSE(showAttempt(progress, 100));
    EXPECT_EQ(progress.dialog()->labelText(), "Building<br>" + AttemptLine.arg(100));
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: 100"), 1);
}

TEST_F(ProgressReporterTest, AttemptHundredAndOneShowsTheWarning)
{
    progress.start(nullptr, "Building");
    EXPECT_FALSE(showAttempt(progress, 101));
    EXPECT_EQ(progress.dialog()->labelText(),
              "Building<br>" + AttemptLine.arg(101) + "<br><br>" + Warning);
}

TEST_F(ProgressReporterTest, AttemptReportsACancel)
{
    progress.start(nullptr, "Building");
    progress.dialog()->cancel();
    EXPECT_TRUE(showAttempt(progress, 1));
}

TEST_F(ProgressReporterTest, BetweenRefreshesTheLabelHoldsItsTextPlainAndIsPaintedInItsOwnFormat)
{
    progress.start(nullptr, "Building");
    QLabel* label = progress.dialog()->findChild<QLabel*>();
    ASSERT_NE(label, nullptr);
    ASSERT_EQ(label->textFormat(), Qt::PlainText) << "until the first refresh";
    progress.setHeadline("Head");
    EXPECT_FALSE(progress.update(5));  // the first update refreshes
    progress.setHeadline("Next");
    EXPECT_FALSE(progress.update(6));  // no refresh within the interval
    EXPECT_EQ(progress.dialog()->labelText(), QString("Next<br>")) << "the text is current all the same";
    EXPECT_EQ(label->textFormat(), Qt::PlainText) << "kept plain while nobody sees it";
    // Painted in between (a host that runs the event loop): in its own format.
    QPaintEvent paint(label->rect());
    QCoreApplication::sendEvent(label, &paint);
    EXPECT_EQ(label->textFormat(), Qt::AutoText);
    EXPECT_EQ(label->text(), QString("Next<br>"));
    // The next refresh leaves it plain again, with the text it had.
    std::this_thread::sleep_for(std::chrono::milliseconds(ProgressReporter::RefreshIntervalMs + 5));
    progress.setHeadline("Last");
    EXPECT_FALSE(progress.update(7));
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(progress.dialog()->labelText(), QString("Last<br>"));
}
