#pragma once

#include <QString>

namespace FirmwareTool
{
/// Helpers on NUL-terminated byte strings, with which the uploader's output is tested. Every
/// `char const*` must point at such a string.
class StringManipulation
{
public:
    StringManipulation() = delete;

    /// Whether the character occurs in the text; the terminator does not count.
    static bool contains(char character, const char* text);

    /// Whether `needle` occurs in `text`, case-sensitively.
    static bool contains(const char* needle, const char* text);

    /// The first index of the character; -1 when it does not occur.
    static int indexOf(char character, const char* text);

    /// Whether the regular expression matches anywhere in the text, case-sensitively. The syntax is
    /// that of QRegExp, in which a dot also matches a line break.
    static bool containsRegex(const char* pattern, const char* text);

    static bool equals(const char* one, const char* other);

    /// Whether the first `count` characters are equal: false when a text is shorter, true for a
    /// count below 1.
    static bool equalsLength(const char* one, const char* other, int count);

    static int length(const char* text);

    /// The progress in front of the last "%" of the text; -1 when there is none. Two characters are
    /// taken as the number's digits without a check, so "100%" is told by its "00".
    static int getPercentage(const char* text);

    /// Whether the text contains one of the uploader's fixed messages.
    static bool matchStar1(const char* text);
    static bool matchStar2(const char* text);
    static bool matchStar5(const char* text);
    static bool matchStar6(const char* text);
    static bool matchStar7(const char* text);

    /// The Windows device path of a port that is named like "COM12".
    static QString getComPort(const QString& portName);

    /// The file's name without its directory.
    static QString getFileName(const QString& path);

    /// Prints the code of each character on standard output.
    static void printStringChars(const char* text);
};
} // namespace FirmwareTool
