#pragma once

#include <QList>

class ProfileNameListWidget;
class QListWidget;

/// Collects the rows of an import and adds them to the list together: adding them one by one would
/// lay out the list each time.
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

    /// Sets the row for the first item of the next import; -1 for the end of the list.
    void setPlace(int row) { place = row; }

    /// Adds the collected items to the list, which takes ownership. Returns the last one; nullptr
    /// if there is none or if they are still held back.
    ProfileNameListWidget* show();

private:
    QListWidget* list;
    QList<ProfileNameListWidget*> items;
    int holds = 0;
    int place = -1;
};
