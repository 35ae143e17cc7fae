#include "KelvaronBundle/bundlecheck.h"

#include "CBGenerator/schemacheck.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "base/buildconstants.h"
#include "base/textfile.h"
#include "versionstring.h"

#include <QFileInfo>

namespace
{
bool isEditorNewEnough(const KelvaronBundle& bundle)
{
    const QString required = bundle.valueFromKey(KelvaronBundle::minimumVersionKey);
    return required.isEmpty()
           || !VersionString(QString::fromLatin1(BuildConstants::editorVersion))
                   .lessThan(VersionString(required));
}
} // namespace

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
    const QString required = bundle.valueFromKey(KelvaronBundle::minimumVersionKey);
    return required.isEmpty() || VersionString::isDottedVersion(required);
}

bool BundleCheck::isUsable(const KelvaronBundle& bundle)
{
    return bundle.getNumEmbedded() > KelvaronBundle::SCHEMA_HEADER && isEditorNewEnough(bundle)
           && HParser::SchemaCheck::isUsable(bundle.getFile(KelvaronBundle::SCHEMA_HEADER));
}
