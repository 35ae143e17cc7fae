#include "KelvaronBundle/bundlecheck.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "versionstring.h"

#include <QFileInfo>

namespace
{
constexpr qint64 largestBundle =
    64 * 1024 * 1024; // bytes; a firmware image of the charger has 100 KiB
}

bool BundleCheck::isSafe(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        return true;
    }
    if (!info.isFile() || info.size() > largestBundle) {
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
