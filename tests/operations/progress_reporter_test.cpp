#include "progress_reporter.h"
#include "progress_steps.h"

#include "log_capture.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

#include <gtest/gtest.h>

namespace {
const QString AttemptLine = "Looking for a collision-free robot position (attempt %1)";
const QString Warning =
    "<strong>Warning: You may need to cancel this operation and change your settings</strong><br>"
    "It looks like the robot unable to find a collision-free position.<br>"
    "Check that robot joint limits are valid and properly define the collision map in "
    "<i>Tools-Collision Map</i>.";

class ProgressReporterTest : public testing::Test {
protected:
    void TearDown() override { progressReporter().finish(); }
};
}  // namespace

TEST_F(ProgressReporterTest, StartOpensAModalDialogWithTheTitle)
{
    progressReporter().start(nullptr, "Building");
    QProgressDialog* dialog = progressReporter().dialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isModal());
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->windowTitle(), QString("Building"));
    EXPECT_EQ(dialog->labelText(), QString("Building"));
    EXPECT_EQ(dialog->minimum(), 0);
    EXPECT_EQ(dialog->maximum(), 100);
    EXPECT_FALSE(progressReporter().cancelled());
}

TEST_F(ProgressReporterTest, UpdateJoinsHeadlineAndDetailAndSetsTheBar)
{
    progressReporter().start(nullptr, "Building");
    progressReporter().setHeadline("Head");
    progressReporter().setDetail("Detail");
    EXPECT_FALSE(progressReporter().update(42));
    EXPECT_EQ(progressReporter().dialog()->labelText(), QString("Head<br>Detail"));
    EXPECT_EQ(progressReporter().dialog()->value(), 42);
    EXPECT_FALSE(progressReporter().update(-1));
    EXPECT_EQ(progressReporter().dialog()->value(), 42) << "-1 leaves the bar";
    EXPECT_FALSE(progressReporter().update(100));
    EXPECT_TRUE(progressReporter().dialog()->isVisible()) << "a full bar does not close the dialog";
}

TEST_F(ProgressReporterTest, UpdateProcessesPendingEventsOnce)
{
    progressReporter().start(nullptr, "Building");
    int delivered = 0;
    QTimer::singleShot(0, [&] { ++delivered; });
    QMetaObject::invokeMethod(QCoreApplication::instance(), [&] { ++delivered; }, Qt::QueuedConnection);
    progressReporter().update(1);
    EXPECT_EQ(delivered, 2);
}

TEST_F(ProgressReporterTest, UpdateWithoutADialogIsNotACancel)
{
    progressReporter().finish();
    ASSERT_EQ(progressReporter().dialog(), nullptr);
    EXPECT_FALSE(progressReporter().update(10));
    EXPECT_FALSE(showAttempt(progressReporter(), 3));
}

TEST_F(ProgressReporterTest, CancelIsSeenAtTheNextUpdateAndSurvivesFinish)
{
    progressReporter().start(nullptr, "Building");
    progressReporter().dialog()->cancel();
    EXPECT_TRUE(progressReporter().update(5));
    EXPECT_TRUE(progressReporter().update(6)) << "stays cancelled";
    EXPECT_TRUE(progressReporter().finish());
    EXPECT_EQ(progressReporter().dialog(), nullptr);
    EXPECT_TRUE(progressReporter().cancelled());
    EXPECT_TRUE(progressReporter().update(1)) << "the flag holds until the next start";
    progressReporter().start(nullptr, "Again");
    EXPECT_FALSE(progressReporter().cancelled());
    EXPECT_FALSE(progressReporter().update(1));
    EXPECT_FALSE(progressReporter().finish());
}

TEST_F(ProgressReporterTest, StartReplacesAnOpenDialog)
{
    progressReporter().start(nullptr, "First");
    QPointer<QProgressDialog> first = progressReporter().dialog();
    progressReporter().start(nullptr, "Second");
    EXPECT_NE(progressReporter().dialog(), first.data());
    ASSERT_FALSE(first.isNull());
    EXPECT_FALSE(first->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(first.isNull()) << "the old dialog was scheduled for deletion";
    EXPECT_EQ(progressReporter().dialog()->labelText(), QString("Second"));
}

TEST_F(ProgressReporterTest, FinishHidesAndSchedulesDeletion)
{
    progressReporter().start(nullptr, "Building");
    QPointer<QProgressDialog> dialog = progressReporter().dialog();
    EXPECT_FALSE(progressReporter().finish());
    ASSERT_FALSE(dialog.isNull());
    EXPECT_FALSE(dialog->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(dialog.isNull());
}

TEST_F(ProgressReporterTest, AttemptHundredShowsOnlyTheAttemptLine)
{
    LogCapture log;
    progressReporter().start(nullptr, "Building");
    EXPECT_FALSE(showAttempt(progressReporter(), 100));
    EXPECT_EQ(progressReporter().dialog()->labelText(), "Building<br>" + AttemptLine.arg(100));
    EXPECT_EQ(log.countStartingWith("Adding joints. Attempt: 100"), 1);
}

TEST_F(ProgressReporterTest, AttemptHundredAndOneShowsTheWarning)
{
    progressReporter().start(nullptr, "Building");
    EXPECT_FALSE(showAttempt(progressReporter(), 101));
    EXPECT_EQ(progressReporter().dialog()->labelText(),
              "Building<br>" + AttemptLine.arg(101) + "<br><br>" + Warning);
}

TEST_F(ProgressReporterTest, AttemptReportsACancel)
{
    progressReporter().start(nullptr, "Building");
    progressReporter().dialog()->cancel();
    EXPECT_TRUE(showAttempt(progressReporter(), 1));
}
