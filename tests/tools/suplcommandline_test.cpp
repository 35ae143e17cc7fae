#include "support/suplprogram.h"

namespace
{
class SuplCommandLineTest : public SuplTest
{};

class SuplBadArgumentsTest : public SuplTest, public ::testing::WithParamInterface<QStringList>
{};
} // namespace

TEST_F(SuplCommandLineTest, DoesWhatTheEditorAsksForInItsOrder)
{
    const QByteArray image = pattern(2048);
    writeFile(work("profilesToUpload.hex"), hexFile(0x9C00, image));
    writeFile(work("hexToFlash.hex"), hexFile(0x0C00, pattern(512, 2)));

    expectDone({"-s", "ttyUSB0", "-h", "-V", "-E", "0x9C00", "0xA000"});
    expectDone({"-s", "ttyUSB0", "-h", "-V", "-w", "profilesToUpload.hex"});
    expectDone({"-s", "ttyUSB0", "-h", "-V", "-l", "0x9C00", "0xA000", "downloadedProfiles.hex"});
    EXPECT_EQ(memory(0x9C00, 0xA000), image);
    EXPECT_TRUE(QFile::exists(work("downloadedProfiles.hex")));
    expectDone({"-s", "ttyUSB0", "-h", "-V", "-R"});
    expectDone({"-s", "ttyUSB0", "-h", "-V", "-e", "-w", "hexToFlash.hex", "-v", "hexToFlash.hex"});
    EXPECT_EQ(memory(0x0C00, 0x0D00), pattern(512, 2));
}

TEST_F(SuplCommandLineTest, HelpTellsOperationsAndFaults)
{
    const ProgramRun help = run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.errors, "");
    for (const char* word : {"-E LOW HIGH",
                             "-w FILE",
                             "-l LOW HIGH FILE",
                             "-R",
                             "-e -w FILE -v FILE",
                             "pace",
                             "absent-port",
                             "no-port",
                             "no-bootloader",
                             "no-stx",
                             "exit-code",
                             "crash",
                             "stall",
                             "delay",
                             "flood",
                             "write-protect",
                             "verify-fail",
                             "garble",
                             "truncate",
                             "log",
                             "charger-memory.bin",
                             "charger-state.txt",
                             "supl-faults.txt",
                             "supl-log.txt"}) {
        EXPECT_TRUE(contains(help.output, word)) << word;
    }
}

TEST_P(SuplBadArgumentsTest, AreAnsweredWithTheUsage)
{
    const ProgramRun refused = run(GetParam());
    EXPECT_FALSE(refused.crashed);
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_EQ(refused.output, "");
    EXPECT_TRUE(startsWith(refused.errors, "Usage:"));
    EXPECT_FALSE(QFile::exists(home("charger-memory.bin")));
}

INSTANTIATE_TEST_SUITE_P(
    Lists, SuplBadArgumentsTest,
    ::testing::Values(QStringList{}, QStringList{"--version"}, QStringList{"--help", "-R"},
                      QStringList{"-s", "p", "-h", "-V"}, QStringList{"-s", "-h", "-V", "-R"},
                      QStringList{"-s", "p", "-V", "-h", "-R"}, QStringList{"-s", "p", "-h", "-R"},
                      QStringList{"-h", "-V", "-s", "p", "-R"},
                      QStringList{"-s", "p", "-h", "-V", "-R", "-R"},
                      QStringList{"-s", "p", "-h", "-V", "-x"},
                      QStringList{"-s", "p", "-h", "-V", "-w"},
                      QStringList{"-s", "p", "-h", "-V", "-w", "a", "b"},
                      QStringList{"-s", "p", "-h", "-V", "-w", "a", "-v", "a"},
                      QStringList{"-s", "p", "-h", "-V", "-E", "0x9C00"},
                      QStringList{"-s", "p", "-h", "-V", "-E", "0x9C00", "0xA000", "x"},
                      QStringList{"-s", "p", "-h", "-V", "-E", "9C00", "A000"},
                      QStringList{"-s", "p", "-h", "-V", "-E", "39936", "40960"},
                      QStringList{"-s", "p", "-h", "-V", "-E", "0x9C00 ", "0xA000"},
                      QStringList{"-s", "p", "-h", "-V", "-E", "0x", "0xA000"},
                      QStringList{"-s", "p", "-h", "-V", "-E", "0x9C00", "0x1000000"},
                      QStringList{"-s", "p", "-h", "-V", "-E", "0x9C00 0xA000"},
                      QStringList{"-s", "p", "-h", "-V", "-l", "0x9C00", "0xA000"},
                      QStringList{"-s", "p", "-h", "-V", "-l", "file", "0x9C00", "0xA000"},
                      QStringList{"-s", "p", "-h", "-V", "-e", "-v", "f", "-w", "f"},
                      QStringList{"-s", "p", "-h", "-V", "-e", "-w", "f"},
                      QStringList{"-s", "p", "-h", "-V", "-e", "-w", "f", "-x", "f"},
                      QStringList{"-s", "p", "-h", "-V", "-w", "f", "-v", "f", "-e"},
                      QStringList{"-s", "p", "-h", "-V", "-e", "-w", "f", "-v", "f", "g"}));

TEST_F(SuplCommandLineTest, AnEmptyPortCannotBeOpened)
{
    const ProgramRun refused = run(with({"-R"}, ""));
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.output, "Opening port \"\"\nCan not open comport\n");
}

TEST_F(SuplCommandLineTest, EveryOtherPortIsOpened)
{
    for (const char* port : {"ttyUSB0", "cu.usbserial-A1", "COM12", "two words", "-R",
                             "\xC3\xA4\xF0\x9F\x94\x8B", "/dev/ttyS0"}) {
        expectDone(with({"-R"}, port));
    }
}

TEST_F(SuplCommandLineTest, AnAbsentPortCannotBeOpenedByAnyStep)
{
    setFaults("absent-port = ttyS1 ttyS2\n");
    writeFile(work("hexToFlash.hex"), hexFile(0x0C00, pattern(64)));
    for (const QStringList& operation :
         {QStringList{"-E", "0x9C00", "0xA000"}, QStringList{"-w", "hexToFlash.hex"},
          QStringList{"-l", "0x9C00", "0xA000", "out.hex"}, QStringList{"-R"},
          QStringList{"-e", "-w", "hexToFlash.hex", "-v", "hexToFlash.hex"}}) {
        expectFailure(with(operation, "ttyS1"), "Can not open comport\n");
        expectFailure(with(operation, "ttyS2"), "Can not open comport\n");
        expectDone(with(operation, "ttyS"));
        expectDone(with(operation, "ttyS10"));
    }
}

TEST_F(SuplCommandLineTest, ThePortIsHeldByOneRunAtATime)
{
    setFaults("erase.stall = yes\n");
    QProcess first;
    first.setWorkingDirectory(work(QString()));
    first.start(home("supl.mac"), eraseProfiles());
    while (!first.readAllStandardOutput().contains("Erasing")) {
        ASSERT_TRUE(first.waitForReadyRead(patience));
    }
    expectFailure(reset(), "Can not open comport\n");
    first.kill();
    ASSERT_TRUE(first.waitForFinished(patience));
    expectDone(reset());
}

TEST_F(SuplCommandLineTest, WithoutADeviceDescriptionNothingIsDone)
{
    ASSERT_TRUE(QFile::remove(work("device.txt")));
    writeFile(work("hexToFlash.hex"), hexFile(0x0C00, pattern(64)));
    for (const QStringList& arguments :
         {eraseProfiles(), write("hexToFlash.hex"), readProfiles("out.hex"), reset(), flash()}) {
        expectFailure(arguments, "Could not find device.txt file\n");
    }
    EXPECT_FALSE(QFile::exists(home("charger-memory.bin")));
    EXPECT_FALSE(QFile::exists(work("out.hex")));
}

TEST_F(SuplCommandLineTest, ADeviceDescriptionOfAnotherChargerIsRefused)
{
    const QByteArray good = contentOf(KELVARON_DEMO_DIR "/device.txt");
    const auto expectRefused = [&](const QByteArray& line, const QByteArray& replacement,
                                   const QByteArray& words) {
        ASSERT_TRUE(good.contains(line)) << line;
        writeFile(work("device.txt"), QByteArray(good).replace(line, replacement));
        expectFailure(reset(), words);
    };
    expectRefused("word_bits         = 24", "word_bits = 16", "word_bits is not that");
    expectRefused("bytes_per_word    = 4", "bytes_per_word = 3", "bytes_per_word is not that");
    expectRefused("addresses_per_word = 2", "addresses_per_word = 1", "addresses_per_word is not");
    expectRefused("flash_end         = 0xA000", "flash_end = 0xA002", "flash_end is not a valid");
    expectRefused("flash_end         = 0xA000", "flash_end = 0x9C00", "must be in this order");
    expectRefused("flash_end         = 0xA000", "flash_end = -1", "flash_end is not a valid");
    expectRefused("page_words        = 512", "page_words = 0", "each at a page boundary");
    expectRefused("page_words        = 512", "page_words = 500", "each at a page boundary");
    expectRefused("page_words        = 512", "", "page_words is missing");
    expectRefused("update_end        = 0xA000", "", "update_end is missing");
    expectRefused("update_end        = 0xA000", "update_end = 0x0800", "must be in this order");
    expectRefused("update_end        = 0xA000", "update_end = all", "update_end is not a valid");
    expectRefused("flash_start       = 0x0000", "nonsense", "line 13 is not \"key = value\"");
    expectRefused("flash_start       = 0x0000", "flash_end = 0xA000", "flash_end is given twice");
    writeFile(work("device.txt"), "");
    expectFailure(reset(), "is missing");
    writeFile(work("device.txt"), QByteArray(200000, '\n'));
    expectFailure(reset(), "device.txt is too large");
}

TEST_F(SuplCommandLineTest, ADeviceDescriptionWithWindowsLineEndsIsRead)
{
    writeFile(work("device.txt"), contentOf(KELVARON_DEMO_DIR "/device.txt").replace("\n", "\r\n"));
    expectDone(reset());
}

TEST_F(SuplCommandLineTest, StartsFromItsOwnFolderWithoutAnyEnvironment)
{
    ASSERT_TRUE(QFile::copy(work("device.txt"), home("device.txt")));
    QProcess process;
    process.setWorkingDirectory(home(QString()));
    process.start("/usr/bin/env", QStringList{"-i", "./supl.mac"} + reset());
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardOutput();
    EXPECT_TRUE(QFile::exists(home("charger-memory.bin")));
}
