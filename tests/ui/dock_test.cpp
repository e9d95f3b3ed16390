// The form's dock: opening once, closing, reopening, unloading; the dock
// factory; and the sample display.
#include "form_fixture.h"

#include "dock.h"
#include "log_capture.h"

#include <QLabel>
#include <QPointer>
#include <QSpinBox>

namespace {

using FormDock = FormTest;

int formCount(QObject* window)
{
    return window->findChildren<FormPRM*>().size();
}

TEST_F(FormDock, OpensTheFormInALeftDock)
{
    addRobot("Arm1");
    FormPRM* form = openForm();
    ASSERT_NE(form, nullptr);
    EXPECT_TRUE(hasMessage("Opening PRM form...", false));
    QDockWidget* opened = dock();
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->windowTitle(), "Collision-free motion planner");
    EXPECT_EQ(opened->widget(), form);
    EXPECT_EQ(opened->features(), QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable
                                      | QDockWidget::DockWidgetFloatable);
    EXPECT_EQ(opened->allowedAreas(), Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    EXPECT_EQ(window->dockWidgetArea(opened), Qt::LeftDockWidgetArea);
    EXPECT_TRUE(opened->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_TRUE(form->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_FALSE(opened->isFloating());
    EXPECT_TRUE(opened->isVisibleTo(window.get()));
    // The robot was chosen by the form itself.
    EXPECT_EQ(plugin->robotName(), "Arm1");
}

TEST_F(FormDock, SecondOpenOnlySaysItIsOpen)
{
    addRobot("Arm1");
    FormPRM* first = openForm();
    ASSERT_NE(first, nullptr);
    QDockWidget* firstDock = dock();
    plugin->callback_robotpilot();
    settle();
    EXPECT_TRUE(hasMessage("Auto PRM form is already open", false));
    EXPECT_EQ(formCount(window.get()), 1);
    EXPECT_EQ(window->findChildren<QDockWidget*>().size(), 1);
    EXPECT_EQ(openedForm(), first);
    EXPECT_EQ(dock(), firstDock);
}

TEST_F(FormDock, AHiddenDockIsShownAgainWhereItWas)
{
    addRobot("Arm1");
    FormPRM* form = openForm();
    ASSERT_NE(form, nullptr);
    QDockWidget* opened = dock();
    ASSERT_NE(opened, nullptr);
    window->show();
    settle();
    const QRect placed = opened->geometry();
    // Hidden without being closed (as a main window's restored state can leave it).
    opened->hide();
    settle();
    ASSERT_FALSE(opened->isVisible());
    host.messages.clear();
    plugin->callback_robotpilot();
    settle();
    EXPECT_TRUE(hasMessage("Auto PRM form is already open", false));
    EXPECT_TRUE(opened->isVisible()) << "the hidden dock is back";
    EXPECT_EQ(dock(), opened) << "and it is the same dock, with the same form";
    EXPECT_EQ(opened->widget(), form);
    EXPECT_EQ(window->dockWidgetArea(opened), Qt::LeftDockWidgetArea);
    EXPECT_EQ(opened->geometry(), placed) << "not moved";
    EXPECT_EQ(formCount(window.get()), 1);
}

TEST_F(FormDock, ClosingTheDockForgetsItAndTheNextOpenIsFresh)
{
    addRobot("Arm1");
    QPointer<FormPRM> first = openForm();
    QPointer<QDockWidget> firstDock = dock();
    ASSERT_TRUE(first && firstDock);
    firstDock->close();
    settle();
    EXPECT_TRUE(first.isNull());
    EXPECT_TRUE(firstDock.isNull());
    EXPECT_TRUE(hasMessage("Closed robot pilot", false));
    EXPECT_EQ(formCount(window.get()), 0);

    setSettings([](PlannerSettings& s) { s.samples = 55; });
    host.messages.clear();
    FormPRM* second = openForm();
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(hasMessage("Opening PRM form...", false));
    EXPECT_FALSE(hasMessage("Auto PRM form is already open", false));
    EXPECT_NE(dock(), nullptr);
    EXPECT_EQ(second->findChild<QSpinBox*>("spnSamples")->value(), 55);
}

TEST_F(FormDock, UnloadClosesTheDock)
{
    addRobot("Arm1");
    QPointer<FormPRM> form = openForm();
    QPointer<QDockWidget> opened = dock();
    ASSERT_TRUE(form && opened);
    plugin->pluginUnload();
    settle();
    EXPECT_TRUE(form.isNull());
    EXPECT_TRUE(opened.isNull());
    EXPECT_TRUE(hasMessage("Closed robot pilot", false));
    // Unloaded already: the fixture must not unload it again.
    plugin.reset();
}

TEST_F(FormDock, UnloadClosesTheFormThatTheClosedSlotMadeThePluginForget)
{
    // Another plug-in may invoke the slot at any time, the dock staying open.
    addRobot("Arm1");
    QPointer<FormPRM> form = openForm();
    QPointer<QDockWidget> opened = dock();
    ASSERT_TRUE(form && opened);
    host.messages.clear();
    plugin->callback_robotpilot_closed();
    settle();
    EXPECT_TRUE(opened) << "nothing closed it";
    plugin->pluginUnload();
    // Said while the host listens; nothing reaches it once the dock goes.
    ASSERT_EQ(host.messages.size(), 2);
    EXPECT_EQ(host.messages[1], qMakePair(QString("Closed robot pilot"), false));
    settle();
    EXPECT_TRUE(form.isNull());
    EXPECT_TRUE(opened.isNull());
    EXPECT_EQ(host.messages.size(), 2);
    plugin.reset();
}

TEST_F(FormDock, EveryFormOpenedGoesWithTheUnload)
{
    // After the slot was invoked the next open makes a second dock; both go.
    addRobot("Arm1");
    openForm();
    QPointer<QDockWidget> first = dock();
    plugin->callback_robotpilot_closed();
    plugin->callback_robotpilot();
    settle();
    ASSERT_EQ(window->findChildren<QDockWidget*>().size(), 2);
    plugin->pluginUnload();
    settle();
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(formCount(window.get()), 0);
    EXPECT_TRUE(window->findChildren<QDockWidget*>().isEmpty());
    plugin.reset();
}

TEST_F(FormDock, ShowSamplesOfAnEmptyMapHandsNoConfigurations)
{
    FakeRobot* robot = addRobot("Arm1");
    ASSERT_TRUE(plugin->selectRobot(true, QString()));
    LogCapture log;
    plugin->ShowSamples();
    EXPECT_TRUE(log.messages().contains("Showing robot samples"));
    EXPECT_EQ(robot->shownColumns, 0);
    EXPECT_EQ(robot->shownRows, rows(map().samples()));
    // A map emptied to J x 0 goes over as it is.
    editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
        setSize(samples, 3, 0);
    });
    plugin->ShowSamples();
    EXPECT_EQ(robot->shownRows, 3);
    EXPECT_EQ(robot->shownColumns, 0);
}

TEST_F(FormDock, ShowSamplesWithoutRobotNeverPopsUp)
{
    plugin->ShowSamples();
    EXPECT_TRUE(hasMessage("Invalid robot: add a robot or load a project", false));
    for (const auto& message : host.messages)
        EXPECT_FALSE(message.second) << message.first.toStdString();
}

TEST(CreateDock, FixedDockIsNotClosableAndFloatsWithoutArea)
{
    QMainWindow window;
    auto* fixed = new QWidget;
    LogCapture log;
    QDockWidget* docked = createDock(&window, fixed, "Fixed", Qt::RightDockWidgetArea, Qt::RightDockWidgetArea,
                                     false, false);
    EXPECT_EQ(docked->objectName(), "Fixed");
    EXPECT_EQ(docked->features(), QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    EXPECT_FALSE(docked->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_EQ(window.dockWidgetArea(docked), Qt::RightDockWidgetArea);
    EXPECT_TRUE(log.messages().contains("Adding new docked window: Fixed"));

    QDockWidget* floating = createDock(&window, new QWidget, "Floating", Qt::AllDockWidgetAreas,
                                       Qt::NoDockWidgetArea, true, true);
    EXPECT_TRUE(floating->isFloating());
    EXPECT_TRUE(floating->isVisible());
}

}  // namespace
