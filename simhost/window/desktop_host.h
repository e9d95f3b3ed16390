// The host as a person works with it in its window.
#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <tuple>
#include <vector>

class HostWindow;
class PluginHost;
class SimHostApi;
class SimItem;

// The host as a person works with it in its window: File menu (open, save,
// save as, quit), the station tree kept in step with the station, and the
// events the host sends the plug-in of its own accord: 3 when items were
// added, renamed or deleted, 4 after opening a station, 5 before saving, 6 on
// closing, 1 after each repaint of the view. Events are queued and sent from
// the event loop, never while the plug-in is in a call or a modal box is up.
class DesktopHost final : public QObject {
    Q_OBJECT
public:
    DesktopHost(SimHostApi& api, PluginHost& plugin, HostWindow& window, const QString& stationPath);
    ~DesktopHost() override;

    // Reads a station file and puts it in place of the open one; false with a message when it cannot be used.
    bool openStation(const QString& path, QString* error);
    // Sends event 5, then writes the station, from the event loop.
    void saveStation(const QString& path);
    const QString& stationPath() const { return stationPath_; }
    // True once event 6 went out; the window may close.
    bool closed() const { return closingSent_; }

    // Called on every host call of the plug-in: the station may have changed.
    void hostCalled();

public slots:
    void open();
    void save();
    void saveAs();
    // The view was repainted: event 1 follows.
    void viewRepainted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Snapshot = std::vector<std::tuple<const SimItem*, int, QString, const SimItem*>>;

    // Runs the task from the event loop once neither the plug-in nor a modal box is busy.
    void later(std::function<void()> task, int delayMs = 0);
    void sendEvent(int code);
    void checkStation();
    void showStation();
    void renameItem(SimItem* item, const QString& name);
    void deleteItems(const QList<SimItem*>& items);
    Snapshot snapshot() const;
    void report(const QString& text, bool problem);

    SimHostApi& api_;
    PluginHost& plugin_;
    HostWindow& window_;
    QString stationPath_;
    Snapshot shown_;
    bool checkQueued_ = false;
    bool repaintQueued_ = false;
    bool closingSent_ = false;
    int pluginCalls_ = 0;
};
