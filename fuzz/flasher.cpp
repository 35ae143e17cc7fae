// The uploader's output as the flasher looks at it, a chunk an input; the process itself is left out.

#include "firmware/stringmanipulation.h"
#include "support/fuzztarget.h"

#include <string>

using FirmwareTool::StringManipulation;

namespace
{
void checkSearches(const char* chunk, const std::string& text)
{
    for (int code = 0; code < 256; ++code) {
        const auto character = static_cast<char>(code);
        const std::size_t found = code == 0 ? std::string::npos : text.find(character);
        const int index = found == std::string::npos ? -1 : static_cast<int>(found);
        FUZZ_EXPECT(StringManipulation::indexOf(character, chunk) == index);
        FUZZ_EXPECT(StringManipulation::contains(character, chunk) == (index >= 0));
    }
    FUZZ_EXPECT(StringManipulation::length(chunk) == static_cast<int>(text.size()));
    const auto has = [&text](const char* words) { return text.find(words) != std::string::npos; };
    FUZZ_EXPECT(StringManipulation::matchStar1(chunk) == has("Could not find device.txt file"));
    FUZZ_EXPECT(StringManipulation::matchStar2(chunk) == has("hex file loaded"));
    FUZZ_EXPECT(StringManipulation::matchStar6(chunk) == has("verify fail"));
    FUZZ_EXPECT(StringManipulation::matchStar7(chunk) == has("failed to find input file"));
    StringManipulation::matchStar5(chunk);
}

void checkTimeoutPattern(const char* chunk, const std::string& text)
{
    const std::string version = "Bootloader Version is";
    const std::size_t found = text.find(version);
    const bool isTimeout = found != std::string::npos
                           && text.find("Timeout", found + version.size()) != std::string::npos;
    FUZZ_EXPECT(StringManipulation::containsRegex("Bootloader Version is.*Timeout", chunk)
                == isTimeout);
}

void checkPercentage(const char* chunk, const std::string& text)
{
    const std::size_t percent = text.rfind('%');
    const int percentage = StringManipulation::getPercentage(chunk);
    if (percent == std::string::npos || percent < 2) {
        FUZZ_EXPECT(percentage == -1);
        return;
    }
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const char tens = text[percent - 2];
    const char ones = text[percent - 1];
    if (isDigit(ones) && (isDigit(tens) || tens == ' ')) {
        const int number = (tens == ' ' ? 0 : 10 * (tens - '0')) + ones - '0';
        FUZZ_EXPECT(percentage == (tens == '0' && ones == '0' ? 100 : number));
    }
}

void checkComparisons(const char* chunk, const std::string& text)
{
    const std::string half = text.substr(0, text.size() / 2);
    const int halfLength = static_cast<int>(half.size());
    FUZZ_EXPECT(StringManipulation::equals(chunk, text.c_str()));
    FUZZ_EXPECT(StringManipulation::equals(chunk, half.c_str()) == (half == text));
    FUZZ_EXPECT(StringManipulation::equalsLength(chunk, half.c_str(), halfLength));
    FUZZ_EXPECT(!StringManipulation::equalsLength(chunk, half.c_str(), halfLength + 1));
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = FuzzTarget::bytesOf(data, size);
    const char* chunk = bytes.constData();
    const std::string text(chunk); // up to the first zero, as the flasher takes it
    checkSearches(chunk, text);
    checkTimeoutPattern(chunk, text);
    checkPercentage(chunk, text);
    checkComparisons(chunk, text);
    StringManipulation::printStringChars(chunk);
    const QString name = QString::fromUtf8(bytes);
    FUZZ_EXPECT(!StringManipulation::getFileName(name).contains(QLatin1Char('/')));
    FUZZ_EXPECT(StringManipulation::getComPort(name).startsWith(QStringLiteral("\\\\.\\COM")));
    return 0;
}
