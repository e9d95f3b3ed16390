// The station tree of the host window.
#pragma once

#include "vorlik/host_api.h"

#include <QList>
#include <QTreeWidget>

#include <functional>
#include <memory>

class QMenu;
class SimItem;
class Station;

// The station tree of the host window: robots, frames, objects, targets and programs
// under one heading each; a target in collision shows a warning and says with
// what. Selecting items sets the station's selection in the
// order the user picked them; a right click builds a context menu that plug-ins
// fill in; items can be renamed in place and deleted with the Delete key.
class StationTree final : public QTreeWidget {
    Q_OBJECT
public:
    explicit StationTree(QWidget* parent = nullptr);

    // Rebuilds the tree from the station, keeping its selection.
    void showStation(Station& station);
    // The tree entry of an item, or null.
    QTreeWidgetItem* entryOf(const SimItem* item) const;
    static SimItem* itemOf(const QTreeWidgetItem* entry);

    // Asked for the entries of a context menu of the selected items; true when it added any.
    std::function<bool(const QList<Item>&, QMenu*)> fillMenu;
    // The context menu of the current selection; null when the selection is empty or nobody added anything.
    std::unique_ptr<QMenu> contextMenu();

signals:
    void renameRequested(SimItem* item, const QString& name);
    void deleteRequested(const QList<SimItem*>& items);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void selectionMoved();
    void entryEdited(QTreeWidgetItem* entry, int column);
    void showContextMenu(const QPoint& position);

    Station* station_ = nullptr;
    bool rebuilding_ = false;
};
