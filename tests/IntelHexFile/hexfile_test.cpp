#include "IntelHexFile/hexfile.h"

#include "support/standardoutputcapture.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <vector>

namespace
{
struct CloseFile
{
    void operator()(FILE* file) const { std::fclose(file); }
};
using Stream = std::unique_ptr<FILE, CloseFile>;

constexpr long blankWord = static_cast<long>(0xFFFFFF00U);

Stream streamOf(const std::string& text)
{
    Stream stream(std::tmpfile());
    std::fputs(text.c_str(), stream.get());
    std::rewind(stream.get());
    return stream;
}

std::string textOf(FILE* stream)
{
    std::rewind(stream);
    std::string text;
    for (int character = std::fgetc(stream); character != EOF; character = std::fgetc(stream)) {
        text += static_cast<char>(character);
    }
    return text;
}

std::string hexFileOf(const std::vector<unsigned char>& buffer, unsigned int length,
                      long startAddress)
{
    const Stream stream(std::tmpfile());
    EXPECT_EQ(IntelHexFile::makenewhexfile(buffer.data(), length, stream.get(), blankWord, 4, 256,
                                           16, startAddress),
              0);
    return textOf(stream.get());
}

std::vector<unsigned char> blankRows(std::size_t count)
{
    std::vector<unsigned char> rows(count * 256, 0xFF);
    for (std::size_t i = 3; i < rows.size(); i += 4) {
        rows[i] = 0;
    }
    return rows;
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end = text.find('\n'); end != std::string::npos;
         end = text.find('\n', start)) {
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

/// Loads a text, with guard bytes around the areas.
struct Load
{
    explicit Load(const std::string& text, long eepromStart = 0, long eepromEnd = 0)
        : flash(IntelHexFile::flashAreaSize), eeprom(IntelHexFile::eepromAreaSize + 1)
    {
        const Stream stream = streamOf(text);
        const StandardOutputCapture capture;
        result = IntelHexFile::loadhexfile(flash.data(), eeprom.data(), stream.get(), &eepromFound,
                                           &eepromMaxIndex, eepromStart, eepromEnd);
        output = capture.text();
    }

    std::vector<unsigned char> flash;
    std::vector<unsigned char> eeprom;
    unsigned char eepromFound = 0;
    unsigned long eepromMaxIndex = 0;
    unsigned long result = 0;
    std::string output;
};

const std::string endOfFile = ":00000001FF\n";
const std::string twoBytesAt0x100 = ":020100001234B7\n";
} // namespace

TEST(IntelHexFileWriter, StartsWithTheUpperAddressEvenAtAddressZero)
{
    EXPECT_EQ(hexFileOf({}, 0, 0), ":020000040000FA\n");
}

TEST(IntelHexFileWriter, WritesNothingElseForBlankRows)
{
    EXPECT_EQ(hexFileOf(blankRows(3), 3 * 256, 0x13800), ":020000040001F9\n");
}

TEST(IntelHexFileWriter, WritesAPartlyUsedRowWhole)
{
    std::vector<unsigned char> rows = blankRows(1);
    rows[0] = 0xAB;
    const std::vector<std::string> lines = linesOf(hexFileOf(rows, 1, 0x200));
    ASSERT_EQ(lines.size(), 17U);
    EXPECT_EQ(lines.at(1), ":10020000ABFFFF00FFFFFF00FFFFFF00FFFFFF004E");
    EXPECT_EQ(lines.at(2), ":10021000FFFFFF00FFFFFF00FFFFFF00FFFFFF00EA");
    EXPECT_EQ(lines.at(16), ":1002F000FFFFFF00FFFFFF00FFFFFF00FFFFFF000A");
}

TEST(IntelHexFileWriter, LeavesOutBlankRowsBetweenOthers)
{
    std::vector<unsigned char> rows = blankRows(3);
    rows[0] = 1;
    rows[2 * 256] = 2;
    const std::vector<std::string> lines = linesOf(hexFileOf(rows, 3 * 256, 0));
    ASSERT_EQ(lines.size(), 1U + 16 + 16);
    EXPECT_EQ(lines.at(16).substr(0, 9), ":1000F000");
    EXPECT_EQ(lines.at(17).substr(0, 9), ":10020000");
}

TEST(IntelHexFileWriter, OneByteThatIsNotBlankBringsItsRowWhereverItIs)
{
    for (std::size_t i = 0; i < 256; ++i) {
        std::vector<unsigned char> rows = blankRows(1);
        rows[i] = 0x5A;
        EXPECT_EQ(linesOf(hexFileOf(rows, 256, 0)).size(), 1U + 16) << i;
    }
}

TEST(IntelHexFileWriter, WritesANewUpperAddressWhenRowsPass64KiB)
{
    std::vector<unsigned char> rows = blankRows(2);
    rows[0] = 1;
    rows[256] = 2;
    const std::vector<std::string> lines = linesOf(hexFileOf(rows, 2 * 256, 0xFF00));
    ASSERT_EQ(lines.size(), 1U + 16 + 1 + 16);
    EXPECT_EQ(lines.at(0), ":020000040000FA");
    EXPECT_EQ(lines.at(1).substr(0, 9), ":10FF0000");
    EXPECT_EQ(lines.at(17), ":020000040001F9");
    EXPECT_EQ(lines.at(18).substr(0, 9), ":10000000");
}

TEST(IntelHexFileWriter, CountsUpperAddressesInStepsOf65535)
{
    EXPECT_EQ(hexFileOf({}, 0, 65534), ":020000040000FA\n");
    EXPECT_EQ(hexFileOf({}, 0, 65535), ":020000040001F9\n");
    EXPECT_EQ(hexFileOf({}, 0, 131069), ":020000040001F9\n");
    EXPECT_EQ(hexFileOf({}, 0, 131070), ":020000040002F8\n");
}

TEST(IntelHexFileWriter, RefusesImpossibleSizesAndAddresses)
{
    const std::vector<unsigned char> rows = blankRows(1);
    const Stream stream(std::tmpfile());
    const auto write = [&](int wordSize, long rowSize, long recordSize, long startAddress) {
        return IntelHexFile::makenewhexfile(rows.data(), 4, stream.get(), blankWord, wordSize,
                                            rowSize, recordSize, startAddress);
    };
    EXPECT_EQ(write(0, 256, 16, 0), 1);
    EXPECT_EQ(write(5, 256, 16, 0), 1);
    EXPECT_EQ(write(4, 0, 16, 0), 1);
    EXPECT_EQ(write(4, 250, 16, 0), 1);
    EXPECT_EQ(write(4, 256, 0, 0), 1);
    EXPECT_EQ(write(4, 256, 16, -2), 1);
    EXPECT_EQ(write(4, 256, 16, 0xFFFFFFFFL), 1);
    EXPECT_EQ(textOf(stream.get()), "");
}

TEST(IntelHexFileWriter, TellsWhenTheStreamCannotBeWritten)
{
    const std::vector<unsigned char> rows = blankRows(1);
    const Stream stream(std::fopen("/dev/null", "r"));
    EXPECT_EQ(IntelHexFile::makenewhexfile(rows.data(), 4, stream.get(), blankWord, 4, 256, 16, 0),
              1);
}

TEST(IntelHexFileDigits, ReadBothCasesAndWriteUpperCase)
{
    EXPECT_EQ(IntelHexFile::hexstringtobyte("aF"), 0xAFU);
    EXPECT_EQ(IntelHexFile::hexstringtobyte("09"), 0x09U);
    std::array<char, 3> digits = {'x', 'x', 'x'};
    IntelHexFile::bytetohexstring(digits.data(), 0xAF);
    EXPECT_STREQ(digits.data(), "AF");
    IntelHexFile::bytetohexstring(digits.data(), 0x00);
    EXPECT_STREQ(digits.data(), "00");
}

TEST(IntelHexFileDigits, OtherCharactersAreNoByte)
{
    for (const char* text : {"g0", "0g", " 0", "/0", ":0", "@0", "G0", "`0", "0", "",
                             "\xE4"
                             "0"}) {
        EXPECT_EQ(IntelHexFile::hexstringtobyte(text), 0xFFFFU) << text;
    }
}

TEST(IntelHexFileDigits, AByteAtTheEndOfTheFileIsNone)
{
    const Stream stream = streamOf("a5F");
    EXPECT_EQ(IntelHexFile::extractbyte(stream.get()), 0xA5U);
    EXPECT_EQ(IntelHexFile::extractbyte(stream.get()), 0xFFFFU);
    EXPECT_EQ(IntelHexFile::extractbyte(stream.get()), 0xFFFFU);
}

namespace
{
/// The next line of a text, on top of what an earlier line left.
struct Line
{
    explicit Line(const std::string& text)
    {
        const Stream stream = streamOf(text);
        const StandardOutputCapture capture;
        count = IntelHexFile::getfileline(data.data(), &address, &type, stream.get());
        output = capture.text();
    }

    std::array<unsigned char, IntelHexFile::maxLineBytes> data = {};
    unsigned int address = 0xBEEF;
    unsigned int type = 99;
    unsigned int count = 0;
    std::string output;
};
} // namespace

TEST(IntelHexFileLine, GivesAddressTypeAndData)
{
    const Line line("text before " + twoBytesAt0x100);
    EXPECT_EQ(line.count, 2U);
    EXPECT_EQ(line.address, 0x100U);
    EXPECT_EQ(line.type, 0U);
    EXPECT_EQ(line.data[0], 0x12);
    EXPECT_EQ(line.data[1], 0x34);
    EXPECT_EQ(line.output, "");
}

TEST(IntelHexFileLine, ReadsLowerCaseDigits)
{
    const Line line(":02abc000fedcb9\n");
    EXPECT_EQ(line.count, 2U);
    EXPECT_EQ(line.address, 0xABC0U);
    EXPECT_EQ(line.data[0], 0xFE);
}

TEST(IntelHexFileLine, ChecksTheLowestBitOfTheChecksumAlone)
{
    EXPECT_EQ(Line(":020100001234B5\n").count, 2U) << "off by 2";
    const Line line(":020100001234B6\n"); // off by 1
    EXPECT_EQ(line.count, 0U);
    EXPECT_EQ(line.address, 0xBEEFU) << "the address of the line before";
    EXPECT_EQ(line.output, "input file checksum 49 != b6 on line with address beef\n");
}

TEST(IntelHexFileLine, StoresTheTypeBeforeTheData)
{
    EXPECT_EQ(Line(":02010004123").type, 4U);
}

TEST(IntelHexFileLine, FailsInsideTheHeaderTheDataAndTheChecksum)
{
    for (const char* text : {"", "no colon", ":", ":0", ":02", ":0201", ":020100", ":02010000",
                             ":0201000012", ":02010000123", ":020100001234", ":020100001234B",
                             ":0201000012x4B7", ":020100001234x7", ":02010 00001234B7"}) {
        EXPECT_EQ(Line(text).count, 0U) << text;
    }
}

TEST(IntelHexFileLine, HoldsTheLongestRecord)
{
    std::string text = ":FF000000";
    for (int i = 0; i < 255; ++i) {
        text += "01";
    }
    const Line line(text + "02\n"); // 0xFF + 255 + 2 is a multiple of 256
    EXPECT_EQ(line.count, 255U);
    EXPECT_EQ(line.data.back(), 1);
}

TEST(IntelHexFileLoad, PutsDataAtItsAddress)
{
    const Load load(twoBytesAt0x100 + endOfFile);
    EXPECT_EQ(load.result, 0x102U);
    EXPECT_EQ(load.flash.at(0x100), 0x12);
    EXPECT_EQ(load.flash.at(0x101), 0x34);
    EXPECT_EQ(load.eepromFound, 0);
    EXPECT_EQ(load.output, "");
}

TEST(IntelHexFileLoad, AddsTheUpperAddress)
{
    const Load load(":020000040001F9\n" + twoBytesAt0x100 + endOfFile);
    EXPECT_EQ(load.result, 0x10102U);
    EXPECT_EQ(load.flash.at(0x10100), 0x12);
}

TEST(IntelHexFileLoad, FailsWhenTheFirstRecordCarriesNoData)
{
    const Load load(endOfFile);
    EXPECT_EQ(load.result, 0U);
    EXPECT_EQ(load.output, "Failed to open file!\n");
}

TEST(IntelHexFileLoad, FailsOnAnEmptyFile)
{
    EXPECT_EQ(Load("").result, 0U);
}

TEST(IntelHexFileLoad, FailsWithoutAnEndRecordThoughItsDataIsThere)
{
    const Load load(twoBytesAt0x100);
    EXPECT_EQ(load.result, 0U);
    EXPECT_EQ(load.flash.at(0x100), 0x12);
    EXPECT_EQ(load.output, "\nNo end of file reached?\n");
}

TEST(IntelHexFileLoad, FailsAtARecordWithoutData)
{
    EXPECT_EQ(Load(twoBytesAt0x100 + ":0000000000\n" + endOfFile).result, 0U);
}

TEST(IntelHexFileLoad, StopsAtTheEndRecord)
{
    const Load load(twoBytesAt0x100 + endOfFile + ":020200005678" + "2E\n");
    EXPECT_EQ(load.result, 0x102U);
    EXPECT_EQ(load.flash.at(0x200), 0);
}

TEST(IntelHexFileLoad, AcceptsAChecksumOffByTwoAndRejectsOneOffByOne)
{
    EXPECT_EQ(Load(":020100001234B5\n" + endOfFile).result, 0x102U);
    EXPECT_EQ(Load(twoBytesAt0x100 + ":020200005678AF\n" + endOfFile).result, 0U);
}

TEST(IntelHexFileLoad, IgnoresOtherRecords)
{
    const Load load(twoBytesAt0x100 + ":020000021000EC\n" + ":0400000500000000F7\n" + endOfFile);
    EXPECT_EQ(load.result, 0x102U);
}

TEST(IntelHexFileLoad, TellsTheHighestEndAddress)
{
    const Load load(":0202000056782E\n" + twoBytesAt0x100 + endOfFile);
    EXPECT_EQ(load.result, 0x202U);
}

TEST(IntelHexFileLoad, TakesAddress0x30000AndNothingBeyond)
{
    // Four bytes from 0x2FFFF on: the last two are beyond the area.
    const Load load(":020000040002F8\n:04FFFF000102030" + std::string("4F4\n") + endOfFile);
    EXPECT_EQ(load.flash.at(0x2FFFF), 1);
    EXPECT_EQ(load.flash.at(0x30000), 2);
    EXPECT_EQ(load.output, "FLASH data range exceeded, 30001\n");
    EXPECT_NE(load.result, 0U);
}

TEST(IntelHexFileLoad, LeavesOutTheHighestAddressesOfAll)
{
    const Load load(":02000004FFFFFC\n:02FFFF00010" + std::string("2FD\n") + endOfFile);
    EXPECT_EQ(load.output, "FLASH data range exceeded, ffffffff\n");
}

TEST(IntelHexFileLoad, PutsDataOfTheEepromRangeIntoItsArea)
{
    const Load load(twoBytesAt0x100 + ":0202000056782E\n" + endOfFile, 0x101, 0x201);
    EXPECT_EQ(load.eepromFound, 1);
    EXPECT_EQ(load.eepromMaxIndex, 0xFFU);
    EXPECT_EQ(load.flash.at(0x100), 0x12);
    EXPECT_EQ(load.flash.at(0x101), 0);
    EXPECT_EQ(load.eeprom.at(0), 0x34);
    EXPECT_EQ(load.eeprom.at(0xFF), 0x56);
    EXPECT_EQ(load.flash.at(0x201), 0x78) << "the range's end does not belong to it";
}

TEST(IntelHexFileLoad, CountsLinesOfTheEepromRangeOutOfTheEndAddress)
{
    const std::string text = twoBytesAt0x100 + ":0202000056782E\n" + endOfFile;
    EXPECT_EQ(Load(text, 0x200, 0x300).result, 0x102U);
    EXPECT_EQ(Load(text).result, 0x202U);
}

TEST(IntelHexFileLoad, NeverWritesBehindTheEepromArea)
{
    // The range is larger than the area: indices 4095 and 4096, then 4097.
    const Load load(":03"
                    "0FFF00"
                    "010203E9\n"
                        + endOfFile,
                    0, 0x2000);
    EXPECT_EQ(load.eeprom.at(4095), 1);
    EXPECT_EQ(load.eeprom.at(4096), 0) << "behind the area";
    EXPECT_EQ(load.eepromMaxIndex, 4096U);
    EXPECT_EQ(load.output, "\nEEPROM data range exceeded, 1001, lowaddress == fff\n");
}
