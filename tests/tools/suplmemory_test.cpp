#include "support/suplprogram.h"

namespace
{
class SuplMemoryTest : public SuplTest
{
protected:
    /// Writes one word at an address (of words), in a file of its own.
    ProgramRun writeWord(int address, const QByteArray& threeBytes) const
    {
        writeFile(work("word.hex"), hexFile(address, threeBytes + QByteArray(1, '\0')));
        return run(write("word.hex"));
    }
};
} // namespace

TEST_F(SuplMemoryTest, ANewChargerIsBlank)
{
    expectDone(readProfiles("out.hex"));
    EXPECT_EQ(memory(), blank(memorySize));
    srecCat({"out.hex", "-intel", "-offset", "-0x13800", "-o", "out.bin", "-binary"});
    EXPECT_EQ(contentOf(work("out.bin")), blank(2048));
}

TEST_F(SuplMemoryTest, LiesBesideTheProgramAndNowhereElse)
{
    expectDone(eraseProfiles());
    EXPECT_EQ(memory().size(), memorySize);
    EXPECT_FALSE(QFile::exists(work("charger-memory.bin")));
    EXPECT_EQ(QDir(folder.filePath("home")).entryList(QDir::Files | QDir::Hidden),
              (QStringList{"charger-memory.bin", "supl-faults.txt", "supl.mac"}));
}

TEST_F(SuplMemoryTest, EraseBlanksItsRangeOnly)
{
    const QByteArray before = pattern(memorySize);
    writeFile(home("charger-memory.bin"), before);
    expectDone(with({"-E", "0x9800", "0x9C00"}));
    EXPECT_EQ(memory(0x9800, 0x9C00), blank(2048));
    EXPECT_EQ(memory(0, 0x9800), before.left(2 * 0x9800));
    EXPECT_EQ(memory(0x9C00, 0xA000), before.mid(2 * 0x9C00));
}

TEST_F(SuplMemoryTest, ErasesWholePagesOnly)
{
    const QByteArray before = pattern(memorySize);
    writeFile(home("charger-memory.bin"), before);
    expectFailure(with({"-E", "0x9C00", "0x9C02"}), "0x9C00 to 0x9C02 does not begin and end");
    expectFailure(with({"-E", "0x9A00", "0xA000"}), "0x9A00 to 0xA000 does not begin and end");
    expectFailure(with({"-E", "0x9C00", "0x9E00"}), "at page boundaries of 0x0400 addresses");
    EXPECT_EQ(memory(), before);
}

TEST_F(SuplMemoryTest, PagesAreAsLargeAsTheDeviceDescriptionSays)
{
    const QByteArray device = contentOf(work("device.txt"));
    writeFile(work("device.txt"), QByteArray(device).replace("= 512", "= 256"));
    expectDone(with({"-E", "0x9A00", "0x9C00"}));
    writeFile(work("device.txt"), QByteArray(device).replace("= 512", "= 1024"));
    expectFailure(eraseProfiles(), "each at a page boundary");
}

TEST_F(SuplMemoryTest, RefusesRangesThatAreNone)
{
    for (const char* option : {"-E", "-l"}) {
        const QStringList file = option[1] == 'l' ? QStringList{"out.hex"} : QStringList{};
        for (const QStringList& range :
             {QStringList{"0xA000", "0x9C00"}, QStringList{"0x9C00", "0x9C00"},
              QStringList{"0x9C01", "0xA000"}, QStringList{"0x9C00", "0x9FFF"},
              QStringList{"0x9C00", "0xA400"}, QStringList{"0xA000", "0xA400"},
              QStringList{"0x9C00", "0xFFFFFF"}}) {
            expectFailure(with(QStringList{option} + range + file),
                          "is not a range of words in the flash, which ends at 0xA000");
        }
    }
    EXPECT_FALSE(QFile::exists(work("out.hex")));
}

TEST_F(SuplMemoryTest, TheBootloaderCannotBeErased)
{
    const QByteArray before = pattern(memorySize);
    writeFile(home("charger-memory.bin"), before);
    expectFailure(with({"-E", "0x0800", "0x0C00"}), "protected up to 0x0C00");
    expectFailure(with({"-E", "0x0000", "0xA000"}), "protected up to 0x0C00");
    EXPECT_EQ(memory(), before);
    expectDone(with({"-E", "0x0C00", "0x1000"}));
}

TEST_F(SuplMemoryTest, TheBootloaderCannotBeProgrammed)
{
    for (const int address : {0x0000, 0x0400, 0x0BFE}) {
        const ProgramRun refused = writeWord(address, "abc");
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_TRUE(contains(refused.output, "not in the range that can be programmed"));
        EXPECT_EQ(memory(), blank(memorySize));
    }
    EXPECT_EQ(writeWord(0x0C00, "abc").exitCode, 0);
}

TEST_F(SuplMemoryTest, TheBootloaderCanBeRead)
{
    setMemory(0x0400, "abc");
    expectDone(with({"-l", "0x0400", "0x0402", "out.hex"}));
    EXPECT_EQ(contentOf(work("out.hex")),
              ":020000040000FA\n:04080000616263" + QByteArray("00CE\n") + ":00000001FF\n");
}

TEST_F(SuplMemoryTest, ProgrammingOnlyClearsBits)
{
    setMemory(0x9C00, QByteArray("\xF0\xFF\x0F\0", 4));
    EXPECT_EQ(writeWord(0x9C00, QByteArray("\x30\xFE\x00", 3)).exitCode, 0);
    EXPECT_EQ(memory(0x9C00, 0x9C02), QByteArray("\x30\xFE\x00\0", 4));

    const ProgramRun failed = writeWord(0x9C00, QByteArray("\x31\xFC\x00", 3));
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(contains(failed.output, "Flash Write failed at 0x9C00"));
    EXPECT_FALSE(failed.output.contains("Flash Write success"));
    EXPECT_EQ(memory(0x9C00, 0x9C02), QByteArray("\x30\xFC\x00\0", 4));
}

TEST_F(SuplMemoryTest, OtherDataNeedsAnEraseFirst)
{
    const QByteArray first = pattern(2048, 1);
    const QByteArray second = pattern(2048, 2);
    writeFile(work("first.hex"), hexFile(0x9C00, first));
    writeFile(work("second.hex"), hexFile(0x9C00, second));
    expectDone(write("first.hex"));
    expectDone(write("first.hex")); // the same bits can be cleared again
    expectFailure(write("second.hex"), "Flash Write failed at 0x9C00");
    EXPECT_NE(memory(0x9C00, 0xA000), second);
    expectDone(eraseProfiles());
    expectDone(write("second.hex"));
    EXPECT_EQ(memory(0x9C00, 0xA000), second);
}

TEST_F(SuplMemoryTest, AFailedWriteKeepsWhatCameBeforeIt)
{
    setMemory(0x9C10, QByteArray(4, '\0'));
    const QByteArray image = pattern(64);
    writeFile(work("image.hex"), hexFile(0x9C00, image));
    expectFailure(write("image.hex"), "Flash Write failed at 0x9C10");
    EXPECT_EQ(memory(0x9C00, 0x9C10), image.left(32));
    EXPECT_EQ(memory(0x9C12, 0x9C20), blank(28));
}

TEST_F(SuplMemoryTest, AFileWithoutDataProgramsNothingAndSucceeds)
{
    writeFile(work("empty.hex"), ":020000040001F9\n:00000001FF\n");
    expectDone(write("empty.hex"));
    EXPECT_EQ(memory(), blank(memorySize));
}

TEST_F(SuplMemoryTest, WhatWasWrittenIsReadBack)
{
    const QByteArray image = pattern(2048);
    writeFile(work("image.bin"), image);
    srecCat({"image.bin", "-binary", "-offset", "0x13800", "-o", "image.hex", "-intel"});
    expectDone(eraseProfiles());
    expectDone(write("image.hex"));
    expectDone(readProfiles("out.hex"));
    srecCat({"out.hex", "-intel", "-offset", "-0x13800", "-o", "out.bin", "-binary"});
    EXPECT_EQ(contentOf(work("out.bin")), image);
}

TEST_F(SuplMemoryTest, ReadsAndWritesAcrossTheLimitOf64KiB)
{
    const QByteArray image = pattern(4096);
    writeFile(work("image.bin"), image);
    srecCat({"image.bin", "-binary", "-offset", "0xF800", "-o", "image.hex", "-intel"});
    expectDone(write("image.hex"));
    EXPECT_EQ(memory(0x7C00, 0x8400), image);

    expectDone(with({"-l", "0x7C02", "0x83FE", "out.hex"}));
    srecCat({"out.hex", "-intel", "-offset", "-0xF804", "-o", "out.bin", "-binary"});
    EXPECT_EQ(contentOf(work("out.bin")), image.mid(4, 4096 - 8));
    expectDone(write("out.hex")); // no line of it crosses the limit
}

TEST_F(SuplMemoryTest, TheWholeFlashCanBeRead)
{
    const QByteArray before = pattern(memorySize);
    writeFile(home("charger-memory.bin"), before);
    expectDone(with({"-l", "0x0000", "0xA000", "out.hex"}));
    srecCat({"out.hex", "-intel", "-o", "out.bin", "-binary"});
    EXPECT_EQ(contentOf(work("out.bin")), before);
}

TEST_F(SuplMemoryTest, FilesMayBeElsewhere)
{
    ASSERT_TRUE(QDir(folder.path()).mkpath("else where"));
    const QString path = folder.filePath("else where/\xC3\xA4.hex");
    expectDone(readProfiles(path));
    expectDone(write(path));
    expectDone(readProfiles("../else where/b.hex"));
    EXPECT_EQ(contentOf(folder.filePath("else where/b.hex")), contentOf(path));
}

TEST_F(SuplMemoryTest, AReadThatCannotBeStoredFails)
{
    expectFailure(readProfiles("no/such/folder/out.hex"), "can not write output file");
    expectFailure(readProfiles("."), "can not write output file");
    expectFailure(readProfiles(""), "can not write output file");
    writeFile(work("out.hex"), "older");
    const ProgramRun full = run(readProfiles("out.hex"), 1000);
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_TRUE(contains(full.output, "can not write output file out.hex"));
    EXPECT_EQ(contentOf(work("out.hex")), "older");
}

TEST_F(SuplMemoryTest, ADamagedMemoryIsNotUsedAndNotTouched)
{
    QByteArray padded = blank(memorySize);
    padded[memorySize - 1] = 1;
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("x"), blank(memorySize - 4), blank(memorySize + 4),
          QByteArray(memorySize, '\xFF'), padded}) {
        writeFile(home("charger-memory.bin"), bytes);
        expectFailure(eraseProfiles(), "charger-memory.bin is damaged", 3);
        EXPECT_EQ(memory(), bytes);
    }
    ASSERT_TRUE(QFile::remove(home("charger-memory.bin")));
    ASSERT_TRUE(QDir().mkdir(home("charger-memory.bin")));
    expectFailure(eraseProfiles(), "charger-memory.bin cannot be read", 3);
}

TEST_F(SuplMemoryTest, IsWrittenWholeOrNotAtAll)
{
    ProgramRun full = run(eraseProfiles(), 1000);
    EXPECT_EQ(full.exitCode, 3);
    EXPECT_TRUE(contains(full.output, "charger-memory.bin cannot be written"));
    EXPECT_FALSE(QFile::exists(home("charger-memory.bin")));

    const QByteArray before = pattern(memorySize);
    writeFile(home("charger-memory.bin"), before);
    full = run(eraseProfiles(), 1000);
    EXPECT_EQ(full.exitCode, 3);
    EXPECT_FALSE(full.output.contains("Erase success"));
    EXPECT_EQ(memory(), before);
}

TEST_F(SuplMemoryTest, ResetsAreCounted)
{
    expectDone(reset());
    EXPECT_EQ(contentOf(home("charger-state.txt")), "resets = 1\n");
    expectDone(reset());
    expectDone(eraseProfiles()); // back in bootloader mode
    EXPECT_EQ(contentOf(home("charger-state.txt")), "resets = 2\n");
}

TEST_F(SuplMemoryTest, ADamagedStateIsToldAndNotTouched)
{
    for (const QByteArray& text :
         {QByteArray(), QByteArray("resets = many\n"), QByteArray("resets = -1\n"),
          QByteArray("resets = 1000000000\n"), QByteArray("resets = 99999999999\n"),
          QByteArray("sets = 1\n"), QByteArray("resets = 1\nresets = 2\n")}) {
        writeFile(home("charger-state.txt"), text);
        expectFailure(reset(), "charger-state.txt is damaged", 3);
        EXPECT_EQ(contentOf(home("charger-state.txt")), text);
    }
    writeFile(home("charger-state.txt"), "\xFF\0");
    expectFailure(reset(), "charger-state.txt: line 1 is not \"key = value\"", 3);
}
