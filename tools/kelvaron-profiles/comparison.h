#pragma once

#include "profilepairs.h"
#include "settingsview.h"

#include <QJsonObject>
#include <QList>

class ProfileFile;

/// The differences between two files of profiles: pairs whose settings differ, and profiles without
/// a partner. Global settings are compared if both files have them.
class Comparison
{
public:
    struct Entry
    {
        ProfilePairs::Pair pair;
        QList<SettingsView::Difference> differences;

        bool isSame() const { return pair.left >= 0 && pair.right >= 0 && differences.isEmpty(); }
    };

    /// Compares two files that have been read; they are borrowed and outlive this object.
    Comparison(const ProfileFile& left, const ProfileFile& right);

    bool isSame() const;

    const ProfileFile& leftFile() const { return left; }
    const ProfileFile& rightFile() const { return right; }
    const QList<SettingsView::Difference>& globalDifferences() const { return global; }

    /// Returns all pairs and profiles without a partner, in the order of the lists.
    const QList<Entry>& all() const { return entries; }

    /// Writes the differences to standard output, one per line.
    void print() const;

    /// Returns an object with "left", "right" (the files), "same", "global" and "profiles".
    QJsonObject json() const;

private:
    const ProfileFile& left;
    const ProfileFile& right;
    QList<SettingsView::Difference> global;
    QList<Entry> entries;
};
