#pragma once

class QString;

class KelvaronBundle;

/// Judges a bundle file that did not come with the installation. What ends the program in an installed
/// file is here merely a file that was chosen or sent by mistake.
class BundleCheck
{
public:
    BundleCheck() = delete;

    /// Whether the file may be opened as a bundle. False for a directory or a device, for a file far
    /// too large to be a bundle, for a malformed line in the key/value block and for a required editor
    /// version that is not a dotted version. Also true for a missing or unreadable file, which has no
    /// content to do harm with.
    static bool isSafe(const QString& path);

    /// Whether a start with this bundle as the newest one succeeds: it has a device description and a
    /// schema header, this editor is new enough for it, and the header can be loaded. Its checksums do
    /// not count. REQUIRES: isSafe() for its file, and a bundle whose keys and sections are parsed.
    static bool isUsable(const KelvaronBundle& bundle);
};
