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
    /// Requests the row this far below the selected one, or above it if negative. A row beyond an
    /// end of the list means the row at that end.
    void stepped(int rows);

    /// Requests the deletion of the selected row.
    void deletionWanted();

    /// Requests the profile whose title contains this text: the characters typed so far in quick
    /// succession.
    void titleTyped(const QString& text);

private:
    int stepOf(int key) const;
    int rowsOnAPage() const;
    bool addTyped(const QString& letters);

    QListWidget* list;
    QString typed;
    QElapsedTimer sinceTyped;
};
