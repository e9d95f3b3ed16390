#pragma once

#include "vorlik/iappvorlik.h"

#include <QObject>

class QAction;
class QMainWindow;

// A small plug-in that turns text commands into host calls, so that the
// simulated host can be tested without the planner.
class ProbePlugin : public QObject, public IAppVorlik {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Vorlik.IAppVorlik")
    Q_INTERFACES(IAppVorlik)
public:
    QString pluginName() override { return QStringLiteral("Probe"); }
    QString pluginLoad(QMainWindow* mainWindow, QMenuBar* menuBar, QStatusBar* statusBar, HostApi* hostApi,
                       const QString& settings) override;
    void pluginUnload() override;
    void pluginLoadToolbar(QMainWindow* mainWindow, int iconSize) override;
    QString pluginCommand(const QString& command, const QString& value) override;
    void pluginEvent(int eventCode) override;
    bool pluginItemContextMenu(const QList<Item>& items, QMenu* menu) override;

public slots:
    bool IsTarget(Item item);
    Item RobotOf(Item item);
    bool MoveFree(Item robot, const double* from, const double* to);
    QString Describe(const QString& text, int number, double value);
    void Nothing();

private:
    HostItem* firstRobot();
    QString runProgress(int tests);
    QString buildProgram();
    QString jointsOf(const QString& value);

    QMainWindow* mainWindow_ = nullptr;
    HostApi* host_ = nullptr;
    HostItem* kept_ = nullptr;
    QAction* action_ = nullptr;
};
