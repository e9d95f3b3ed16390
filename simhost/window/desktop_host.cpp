// The host as a person works with it in its window.
#include "desktop_host.h"

#include "host_window.h"
#include "plugin_host.h"
#include "sim_host_api.h"
#include "station_file.h"
#include "station_tree.h"

#include "vorlik/iappvorlik.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>

namespace {

constexpr int busyRetryMs = 20;
const QString stationFilter = QStringLiteral("Vorlik stations (*.json);;All files (*)");

}  // namespace

DesktopHost::DesktopHost(SimHostApi& api, PluginHost& plugin, HostWindow& window, const QString& stationPath)
    : api_(api), plugin_(plugin), window_(window), stationPath_(stationPath)
{
    connect(window.openAction(), &QAction::triggered, this, &DesktopHost::open);
    connect(window.saveAction(), &QAction::triggered, this, &DesktopHost::save);
    connect(window.saveAsAction(), &QAction::triggered, this, &DesktopHost::saveAs);
    connect(window.quitAction(), &QAction::triggered, &window, &QWidget::close);
    StationTree* tree = window.stationTree();
    connect(tree, &StationTree::renameRequested, this, &DesktopHost::renameItem);
    connect(tree, &StationTree::deleteRequested, this, &DesktopHost::deleteItems);
    tree->fillMenu = [this](const QList<Item>& items, QMenu* menu) {
        if (!plugin_.loaded())
            return false;
        ++pluginCalls_;
        const bool added = plugin_.plugin()->pluginItemContextMenu(items, menu);
        --pluginCalls_;
        return added;
    };
    window.installEventFilter(this);
    showStation();
}

DesktopHost::~DesktopHost()
{
    window_.stationTree()->fillMenu = nullptr;
}

bool DesktopHost::openStation(const QString& path, QString* error)
{
    std::unique_ptr<Station> station = station_file::read(path, error);
    if (!station)
        return false;
    api_.replaceStation(std::move(station));
    stationPath_ = path;
    showStation();
    window_.setWindowTitle(QStringLiteral("Vorlik - %1").arg(QFileInfo(path).fileName()));
    report(QStringLiteral("Opened %1").arg(path), false);
    later([this] { sendEvent(HostEvent::StationOpened); });
    return true;
}

void DesktopHost::saveStation(const QString& path)
{
    later([this, path] {
        sendEvent(HostEvent::StationSaving);
        QString error;
        if (!station_file::write(api_.station(), path, &error)) {
            report(error, true);
            return;
        }
        stationPath_ = path;
        report(QStringLiteral("Saved %1").arg(path), false);
    });
}

void DesktopHost::hostCalled()
{
    if (checkQueued_)
        return;
    checkQueued_ = true;
    later([this] {
        checkQueued_ = false;
        checkStation();
    });
}

void DesktopHost::open()
{
    const QString path = QFileDialog::getOpenFileName(&window_, QStringLiteral("Open station"),
                                                      QFileInfo(stationPath_).absolutePath(), stationFilter);
    if (path.isEmpty())
        return;
    QString error;
    if (!openStation(path, &error))
        report(error, true);
}

void DesktopHost::save()
{
    if (stationPath_.isEmpty())
        saveAs();
    else
        saveStation(stationPath_);
}

void DesktopHost::saveAs()
{
    const QString path = QFileDialog::getSaveFileName(&window_, QStringLiteral("Save station as"), stationPath_,
                                                      stationFilter);
    if (!path.isEmpty())
        saveStation(path);
}

void DesktopHost::viewRepainted()
{
    if (repaintQueued_)
        return;
    repaintQueued_ = true;
    later([this] {
        repaintQueued_ = false;
        sendEvent(HostEvent::Redrawn);
    });
}

bool DesktopHost::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != &window_ || event->type() != QEvent::Close || closingSent_)
        return QObject::eventFilter(watched, event);
    // The window closes once the plug-in has heard of it, from the event loop.
    event->ignore();
    later([this] {
        sendEvent(HostEvent::StationClosing);
        closingSent_ = true;
        window_.close();
    });
    return true;
}

void DesktopHost::later(std::function<void()> task, int delayMs)
{
    QTimer::singleShot(delayMs, this, [this, task] {
        if (pluginCalls_ > 0 || QApplication::activeModalWidget()) {
            later(task, busyRetryMs);
            return;
        }
        task();
    });
}

void DesktopHost::sendEvent(int code)
{
    if (!plugin_.loaded())
        return;
    ++pluginCalls_;
    plugin_.plugin()->pluginEvent(code);
    --pluginCalls_;
}

void DesktopHost::checkStation()
{
    if (snapshot() == shown_)
        return;
    showStation();
    sendEvent(HostEvent::StationChanged);
}

void DesktopHost::showStation()
{
    window_.stationTree()->showStation(api_.station());
    shown_ = snapshot();
}

void DesktopHost::renameItem(SimItem* item, const QString& name)
{
    if (api_.station().holds(item))
        item->setName(name);
    hostCalled();
}

void DesktopHost::deleteItems(const QList<SimItem*>& items)
{
    for (SimItem* item : items)
        api_.station().remove(item);
    hostCalled();
}

DesktopHost::Snapshot DesktopHost::snapshot() const
{
    Snapshot items;
    for (const SimItem* item : api_.station().allItems())
        items.emplace_back(item, item->itemType(), item->itemName(), item->parentItem);
    return items;
}

void DesktopHost::report(const QString& text, bool problem)
{
    window_.statusBar()->showMessage(text);
    if (problem)
        QMessageBox::warning(&window_, QStringLiteral("Vorlik"), text);
}
