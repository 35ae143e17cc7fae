#pragma once

#include <QLatin1String>
#include <QString>

/// The few values shared by unrelated features, stored as texts by key.
///
/// There is one map for the whole process, used on the GUI thread only.
class ApplicationGlobalMap
{
public:
    ApplicationGlobalMap() = delete;

    /// The only key in use: the version of the bundle in use.
    static constexpr QLatin1String bundleVersion{"bundle_version"};

    static void putString(const QString& key, const QString& value);

    /// Returns the value; inserts a missing key with an empty value.
    static QString getString(const QString& key);

    // Kept: part of the interface; nothing calls the four functions in this version.

    /// Stores the number as text with 6 significant digits.
    static void putDouble(const QString& key, double value);

    /// Returns the text as a number; 0 if it is not a number.
    static double getDouble(const QString& key);

    /// Stores the number as decimal text.
    static void putInt64(const QString& key, long long value);

    /// Returns the text as an integer; 0 if it is not an integer.
    static long long getInt64(const QString& key);
};
