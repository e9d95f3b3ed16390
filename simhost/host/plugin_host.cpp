// Loads the plug-in file and drives it through IAppVorlik.
#include "plugin_host.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>

bool PluginHost::open(const QString& path, QString* error)
{
    loader_.setFileName(path);
    object_ = loader_.instance();
    if (!object_) {
        *error = QStringLiteral("%1: cannot load the plug-in: %2").arg(path, loader_.errorString());
        return false;
    }
    plugin_ = qobject_cast<IAppVorlik*>(object_);
    if (!plugin_) {
        *error = QStringLiteral("%1: the plug-in does not implement Vorlik.IAppVorlik").arg(path);
        object_ = nullptr;
        return false;
    }
    registerHostMetaTypes();
    return true;
}

void PluginHost::load(QMainWindow& window, HostApi* api)
{
    plugin_->pluginLoad(&window, window.menuBar(), window.statusBar(), api, QStringLiteral("vorlik-sim"));
    loaded_ = true;
    processHostEvents();
}

void PluginHost::unload()
{
    plugin_->pluginUnload();
    loaded_ = false;
    processHostEvents();
}

void processHostEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
