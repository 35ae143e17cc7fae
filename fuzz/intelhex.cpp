// Intel HEX files: reading never leaves the areas, and data that was loaded is the same after
// writing and loading it again.

#include "IntelHexFile/hexfile.h"
#include "base/stdiofile.h"
#include "support/fuzztarget.h"

#include <algorithm>
#include <vector>

namespace
{
constexpr long row = 64;

struct Loaded
{
    std::vector<unsigned char> flash = std::vector<unsigned char>(IntelHexFile::flashAreaSize);
    std::vector<unsigned char> eeprom = std::vector<unsigned char>(IntelHexFile::eepromAreaSize);
    unsigned char eepromFound = 0;
    unsigned long eepromMaxIndex = 0;
    unsigned long end = 0;
};

Loaded load(const QByteArray& text, long eepromStart, long eepromEnd)
{
    const StdioFile::Pointer file =
        StdioFile::openForReading(FuzzTarget::scratchFile(QStringLiteral("image.hex"), text));
    Loaded loaded;
    loaded.end = IntelHexFile::loadhexfile(loaded.flash.data(), loaded.eeprom.data(), file.get(),
                                           &loaded.eepromFound, &loaded.eepromMaxIndex, eepromStart,
                                           eepromEnd);
    FUZZ_EXPECT(loaded.eepromMaxIndex <= IntelHexFile::eepromAreaSize);
    FUZZ_EXPECT(loaded.eepromFound == 1 || loaded.eepromMaxIndex == 0);
    return loaded;
}

void checkSameWhenWrittenAgain(const Loaded& loaded)
{
    constexpr unsigned long wholeRows = IntelHexFile::flashAreaSize / row * row;
    const auto length =
        static_cast<unsigned int>(std::min((loaded.end + row - 1) / row * row, wholeRows));
    const QString path = FuzzTarget::scratchFile(QStringLiteral("again.hex"), {});
    FILE* file = std::fopen(path.toLocal8Bit().constData(), "w");
    FUZZ_EXPECT(file != nullptr);
    FUZZ_EXPECT(IntelHexFile::makenewhexfile(loaded.flash.data(), length, file, 0, 4, row, 16, 0)
                == 0);
    std::fputs(":00000001FF\n", file);
    std::fclose(file);
    const Loaded again = load(FuzzTarget::contentOf(path), 0, 0);
    FUZZ_EXPECT(again.end != 0);
    FUZZ_EXPECT(
        std::equal(again.flash.cbegin(), again.flash.cbegin() + length, loaded.flash.cbegin()));
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text = FuzzTarget::bytesOf(data, size);
    load(text, 0x100, 0x2200); // longer than the area
    load(text, -1, -1);
    const Loaded loaded = load(text, 0, 0);
    FUZZ_EXPECT(loaded.eepromFound == 0);
    if (loaded.end != 0) {
        checkSameWhenWrittenAgain(loaded);
    }
    return 0;
}
