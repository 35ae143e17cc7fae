#pragma once

#include "installation/folderseat.h"

#include <QObject>
#include <QString>

class ProfileBackups;
class ProfileRescue;
class QListWidget;
struct Managers;

/// Protects the profile list against loss: makes copies before the list is replaced, deleted or
/// reloaded, dated copies of the charger's profiles, and saves the list when the program crashes.
/// The files, in and below the working directory, have names of this editor's own.
class ListSafety : public QObject
{
    Q_OBJECT

public:
    /// Becomes a child of the window. REQUIRES: the managers have been created; they and the list
    /// outlive this object.
    ListSafety(const Managers& windowManagers, QListWidget* profileList, QWidget* window);

    /// Returns whether no other editor was in the folder at the start.
    bool isOnlyEditor() const { return seat.isFirst(); }

    /// Returns the file in which the list is saved before it is replaced; its name is an example of
    /// this editor's own names.
    QString backupFile() const;

    /// Saves the list to the file from which reload() loads it. Returns false if it could not be
    /// saved completely.
    bool saveForReload();
    void reload();

    /// Saves the list at once, because the program is ending. Returns the path of the file; empty
    /// if there was nothing to save or saving failed.
    QString rescue();

signals:
    /// Returns the current list as the text of a profile file; empty for an empty list.
    void listKept(const QByteArray& profileFile);

    /// Emitted when a dated copy could not be written; `text` is a message for the user.
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
