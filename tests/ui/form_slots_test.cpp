// What the control form's buttons and editors do to the plug-in and the host.
#include "form_fixture.h"

#include "edge_list.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

namespace {

class FormSlots : public FormTest {
protected:
    // A 3-joint robot with two targets, and the form open on it.
    void SetUp() override
    {
        FormTest::SetUp();
        robot = addRobot("Arm1");
        for (const auto& [name, values] : {std::pair{"T1", std::vector<double>{-30, 10, 0}},
                                           std::pair{"T2", std::vector<double>{40, -20, 15}}}) {
            FakeItem* target = host.addItem(ItemType::Target, name, robot);
            target->setJoints(JointVector(values.data(), 3));
            targets << target;
        }
        form = openForm();
        ASSERT_NE(form, nullptr);
        session().markSaved();
    }

    int programCount()
    {
        QList<Item> programs;
        return host.getItemList(programs, ItemType::Program).size();
    }

    FakeRobot* robot = nullptr;
    QList<Item> targets;
    FormPRM* form = nullptr;
};

TEST_F(FormSlots, EdgeEditorsSetTheirSettingAndMarkChanged)
{
    child<QSpinBox>("spnEdges")->setValue(12);
    EXPECT_EQ(settings().edgesPerSample, 12);
    EXPECT_TRUE(session().settingsChanged());
    session().markSaved();
    child<QSpinBox>("spnEdgesStartEnd")->setValue(7);
    EXPECT_EQ(settings().newNodeEdges, 7);
    EXPECT_TRUE(session().settingsChanged());
    // Settings alone do not recompute anything.
    EXPECT_EQ(columns(map().samples()), 0);
}

TEST_F(FormSlots, StepEditorSetsTheStepAndTheHostParameter)
{
    child<QDoubleSpinBox>("spnStepDeg")->setValue(2.5);
    EXPECT_DOUBLE_EQ(settings().robotStepDeg, 2.5);
    EXPECT_TRUE(session().settingsChanged());
    EXPECT_EQ(host.params["PathStepCollisionDeg"], "2.50000");
}

TEST_F(FormSlots, DisplayMapSwitchesTheFlagAndRefreshesTheView)
{
    giveMap(3);
    form->UpdateForm();
    host.updates.clear();
    child<QCheckBox>("chkDisplayMap")->click();
    EXPECT_TRUE(settings().displaySamples);
    EXPECT_TRUE(session().settingsChanged());
    EXPECT_EQ(host.updates, std::vector<int>{1});
    child<QCheckBox>("chkDisplayMap")->click();
    EXPECT_FALSE(settings().displaySamples);
}

TEST_F(FormSlots, SelectRobotAsksTheUserAndShowsTheChoice)
{
    FakeRobot* second = addRobot("Arm2");
    host.pickAnswers << second;
    child<QPushButton>("btnSelectRobot")->click();
    EXPECT_EQ(session().robot(), second);
    EXPECT_EQ(child<QLabel>("lblRobot")->text(), "Using robot: Arm2");
    EXPECT_FALSE(child<QWidget>("widgetRobotSelect")->isHidden());
}

TEST_F(FormSlots, UpdateMapComputesWithTheEditedCount)
{
    child<QSpinBox>("spnSamples")->setValue(7);
    child<QSpinBox>("spnEdges")->setValue(3);
    child<QPushButton>("btnMakeMap")->click();
    EXPECT_EQ(columns(map().samples()), 7);
    settle();
    EXPECT_EQ(child<QLabel>("lblInfo")->text(),
              QString("7 samples and %1 edges").arg(edgeCount(map().graph())));
    EXPECT_TRUE(child<QPushButton>("btnAddNodes")->isEnabled());
}

TEST_F(FormSlots, DisplaySamplesHandsTheMapToTheRobot)
{
    giveMap(4);
    form->UpdateForm();
    child<QPushButton>("btnShowSamples")->click();
    EXPECT_EQ(robot->shownRows, 3);
    EXPECT_EQ(robot->shownColumns, 4);
}

TEST_F(FormSlots, AddSelectedTargetsGrowsTheMap)
{
    child<QSpinBox>("spnSamples")->setValue(6);
    child<QPushButton>("btnMakeMap")->click();
    settle();
    // A target far from the seeds, so that it becomes a node of its own.
    FakeItem* extra = host.addItem(ItemType::Target, "T3", robot);
    const std::vector<double> joints{150, 80, -120};
    extra->setJoints(JointVector(joints.data(), 3));
    host.selection = {extra};
    const int before = columns(map().samples());
    child<QPushButton>("btnAddNodes")->click();
    EXPECT_EQ(columns(map().samples()), before + 1);
    EXPECT_TRUE(hasMessage("Successfully added target: T3", false));
}

TEST_F(FormSlots, LinkButtonJoinsTheSelectedTargets)
{
    child<QSpinBox>("spnSamples")->setValue(10);
    host.selection = targets;
    EXPECT_EQ(programCount(), 0);
    child<QPushButton>("btnLinkTargets")->click();
    EXPECT_EQ(programCount(), 1);
    EXPECT_GT(columns(map().samples()), 0);
}

}  // namespace
