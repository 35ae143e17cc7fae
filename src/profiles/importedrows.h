#pragma once

#include <QList>

class ProfileNameListWidget;
class QListWidget;

/// The rows of an import, which come into the list together: one by one each of them would have the list
/// laid out anew.
class ImportedRows
{
public:
    /// The list is borrowed.
    explicit ImportedRows(QListWidget* profileList) : list(profileList) {}

    /// Between these two calls, which nest, rows are only collected.
    void hold() { ++holds; }
    void release() { --holds; }

    /// Adds the item of a row, which is in no list yet.
    void add(ProfileNameListWidget* item) { items.append(item); }

    /// Sets the row that the first item of the next import becomes; -1 for the end of the list.
    void setPlace(int row) { place = row; }

    /// Puts the collected items into the list, which owns them from then on. Returns the last one;
    /// nullptr when there is none, or when they are still held.
    ProfileNameListWidget* show();

private:
    QListWidget* list;
    QList<ProfileNameListWidget*> items;
    int holds = 0;
    int place = -1;
};
