#pragma once

#include "versionstring.h"

#include <QString>

#include <memory>

class KelvaronBundle;

namespace HParser
{
class Generator;
}

/// The folder in which the editor works: its bundles, the two files extracted from the newest
/// bundle, and the files that the editor requires.
///
/// Shows nothing: each step returns its outcome as a value. All names are relative to the working
/// directory, which enter() sets once for the whole run.
class Installation
{
public:
    static const QString folderName;          ///< next to the executable
    static const QString schemaFile;          ///< extracted: the settings header
    static const QString deviceFile;          ///< extracted: the device description of the uploader
    static const QString savedProfilesFolder; ///< where the file dialogs start

    /// Returns the folder of the executable.
    static QString programFolder();

    /// Makes the folder `folderName` in `programFolder` the working directory. Returns false if it
    /// does not exist; the working directory is then unchanged.
    static bool enter(const QString& programFolder);

    /// Chooses the newest bundle. Returns false if there is none with a version above "0".
    bool chooseBundle();

    /// Returns the file name of the bundle in use; empty before chooseBundle().
    QString bundleFileName() const { return bundleName; }

    /// Returns the version of the bundle in use: a dotted one above "0".
    QString bundleVersion() const { return version; }

    enum class Outcome
    {
        EXTRACTED,
        EDITOR_TOO_OLD,   ///< the files are up to date: nothing was written
        BUNDLE_NOT_READ,  ///< the bundle is incomplete; the files of an earlier one stay in use
        FILES_NOT_WRITTEN ///< the files of an earlier bundle stay in use
    };

    /// Extracts the device description and the settings header of the bundle in use, both or
    /// neither. firstMissing() reports a file that cannot be extracted and does not exist from an
    /// earlier start. A malformed bundle is a fatal assertion.
    Outcome extract();

    /// Returns the minimum version of the editor that the bundle in use requires; "0" if it
    /// requires none.
    VersionString requiredVersion() const { return required; }

    /// Returns whether the file of the bundle in use is far too large for a bundle.
    bool isBundleTooLarge() const;

    enum class File
    {
        NONE,
        SCHEMA,
        UPLOADER,
        DEVICE
    };

    /// Returns the first missing file, in the order of their checks, that the editor requires.
    static File firstMissing();

    static bool hasSchemaFile();

    /// Creates the folder of saved profiles if it is missing. A failure is ignored: the file
    /// dialogs then start elsewhere.
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
