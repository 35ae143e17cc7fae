#include "rescue/profilebackups.h"

#include "base/textfile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace
{
QString wordFor(ProfileBackups::Occasion occasion)
{
    switch (occasion) {
    case ProfileBackups::Occasion::WRITTEN:
        return QStringLiteral("written");
    case ProfileBackups::Occasion::READ:
        return QStringLiteral("read");
    case ProfileBackups::Occasion::REPLACED:
        return QStringLiteral("replaced");
    case ProfileBackups::Occasion::DELETED:
        return QStringLiteral("deleted");
    case ProfileBackups::Occasion::RELOADED:
        return QStringLiteral("reloaded");
    }
    return {};
}

/// Matches the names of copies made by any editor in the folder. Captures the time, and the number
/// that distinguishes copies of the same second.
const QRegularExpression& copyName()
{
    static const QRegularExpression pattern(QRegularExpression::anchoredPattern(
        QStringLiteral("profiles(?:_[0-9]{1,3})?"
                       "_([0-9]{4}-[0-9]{2}-[0-9]{2}_[0-9]{2}-[0-9]{2}-[0-9]{2})"
                       "_(?:written|read|replaced|deleted|reloaded)(?:_([0-9]{1,9}))?\\.xml")));
    return pattern;
}

/// The key that sorts copies from the oldest on: the time, then the number within the second.
using Age = std::pair<QString, int>;

Age ageOf(const QString& fileName)
{
    const QRegularExpressionMatch match = copyName().match(fileName);
    return {match.captured(1), qMax(1, match.captured(2).toInt())};
}

bool holds(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.size() == bytes.size() && file.open(QIODevice::ReadOnly) && file.readAll() == bytes;
}
} // namespace

ProfileBackups::ProfileBackups(Document profileFile, const QString& backupFolder,
                               const QString& fileName, QObject* parent)
    : QObject(parent), document(std::move(profileFile)), folder(backupFolder), name(fileName)
{}

bool ProfileBackups::keep(Occasion occasion)
{
    return keep(occasion, document());
}

bool ProfileBackups::keep(Occasion occasion, const QString& profileFile)
{
    const QByteArray bytes = profileFile.toUtf8();
    const QStringList present = copies();
    if (bytes.isEmpty()
        || (!present.isEmpty() && holds(QDir(folder).filePath(present.last()), bytes))) {
        return true;
    }
    const QString path = newPath(occasion);
    QString error = QStringLiteral("the folder cannot be created");
    if (!QDir().mkpath(folder) || !TextFile::writeBytes(path, bytes, &error)) {
        emit notKept(QStringLiteral("No copy of the profiles could be saved in %1: %2")
                         .arg(QDir::toNativeSeparators(folder), error));
        return false;
    }
    deleteOldest(QFileInfo(path).fileName());
    return true;
}

QStringList ProfileBackups::copies() const
{
    QStringList found =
        QDir(folder).entryList({QStringLiteral("profiles_*.xml")}, QDir::Files | QDir::NoSymLinks);
    const auto isOther = [](const QString& fileName) {
        return !copyName().match(fileName).hasMatch();
    };
    found.erase(std::remove_if(found.begin(), found.end(), isOther), found.end());
    std::stable_sort(found.begin(), found.end(),
                     [](const QString& a, const QString& b) { return ageOf(a) < ageOf(b); });
    return found;
}

QString ProfileBackups::newPath(Occasion occasion) const
{
    const QString time =
        QLocale::c().toString(QDateTime::currentDateTime(), QStringLiteral("yyyy-MM-dd_HH-mm-ss"));
    int number = 1;
    for (const QString& copy : copies()) {
        const Age age = ageOf(copy);
        number = age.first == time ? qMax(number, age.second + 1) : number;
    }
    const QString base =
        QDir(folder).filePath(QStringLiteral("%1_%2_%3").arg(name, time, wordFor(occasion)));
    return number == 1 ? base + QStringLiteral(".xml")
                       : QStringLiteral("%1_%2.xml").arg(base).arg(number);
}

/// The newest copy is kept even if the clock was set back.
void ProfileBackups::deleteOldest(const QString& newest) const
{
    QStringList others = copies();
    others.removeOne(newest);
    while (others.size() >= mostCopies) {
        QFile::remove(QDir(folder).filePath(others.takeFirst()));
    }
}
