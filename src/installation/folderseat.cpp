#include "installation/folderseat.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>

FolderSeat::FolderSeat(const QString& folder)
{
    constexpr int seats = 100;
    for (int candidate = 1; candidate <= seats; ++candidate) {
        lock = std::make_unique<QLockFile>(
            QDir(folder).filePath(QStringLiteral(".profile_editor_%1.lock").arg(candidate)));
        lock->setStaleLockTime(0); // never stale: an editor may be open for days
        if (lock->tryLock(0)) {
            number = candidate;
            return;
        }
        if (lock->error() != QLockFile::LockFailedError) {
            return;
        }
    }
}

FolderSeat::~FolderSeat() = default;

QString FolderSeat::ownName(const QString& fileName) const
{
    if (isFirst()) {
        return fileName;
    }
    const QString suffix = QFileInfo(fileName).suffix();
    const QString end = suffix.isEmpty() ? QString() : QLatin1Char('.') + suffix;
    return fileName.chopped(end.size()) + QLatin1Char('_') + QString::number(number) + end;
}
