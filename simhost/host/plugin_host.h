// Loads the plug-in file and drives it through IAppVorlik.
#pragma once

#include "vorlik/iappvorlik.h"

#include <QPluginLoader>
#include <QString>

class QMainWindow;

// The plug-in as the host holds it: loaded from its file by QPluginLoader and
// driven through IAppVorlik.
class PluginHost {
public:
    // Loads the plug-in file; false and a message naming the file when it is not a Vorlik plug-in.
    bool open(const QString& path, QString* error);

    QObject* object() const { return object_; }
    IAppVorlik* plugin() const { return plugin_; }

    // pluginLoad with the window's menu bar and status bar.
    void load(QMainWindow& window, HostApi* api);
    void unload();
    // Between load and unload.
    bool loaded() const { return loaded_; }

private:
    QPluginLoader loader_;
    QObject* object_ = nullptr;
    IAppVorlik* plugin_ = nullptr;
    bool loaded_ = false;
};

// Lets the plug-in's queued calls and deferred deletions happen, as the host's
// event loop would between two things it does.
void processHostEvents();
