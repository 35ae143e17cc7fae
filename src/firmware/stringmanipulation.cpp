#include "firmware/stringmanipulation.h"

#include <QFileInfo>
#include <QRegExp>

#include <cstdio>
#include <cstring>

namespace FirmwareTool
{
namespace
{
/// Characters beyond ASCII have codes above 127, whether or not this system's char is signed.
int codeOf(char character)
{
    return static_cast<unsigned char>(character);
}
} // namespace

bool StringManipulation::contains(char character, const char* text)
{
    return indexOf(character, text) >= 0;
}

bool StringManipulation::contains(const char* needle, const char* text)
{
    return std::strstr(text, needle) != nullptr;
}

int StringManipulation::indexOf(char character, const char* text)
{
    const char* found = character != '\0' ? std::strchr(text, character) : nullptr;
    return found != nullptr ? static_cast<int>(found - text) : -1;
}

bool StringManipulation::containsRegex(const char* pattern, const char* text)
{
    return QString::fromLatin1(text).contains(QRegExp(QString::fromLatin1(pattern)));
}

bool StringManipulation::equals(const char* one, const char* other)
{
    return std::strcmp(one, other) == 0;
}

bool StringManipulation::equalsLength(const char* one, const char* other, int count)
{
    if (count < 1) {
        return true;
    }
    return length(one) >= count && length(other) >= count
           && std::memcmp(one, other, static_cast<std::size_t>(count)) == 0;
}

int StringManipulation::length(const char* text)
{
    return static_cast<int>(std::strlen(text));
}

int StringManipulation::getPercentage(const char* text)
{
    constexpr int codesOfZeros = 10 * '0' + '0';
    const char* percent = std::strrchr(text, '%');
    if (percent == nullptr || percent - text < 2) {
        return -1;
    }
    const char tens = percent[-2];
    const char ones = percent[-1];
    if (tens == ' ') {
        return codeOf(ones) - '0';
    }
    const int number = 10 * codeOf(tens) + codeOf(ones) - codesOfZeros;
    return number == 0 ? 100 : number;
}

bool StringManipulation::matchStar1(const char* text)
{
    return contains("Could not find device.txt file", text);
}

bool StringManipulation::matchStar2(const char* text)
{
    return contains("hex file loaded", text);
}

bool StringManipulation::matchStar5(const char* text)
{
    return contains("Flash Write success", text);
}

bool StringManipulation::matchStar6(const char* text)
{
    return contains("verify fail", text);
}

bool StringManipulation::matchStar7(const char* text)
{
    return contains("failed to find input file", text);
}

QString StringManipulation::getComPort(const QString& portName)
{
    return QStringLiteral("\\\\.\\COM") + portName.mid(portName.indexOf(QLatin1Char('M')) + 1);
}

QString StringManipulation::getFileName(const QString& path)
{
    return QFileInfo(path).fileName();
}

void StringManipulation::printStringChars(const char* text)
{
    for (const char* character = text; *character != '\0'; ++character) {
        std::printf("%d|", codeOf(*character));
    }
    std::printf("---");
    std::fflush(stdout);
}
} // namespace FirmwareTool
