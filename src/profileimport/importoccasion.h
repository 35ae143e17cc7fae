#pragma once

/// Why profiles are read into the list, which messages about them have to name.
enum class ImportOccasion
{
    USER_IMPORT,  ///< the user has chosen a file or reads the charger
    BUNDLE_RELOAD ///< the same list comes back, read against a newer bundle
};
