#include "support/suplprogram.h"

namespace
{
const QByteArray end = ":00000001FF\n";
const QByteArray profileBase = ":020000040001F9\n";
const QByteArray word("abc\0", 4);

class SuplHexFileTest : public SuplTest
{
protected:
    /// Expects a file to be refused with these words, and nothing to be programmed.
    void expectRefused(const QByteArray& text, const QByteArray& words) const
    {
        writeFile(work("bad.hex"), text);
        const ProgramRun refused = run(write("bad.hex"));
        EXPECT_EQ(refused.exitCode, 1) << text;
        EXPECT_TRUE(contains(refused.output, words));
        EXPECT_FALSE(refused.output.contains("hex file loaded"));
        EXPECT_EQ(memory(), blank(memorySize)) << text;
    }

    /// Expects a file to be accepted, and the word "abc" to be at the beginning of the profiles.
    void expectTaken(const QByteArray& text) const
    {
        setMemory(0, QByteArray());
        writeFile(work("good.hex"), text);
        expectDone(write("good.hex"));
        EXPECT_EQ(memory(0x9C00, 0x9C02), word) << text;
    }
};
} // namespace

TEST_F(SuplHexFileTest, EveryWrongChecksumIsNoticed)
{
    for (const int error : {1, 2, 3, 128, 254, 255}) {
        expectRefused(profileBase + record(0, 0x3800, word) + record(0, 0x3804, word, error) + end,
                      "bad hex file bad.hex: line 3: wrong checksum");
    }
    expectRefused(":020000040001FA\n" + record(0, 0x3800, word) + end, "line 1: wrong checksum");
    expectRefused(profileBase + record(0, 0x3800, word) + ":00000001FE\n",
                  "line 3: wrong checksum");
}

TEST_F(SuplHexFileTest, AChangedBitIsNoticedWhereverItIs)
{
    const QByteArray good = profileBase + record(0, 0x3800, word) + end;
    expectTaken(good);
    setMemory(0, QByteArray());
    for (int i = 0; i < good.size(); ++i) {
        if (good.at(i) == '\n') {
            continue;
        }
        QByteArray bad = good;
        bad[i] = static_cast<char>(bad.at(i) ^ 1);
        writeFile(work("bad.hex"), bad);
        ASSERT_EQ(run(write("bad.hex")).exitCode, 1) << bad;
    }
    EXPECT_EQ(memory(), blank(memorySize));
}

TEST_F(SuplHexFileTest, TheEndMustBeTold)
{
    expectRefused(profileBase + record(0, 0x3800, word), "the end of file record is missing");
    expectRefused("", "the end of file record is missing");
    expectRefused(end + record(0, 0x3800, word), "line 2: something follows the end of file");
    expectRefused(end + end, "line 2: something follows the end of file");
    expectRefused(record(1, 0, "x"), "line 1: an end of file record with data");
}

TEST_F(SuplHexFileTest, LinesAreRecordsAndNothingElse)
{
    expectRefused("hello\n" + end, "line 1: does not begin with a colon");
    expectRefused(" :00000001FF\n", "line 1: does not begin with a colon");
    expectRefused("\n" + end, "line 1: does not begin with a colon");
    expectRefused(":\n" + end, "line 1: too short for a record");
    expectRefused(":00000001\n", "line 1: too short for a record");
    expectRefused(":00000001F\n", "line 1: half a byte");
    expectRefused(":0000000xFF\n", "line 1: not a hexadecimal digit");
    expectRefused(":00000001FF \n", "line 1: half a byte");
    expectRefused(":0000000100FF\n", "line 1: the byte count does not fit the line");
    expectRefused(":05380000616263003D\n" + end, "line 1: the byte count does not fit the line");
    expectRefused(record(6, 0, "") + end, "line 1: unknown record type");
    expectRefused(record(0, 0x3800, "") + end, "line 1: a data record without data");
}

TEST_F(SuplHexFileTest, AddressRecordsAreChecked)
{
    expectRefused(record(4, 0, QByteArray(1, '\1')) + end, "line 1: a malformed address record");
    expectRefused(record(4, 0, QByteArray(3, '\0')) + end, "line 1: a malformed address record");
    expectRefused(record(4, 1, QByteArray(2, '\0')) + end, "line 1: a malformed address record");
    expectRefused(record(2, 0, QByteArray(1, '\0')) + end, "line 1: a malformed address record");
    expectRefused(record(3, 0, QByteArray(2, '\0')) + end, "a malformed start address record");
    expectRefused(record(5, 0, QByteArray(5, '\0')) + end, "a malformed start address record");
}

TEST_F(SuplHexFileTest, AddressesBeyondTheFlashAreRefused)
{
    expectRefused(profileBase + record(0, 0x3800, word) + record(0, 0x4000, word) + end,
                  "line 3: an address beyond the flash");
    expectRefused(profileBase + record(0, 0x3FFC, word + word) + end,
                  "line 2: an address beyond the flash");
    expectRefused(record(4, 0, QByteArray("\xFF\xFF", 2)) + record(0, 0xFFF0, word) + end,
                  "line 2: an address beyond the flash");
    expectRefused(record(0, 0xFFFC, word + word) + end, "line 1: a record that crosses a limit");
}

TEST_F(SuplHexFileTest, AByteIsGivenOnce)
{
    expectRefused(profileBase + record(0, 0x3800, word) + record(0, 0x3800, word) + end,
                  "line 3: a byte that another line has already given");
}

TEST_F(SuplHexFileTest, WordsAreThreeBytesAndAZero)
{
    const QByteArray words = "the word at 0x9C02 is not three bytes and a zero byte";
    const QByteArray start = profileBase + record(0, 0x3800, word);
    expectRefused(start + record(0, 0x3804, "abcd") + end, words);
    expectRefused(start + record(0, 0x3804, QByteArray("abc\xFF", 4)) + end, words);
    expectRefused(start + record(0, 0x3804, "abc") + end, words);
    expectRefused(start + record(0, 0x3805, word.mid(1)) + end, words);
    expectRefused(start + record(0, 0x3807, QByteArray(1, '\0')) + end, words);
}

TEST_F(SuplHexFileTest, EveryFormOfAGoodFileIsTaken)
{
    const QByteArray good = profileBase + record(0, 0x3800, word) + end;
    expectTaken(good);
    expectTaken(good.toLower());
    expectTaken(QByteArray(good).replace("\n", "\r\n"));
    expectTaken(good.chopped(1));
    expectTaken(profileBase + record(0, 0x3802, word.mid(2)) + record(0, 0x3800, "ab") + end);
    expectTaken(profileBase + record(0, 0x3800, word + blank(248)) + end);
    expectTaken(record(2, 0, QByteArray("\x13\x80", 2)) + record(0, 0, word) + end);
    expectTaken(record(2, 0, QByteArray("\x10\x00", 2)) + record(0, 0x3800, word) + end);
    expectTaken(record(5, 0, QByteArray("\0\0\x0C\0", 4)) + record(3, 0, QByteArray(4, '\0'))
                + good);
}

TEST_F(SuplHexFileTest, ReadsWhatAnotherToolWritesAtEveryLineLength)
{
    const QByteArray image = pattern(2048);
    writeFile(work("image.bin"), image);
    for (const int length : {1, 7, 32, 250}) {
        setMemory(0, QByteArray());
        srecCat({"image.bin", "-binary", "-offset", "0x13800", "-o", "image.hex", "-intel",
                 QString("-obs=%1").arg(length)});
        expectDone(write("image.hex"));
        EXPECT_EQ(memory(0x9C00, 0xA000), image) << length;
    }
}

TEST_F(SuplHexFileTest, AMissingFileIsTold)
{
    expectFailure(write("absent.hex"), "failed to find input file");
    expectFailure(write("."), "failed to find input file");
    expectFailure(write(""), "failed to find input file");
    expectFailure(write("/dev/zero"), "failed to find input file");
}

TEST_F(SuplHexFileTest, AFileOfUnreasonableSizeIsRefused)
{
    QFile file(work("huge.hex"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(3000000000LL));
    expectFailure(write("huge.hex"), "the file is too large");
}

TEST_F(SuplHexFileTest, WhatIsReadHasUpperCaseDigitsAnAddressRecordAndAnEnd)
{
    setMemory(0x9C00, QByteArray("\xAB\xCD\xEF\0", 4));
    expectDone(readProfiles("out.hex"));
    const QList<QByteArray> lines = contentOf(work("out.hex")).split('\n');
    ASSERT_EQ(lines.size(), 1 + 128 + 1 + 1);
    EXPECT_EQ(lines.at(0), ":020000040001F9");
    EXPECT_EQ(lines.at(1), ":10380000ABCDEF00FFFFFF00FFFFFF00FFFFFF005A");
    EXPECT_EQ(lines.at(129), ":00000001FF");
    EXPECT_EQ(lines.at(130), "");
}
