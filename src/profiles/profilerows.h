#pragma once

#include <QList>

class ProfileName;
class ProfileNameListWidget;
class ProfileSettings;
class QListWidget;
class QListWidgetItem;

/// Access to the rows of a profile list. Each of its items is a ProfileNameListWidget; only these
/// functions rely on it.
namespace ProfileRows
{
/// Returns the item as a ProfileNameListWidget; nullptr for nullptr. REQUIRES: an item of a profile
/// list.
ProfileNameListWidget* itemOf(QListWidgetItem* item);

/// Returns the item of a row; nullptr if the list has no such row. The list owns it.
ProfileNameListWidget* itemAt(const QListWidget& list, int row);

/// Returns the rows' widgets, from the first row to the last. The list owns them.
QList<ProfileName*> widgets(const QListWidget& list);

/// Returns the rows' profiles, from the first row to the last. The list's manager owns them.
QList<const ProfileSettings*> profiles(const QListWidget& list);

/// Returns the selected row; -1 if there is none.
int selected(const QListWidget& list);
} // namespace ProfileRows
