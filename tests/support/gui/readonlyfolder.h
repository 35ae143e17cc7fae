#pragma once

#include <QDir>
#include <QFile>
#include <QString>

#include <unistd.h>

/// While it lives, a folder and those in it can only be read, by this process too: the
/// administrator, whom no permission stops, is an ordinary user meanwhile.
class ReadOnlyFolder
{
public:
    explicit ReadOnlyFolder(QString path) : folder(std::move(path))
    {
        QFile::setPermissions(folder, readable);
        const QStringList inside = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString& name : inside) {
            QFile::setPermissions(QDir(folder).filePath(name), readable);
        }
        if (isAdministrator) {
            isAdministrator = seteuid(nobody) == 0;
        }
    }

    ~ReadOnlyFolder()
    {
        if (isAdministrator) {
            isAdministrator = seteuid(0) == 0;
        }
        QFile::setPermissions(folder, readable | QFile::WriteOwner);
        const QStringList inside = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString& name : inside) {
            QFile::setPermissions(QDir(folder).filePath(name), readable | QFile::WriteOwner);
        }
    }

    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

private:
    static constexpr uid_t nobody = 65534;
    static constexpr QFile::Permissions readable = QFile::ReadOwner | QFile::ExeOwner
                                                   | QFile::ReadGroup | QFile::ExeGroup
                                                   | QFile::ReadOther | QFile::ExeOther;

    QString folder;
    bool isAdministrator = geteuid() == 0;
};
