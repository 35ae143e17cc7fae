#include "KelvaronBundle/bundlecheck.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "textfile.h"
#include "versionstring.h"

#include <QFileInfo>

bool BundleCheck::isSafe(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        return true;
    }
    if (!info.isFile() || info.size() > TextFile::largestFile) {
        return false;
    }
    if (!KelvaronBundle::hasSoundKeyBlock(path)) {
        return false;
    }
    KelvaronBundle bundle(path);
    bundle.parseKeyValuePairs();
    const QString required = bundle.valueFromKey(QStringLiteral("MIN_SOFTWARE_VERSION_REQUIRED"));
    return required.isEmpty() || VersionString::isDottedVersion(required);
}
