#pragma once

#include "support/ordinaryuser.h"

#include <QDir>
#include <QFile>

#include <memory>

/// While this object exists, a folder and its subfolders are read-only, also for this process.
class ReadOnlyFolder
{
public:
    explicit ReadOnlyFolder(const QString& path) : folder(path)
    {
        setPermissions(readable);
        user = std::make_unique<OrdinaryUser>();
    }

    ~ReadOnlyFolder()
    {
        user.reset();
        setPermissions(readable | QFile::WriteOwner);
    }

    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

private:
    static constexpr QFile::Permissions readable = QFile::ReadOwner | QFile::ExeOwner
                                                   | QFile::ReadGroup | QFile::ExeGroup
                                                   | QFile::ReadOther | QFile::ExeOther;

    void setPermissions(QFile::Permissions permissions) const
    {
        const QStringList inside = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString& name : inside) {
            QFile::setPermissions(folder.filePath(name), permissions);
        }
        QFile::setPermissions(folder.path(), permissions);
    }

    QDir folder;
    std::unique_ptr<OrdinaryUser> user;
};
