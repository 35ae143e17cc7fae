#pragma once

class QString;

/// Looks at a bundle file that did not come with the installation. What KelvaronBundle and the start
/// take as damage of an installed file, and end the program for, is only a wrong choice here.
class BundleCheck
{
public:
    BundleCheck() = delete;

    /// Whether the file may be opened as a bundle and copied into the installation. False for a
    /// directory or a device, for a file far too large to be a bundle, for a malformed line in the
    /// key/value block and for a required editor version that is no dotted version. True for a file
    /// that is not there or cannot be read: it gives nothing.
    static bool isSafe(const QString& path);
};
