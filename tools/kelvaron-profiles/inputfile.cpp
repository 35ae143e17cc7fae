#include "inputfile.h"

#include "base/textfile.h"
#include "console.h"

#include <QFile>
#include <QFileInfo>

QString InputFile::fault(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        return QStringLiteral("is a directory");
    }
    if (info.exists() && !info.isFile()) {
        return QStringLiteral("is not a regular file");
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("cannot be read: %1").arg(file.errorString());
    }
    if (file.size() > TextFile::largestFile) {
        return QStringLiteral("is larger than %1 MiB").arg(TextFile::largestFile >> 20);
    }
    return {};
}

std::optional<QString> InputFile::readText(const QString& path)
{
    const QString problem = fault(path);
    if (!problem.isEmpty()) {
        printError(path, problem);
        return std::nullopt;
    }
    return TextFile::read(path);
}
