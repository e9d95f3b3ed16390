// The plug-in interface of the Vorlik host and its event codes.
#pragma once

#include "vorlik/host_api.h"

#include <QList>
#include <QString>
#include <QtPlugin>

class QMainWindow;
class QMenu;
class QMenuBar;
class QStatusBar;

// Codes the host passes to IAppVorlik::pluginEvent.
namespace HostEvent {
constexpr int Redrawn = 1;         // the 3D view was repainted
constexpr int StationChanged = 3;  // items were added, renamed or deleted
constexpr int StationOpened = 4;   // a station was opened or replaced
constexpr int StationSaving = 5;   // the station is about to be saved
constexpr int StationClosing = 6;  // the station is about to be closed
}  // namespace HostEvent

// The plug-in interface of the Vorlik host. A plug-in is a QObject that also
// derives from this class and declares it with Q_INTERFACES(IAppVorlik).
class IAppVorlik {
public:
    virtual ~IAppVorlik() {}
    virtual QString pluginName() = 0;
    virtual QString pluginLoad(QMainWindow* mainWindow, QMenuBar* menuBar, QStatusBar* statusBar, HostApi* hostApi,
                               const QString& settings)
    {
        (void)mainWindow;
        (void)menuBar;
        (void)statusBar;
        (void)hostApi;
        (void)settings;
        return QString();
    }
    virtual void pluginUnload() {}
    virtual void pluginLoadToolbar(QMainWindow* mainWindow, int iconSize)
    {
        (void)mainWindow;
        (void)iconSize;
    }
    // Reserved for hosts that need it; plug-ins may ignore it.
    virtual bool pluginOptionalHook(void* argument)
    {
        (void)argument;
        return false;
    }
    virtual QString pluginCommand(const QString& command, const QString& value)
    {
        (void)command;
        (void)value;
        return QString();
    }
    virtual void pluginEvent(int eventCode) { (void)eventCode; }
    virtual bool pluginItemContextMenu(const QList<Item>& items, QMenu* menu)
    {
        (void)items;
        (void)menu;
        return false;
    }
};

Q_DECLARE_INTERFACE(IAppVorlik, "Vorlik.IAppVorlik")
