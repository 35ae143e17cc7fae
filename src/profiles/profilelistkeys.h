#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

class QListWidget;

/// Makes steps through the profile list of the keys that a user expects for it, of the Delete key a
/// deletion, and of letters a search. The list itself selects nothing (its rows show the selection), so its own arrow
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

    /// The user wants the profile whose title has this text: the letters typed so far, one soon after
    /// the other.
    void titleTyped(const QString& text);

private:
    int stepOf(int key) const;
    int rowsOnAPage() const;
    bool addTyped(const QString& letters);

    QListWidget* list;
    QString typed;
    QElapsedTimer sinceTyped;
};
