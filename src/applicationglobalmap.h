#pragma once

#include <QString>

/// The few values that unrelated features share, as texts under text keys.
///
/// One map for the whole process, used from the GUI thread only. Key in use: "bundle_version", the
/// version of the bundle chosen at start-up.
class ApplicationGlobalMap
{
public:
    ApplicationGlobalMap() = delete;

    static void putString(const QString& key, const QString& value);

    /// The value; a missing key is inserted with an empty value.
    static QString getString(const QString& key);

    /// Stores the number as text with 6 significant digits.
    static void putDouble(const QString& key, double value);

    /// The text as a number; 0 when it is none.
    static double getDouble(const QString& key);

    /// Stores the number as decimal text.
    static void putInt64(const QString& key, long long value);

    /// The text as an integer; 0 when it is none.
    static long long getInt64(const QString& key);
};
