#include "KelvaronBundle/bundlechooser.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "versionstring.h"

#include <QDir>
#include <QRegExp>

std::optional<BundleChooser::Choice> BundleChooser::mostRecent(const QString& folder)
{
    const QDir directory(folder);
    const QStringList names = directory.entryList(QDir::Files, QDir::Name | QDir::IgnoreCase);
    const QRegExp bundleName(QStringLiteral("\\.kelvaron$"));
    std::optional<Choice> best;
    VersionString bestVersion(QStringLiteral("0"));
    for (const QString& name : names) {
        if (!name.contains(bundleName)) {
            continue;
        }
        const QString text = KelvaronBundle::getBundleVersion(directory.filePath(name));
        const VersionString version(VersionString::isDottedVersion(text) ? text
                                                                         : QStringLiteral("0"));
        if (version.greaterThan(bestVersion)) {
            bestVersion = version;
            best = Choice{name, version.toString()};
        }
    }
    return best;
}
