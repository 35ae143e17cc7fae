#pragma once

#include <QString>

#include <memory>

class QLockFile;

/// The number of this editor among those that work in one folder, reserved while the object exists.
/// Each seat has its own names for files that another editor must not overwrite.
class FolderSeat
{
public:
    /// Takes the first free seat in `folder`. The seat of a crashed program is free.
    explicit FolderSeat(const QString& folder);
    ~FolderSeat();

    FolderSeat(const FolderSeat&) = delete;
    FolderSeat& operator=(const FolderSeat&) = delete;

    /// Returns whether this is the first editor in the folder. Also true if no seat could be taken
    /// because the folder is read-only: nothing can be overwritten there.
    bool isFirst() const { return number == 1; }

    /// Returns the file's name for this seat: unchanged for the first one, otherwise with the
    /// seat's number before the suffix ("backup_2.xml").
    QString ownName(const QString& fileName) const;

private:
    int number = 1;
    std::unique_ptr<QLockFile> lock;
};
