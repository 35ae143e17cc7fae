#include "CBGenerator/generator.h"
#include "CBGenerator/structsettings.h"
#include "HEXGeneratorParser/readfromhex.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "profileimport/parsedprofile.h"
#include "support/suplprogram.h"
#include "support/thorough.h"

#include <QFileInfo>

#include <algorithm>

namespace
{
constexpr int bootloaderSize = 2 * 0x0C00;
constexpr int profilesAt = 2 * 0x9C00;

class SuplFlashTest : public SuplTest
{
protected:
    /// A file for everything above the bootloader, the profiles included.
    QByteArray makeWholeImage() const
    {
        QByteArray image = pattern(memorySize, 3).mid(bootloaderSize);
        writeFile(work("hexToFlash.hex"), hexFile(0x0C00, image));
        return image;
    }

    void keepProfiles() const
    {
        writeFile(work("device.txt"), contentOf(KELVARON_DEMO_DIR "/device_nooverwrite.txt"));
    }
};
} // namespace

TEST_F(SuplFlashTest, ErasesProgramsAndVerifiesInThisOrder)
{
    makeWholeImage();
    const ProgramRun done = run(flash());
    EXPECT_EQ(done.exitCode, 0);
    QByteArray expected = "Opening port \"ttyUSB0\"\n"
                          "Bootloader Version is 1.20\n"
                          "Erasing 0x0C00 to 0xA000\n"
                          "Erased 0x0C00 to 0xA000\n"
                          "All flash above bldr erased\n"
                          "hex file loaded\n";
    for (int percent = 0; percent <= 100; percent += 5) {
        expected += "Writing " + QByteArray::number(percent) + "%\n";
    }
    expected += "Flash Write success\n";
    for (int percent = 0; percent <= 100; percent += 5) {
        expected += "Verifying " + QByteArray::number(percent) + "%\n";
    }
    EXPECT_EQ(done.output, expected + "Verified Flash OK\n");
}

TEST_F(SuplFlashTest, ReplacesTheProfilesWhenTheDeviceDescriptionSaysSo)
{
    const QByteArray before = pattern(memorySize, 7);
    writeFile(home("charger-memory.bin"), before);
    const QByteArray image = makeWholeImage();
    expectDone(flash());
    EXPECT_EQ(memory(), before.left(bootloaderSize) + image);
}

TEST_F(SuplFlashTest, KeepsTheProfilesWhenTheDeviceDescriptionSaysSo)
{
    const QByteArray before = pattern(memorySize, 7);
    writeFile(home("charger-memory.bin"), before);
    const QByteArray image = makeWholeImage();
    keepProfiles();
    expectDone(flash());
    EXPECT_EQ(memory(), before.left(bootloaderSize) + image.left(profilesAt - bootloaderSize)
                            + before.mid(profilesAt));
}

TEST_F(SuplFlashTest, ProfilesAreErasedByAnImageThatHasNone)
{
    writeFile(home("charger-memory.bin"), pattern(memorySize, 7));
    writeFile(work("hexToFlash.hex"), hexFile(0x0C00, pattern(64)));
    expectDone(flash());
    EXPECT_EQ(memory(0x9C00, 0xA000), blank(2048));
}

TEST_F(SuplFlashTest, ProfilesAreStillWrittenWhereAFlashKeepsThem)
{
    keepProfiles();
    writeFile(work("profiles.hex"), hexFile(0x9C00, pattern(2048)));
    expectDone(eraseProfiles());
    expectDone(write("profiles.hex"));
    EXPECT_EQ(memory(0x9C00, 0xA000), pattern(2048));
}

TEST_F(SuplFlashTest, TheBootloaderIsNeverReached)
{
    const QByteArray before = pattern(memorySize, 7);
    writeFile(home("charger-memory.bin"), before);
    writeFile(work("hexToFlash.hex"), hexFile(0x0BFE, pattern(64)));
    expectFailure(flash(), "the word at 0x0BFE is not in the range that can be programmed");
    EXPECT_EQ(memory(0, 0x0C00), before.left(bootloaderSize));
    EXPECT_EQ(memory(0x0C00, 0xA000), blank(memorySize - bootloaderSize));
}

TEST_F(SuplFlashTest, AMissingFileIsToldAfterTheErase)
{
    const ProgramRun failed = run(flash("absent.hex"));
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(failed.output.endsWith(
        "All flash above bldr erased\nfailed to find input file absent.hex\n"));
    writeFile(work("here.hex"), hexFile(0x0C00, pattern(64)));
    expectFailure(with({"-e", "-w", "here.hex", "-v", "absent.hex"}),
                  "failed to find input file absent.hex\n");
}

TEST_F(SuplFlashTest, ABadFileIsNotProgrammed)
{
    QByteArray text = hexFile(0x0C00, pattern(64));
    text.replace("00000001FF", "00000001FE");
    writeFile(work("hexToFlash.hex"), text);
    const ProgramRun failed = run(flash());
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(contains(failed.output, "bad hex file hexToFlash.hex: line 9: wrong checksum"));
    EXPECT_FALSE(failed.output.contains("hex file loaded"));
    EXPECT_EQ(memory(), blank(memorySize));
}

TEST_F(SuplFlashTest, VerifiesEveryByteOfItsFile)
{
    const QByteArray image = pattern(64);
    writeFile(work("a.hex"), hexFile(0x0C00, image));
    for (const int changed : {0, 1, 2, 60, 62}) {
        QByteArray other = image;
        other[changed] = static_cast<char>(other.at(changed) ^ 0x10);
        writeFile(work("b.hex"), hexFile(0x0C00, other));
        const ProgramRun failed = run(with({"-e", "-w", "a.hex", "-v", "b.hex"}));
        EXPECT_EQ(failed.exitCode, 1);
        EXPECT_TRUE(contains(failed.output, "Flash Write success\n"));
        const QByteArray address = changed < 4 ? "0x0C00" : "0x0C1E";
        EXPECT_TRUE(failed.output.endsWith("verify fail at " + address + '\n')) << failed.output;
    }
}

TEST_F(SuplFlashTest, VerifiesWhatTheFileHoldsBeyondWhatWasWritten)
{
    writeFile(work("a.hex"), hexFile(0x0C00, pattern(64)));
    writeFile(work("b.hex"), hexFile(0x0C00, pattern(128)));
    expectFailure(with({"-e", "-w", "a.hex", "-v", "b.hex"}), "verify fail at 0x0C20");
}

TEST_F(SuplFlashTest, EachLineArrivesAloneAtTheNormalPace)
{
    THOROUGH_ONLY();
    writeFile(home("supl-faults.txt"), "");
    makeWholeImage();
    const auto arrivesLineByLine = [this] {
        QProcess process;
        process.setWorkingDirectory(work(QString()));
        process.start(home("supl.mac"), flash());
        QList<QByteArray> pieces;
        qint64 longestSilence = 0;
        QElapsedTimer silence;
        silence.start();
        while (process.waitForReadyRead(patience)) {
            longestSilence = std::max(longestSilence, silence.restart());
            pieces.append(process.readAllStandardOutput());
        }
        process.waitForFinished(patience);
        EXPECT_EQ(process.exitCode(), 0);
        bool areAlone = true;
        for (const char* marker : {"All flash above bldr erased\n", "hex file loaded\n",
                                   "Flash Write success\n", "Verified Flash OK\n"}) {
            areAlone = areAlone && pieces.count(marker) == 1;
        }
        return areAlone && longestSilence < 4000
               && pieces.size() >= 20; // progress comes bit by bit
    };
    EXPECT_TRUE(waitFor(arrivesLineByLine)); // a busy machine may join lines or hold one back
}

TEST_F(SuplFlashTest, TheDemoBundleIsFlashed)
{
    KelvaronBundle bundle(KELVARON_DEMO_BUNDLE);
    ASSERT_TRUE(bundle.parseBundle());
    ASSERT_EQ(bundle.getNumFiles(), 5);
    writeFile(work("hexToFlash.hex"), bundle.getFile(2).toUtf8());
    srecCat({"hexToFlash.hex", "-intel", "-o", "firmware.bin", "-binary"});
    srecCat(
        {"hexToFlash.hex", "-intel", "-crop", "0x1800", "0x13800", "-o", "program.bin", "-binary"});
    const QByteArray program = contentOf(work("program.bin")).mid(bootloaderSize);
    EXPECT_GE(program.size() * 3 / 4, 30000);
    EXPECT_LE(program.size() * 3 / 4, 60000);
    QByteArray profiles = contentOf(work("firmware.bin")).mid(profilesAt);
    EXPECT_GT(profiles.size(), 100);
    profiles += blank(2048 - profiles.size());

    const QByteArray before = pattern(memorySize, 7);
    for (const int part : {0, 3}) {
        writeFile(home("charger-memory.bin"), before);
        writeFile(work("device.txt"), bundle.getFile(part).toUtf8());
        expectDone(flash());
        EXPECT_EQ(memory().mid(bootloaderSize, program.size()), program);
        EXPECT_EQ(memory().left(bootloaderSize), before.left(bootloaderSize));
        EXPECT_EQ(memory(0x9C00, 0xA000), part == 0 ? profiles : before.mid(profilesAt));
    }
}

TEST_F(SuplFlashTest, TheDemoFirmwareBringsAProfileOfEachChemistry)
{
    HParser::Generator generator(nullptr);
    generator.setHFileLocation(KELVARON_DEMO_DIR "/kelvaron_chemistries.cb");
    generator.generate();
    ASSERT_TRUE(QFile::copy(KELVARON_DEMO_FIRMWARE, work("hexToFlash.hex")));
    expectDone(flash());
    expectDone(readProfiles("out.hex"));

    HEXGeneratorParser::ReadFromHEX reader;
    ASSERT_TRUE(reader.read(work("out.hex"), generator.getProfileStartWordAddress()));
    const QList<ParsedProfile*> profiles = reader.parseProfiles(&generator);
    const QList<HParser::StructSettings*> chemistries = generator.getChemistrySettings();
    ASSERT_EQ(profiles.size(), chemistries.size());
    for (int i = 0; i < profiles.size(); ++i) {
        EXPECT_EQ(profiles.at(i)->getProperties().value("chemistry"),
                  chemistries.at(i)->getDescriptiveName());
        EXPECT_TRUE(profiles.at(i)->getActiveStatus());
        EXPECT_EQ(profiles.at(i)->getDefaultStatus(), i == 0);
    }
}

TEST_F(SuplFlashTest, TheDemoInstallationHasTheSimulatorAsItsUploader)
{
    const QString installed = KELVARON_BIN_DIR "/KelvaronProfileEditorFiles/supl.mac";
    EXPECT_TRUE(QFileInfo(installed).isExecutable());
    EXPECT_EQ(contentOf(installed), contentOf(KELVARON_UPLOADER_SIMULATOR));
}
