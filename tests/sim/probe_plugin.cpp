#include "probe_plugin.h"

#include "vorlik/item_types.h"

#include <QAction>
#include <QCoreApplication>
#include <QDebug>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QProgressDialog>
#include <QStatusBar>

#include <cstdlib>

QString ProbePlugin::pluginLoad(QMainWindow* mainWindow, QMenuBar*, QStatusBar* statusBar, HostApi* hostApi,
                                const QString& settings)
{
    mainWindow_ = mainWindow;
    host_ = hostApi;
    action_ = new QAction(QStringLiteral("Probe the targets"), this);
    qDebug().noquote() << "Probe loaded with" << settings;
    statusBar->showMessage(QStringLiteral("Probe loaded"));
    return QString();
}

void ProbePlugin::pluginUnload()
{
    qDebug().noquote() << "Probe unloaded";
    action_->deleteLater();
    action_ = nullptr;
}

void ProbePlugin::pluginLoadToolbar(QMainWindow*, int iconSize)
{
    qDebug().noquote() << "Probe toolbar" << iconSize;
}

void ProbePlugin::pluginEvent(int eventCode)
{
    qDebug().noquote() << "Probe event" << eventCode;
    if (eventCode == HostEvent::StationSaving)
        host_->setDataParam(QStringLiteral("Probe"), QByteArray("saved"));
}

bool ProbePlugin::pluginItemContextMenu(const QList<Item>& items, QMenu* menu)
{
    if (items.isEmpty() || items.first()->type() != ItemType::Target)
        return false;
    menu->addAction(action_);
    return true;
}

QString ProbePlugin::pluginCommand(const QString& command, const QString& value)
{
    QString out;
    if (command == QLatin1String("message")) {
        host_->showMessage(value, true);
        return QStringLiteral("shown");
    }
    if (command == QLatin1String("pick")) {
        HostItem* item = host_->pickItem(QStringLiteral("Choose a robot"), ItemType::Robot);
        return item ? item->name() : QStringLiteral("none");
    }
    if (command == QLatin1String("question")) {
        const auto answer = QMessageBox::question(mainWindow_, QStringLiteral("Replace map"), value,
                                                  QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                                                  QMessageBox::NoButton);
        return answer == QMessageBox::Yes ? QStringLiteral("Yes")
             : answer == QMessageBox::No  ? QStringLiteral("No")
                                          : QStringLiteral("Cancel");
    }
    if (command == QLatin1String("progress"))
        return runProgress(value.toInt());
    if (command == QLatin1String("crash")) {
        // A plug-in that dies in the host's process: what happened so far must still be on file.
        qDebug().noquote() << "Probe crashing";
        std::abort();
    }
    if (command == QLatin1String("collisions"))
        return QString::number(host_->collisions());
    if (command == QLatin1String("param")) {
        const QStringList parts = value.split(QLatin1Char('='));
        return host_->command(out, parts.value(0), parts.value(1));
    }
    if (command == QLatin1String("draw")) {
        const double points[6] = {0, 1, 2, 3, 4, 5};
        const float color[4] = {0.999f, 0.999f, 0.999f, 1.0f};
        host_->drawGeometry(2, points, 2, color, 1.0f, 0);
        return QStringLiteral("drawn");
    }
    if (command == QLatin1String("sequence")) {
        double values[6] = {1, 2, 3, 4, 5, 6};
        int32_t extents[2] = {3, 2};
        RoadmapMatrix matrix;
        matrix.values = values;
        matrix.extents = extents;
        matrix.dimensionCount = 2;
        matrix.ownsValues = false;
        firstRobot()->showJointSequence(&matrix);
        return QStringLiteral("shown");
    }
    if (command == QLatin1String("program"))
        return buildProgram();
    if (command == QLatin1String("menus")) {
        const QMenu* utilities = mainWindow_->findChild<QMenu*>(QStringLiteral("menu-Utilities"));
        const QMenu* collision = mainWindow_->findChild<QMenu*>(QStringLiteral("toolbar-CollisionMenu"));
        return QStringLiteral("utilities=%1 collision=%2")
            .arg(utilities ? utilities->actions().size() : -1)
            .arg(collision ? QStringLiteral("yes") : QStringLiteral("no"));
    }
    if (command == QLatin1String("selected")) {
        QList<Item> items;
        QStringList names;
        for (HostItem* item : host_->getSelectedItems(items))
            names << item->name();
        return names.join(QLatin1Char(','));
    }
    if (command == QLatin1String("keep")) {
        kept_ = host_->getItem(value, ItemType::Target);
        return kept_ ? QStringLiteral("kept") : QStringLiteral("none");
    }
    if (command == QLatin1String("valid"))
        return host_->isValidItem(kept_) ? QStringLiteral("valid") : QStringLiteral("gone");
    if (command == QLatin1String("data"))
        return QString::fromLatin1(host_->getDataParam(value));
    if (command == QLatin1String("joints"))
        return jointsOf(value);
    return QStringLiteral("unknown");
}

HostItem* ProbePlugin::firstRobot()
{
    QList<Item> robots;
    host_->getItemList(robots, ItemType::Robot);
    return robots.isEmpty() ? nullptr : robots.first();
}

QString ProbePlugin::runProgress(int tests)
{
    QProgressDialog dialog(QStringLiteral("Probing"), QStringLiteral("Cancel"), 0, 100, mainWindow_);
    dialog.setWindowTitle(QStringLiteral("Probing"));
    dialog.setWindowModality(Qt::WindowModal);
    dialog.show();
    for (int k = 1; k <= tests; ++k) {
        dialog.setLabelText(QStringLiteral("test %1").arg(k));
        dialog.setValue(k * 100 / (tests + 1));
        host_->collisions();
        QCoreApplication::processEvents();
        if (dialog.wasCanceled())
            return QStringLiteral("cancelled after %1").arg(k);
    }
    return QStringLiteral("done");
}

QString ProbePlugin::buildProgram()
{
    HostItem* robot = firstRobot();
    if (!robot)
        return QStringLiteral("no robot");
    HostItem* program = host_->addProgram(QStringLiteral("Route"), robot);
    JointVector start;
    robot->joints(start);
    for (int k = 1; k <= 2; ++k) {
        JointVector joints = start;
        joints[0] = 5.0 * k;
        robot->setJoints(joints);
        HostItem* target = host_->addTarget(QStringLiteral("Pt %1 (S%2)").arg(k).arg(k + 10), robot->parent(), robot);
        target->setAsJointTarget();
        program->addJointMove(target);
    }
    robot->setJoints(start);
    program->addProgramCall(QStringLiteral("P1"), 0);
    program->setProgramOptionA(false);
    program->setProgramOptionB(false);
    host_->update(1);
    program->finishProgram(QString());
    JointVector first;
    JointVector last;
    program->jointLimits(first, last);
    return QStringLiteral("Route %1 %2").arg(first.toText(QStringLiteral(","), 0), last.toText(QStringLiteral(","), 0));
}

QString ProbePlugin::jointsOf(const QString& value)
{
    HostItem* item = host_->getItem(value, ItemType::Robot);
    if (!item)
        item = host_->getItem(value, ItemType::Target);
    if (!item)
        return QStringLiteral("none");
    JointVector joints;
    return item->joints(joints).toText(QStringLiteral(","), 1);
}

bool ProbePlugin::IsTarget(Item item)
{
    return item && item->type() == ItemType::Target;
}

Item ProbePlugin::RobotOf(Item item)
{
    return item ? item->getLink(ItemType::Robot) : nullptr;
}

bool ProbePlugin::MoveFree(Item robot, const double* from, const double* to)
{
    JointVector lower;
    JointVector upper;
    robot->jointLimits(lower, upper);
    return robot->testJointMove(JointVector(from, lower.count()), JointVector(to, lower.count()), -1.0) == 0;
}

QString ProbePlugin::Describe(const QString& text, int number, double value)
{
    return QStringLiteral("%1 %2 %3").arg(text).arg(number).arg(value);
}

void ProbePlugin::Nothing()
{
    qDebug().noquote() << "Nothing was asked";
}
