#include "installation/installation.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/schemacheck.h"
#include "HEXGeneratorParser/hexutility.h"
#include "KelvaronBundle/bundlechooser.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "base/buildconstants.h"
#include "base/installedfilescope.h"
#include "base/textfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

const QString Installation::folderName = QStringLiteral("KelvaronProfileEditorFiles");
const QString Installation::schemaFile = QStringLiteral("kelvaron_chemistries.cb");
const QString Installation::deviceFile = QStringLiteral("device.txt");
const QString Installation::savedProfilesFolder = QStringLiteral("saved_profiles");

namespace
{
bool hasDeviceFile()
{
    return QFileInfo(Installation::deviceFile).isFile();
}

bool isUpToDate(const TextFile::Content& content)
{
    QFile file(content.path);
    return file.open(QIODevice::ReadOnly) && file.readAll() == content.bytes;
}
} // namespace

QString Installation::programFolder()
{
    // If the executable was replaced after the start, by an upgrade or by another start of the
    // launcher, the system no longer has a name for it; the name by which it was started is used
    // then.
    return QCoreApplication::applicationFilePath().isEmpty()
               ? QFileInfo(QCoreApplication::arguments().value(0)).absolutePath()
               : QCoreApplication::applicationDirPath();
}

bool Installation::enter(const QString& programFolder)
{
    QDir folder(programFolder);
    return folder.cd(folderName) && QDir::setCurrent(folder.absolutePath());
}

bool Installation::chooseBundle()
{
    const auto choice = BundleChooser::mostRecent(QStringLiteral("./"));
    if (!choice) {
        return false;
    }
    bundleName = choice->fileName;
    version = choice->version;
    return true;
}

Installation::Outcome Installation::extract()
{
    const InstalledFileScope scope(bundleName);
    KelvaronBundle bundle(bundleName);
    bundle.parseKeyValuePairs();
    const QString demand = bundle.valueFromKey(KelvaronBundle::minimumVersionKey);
    required = VersionString(demand.isEmpty() ? QStringLiteral("0") : demand);
    if (VersionString(QString::fromLatin1(BuildConstants::editorVersion)).lessThan(required)) {
        return Outcome::EDITOR_TOO_OLD;
    }
    bundle.parseBundle(); // a mismatch is only reported on standard output
    if (bundle.getNumEmbedded() > KelvaronBundle::SCHEMA_HEADER) {
        return extractFiles(bundle);
    }
    return hasSchemaFile() && hasDeviceFile() ? Outcome::BUNDLE_NOT_READ : Outcome::EXTRACTED;
}

Installation::Outcome Installation::extractFiles(const KelvaronBundle& bundle) const
{
    const QVector<TextFile::Content> files = {
        {deviceFile, bundle.bytesOf(KelvaronBundle::DEVICE_DESCRIPTION)},
        {schemaFile, bundle.bytesOf(KelvaronBundle::SCHEMA_HEADER)}};
    // Usually they are up to date; waiting for the disk would take longer than the rest of the start.
    if (std::all_of(files.cbegin(), files.cend(), isUpToDate) || TextFile::writeTogether(files)) {
        return Outcome::EXTRACTED;
    }
    if (!hasSchemaFile() && !hasDeviceFile()) { // no older file could be mixed with a new one
        bundle.saveFile(KelvaronBundle::DEVICE_DESCRIPTION, QStringLiteral("./") + deviceFile);
        bundle.saveFile(KelvaronBundle::SCHEMA_HEADER, QStringLiteral("./") + schemaFile);
    }
    return hasSchemaFile() && hasDeviceFile() ? Outcome::FILES_NOT_WRITTEN : Outcome::EXTRACTED;
}

bool Installation::isBundleTooLarge() const
{
    return QFileInfo(bundleName).size() > TextFile::largestFile;
}

Installation::File Installation::firstMissing()
{
    if (!hasSchemaFile()) {
        return File::SCHEMA;
    }
    if (!QFileInfo(QString::fromLatin1(BuildConstants::uploaderFileName)).isFile()) {
        return File::UPLOADER;
    }
    return hasDeviceFile() ? File::NONE : File::DEVICE;
}

bool Installation::hasSchemaFile()
{
    return QFileInfo(schemaFile).isFile();
}

void Installation::makeSavedProfilesFolder()
{
    if (!QFileInfo::exists(savedProfilesFolder)) {
        QDir().mkdir(savedProfilesFolder);
    }
}

std::unique_ptr<HParser::Generator> Installation::loadSchema() const
{
    // The schema is extracted from the bundle at every start, because the bundle can be replaced.
    const InstalledFileScope bundleScope(bundleName);
    auto generator = std::make_unique<HParser::Generator>(nullptr);
    generator->setHFileLocation(schemaFile);
    generator->generate();
    const InstalledFileScope schemaScope(schemaFile);
    HParser::SchemaCheck::run(*generator);
    // An empty schema is an error.
    HEXGeneratorParser::HexUtility::numProfilesAllowed(generator.get());
    return generator;
}
