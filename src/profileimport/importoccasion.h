#pragma once

/// The reason why profiles are read into the list; messages about them depend on it.
enum class ImportOccasion
{
    USER_IMPORT,  ///< the user has chosen a file or is reading the charger
    BUNDLE_RELOAD ///< the same list is read again with a newer bundle
};
