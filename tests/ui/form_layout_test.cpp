// The control form's widgets: names, kinds, texts, ranges, initial values,
// positions and the order of its slots.
#include "form_prm.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QPushButton>
#include <QSpacerItem>
#include <QSpinBox>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>

namespace {

// The widget record built on a plain widget, before any refresh overwrites its values.
class FormWidgets : public ::testing::Test {
protected:
    void SetUp() override { record.setupUi(&form); }

    QWidget form;
    FormPRMWidgets record;
};

TEST_F(FormWidgets, FormTitleNameAndSize)
{
    EXPECT_EQ(form.objectName(), "FormPRM");
    EXPECT_EQ(form.windowTitle(), "Form");
    EXPECT_EQ(form.size(), QSize(190, 327));
    EXPECT_EQ(form.layout(), record.verticalLayout);
    EXPECT_EQ(record.verticalLayout->objectName(), "verticalLayout");
}

TEST_F(FormWidgets, ChildWidgetsInCreationOrderWithTheirTexts)
{
    struct Expected {
        const char* name;
        const char* kind;
        const char* text;
    };
    const Expected expected[] = {
        {"widgetRobotSelect", "QWidget", nullptr},
        {"lblRobot", "QLabel", "Using Robot"},
        {"btnSelectRobot", "QPushButton", "Select Robot"},
        {"label", "QLabel", "Number of samples"},
        {"spnSamples", "QSpinBox", nullptr},
        {"label_2", "QLabel", "Edges per sample"},
        {"spnEdges", "QSpinBox", nullptr},
        {"label_4", "QLabel", "Robot step (deg)"},
        {"spnStepDeg", "QDoubleSpinBox", nullptr},
        {"btnMakeMap", "QPushButton", "Update Map"},
        {"btnAddNodes", "QPushButton", "Add selected targets"},
        {"lblInfo", "QLabel", "Information:"},
        {"btnShowSamples", "QPushButton", "Display Samples"},
        {"chkDisplayMap", "QCheckBox", "Display map"},
        {"label_3", "QLabel", "New sample edges"},
        {"spnEdgesStartEnd", "QSpinBox", nullptr},
        {"btnLinkTargets", "QPushButton", "Link selected targets/programs"},
        {"chkShortcut", "QCheckBox", "Shorten routes"},
        {"lblGrowMap", "QLabel", "Grow map on failure by"},
        {"spnGrowMap", "QSpinBox", nullptr},
        {"chkCheckRoutes", "QCheckBox", "Check routes against the cell"},
    };
    const QList<QWidget*> widgets = form.findChildren<QWidget*>();
    // Spin boxes own a line edit each; only named widgets are the form's.
    QList<QWidget*> named;
    for (QWidget* widget : widgets) {
        if (!widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_"))
            named << widget;
    }
    ASSERT_EQ(named.size(), int(std::size(expected)));
    for (int i = 0; i < named.size(); ++i) {
        SCOPED_TRACE(expected[i].name);
        EXPECT_EQ(named[i]->objectName(), expected[i].name);
        EXPECT_STREQ(named[i]->metaObject()->className(), expected[i].kind);
        if (!expected[i].text)
            continue;
        if (auto* label = qobject_cast<QLabel*>(named[i]))
            EXPECT_EQ(label->text(), expected[i].text);
        else if (auto* button = qobject_cast<QAbstractButton*>(named[i]))
            EXPECT_EQ(button->text(), expected[i].text);
        else
            ADD_FAILURE() << "no text to compare";
    }
    // The robot row lives inside widgetRobotSelect.
    EXPECT_EQ(record.lblRobot->parentWidget(), record.widgetRobotSelect);
    EXPECT_EQ(record.btnSelectRobot->parentWidget(), record.widgetRobotSelect);
}

TEST_F(FormWidgets, IntegerEditorsRangesStepsAndInitialValues)
{
    struct Expected {
        QSpinBox* box;
        int step;
        int value;
    };
    for (const Expected& e : {Expected{record.spnSamples, 3, 40}, Expected{record.spnEdges, 1, 10},
                              Expected{record.spnEdgesStartEnd, 1, 5}}) {
        SCOPED_TRACE(e.box->objectName().toStdString());
        EXPECT_EQ(e.box->alignment(), Qt::AlignRight | Qt::AlignVCenter);
        EXPECT_EQ(e.box->minimum(), 1);
        EXPECT_EQ(e.box->maximum(), 9999);
        EXPECT_EQ(e.box->singleStep(), e.step);
        EXPECT_EQ(e.box->value(), e.value);
    }
}

TEST_F(FormWidgets, StepEditorRangeDecimalsAndInitialValue)
{
    QDoubleSpinBox* step = record.spnStepDeg;
    EXPECT_EQ(step->alignment(), Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(step->decimals(), 1);
    EXPECT_DOUBLE_EQ(step->minimum(), 0.1);
    EXPECT_DOUBLE_EQ(step->maximum(), 10000.0);
    EXPECT_DOUBLE_EQ(step->singleStep(), 1.0);
    EXPECT_DOUBLE_EQ(step->value(), 5.0);
}

TEST_F(FormWidgets, RobotRowHasNoMargins)
{
    EXPECT_EQ(record.horizontalLayout_3->objectName(), "horizontalLayout_3");
    EXPECT_EQ(record.widgetRobotSelect->layout(), record.horizontalLayout_3);
    EXPECT_EQ(record.horizontalLayout_3->contentsMargins(), QMargins(0, 0, 0, 0));
    EXPECT_EQ(record.horizontalLayout_3->itemAt(0)->widget(), record.lblRobot);
    EXPECT_EQ(record.horizontalLayout_3->itemAt(1)->widget(), record.btnSelectRobot);
}

TEST_F(FormWidgets, SettingsGridRowsAndColumns)
{
    QGridLayout* grid = record.gridLayout;
    EXPECT_EQ(grid->objectName(), "gridLayout");
    const QWidget* cells[3][2] = {{record.label, record.spnSamples},
                                  {record.label_2, record.spnEdges},
                                  {record.label_4, record.spnStepDeg}};
    EXPECT_EQ(grid->rowCount(), 3);
    EXPECT_EQ(grid->columnCount(), 2);
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 2; ++col)
            EXPECT_EQ(grid->itemAtPosition(row, col)->widget(), cells[row][col]) << row << "," << col;
    }
}

TEST_F(FormWidgets, VerticalLayoutTopToBottom)
{
    QVBoxLayout* column = record.verticalLayout;
    ASSERT_EQ(column->count(), 13);
    EXPECT_EQ(column->itemAt(0)->widget(), record.widgetRobotSelect);
    EXPECT_EQ(column->itemAt(1)->layout(), record.gridLayout);
    EXPECT_EQ(column->itemAt(2)->widget(), record.btnMakeMap);
    EXPECT_EQ(column->itemAt(3)->widget(), record.btnAddNodes);
    EXPECT_EQ(column->itemAt(4)->widget(), record.lblInfo);
    EXPECT_EQ(column->itemAt(5)->layout(), record.horizontalLayout);
    EXPECT_EQ(column->itemAt(7)->layout(), record.horizontalLayout_2);
    EXPECT_EQ(column->itemAt(8)->widget(), record.btnLinkTargets);
    EXPECT_EQ(column->itemAt(9)->widget(), record.chkShortcut);
    EXPECT_EQ(column->itemAt(10)->layout(), record.horizontalLayout_4);
    EXPECT_EQ(column->itemAt(11)->widget(), record.chkCheckRoutes);

    QSpacerItem* gap = column->itemAt(6)->spacerItem();
    ASSERT_NE(gap, nullptr);
    EXPECT_EQ(gap->sizeHint(), QSize(20, 20));
    EXPECT_EQ(gap->sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
    EXPECT_EQ(gap->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    QSpacerItem* stretch = column->itemAt(12)->spacerItem();
    ASSERT_NE(stretch, nullptr);
    EXPECT_EQ(stretch->sizeHint(), QSize(20, 9));
    EXPECT_EQ(stretch->sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
    EXPECT_EQ(stretch->sizePolicy().verticalPolicy(), QSizePolicy::MinimumExpanding);

    EXPECT_EQ(record.horizontalLayout->objectName(), "horizontalLayout");
    ASSERT_EQ(record.horizontalLayout->count(), 2);
    EXPECT_EQ(record.horizontalLayout->itemAt(0)->widget(), record.btnShowSamples);
    EXPECT_EQ(record.horizontalLayout->itemAt(1)->widget(), record.chkDisplayMap);
    EXPECT_EQ(record.horizontalLayout_2->objectName(), "horizontalLayout_2");
    ASSERT_EQ(record.horizontalLayout_2->count(), 2);
    EXPECT_EQ(record.horizontalLayout_2->itemAt(0)->widget(), record.label_3);
    EXPECT_EQ(record.horizontalLayout_2->itemAt(1)->widget(), record.spnEdgesStartEnd);
    ASSERT_EQ(record.horizontalLayout_4->count(), 2);
    EXPECT_EQ(record.horizontalLayout_4->itemAt(0)->widget(), record.lblGrowMap);
    EXPECT_EQ(record.horizontalLayout_4->itemAt(1)->widget(), record.spnGrowMap);
}

TEST_F(FormWidgets, TheGrowthEditorIsOffAtZero)
{
    QSpinBox* grow = record.spnGrowMap;
    EXPECT_EQ(grow->minimum(), 0);
    EXPECT_EQ(grow->maximum(), 100000);
    EXPECT_EQ(grow->singleStep(), 100);
    EXPECT_EQ(grow->value(), 0);
    EXPECT_EQ(grow->text(), "off");
    grow->setValue(300);
    EXPECT_EQ(grow->text(), "300 samples");
}

TEST(FormMetaObject, SlotsInRegistrationOrder)
{
    const QMetaObject& meta = FormPRM::staticMetaObject;
    const char* const expected[] = {
        "UpdateForm()",
        "on_btnSelectRobot_clicked()",
        "on_btnMakeMap_clicked()",
        "on_btnLinkTargets_clicked()",
        "on_chkDisplayMap_clicked(bool)",
        "on_spnSamples_valueChanged(int)",
        "on_spnEdges_valueChanged(int)",
        "on_spnStepDeg_valueChanged(double)",
        "on_spnEdgesStartEnd_valueChanged(int)",
        "on_btnShowSamples_clicked()",
        "on_btnAddNodes_clicked()",
        "on_chkShortcut_clicked(bool)",
        "on_spnGrowMap_valueChanged(int)",
        "on_chkCheckRoutes_clicked(bool)",
    };
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), int(std::size(expected)));
    for (int i = 0; i < int(std::size(expected)); ++i) {
        const QMetaMethod method = meta.method(meta.methodOffset() + i);
        EXPECT_EQ(method.methodSignature(), QByteArray(expected[i])) << "slot " << i;
        EXPECT_EQ(method.methodType(), QMetaMethod::Slot);
    }
}

}  // namespace
