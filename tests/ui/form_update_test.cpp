// How the control form refreshes itself from the plug-in (UpdateForm).
#include "form_fixture.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

namespace {

using FormRefresh = FormTest;

TEST_F(FormRefresh, OneRobotHidesTheRobotRowWhateverIsSelected)
{
    addRobot("Arm1");
    FormPRM* form = openForm();
    ASSERT_NE(form, nullptr);
    auto* row = child<QWidget>("widgetRobotSelect");
    EXPECT_TRUE(row->isHidden());
    setRobot(nullptr);
    form->UpdateForm();
    EXPECT_TRUE(row->isHidden());
}

TEST_F(FormRefresh, TwoRobotsShowTheRowWithTheChosenRobot)
{
    addRobot("Arm1");
    addRobot("Arm2");
    FormPRM* form = openForm();
    ASSERT_NE(form, nullptr);
    EXPECT_FALSE(child<QWidget>("widgetRobotSelect")->isHidden());
    EXPECT_EQ(child<QLabel>("lblRobot")->text(), "Using robot: Arm1");
    setRobot(nullptr);
    form->UpdateForm();
    EXPECT_EQ(child<QLabel>("lblRobot")->text(), "Using robot: ");
}

TEST_F(FormRefresh, EmptyMapTextAndEnabledButtons)
{
    addRobot("Arm1");
    ASSERT_NE(openForm(), nullptr);
    EXPECT_EQ(child<QLabel>("lblInfo")->text(), "No samples. Select Update Map");
    EXPECT_FALSE(child<QPushButton>("btnShowSamples")->isEnabled());
    EXPECT_FALSE(child<QCheckBox>("chkDisplayMap")->isEnabled());
    EXPECT_FALSE(child<QPushButton>("btnAddNodes")->isEnabled());
    EXPECT_TRUE(child<QPushButton>("btnMakeMap")->isEnabled());
    EXPECT_TRUE(child<QPushButton>("btnLinkTargets")->isEnabled());
}

TEST_F(FormRefresh, MapCountsAndEnabledButtons)
{
    addRobot("Arm1");
    FormPRM* form = openForm();
    giveMap(4);
    form->UpdateForm();
    EXPECT_EQ(child<QLabel>("lblInfo")->text(), "4 samples and 3 edges");
    EXPECT_TRUE(child<QPushButton>("btnShowSamples")->isEnabled());
    EXPECT_TRUE(child<QCheckBox>("chkDisplayMap")->isEnabled());
    EXPECT_TRUE(child<QPushButton>("btnAddNodes")->isEnabled());
}

TEST_F(FormRefresh, FreshFormTakesThePluginSettingsNotItsDesignedValues)
{
    addRobot("Arm1");
    ASSERT_NE(openForm(), nullptr);
    EXPECT_EQ(child<QSpinBox>("spnSamples")->value(), 100);
    EXPECT_EQ(child<QSpinBox>("spnEdges")->value(), 25);
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>("spnStepDeg")->value(), 4.0);
    EXPECT_EQ(child<QSpinBox>("spnEdgesStartEnd")->value(), 5);
    EXPECT_FALSE(child<QCheckBox>("chkDisplayMap")->isChecked());
}

TEST_F(FormRefresh, NeverMarksTheSettingsChanged)
{
    addRobot("Arm1");
    FormPRM* form = openForm();
    setSettings([](PlannerSettings& s) { s.samples = 77; });
    setSettings([](PlannerSettings& s) { s.edgesPerSample = 8; });
    setSettings([](PlannerSettings& s) { s.newNodeEdges = 3; });
    setSettings([](PlannerSettings& s) { s.displaySamples = true; });
    host.params["PathStepCollisionDeg"] = "2.5";
    giveMap(2);
    session().markSaved();
    form->UpdateForm();
    EXPECT_EQ(child<QSpinBox>("spnSamples")->value(), 77);
    EXPECT_EQ(child<QSpinBox>("spnEdges")->value(), 8);
    EXPECT_EQ(child<QSpinBox>("spnEdgesStartEnd")->value(), 3);
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>("spnStepDeg")->value(), 2.5);
    EXPECT_TRUE(child<QCheckBox>("chkDisplayMap")->isChecked());
    EXPECT_FALSE(session().settingsChanged());
    // Nothing was written back either.
    EXPECT_EQ(host.params["PathStepCollisionDeg"], "2.5");
    EXPECT_DOUBLE_EQ(settings().robotStepDeg, 4.0);
}

TEST_F(FormRefresh, StepEditorShowsTheHostStepRoundedToOneDecimal)
{
    addRobot("Arm1");
    FormPRM* form = openForm();
    setSettings([](PlannerSettings& s) { s.robotStepDeg = 7.0; });
    host.params["PathStepCollisionDeg"] = "2.36";
    form->UpdateForm();
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>("spnStepDeg")->value(), 2.4);
    EXPECT_DOUBLE_EQ(settings().robotStepDeg, 7.0);
}

TEST_F(FormRefresh, ArrowKeysStepTheSampleCountByThree)
{
    addRobot("Arm1");
    ASSERT_NE(openForm(), nullptr);
    auto* samples = child<QSpinBox>("spnSamples");
    session().markSaved();
    QTest::keyClick(samples, Qt::Key_Up);
    EXPECT_EQ(samples->value(), 103);
    EXPECT_EQ(settings().samples, 103);
    EXPECT_TRUE(session().settingsChanged());
    QTest::keyClick(samples, Qt::Key_Down);
    QTest::keyClick(samples, Qt::Key_Down);
    EXPECT_EQ(settings().samples, 97);
}

TEST_F(FormRefresh, PluginSignalRefreshesOnlyFromTheEventLoop)
{
    addRobot("Arm1");
    ASSERT_NE(openForm(), nullptr);
    giveMap(5);
    emit plugin->UpdateForm();
    EXPECT_EQ(child<QLabel>("lblInfo")->text(), "No samples. Select Update Map");
    settle();
    EXPECT_EQ(child<QLabel>("lblInfo")->text(), "5 samples and 4 edges");
}

TEST_F(FormRefresh, ComputedMapIsCountedLikeInfo)
{
    addRobot("Arm1");
    ASSERT_NE(openForm(), nullptr);
    ASSERT_EQ(plugin->pluginCommand("Samples", "9"), "OK");
    ASSERT_EQ(plugin->pluginCommand("Edges", "3"), "OK");
    ASSERT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    settle();
    const QStringList info = plugin->pluginCommand("Info", "").split('-');
    ASSERT_EQ(info.size(), 3);
    EXPECT_EQ(info[0], "9");
    EXPECT_EQ(child<QLabel>("lblInfo")->text(), QString("%1 samples and %2 edges").arg(info[0], info[1]));
    EXPECT_EQ(child<QSpinBox>("spnSamples")->value(), 9);
    EXPECT_EQ(child<QSpinBox>("spnEdges")->value(), 3);
}

}  // namespace
