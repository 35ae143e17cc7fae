#pragma once

#include <QString>

#include <optional>

/// Chooses the newest of the installed bundles.
class BundleChooser
{
public:
    struct Choice
    {
        QString fileName;
        QString version; ///< a dotted version above "0"
    };

    BundleChooser() = delete;

    /// Returns the bundle file ("*.kelvaron") with the highest version in `folder`; of several with
    /// that version, the first by name ignoring case. A version text that is not a dotted version
    /// counts as "0". Returns nothing if no bundle has a version above "0".
    static std::optional<Choice> mostRecent(const QString& folder);
};
