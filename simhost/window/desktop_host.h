// The host as a person works with it in its window.
#pragma once

#include "station_document.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <tuple>
#include <vector>

class HostWindow;
class PluginHost;
class QJsonObject;
class QTreeWidgetItem;
class SimHostApi;
class SimItem;
class StationView;

// The host as a person works with it in its window: File menu (open, save,
// save as, quit, each asking before changes would be lost), the title with
// the station's file and a modified mark, the station tree and the 3D view
// kept in step with the station, a status bar that says what changed, the
// View and Simulation menus, and the events the host sends the plug-in of its
// own accord: 3 when items were added, renamed or deleted, 4 after opening a
// station, 5 before saving, 6 on closing, 1 after each repaint of the view.
// Events are queued and sent from the event loop, never while the plug-in is
// in a call or a modal box is up.
class DesktopHost final : public QObject {
    Q_OBJECT
public:
    DesktopHost(SimHostApi& api, PluginHost& plugin, HostWindow& window, const QString& stationPath);
    ~DesktopHost() override;

    // Reads a station file and puts it in place of the open one; false with a message when it cannot be used.
    bool openStation(const QString& path, QString* error);
    // Sends event 5, then writes the station, from the event loop.
    void saveStation(const QString& path);
    const QString& stationPath() const { return document_.path(); }
    // True when the station changed since it was opened or saved.
    bool modified() const;
    // True once event 6 went out; the window may close.
    bool closed() const { return closingSent_; }

    // Called on every host call of the plug-in: the station may have changed.
    void hostCalled();
    // Called with every record the host makes: some are news for the status bar.
    void recorded(const QJsonObject& record);

public slots:
    void open();
    void save();
    void saveAs();
    // The view was repainted: event 1 follows.
    void viewRepainted();
    // Plays the selected program (else the last one) in the view.
    void playProgram();

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
    void entryActivated(QTreeWidgetItem* entry);
    void selectionChanged();
    // Event 5, then the file; false (and said) when it could not be written.
    bool writeStation(const QString& path);
    // Asks whether to save changes that would be lost; false: the user cancelled.
    bool keepChanges(const QString& before);
    void showTitle();
    StationView* view() const;
    Snapshot snapshot() const;
    void report(const QString& text, bool problem);

    SimHostApi& api_;
    PluginHost& plugin_;
    HostWindow& window_;
    StationDocument document_;
    QString programNews_;  // a program written, said once the tree shows its items
    Snapshot shown_;
    std::uint64_t viewRevision_ = 0;
    bool checkQueued_ = false;
    bool repaintQueued_ = false;
    bool closingSent_ = false;
    int pluginCalls_ = 0;
};
