// The station tree of the host window.
#include "station_tree.h"

#include "collision_report.h"
#include "station.h"

#include "vorlik/item_types.h"

#include <QApplication>
#include <QKeyEvent>
#include <QStyle>
#include <QMenu>

namespace {

constexpr int ItemRole = Qt::UserRole + 1;

struct Heading {
    int type;
    const char* title;
};

const Heading headings[] = {
    {ItemType::Robot, "Robots"},
    {FrameType, "Frames"},
    {ObjectType, "Objects"},
    {ItemType::Target, "Targets"},
    {ItemType::Program, "Programs"},
};

// A target in collision shows as such; its tip says with what.
void markCollision(QTreeWidgetItem* entry, const Station& station, const SimItem* target)
{
    const QStringList collisions = collisionReport(station, target->robot, target->jointValues);
    if (collisions.isEmpty())
        return;
    entry->setForeground(0, QColor(200, 40, 30));
    entry->setIcon(0, QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning));
    entry->setToolTip(0, QStringLiteral("In collision: ") + collisions.join(QStringLiteral("; ")));
}

}  // namespace

StationTree::StationTree(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("tree-Station"));
    setHeaderHidden(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::SelectedClicked);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &StationTree::selectionMoved);
    connect(this, &QTreeWidget::itemChanged, this, &StationTree::entryEdited);
    connect(this, &QWidget::customContextMenuRequested, this, &StationTree::showContextMenu);
}

void StationTree::showStation(Station& station)
{
    rebuilding_ = true;
    station_ = &station;
    clear();
    for (const Heading& heading : headings) {
        auto* group = new QTreeWidgetItem(this, QStringList(QString::fromLatin1(heading.title)));
        group->setFlags(Qt::ItemIsEnabled);
        for (SimItem* item : station.items(heading.type)) {
            auto* entry = new QTreeWidgetItem(group, QStringList(item->itemName()));
            entry->setData(0, ItemRole, QVariant::fromValue(reinterpret_cast<quintptr>(item)));
            entry->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
            if (heading.type == ItemType::Target && targetCollides(station, item))
                markCollision(entry, station, item);
        }
    }
    expandAll();
    for (SimItem* item : station.selection) {
        if (QTreeWidgetItem* entry = entryOf(item))
            entry->setSelected(true);
    }
    rebuilding_ = false;
}

QTreeWidgetItem* StationTree::entryOf(const SimItem* item) const
{
    for (int g = 0; g < topLevelItemCount(); ++g) {
        QTreeWidgetItem* group = topLevelItem(g);
        for (int i = 0; i < group->childCount(); ++i) {
            if (itemOf(group->child(i)) == item)
                return group->child(i);
        }
    }
    return nullptr;
}

SimItem* StationTree::itemOf(const QTreeWidgetItem* entry)
{
    return entry ? reinterpret_cast<SimItem*>(entry->data(0, ItemRole).value<quintptr>()) : nullptr;
}

void StationTree::selectionMoved()
{
    if (rebuilding_ || !station_)
        return;
    QList<SimItem*> selected;
    for (QTreeWidgetItem* entry : selectedItems()) {
        if (SimItem* item = itemOf(entry))
            selected << item;
    }
    // Items keep the order in which they were picked; new ones go last.
    QList<SimItem*> ordered;
    for (SimItem* item : station_->selection) {
        if (selected.contains(item))
            ordered << item;
    }
    for (SimItem* item : selected) {
        if (!ordered.contains(item))
            ordered << item;
    }
    station_->selection = ordered;
}

void StationTree::entryEdited(QTreeWidgetItem* entry, int column)
{
    SimItem* item = itemOf(entry);
    if (rebuilding_ || !item || column != 0 || entry->text(0) == item->itemName())
        return;
    emit renameRequested(item, entry->text(0));
}

std::unique_ptr<QMenu> StationTree::contextMenu()
{
    if (!station_ || station_->selection.isEmpty() || !fillMenu)
        return nullptr;
    QList<Item> items;
    for (SimItem* item : station_->selection)
        items << item;
    auto menu = std::make_unique<QMenu>(this);
    menu->setObjectName(QStringLiteral("menu-StationContext"));
    if (!fillMenu(items, menu.get()) || menu->isEmpty())
        return nullptr;
    return menu;
}

void StationTree::showContextMenu(const QPoint& position)
{
    if (std::unique_ptr<QMenu> menu = contextMenu())
        menu->exec(viewport()->mapToGlobal(position));
}

void StationTree::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete && station_ && !station_->selection.isEmpty()) {
        emit deleteRequested(station_->selection);
        return;
    }
    QTreeWidget::keyPressEvent(event);
}
