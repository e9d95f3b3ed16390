// The planner's control form.
#pragma once

#include <QWidget>

#include <functional>
#include <memory>

class HostApi;
class PlannerSession;
struct PlannerSettings;
class QCheckBox;
class QDoubleSpinBox;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QSpinBox;
class QVBoxLayout;

// The widgets of the control form, in creation order.
struct FormPRMWidgets {
    QVBoxLayout* verticalLayout = nullptr;
    QWidget* widgetRobotSelect = nullptr;
    QHBoxLayout* horizontalLayout_3 = nullptr;
    QLabel* lblRobot = nullptr;
    QPushButton* btnSelectRobot = nullptr;
    QGridLayout* gridLayout = nullptr;
    QLabel* label = nullptr;
    QSpinBox* spnSamples = nullptr;
    QLabel* label_2 = nullptr;
    QSpinBox* spnEdges = nullptr;
    QLabel* label_4 = nullptr;
    QDoubleSpinBox* spnStepDeg = nullptr;
    QPushButton* btnMakeMap = nullptr;
    QPushButton* btnAddNodes = nullptr;
    QLabel* lblInfo = nullptr;
    QHBoxLayout* horizontalLayout = nullptr;
    QPushButton* btnShowSamples = nullptr;
    QCheckBox* chkDisplayMap = nullptr;
    QHBoxLayout* horizontalLayout_2 = nullptr;
    QLabel* label_3 = nullptr;
    QSpinBox* spnEdgesStartEnd = nullptr;
    QPushButton* btnLinkTargets = nullptr;
    QCheckBox* chkShortcut = nullptr;
    QHBoxLayout* horizontalLayout_4 = nullptr;
    QLabel* lblGrowMap = nullptr;
    QSpinBox* spnGrowMap = nullptr;
    QCheckBox* chkCheckRoutes = nullptr;

    void setupUi(QWidget* form);
    void retranslateUi(QWidget* form);
};

// The planner's control panel: shows the robot and the map's size, edits the
// map settings and starts the planner's operations. Every value comes from the
// session and every edit goes straight back to it; `updates` is the object
// whose UpdateForm() signal says that they changed (the plug-in).
class FormPRM : public QWidget {
    Q_OBJECT

public:
    FormPRM(std::shared_ptr<PlannerSession> session, QObject* updates, QWidget* parent);
    ~FormPRM() override;

    const FormPRMWidgets& widgets() const { return *ui; }
    // The plug-in let go of the form (it unloads): from now on the form
    // neither calls the host nor starts anything, whatever reaches it.
    void release() { released_ = true; }

public slots:
    void UpdateForm();

private slots:
    void on_btnSelectRobot_clicked();
    void on_btnMakeMap_clicked();
    void on_btnLinkTargets_clicked();
    void on_chkDisplayMap_clicked(bool checked);
    void on_spnSamples_valueChanged(int arg1);
    void on_spnEdges_valueChanged(int arg1);
    void on_spnStepDeg_valueChanged(double arg1);
    void on_spnEdgesStartEnd_valueChanged(int arg1);
    void on_btnShowSamples_clicked();
    void on_btnAddNodes_clicked();
    void on_chkShortcut_clicked(bool checked);
    void on_spnGrowMap_valueChanged(int arg1);
    void on_chkCheckRoutes_clicked(bool checked);

private:
    // Shows the session's robot, map and settings.
    void refresh();
    // Applies a change to the settings, or refuses it while an operation runs.
    bool changeSetting(const std::function<void(PlannerSettings&)>& change);

    FormPRMWidgets* ui;
    std::shared_ptr<PlannerSession> session_;
    HostApi* hostApi;
    bool released_ = false;
};
