// The control form: its widgets, its refresh from the session, and its slots.
#include "form_prm.h"

#include "add_targets.h"
#include "calculate_map.h"
#include "entry_guard.h"
#include "join_operations.h"
#include "planner_session.h"
#include "roadmap_matrix.h"
#include "show_samples.h"
#include "vorlik/host_api.h"
#include "vorlik/item_types.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpacerItem>
#include <QSpinBox>
#include <QVBoxLayout>

#include <functional>

namespace {
const char* const StepParameter = "PathStepCollisionDeg";

QSpinBox* makeSpinBox(QWidget* parent, const char* name, int step, int value)
{
    auto* box = new QSpinBox(parent);
    box->setObjectName(QLatin1String(name));
    box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    box->setMinimum(1);
    box->setMaximum(9999);
    box->setSingleStep(step);
    box->setValue(value);
    return box;
}

void setQuietly(QObject* editor, const std::function<void()>& set)
{
    const QSignalBlocker blocker(editor);
    set();
}

template <typename Widget> Widget* makeWidget(QWidget* parent, const char* name)
{
    auto* widget = new Widget(parent);
    widget->setObjectName(QLatin1String(name));
    return widget;
}
}  // namespace

void FormPRMWidgets::setupUi(QWidget* form)
{
    if (form->objectName().isEmpty())
        form->setObjectName(QStringLiteral("FormPRM"));
    form->resize(190, 327);
    verticalLayout = new QVBoxLayout(form);
    verticalLayout->setObjectName(QStringLiteral("verticalLayout"));

    widgetRobotSelect = makeWidget<QWidget>(form, "widgetRobotSelect");
    horizontalLayout_3 = new QHBoxLayout(widgetRobotSelect);
    horizontalLayout_3->setObjectName(QStringLiteral("horizontalLayout_3"));
    horizontalLayout_3->setContentsMargins(0, 0, 0, 0);
    lblRobot = makeWidget<QLabel>(widgetRobotSelect, "lblRobot");
    horizontalLayout_3->addWidget(lblRobot);
    btnSelectRobot = makeWidget<QPushButton>(widgetRobotSelect, "btnSelectRobot");
    horizontalLayout_3->addWidget(btnSelectRobot);
    verticalLayout->addWidget(widgetRobotSelect);

    gridLayout = new QGridLayout();
    gridLayout->setObjectName(QStringLiteral("gridLayout"));
    label = makeWidget<QLabel>(form, "label");
    gridLayout->addWidget(label, 0, 0);
    spnSamples = makeSpinBox(form, "spnSamples", 3, 40);
    gridLayout->addWidget(spnSamples, 0, 1);
    label_2 = makeWidget<QLabel>(form, "label_2");
    gridLayout->addWidget(label_2, 1, 0);
    spnEdges = makeSpinBox(form, "spnEdges", 1, 10);
    gridLayout->addWidget(spnEdges, 1, 1);
    label_4 = makeWidget<QLabel>(form, "label_4");
    gridLayout->addWidget(label_4, 2, 0);
    spnStepDeg = makeWidget<QDoubleSpinBox>(form, "spnStepDeg");
    spnStepDeg->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    spnStepDeg->setDecimals(1);
    spnStepDeg->setMinimum(0.1);
    spnStepDeg->setMaximum(10000.0);
    spnStepDeg->setSingleStep(1.0);
    spnStepDeg->setValue(5.0);
    gridLayout->addWidget(spnStepDeg, 2, 1);
    verticalLayout->addLayout(gridLayout);

    btnMakeMap = makeWidget<QPushButton>(form, "btnMakeMap");
    verticalLayout->addWidget(btnMakeMap);
    btnAddNodes = makeWidget<QPushButton>(form, "btnAddNodes");
    verticalLayout->addWidget(btnAddNodes);
    lblInfo = makeWidget<QLabel>(form, "lblInfo");
    verticalLayout->addWidget(lblInfo);

    horizontalLayout = new QHBoxLayout();
    horizontalLayout->setObjectName(QStringLiteral("horizontalLayout"));
    btnShowSamples = makeWidget<QPushButton>(form, "btnShowSamples");
    horizontalLayout->addWidget(btnShowSamples);
    chkDisplayMap = makeWidget<QCheckBox>(form, "chkDisplayMap");
    horizontalLayout->addWidget(chkDisplayMap);
    verticalLayout->addLayout(horizontalLayout);

    verticalLayout->addItem(new QSpacerItem(20, 20, QSizePolicy::Minimum, QSizePolicy::Fixed));

    horizontalLayout_2 = new QHBoxLayout();
    horizontalLayout_2->setObjectName(QStringLiteral("horizontalLayout_2"));
    label_3 = makeWidget<QLabel>(form, "label_3");
    horizontalLayout_2->addWidget(label_3);
    spnEdgesStartEnd = makeSpinBox(form, "spnEdgesStartEnd", 1, 5);
    horizontalLayout_2->addWidget(spnEdgesStartEnd);
    verticalLayout->addLayout(horizontalLayout_2);

    btnLinkTargets = makeWidget<QPushButton>(form, "btnLinkTargets");
    verticalLayout->addWidget(btnLinkTargets);
    chkShortcut = makeWidget<QCheckBox>(form, "chkShortcut");
    verticalLayout->addWidget(chkShortcut);
    horizontalLayout_4 = new QHBoxLayout();
    horizontalLayout_4->setObjectName(QStringLiteral("horizontalLayout_4"));
    lblGrowMap = makeWidget<QLabel>(form, "lblGrowMap");
    horizontalLayout_4->addWidget(lblGrowMap);
    spnGrowMap = makeSpinBox(form, "spnGrowMap", 100, 0);
    spnGrowMap->setMinimum(0);
    spnGrowMap->setMaximum(100000);
    spnGrowMap->setValue(0);
    horizontalLayout_4->addWidget(spnGrowMap);
    verticalLayout->addLayout(horizontalLayout_4);
    chkCheckRoutes = makeWidget<QCheckBox>(form, "chkCheckRoutes");
    verticalLayout->addWidget(chkCheckRoutes);
    verticalLayout->addItem(new QSpacerItem(20, 9, QSizePolicy::Minimum, QSizePolicy::MinimumExpanding));

    retranslateUi(form);
    QMetaObject::connectSlotsByName(form);
}

void FormPRMWidgets::retranslateUi(QWidget* form)
{
    form->setWindowTitle(QCoreApplication::translate("PluginAutoPRM", "Form"));
    lblRobot->setText(QCoreApplication::translate("PluginAutoPRM", "Using Robot"));
    btnSelectRobot->setText(QCoreApplication::translate("PluginAutoPRM", "Select Robot"));
    label->setText(QCoreApplication::translate("PluginAutoPRM", "Number of samples"));
    label_2->setText(QCoreApplication::translate("PluginAutoPRM", "Edges per sample"));
    label_4->setText(QCoreApplication::translate("PluginAutoPRM", "Robot step (deg)"));
    btnMakeMap->setText(QCoreApplication::translate("PluginAutoPRM", "Update Map"));
    btnAddNodes->setText(QCoreApplication::translate("PluginAutoPRM", "Add selected targets"));
    lblInfo->setText(QCoreApplication::translate("PluginAutoPRM", "Information:"));
    btnShowSamples->setText(QCoreApplication::translate("PluginAutoPRM", "Display Samples"));
    chkDisplayMap->setText(QCoreApplication::translate("PluginAutoPRM", "Display map"));
    label_3->setText(QCoreApplication::translate("PluginAutoPRM", "New sample edges"));
    btnLinkTargets->setText(QCoreApplication::translate("PluginAutoPRM", "Link selected targets/programs"));
    chkShortcut->setText(QCoreApplication::translate("PluginAutoPRM", "Shorten routes"));
    lblGrowMap->setText(QCoreApplication::translate("PluginAutoPRM", "Grow map on failure by"));
    spnGrowMap->setSpecialValueText(QCoreApplication::translate("PluginAutoPRM", "off"));
    spnGrowMap->setSuffix(QCoreApplication::translate("PluginAutoPRM", " samples"));
    chkCheckRoutes->setText(QCoreApplication::translate("PluginAutoPRM", "Check routes against the cell"));
}

FormPRM::FormPRM(std::shared_ptr<PlannerSession> session, QObject* updates, QWidget* parent)
    : QWidget(parent), ui(new FormPRMWidgets), session_(std::move(session)), hostApi(session_->host())
{
    ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlags(windowFlags() | Qt::Window);
    session_->selectRobot(true, QString());
    UpdateForm();
    // Queued: a refresh asked for during an operation runs once it has returned.
    connect(updates, SIGNAL(UpdateForm()), this, SLOT(UpdateForm()), Qt::QueuedConnection);
}

FormPRM::~FormPRM()
{
    delete ui;
}

void FormPRM::UpdateForm()
{
    if (released_)
        return;
    guardedEntry(session_->resources(), hostApi, [this] { refresh(); });
}

void FormPRM::refresh()
{
    QList<Item> robots;
    hostApi->getItemList(robots, ItemType::Robot);
    if (robots.size() < 2) {
        ui->widgetRobotSelect->hide();
    } else {
        ui->widgetRobotSelect->show();
        ui->lblRobot->setText(QCoreApplication::translate("PluginAutoPRM", "Using robot: ") + session_->robotName());
    }

    const RobotMap& map = session_->map();
    const int sampleCount = map.sampleCount();
    if (sampleCount != 0)
        ui->lblInfo->setText(QCoreApplication::translate("PluginAutoPRM", "%1 samples and %2 edges")
                                 .arg(sampleCount)
                                 .arg(map.edgeCount()));
    else
        ui->lblInfo->setText(QCoreApplication::translate("PluginAutoPRM", "No samples. Select Update Map"));

    // Editors are set with their signals blocked so that no setting is marked changed.
    const PlannerSettings& settings = session_->settings();
    setQuietly(ui->spnSamples, [this, &settings] { ui->spnSamples->setValue(settings.samples); });
    setQuietly(ui->spnEdges, [this, &settings] { ui->spnEdges->setValue(settings.edgesPerSample); });
    // The host's step is what edge tests use, so that is what the editor shows.
    QString hostStep;
    hostApi->command(hostStep, QLatin1String(StepParameter), QString());
    setQuietly(ui->spnStepDeg, [this, &hostStep] { ui->spnStepDeg->setValue(hostStep.toDouble()); });
    setQuietly(ui->spnEdgesStartEnd, [this, &settings] { ui->spnEdgesStartEnd->setValue(settings.newNodeEdges); });
    setQuietly(ui->chkDisplayMap, [this, &settings] { ui->chkDisplayMap->setChecked(settings.displaySamples); });
    setQuietly(ui->chkShortcut, [this, &settings] { ui->chkShortcut->setChecked(settings.shortenRoutes); });
    setQuietly(ui->spnGrowMap, [this, &settings] { ui->spnGrowMap->setValue(settings.growLimit); });
    setQuietly(ui->chkCheckRoutes, [this, &settings] { ui->chkCheckRoutes->setChecked(settings.checkRoutes); });

    const bool hasSamples = sampleCount > 0;
    ui->chkDisplayMap->setEnabled(hasSamples);
    ui->btnShowSamples->setEnabled(hasSamples);
    ui->btnAddNodes->setEnabled(hasSamples);
}

bool FormPRM::changeSetting(const std::function<void(PlannerSettings&)>& change)
{
    if (released_)
        return false;
    // While an operation runs the settings stay; the editor shows them again.
    if (session_->busy()) {
        session_->refuseWhileBusy(false);
        UpdateForm();
        return false;
    }
    PlannerSettings settings = session_->settings();
    change(settings);
    session_->changeSettings(settings);
    return true;
}

void FormPRM::on_btnSelectRobot_clicked()
{
    if (released_)
        return;
    if (session_->busy()) {
        session_->refuseWhileBusy(false);
        return;
    }
    guardedEntry(session_->resources(), hostApi, [this] {
        session_->selectRobot(false, QString());
        UpdateForm();
    });
}

void FormPRM::on_btnMakeMap_clicked()
{
    if (released_)
        return;
    guardedEntry(session_->resources(), hostApi, [this] { calculateMap(*session_); });
}

void FormPRM::on_btnLinkTargets_clicked()
{
    if (released_)
        return;
    guardedEntry(session_->resources(), hostApi, [this] { linkSelection(*session_, false); });
}

void FormPRM::on_chkDisplayMap_clicked(bool checked)
{
    if (changeSetting([checked](PlannerSettings& s) { s.displaySamples = checked; }))
        hostApi->update(1);
}

void FormPRM::on_spnSamples_valueChanged(int arg1)
{
    changeSetting([arg1](PlannerSettings& s) { s.samples = arg1; });
}

void FormPRM::on_spnEdges_valueChanged(int arg1)
{
    changeSetting([arg1](PlannerSettings& s) { s.edgesPerSample = arg1; });
}

void FormPRM::on_spnStepDeg_valueChanged(double arg1)
{
    if (!changeSetting([arg1](PlannerSettings& s) { s.robotStepDeg = arg1; }))
        return;
    QString answer;
    hostApi->command(answer, QLatin1String(StepParameter), QString::number(arg1, 'f', 5));
}

void FormPRM::on_spnEdgesStartEnd_valueChanged(int arg1)
{
    changeSetting([arg1](PlannerSettings& s) { s.newNodeEdges = arg1; });
}

void FormPRM::on_btnShowSamples_clicked()
{
    if (released_)
        return;
    guardedEntry(session_->resources(), hostApi, [this] { showSamples(*session_); });
}

void FormPRM::on_btnAddNodes_clicked()
{
    if (released_)
        return;
    guardedEntry(session_->resources(), hostApi, [this] { addTargetsToMap(*session_, false, false); });
}

void FormPRM::on_chkShortcut_clicked(bool checked)
{
    changeSetting([checked](PlannerSettings& s) { s.shortenRoutes = checked; });
}

void FormPRM::on_spnGrowMap_valueChanged(int arg1)
{
    changeSetting([arg1](PlannerSettings& s) { s.growLimit = arg1; });
}

void FormPRM::on_chkCheckRoutes_clicked(bool checked)
{
    changeSetting([checked](PlannerSettings& s) { s.checkRoutes = checked; });
}
