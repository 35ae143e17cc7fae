#pragma once

class QString;

class KelvaronBundle;

/// Checks a bundle file that did not come with the installation. A fault that would end the program
/// in an installed file only means here that the wrong file was chosen or sent.
class BundleCheck
{
public:
    BundleCheck() = delete;

    /// Returns whether the file can be opened as a bundle. False for a directory or a device, for a
    /// file far too large to be a bundle, for a malformed line in the key/value block and for a
    /// required editor version that is not a dotted version. Also true for a missing or unreadable
    /// file, which has no content to misuse.
    static bool isSafe(const QString& path);

    /// Returns whether a start with this bundle as the newest one succeeds: it has a device
    /// description and a schema header, this editor is new enough for it, and the header can be
    /// loaded. Checksums are ignored. REQUIRES: isSafe() for its file, and a bundle whose keys and
    /// sections are parsed.
    static bool isUsable(const KelvaronBundle& bundle);
};
