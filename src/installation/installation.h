#pragma once

#include "versionstring.h"

#include <QString>

#include <memory>

class KelvaronBundle;

namespace HParser
{
class Generator;
}

/// The folder that the editor works in: its bundles, the two files extracted from the newest of them, and
/// the files that the editor cannot work without.
///
/// Shows nothing: each step returns its outcome as a value. All names are relative to the working
/// directory, which enter() sets once for the whole run.
class Installation
{
public:
    static const QString folderName;          ///< beside the executable
    static const QString schemaFile;          ///< extracted: the settings header
    static const QString deviceFile;          ///< extracted: the device description of the uploader
    static const QString savedProfilesFolder; ///< where the file dialogs begin

    /// The folder of the executable.
    static QString programFolder();

    /// Makes the folder `folderName` in `programFolder` the working directory. Returns false when there
    /// is none; the working directory is then as before.
    static bool enter(const QString& programFolder);

    /// Takes the newest bundle into use. Returns false when there is none with a version above "0".
    bool chooseBundle();

    /// The file name of the bundle in use; empty before chooseBundle().
    QString bundleFileName() const { return bundleName; }

    /// Its version: a dotted one above "0".
    QString bundleVersion() const { return version; }

    enum class Outcome
    {
        EXTRACTED,
        EDITOR_TOO_OLD,   ///< for the bundle in use: nothing was written
        BUNDLE_NOT_READ,  ///< it is not a whole bundle; the files of an earlier one stay in use
        FILES_NOT_WRITTEN ///< the files of an earlier bundle stay in use
    };

    /// Extracts the device description and the settings header of the bundle in use, both or neither.
    /// A file that cannot be extracted and is not there from earlier is left to firstMissing().
    /// A malformed bundle is a fatal assertion.
    Outcome extract();

    /// The least version of the editor that the bundle in use asks for; "0" without such a demand.
    VersionString requiredVersion() const { return required; }

    /// Whether the bundle in use is far larger than any bundle.
    bool isBundleTooLarge() const;

    enum class File
    {
        NONE,
        SCHEMA,
        UPLOADER,
        DEVICE
    };

    /// The first file, in the order of their checks, that the editor cannot work without and that is
    /// missing.
    static File firstMissing();

    static bool hasSchemaFile();

    /// Makes the folder of saved profiles where it is missing. A failure is ignored: the file dialogs
    /// then begin elsewhere.
    static void makeSavedProfilesFolder();

    /// Parses and checks the extracted settings header. A malformed one is a fatal assertion that names
    /// the bundle in use.
    std::unique_ptr<HParser::Generator> loadSchema() const;

private:
    Outcome extractFiles(const KelvaronBundle& bundle) const;

    QString bundleName;
    QString version;
    VersionString required{QStringLiteral("0")};
};
