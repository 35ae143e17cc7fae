#pragma once

#include <QString>
#include <QStringList>

/// A dotted version number such as "1.2.3".
///
/// Parts compare as numbers of any length from the left; a version that only adds parts is the
/// greater one, so 1.2 is less than 1.2.0.
class VersionString
{
public:
    /// REQUIRES: isDottedVersion(text); anything else is a fatal assertion.
    explicit VersionString(const QString& text);

    /// True for digits, optionally several groups separated by single dots, and nothing else.
    static bool isDottedVersion(const QString& text);

    /// -1, 0 or 1: less than, equal to or greater than `other`.
    int compare(const VersionString& other) const;

    bool equalTo(const VersionString& other) const { return compare(other) == 0; }
    bool lessThan(const VersionString& other) const { return compare(other) == -1; }
    bool greaterThan(const VersionString& other) const { return compare(other) == 1; }
    bool lessThanEqualTo(const VersionString& other) const { return compare(other) != 1; }
    bool greaterThanEqualTo(const VersionString& other) const { return compare(other) != -1; }

    /// The text as given.
    QString toString() const { return versionString; }

    /// Writes "Version: " and the text to standard output.
    void print() const;

    /// The known-answer checks that run at every start; a wrong answer is a fatal assertion.
    static void runTests();

private:
    void compileVersionString();

    QString versionString;
    QStringList versionNumbers; ///< the digits of the parts, without leading zeros
};
