#include "profiles/importedrows.h"

#include "profiles/profilenamelistwidget.h"

#include <QListWidget>

#include <utility>

ProfileNameListWidget* ImportedRows::show()
{
    if (holds > 0 || items.isEmpty()) {
        return nullptr;
    }
    // All items first: attaching a row triggers a layout of the list.
    const int first = place < 0 ? list->count() : place;
    place = -1;
    for (int i = 0; i < items.size(); ++i) {
        list->insertItem(first + i, items.at(i));
    }
    for (ProfileNameListWidget* item : qAsConst(items)) {
        item->attachRow();
    }
    return std::exchange(items, {}).last();
}
