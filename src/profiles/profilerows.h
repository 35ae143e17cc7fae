#pragma once

#include <QList>

class ProfileName;
class ProfileNameListWidget;
class ProfileSettings;
class QListWidget;
class QListWidgetItem;

/// The rows of a profile list. Each of its items is a ProfileNameListWidget; only this place relies on
/// it.
namespace ProfileRows
{
/// The item itself; nullptr for nullptr. REQUIRES: an item of a profile list.
ProfileNameListWidget* itemOf(QListWidgetItem* item);

/// The item of a row; nullptr when the list has no such row. The list owns it.
ProfileNameListWidget* itemAt(const QListWidget& list, int row);

/// The rows' widgets, from the first row to the last. The list owns them.
QList<ProfileName*> widgets(const QListWidget& list);

/// The rows' profiles, from the first row to the last. The list's manager owns them.
QList<const ProfileSettings*> profiles(const QListWidget& list);

/// The selected row; -1 when there is none.
int selected(const QListWidget& list);
} // namespace ProfileRows
