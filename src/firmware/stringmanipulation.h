#pragma once

#include <QString>

namespace FirmwareTool
{
/// Helpers for NUL-terminated byte strings, used to search the uploader's output. Every `char
/// const*` must point to such a string.
///
/// Kept: the functions without a caller in this version are part of the interface.
class StringManipulation
{
public:
    StringManipulation() = delete;

    /// Returns whether the character occurs in the text, not counting the terminator.
    static bool contains(char character, const char* text);

    /// Returns whether `needle` occurs in `text`, case-sensitively.
    static bool contains(const char* needle, const char* text);

    /// Returns the first index of the character; -1 if it does not occur.
    static int indexOf(char character, const char* text);

    /// Returns whether the regular expression matches anywhere in the text, case-sensitively. The
    /// syntax is that of QRegExp, in which a dot also matches a line break.
    static bool containsRegex(const char* pattern, const char* text);

    static bool equals(const char* one, const char* other);

    /// Returns whether the first `count` characters are equal: false if a text is shorter, true for
    /// a count below 1.
    static bool equalsLength(const char* one, const char* other, int count);

    static int length(const char* text);

    /// Returns the progress before the last "%" in the text; -1 if there is none. The two
    /// characters before it are taken as digits without a check, so "100%" yields 100, from its "00".
    static int getPercentage(const char* text);

    /// Return whether the text contains one of the uploader's fixed messages.
    static bool matchStar1(const char* text);
    static bool matchStar2(const char* text);
    static bool matchStar5(const char* text);
    static bool matchStar6(const char* text);
    static bool matchStar7(const char* text);

    /// Returns the Windows device path of a port named like "COM12".
    static QString getComPort(const QString& portName);

    /// Returns the file's name without its directory.
    static QString getFileName(const QString& path);

    /// Prints the code of each character to standard output.
    static void printStringChars(const char* text);
};
} // namespace FirmwareTool
