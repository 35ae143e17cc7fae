#pragma once

#include "support/printing.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <unistd.h>

/// The bytes of a file; "(no file)" where none can be read.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

/// Writes a file; fails the test when that is not possible.
inline void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path;
    ASSERT_EQ(file.write(bytes), bytes.size()) << path;
}

/// Writes a file that its owner may run.
inline void writeProgram(const QString& path, const QByteArray& bytes)
{
    writeFile(path, bytes);
    ASSERT_TRUE(QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner)) << path;
}

/// Puts a program into another place, without a copy where the file system allows that.
inline void installProgram(const QString& program, const QString& path)
{
    if (link(QFile::encodeName(program).constData(), QFile::encodeName(path).constData()) != 0) {
        ASSERT_TRUE(QFile::copy(program, path)) << path;
    }
}

/// An empty folder that goes away with the test and is the working folder until then.
class WorkingFolder
{
public:
    WorkingFolder() { EXPECT_TRUE(QDir::setCurrent(folder.path())); }
    ~WorkingFolder() { QDir::setCurrent(before); }

    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

    QString path() const { return folder.path(); }

private:
    QTemporaryDir folder;
    QString before = QDir::currentPath();
};
