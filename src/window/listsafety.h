#pragma once

#include "installation/folderseat.h"

#include <QObject>
#include <QString>

class ProfileBackups;
class ProfileRescue;
class QListWidget;
struct Managers;

/// What keeps the profile list from being lost: copies made before it is replaced, deleted or reloaded,
/// dated ones of what the charger holds, and the rescue when the program dies. The files have names of
/// this editor's own, in the working directory and below it.
class ListSafety : public QObject
{
    Q_OBJECT

public:
    /// A child of the window. REQUIRES: the managers are made; they and the list outlive this object.
    ListSafety(const Managers& windowManagers, QListWidget* profileList, QWidget* window);

    /// Whether no other editor was in the folder at the start.
    bool isOnlyEditor() const { return seat.isFirst(); }

    /// Where the list is saved before it is replaced: an example of this editor's own names.
    QString backupFile() const;

    /// Saves the list to a file of which reload() loads it. Returns false when it could not be saved
    /// whole.
    bool saveForReload();
    void reload();

    /// Saves the list at once, because the program ends. Returns the path of the file; empty when there
    /// was nothing to save or it could not be saved.
    QString rescue();

signals:
    /// The list as it is now: the text of a profile file, empty for an empty list.
    void listKept(const QByteArray& profileFile);

    /// A dated copy could not be written; `text` says so to the user.
    void notKept(const QString& text);

private:
    bool backUp(const QString& fileName) const;
    bool backUpBeforeReplacing();
    QString reloadFile() const;

    const Managers& managers;
    QWidget* parentWidget;
    QListWidget* list;
    FolderSeat seat;
    ProfileRescue* profileRescue;   ///< a child of this object
    ProfileBackups* profileBackups; ///< a child of this object
};
