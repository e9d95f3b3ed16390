// The host as a person works with it in its window.
#include "desktop_host.h"

#include "collision_report.h"
#include "host_window.h"
#include "plugin_host.h"
#include "sim_host_api.h"
#include "station_file.h"
#include "station_news.h"
#include "station_tree.h"
#include "station_view.h"

#include "vorlik/iappvorlik.h"
#include "vorlik/item_types.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>

#include <utility>

namespace {

constexpr int busyRetryMs = 20;
const QString stationFilter = QStringLiteral("Vorlik stations (*.json);;All files (*)");

station_news::Items kinds(const std::vector<std::tuple<const SimItem*, int, QString, const SimItem*>>& snapshot)
{
    station_news::Items items;
    for (const auto& entry : snapshot)
        items.emplace_back(std::get<0>(entry), std::get<1>(entry));
    return items;
}

}  // namespace

DesktopHost::DesktopHost(SimHostApi& api, PluginHost& plugin, HostWindow& window, const QString& stationPath)
    : api_(api), plugin_(plugin), window_(window)
{
    // The station as its file holds it, unless something changed it since.
    document_.stored(stationPath, 0);
    connect(window.openAction(), &QAction::triggered, this, &DesktopHost::open);
    connect(window.saveAction(), &QAction::triggered, this, &DesktopHost::save);
    connect(window.saveAsAction(), &QAction::triggered, this, &DesktopHost::saveAs);
    connect(window.quitAction(), &QAction::triggered, &window, &QWidget::close);
    connect(window.playAction(), &QAction::triggered, this, &DesktopHost::playProgram);
    connect(window.pauseAction(), &QAction::triggered, this, [this] {
        StationView* shown = view();
        if (shown)
            shown->togglePause();
        window_.pauseAction()->setChecked(shown && shown->paused());
    });
    connect(window.stopAction(), &QAction::triggered, this, [this] {
        if (StationView* shown = view())
            shown->stopPlaying();
    });
    connect(window.fitAction(), &QAction::triggered, this, [this] {
        if (StationView* shown = view())
            shown->frameStation();
    });
    connect(window.resetViewAction(), &QAction::triggered, this, [this] {
        if (StationView* shown = view())
            shown->resetView();
    });
    StationTree* tree = window.stationTree();
    connect(tree, &StationTree::renameRequested, this, &DesktopHost::renameItem);
    connect(tree, &StationTree::deleteRequested, this, &DesktopHost::deleteItems);
    connect(tree, &QTreeWidget::itemActivated, this, &DesktopHost::entryActivated);
    connect(tree, &QTreeWidget::itemSelectionChanged, this, &DesktopHost::selectionChanged);
    tree->fillMenu = [this](const QList<Item>& items, QMenu* menu) {
        if (!plugin_.loaded())
            return false;
        ++pluginCalls_;
        const bool added = plugin_.plugin()->pluginItemContextMenu(items, menu);
        --pluginCalls_;
        return added;
    };
    // What the status bar says of a sequence or a playback ends with it.
    if (StationView* shown = view()) {
        connect(shown, &StationView::playingChanged, this, [this, shown] {
            window_.pauseAction()->setChecked(shown->paused());
            const QString said = window_.statusBar()->currentMessage();
            if (!shown->playing() && (said.startsWith(QLatin1String("Showing ")) || said.startsWith(QLatin1String("Playing "))))
                window_.statusBar()->clearMessage();
        });
    }
    window.installEventFilter(this);
    showStation();
    showTitle();
    report(stationPath.isEmpty() ? QStringLiteral("No station yet: open one with File > Open") 
                                 : QStringLiteral("Opened %1").arg(stationPath),
           false);
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
    if (StationView* shown = view())
        shown->stopPlaying();
    api_.replaceStation(std::move(station));
    document_.stored(path, api_.station().revision());
    showStation();
    showTitle();
    if (StationView* shown = view()) {
        viewRevision_ = api_.station().revision();
        shown->frameStation();
    }
    report(QStringLiteral("Opened %1").arg(path), false);
    later([this] { sendEvent(HostEvent::StationOpened); });
    return true;
}

void DesktopHost::saveStation(const QString& path)
{
    later([this, path] { writeStation(path); });
}

bool DesktopHost::writeStation(const QString& path)
{
    sendEvent(HostEvent::StationSaving);
    QString error;
    if (!station_file::write(api_.station(), path, &error)) {
        report(error, true);
        return false;
    }
    document_.stored(path, api_.station().revision());
    showTitle();
    report(QStringLiteral("Saved %1").arg(path), false);
    return true;
}

bool DesktopHost::modified() const
{
    return document_.modified(api_.station().revision());
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

void DesktopHost::recorded(const QJsonObject& record)
{
    const QString type = record.value(QStringLiteral("type")).toString();
    if (type == QLatin1String("program")) {
        int moves = 0;
        int calls = 0;
        for (const QJsonValue& instruction : record.value(QStringLiteral("instructions")).toArray())
            (instruction.toObject().contains(QStringLiteral("call")) ? calls : moves) += 1;
        // Said with the items that came with it, once the station tree shows them.
        programNews_ = station_news::programWritten(record.value(QStringLiteral("name")).toString(), moves, calls);
        hostCalled();
    } else if (type == QLatin1String("sequence") && record.value(QStringLiteral("cols")).toInt() > 0) {
        const int count = record.value(QStringLiteral("cols")).toInt();
        report(QStringLiteral("Showing %1 configurations of %2 (%3; any key or click stops)")
                   .arg(count)
                   .arg(record.value(QStringLiteral("robot")).toString())
                   .arg(count > StationView::MostSequenceFrames
                            ? QStringLiteral("%1 of them").arg(StationView::MostSequenceFrames)
                            : QStringLiteral("all")),
               false);
    }
}

void DesktopHost::open()
{
    if (!keepChanges(QStringLiteral("opening another station")))
        return;
    const QString path = QFileDialog::getOpenFileName(&window_, QStringLiteral("Open station"),
                                                      QFileInfo(document_.path()).absolutePath(), stationFilter);
    if (path.isEmpty())
        return;
    QString error;
    if (!openStation(path, &error))
        report(error, true);
}

void DesktopHost::save()
{
    if (document_.path().isEmpty())
        saveAs();
    else
        saveStation(document_.path());
}

void DesktopHost::saveAs()
{
    const QString path = QFileDialog::getSaveFileName(&window_, QStringLiteral("Save station as"), document_.path(),
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
        if (!plugin_.loaded())
            return;
        ++pluginCalls_;
        api_.sendRedrawn(plugin_.plugin());
        --pluginCalls_;
    });
}

void DesktopHost::playProgram()
{
    StationView* shown = view();
    const SimItem* program = shownProgram(api_.station());
    if (!shown || !program)
        return report(QStringLiteral("There is no program to play: select one in the station tree"), false);
    if (!shown->playProgram(program))
        return report(QStringLiteral("Program %1 has no joint move its robot can take").arg(program->itemName()),
                      false);
    report(QStringLiteral("Playing %1 (F6 pauses, Esc stops)").arg(program->itemName()), false);
}

bool DesktopHost::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != &window_ || event->type() != QEvent::Close || closingSent_)
        return QObject::eventFilter(watched, event);
    // The window closes once the plug-in has heard of it, from the event loop.
    event->ignore();
    later([this] {
        if (!keepChanges(QStringLiteral("quitting")))
            return;
        sendEvent(HostEvent::StationClosing);
        closingSent_ = true;
        window_.close();
    });
    return true;
}

bool DesktopHost::keepChanges(const QString& before)
{
    if (!modified())
        return true;
    const QString name = document_.path().isEmpty() ? QStringLiteral("untitled station")
                                                      : QFileInfo(document_.path()).fileName();
    const auto answer = QMessageBox::question(
        &window_, QStringLiteral("Vorlik"),
        QStringLiteral("The changes to %1 are not saved. Save them before %2?").arg(name, before),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Discard)
        return true;
    if (answer != QMessageBox::Save)
        return false;
    QString path = document_.path();
    if (path.isEmpty())
        path = QFileDialog::getSaveFileName(&window_, QStringLiteral("Save station as"), QString(), stationFilter);
    return !path.isEmpty() && writeStation(path);
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
    showTitle();
    if (StationView* shown = view(); shown && api_.station().revision() != viewRevision_) {
        viewRevision_ = api_.station().revision();
        shown->update();
    }
    const Snapshot now = snapshot();
    QStringList news;
    if (!programNews_.isEmpty())
        news << std::exchange(programNews_, QString());
    if (now != shown_)
        news << station_news::itemsAddedOrDeleted(kinds(shown_), kinds(now));
    news.removeAll(QString());
    if (!news.isEmpty())
        report(news.join(QStringLiteral("; ")), false);
    if (now == shown_)
        return;
    showStation();
    sendEvent(HostEvent::StationChanged);
}

void DesktopHost::showStation()
{
    window_.stationTree()->showStation(api_.station());
    shown_ = snapshot();
}

void DesktopHost::showTitle()
{
    window_.setWindowTitle(document_.windowTitle());
    window_.setWindowModified(modified());
}

void DesktopHost::renameItem(SimItem* item, const QString& name)
{
    if (api_.station().holds(item))
        item->setName(name);
    hostCalled();
}

void DesktopHost::deleteItems(const QList<SimItem*>& items)
{
    QStringList names;
    for (const SimItem* item : items)
        names << item->itemName();
    const QString question = items.size() == 1
                                 ? QStringLiteral("Delete %1 from the station?").arg(names.first())
                                 : QStringLiteral("Delete these %1 items from the station?\n%2")
                                       .arg(items.size())
                                       .arg(names.join(QStringLiteral(", ")));
    if (QMessageBox::question(&window_, QStringLiteral("Vorlik"), question, QMessageBox::Yes | QMessageBox::No,
                              QMessageBox::No)
        != QMessageBox::Yes)
        return;
    for (SimItem* item : items)
        api_.station().remove(item);
    hostCalled();
}

void DesktopHost::selectionChanged()
{
    // The view shows the selected program's path.
    if (StationView* shown = view())
        shown->update();
    // A target in collision: what with, which is why no link reaches it.
    const QList<SimItem*>& selected = api_.station().selection;
    if (selected.isEmpty() || selected.last()->itemType() != ItemType::Target)
        return;
    const SimItem* target = selected.last();
    const QStringList collisions = collisionReport(api_.station(), target->robot, target->jointValues);
    if (!collisions.isEmpty())
        report(QStringLiteral("Target %1 is in collision: %2").arg(target->itemName(), collisions.join(QStringLiteral("; "))),
               false);
}

void DesktopHost::entryActivated(QTreeWidgetItem* entry)
{
    // A double click (or Enter) on a program plays it.
    const SimItem* item = StationTree::itemOf(entry);
    if (item && item->itemType() == ItemType::Program)
        playProgram();
}

StationView* DesktopHost::view() const
{
    return qobject_cast<StationView*>(window_.centralWidget());
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
