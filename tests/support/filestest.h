#pragma once

#include "support/files.h"

#include <QDirIterator>
#include <QMap>

/// A test with the files of one folder, which it calls by their names there.
class FilesTest : public ::testing::Test
{
protected:
    QString pathOf(const QString& name) const { return QDir(filesFolder).filePath(name); }

    bool exists(const QString& name) const { return QFile::exists(pathOf(name)); }

    QByteArray contentOf(const QString& name) const { return ::contentOf(pathOf(name)); }

    void writeFile(const QString& name, const QByteArray& bytes) const
    {
        ::writeFile(pathOf(name), bytes);
    }

    /// Every file in the folder and below by its path, with what it holds; not the lock of an editor.
    QMap<QString, QByteArray> allFiles() const
    {
        QMap<QString, QByteArray> found;
        QDirIterator paths(filesFolder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (paths.hasNext()) {
            const QString path = paths.next();
            if (!path.endsWith(".lock")) {
                found.insert(path, contentOf(path));
            }
        }
        return found;
    }

    QString filesFolder; ///< the folder; the derived class makes it
};
