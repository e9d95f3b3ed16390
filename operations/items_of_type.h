// Picking the items of one type out of a list of host items.
#pragma once

#include "vorlik/host_item.h"

#include <QList>

// The items of one type code, in the order of the given list.
inline QList<Item> itemsOfType(const QList<Item>& items, int itemType)
{
    QList<Item> kept;
    for (Item item : items) {
        if (item->type() == itemType)
            kept << item;
    }
    return kept;
}
