#pragma once

#include <QString>

#include <memory>

class QLockFile;

/// This program's seat among the editors that work in one folder, taken while the object lives. Each seat
/// has file names of its own for what must not be overwritten by another editor.
class FolderSeat
{
public:
    /// Takes the first free seat of `folder`. A seat left by a program that crashed is free.
    explicit FolderSeat(const QString& folder);
    ~FolderSeat();

    FolderSeat(const FolderSeat&) = delete;
    FolderSeat& operator=(const FolderSeat&) = delete;

    /// Whether no other editor was in the folder. Also true where no seat can be taken because the
    /// folder is read-only: nothing can be overwritten there.
    bool isFirst() const { return number == 1; }

    /// The file's name for this seat: unchanged for the first one, else with its number before the
    /// suffix ("backup_2.xml").
    QString ownName(const QString& fileName) const;

private:
    int number = 1;
    std::unique_ptr<QLockFile> lock;
};
