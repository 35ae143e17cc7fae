#pragma once

#include <QObject>

class QListWidget;

/// Makes steps through the profile list of the keys that a user expects for it, and of the Delete
/// key a deletion. The list itself selects nothing (its rows show the selection), so its own arrow
/// keys would move a mark that nobody sees.
class ProfileListKeys : public QObject
{
    Q_OBJECT

public:
    /// Watches `profileList`, which owns it from now on.
    explicit ProfileListKeys(QListWidget* profileList);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// The user wants the row that is this far below the selected one, above it when negative. It
    /// may lie beyond the ends of the list, which then stand for it.
    void stepped(int rows);

    /// The user wants the selected row gone.
    void deletionWanted();

private:
    int stepOf(int key) const;
    int rowsOnAPage() const;

    QListWidget* list;
};
