#include "profiles/profilerows.h"

#include "profiles/profilenamelistwidget.h"

#include <QListWidget>

#include <algorithm>

ProfileNameListWidget* ProfileRows::itemOf(QListWidgetItem* item)
{
    return static_cast<ProfileNameListWidget*>(item);
}

ProfileNameListWidget* ProfileRows::itemAt(const QListWidget& list, int row)
{
    return itemOf(list.item(row));
}

QList<ProfileName*> ProfileRows::widgets(const QListWidget& list)
{
    QList<ProfileName*> rows;
    for (int i = 0; i < list.count(); ++i) {
        rows.append(itemAt(list, i)->getProfileName());
    }
    return rows;
}

QList<const ProfileSettings*> ProfileRows::profiles(const QListWidget& list)
{
    QList<const ProfileSettings*> profiles;
    for (const ProfileName* row : widgets(list)) {
        profiles.append(row->getProfileSettings());
    }
    return profiles;
}

int ProfileRows::selected(const QListWidget& list)
{
    const QList<ProfileName*> rows = widgets(list);
    const auto found = std::find_if(rows.cbegin(), rows.cend(),
                                    [](const ProfileName* row) { return row->isHighlighted(); });
    return found != rows.cend() ? static_cast<int>(found - rows.cbegin()) : -1;
}
