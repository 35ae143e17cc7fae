#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

class QListWidget;

/// Maps the arrow, Home, End and Page keys to steps through the profile list, the Delete key to a
/// deletion, and typed characters to a search. The list itself selects nothing (its rows show the
/// selection), so its own arrow keys would move an invisible current item.
class ProfileListKeys : public QObject
{
    Q_OBJECT

public:
    /// Watches `profileList`, which becomes the parent.
    explicit ProfileListKeys(QListWidget* profileList);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Requests this row, some steps from the selected one.
    void stepped(int row);

    /// Requests the deletion of the selected row.
    void deletionWanted();

    /// Requests this row: its title contains the characters typed so far in quick succession.
    void titleFound(int row);

private:
    int stepOf(int key) const;
    int rowsOnAPage() const;
    void step(int rows);
    bool addTyped(const QString& letters);
    int findTyped() const;

    QListWidget* list;
    QString typed;
    QElapsedTimer sinceTyped;
};
