#include "KelvaronBundle/bundlechooser.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "versionstring.h"

#include <QDir>
#include <QFileInfo>
#include <QRegExp>
#include <QStringList>

#include <algorithm>

namespace
{
/// By name ignoring case; names that differ only in case are ordered, too, in the same way on every
/// disk.
QStringList namesOfFiles(const QDir& directory)
{
    QStringList names = directory.entryList(QDir::Files, QDir::Name);
    std::stable_sort(names.begin(), names.end(), [](const QString& left, const QString& right) {
        return left.compare(right, Qt::CaseInsensitive) < 0;
    });
    return names;
}
} // namespace

std::optional<BundleChooser::Choice> BundleChooser::mostRecent(const QString& folder)
{
    const QDir directory(folder);
    const QStringList names = namesOfFiles(directory);
    const QRegExp bundleName(QStringLiteral("\\.kelvaron$"));
    std::optional<Choice> best;
    VersionString bestVersion(QStringLiteral("0"));
    for (const QString& name : names) {
        const QString path = directory.filePath(name);
        if (!name.contains(bundleName)
            || !QFileInfo(path).isFile()) { // it may be a link to a device
            continue;
        }
        const QString text = KelvaronBundle::getBundleVersion(path);
        const VersionString version(VersionString::isDottedVersion(text) ? text
                                                                         : QStringLiteral("0"));
        if (version.greaterThan(bestVersion)) {
            bestVersion = version;
            best = Choice{name, version.toString()};
        }
    }
    return best;
}
