#include "firmware/firmwareflasher.h"

#include "support/gui/flashertest.h"
#include "ui_kelvaronfirmwaretoolwindow.h"

#include <QPushButton>

using FirmwareTool::FirmwareFlasher;

namespace
{
const QStringList erasing = {"busy", "0/100", "0/100", "0/100"};
const QStringList loading = {"100/100 √", "busy", "0/100", "0/100"};
const QStringList uploading = {"100/100 √", "100/100 √", "0/100", "0/100"};
const QStringList verifying = {"100/100 √", "100/100 √", "100/100 √", "0/100"};
const QStringList verified = {"100/100 √", "100/100 √", "100/100 √", "100/100 √"};

const QStringList eraseFailed = {"0/100", "0/100", "0/100", "0/100"};
const QStringList loadFailed = {"100/100 √", "0/100 !", "0/100", "0/100"};
const QStringList verifyFailed = {"100/100 √", "100/100 √", "100/100 √", "0/100 !"};

const QString noCharger = "Incorrect COM port or Kelvaron is not in Bootloader";
const QString noFirmware = "Firmware file not found!";
const QString noDevice = "\"device.txt\" not found! Please reinstall the program.";
const QString noPort = "Cannot open COM port. Please try selecting a different one.";
const QString badFlash = "Verification Failed. The firmware file could be corrupted.";
const QString noStx = "\"no stx char!\" - Known Mac OS bug. Please try again.";
} // namespace

/// The end of a run by one chunk of output.
class FlasherErrorTest : public FlasherTest
{
protected:
    /// A run that has reached `stage` ends with this error when the uploader prints `chunk`.
    void expectError(int stage, const QByteArray& chunk, int number, const QString& text,
                     const QStringList& display)
    {
        startAndReach(stage);
        QSignalSpy flashed(flasher, &FirmwareFlasher::flashed);
        const StandardOutputCapture output;
        DialogScript script;
        script.expectMessage("Flashing Error!", text);
        send(chunk);
        waitForReport();
        script.finish();
        EXPECT_EQ(output.text(), "Error" + std::to_string(number) + "\n");
        EXPECT_EQ(stages(), display);
        EXPECT_TRUE(form.submitButton->isEnabled());
        uploader.run("exit");
        EXPECT_TRUE(uploader.waitForEnd());
        EXPECT_TRUE(flashed.isEmpty());
    }

    /// The chunk means nothing at this stage but is logged.
    void expectIgnored(int stage, const QByteArray& chunk)
    {
        startAndReach(stage);
        const QStringList before = stages();
        const DialogScript nothing;
        send(chunk);
        QCoreApplication::processEvents();
        EXPECT_EQ(stages(), before) << chunk.constData();
        EXPECT_TRUE(uploader.isRunning());
        EXPECT_FALSE(form.submitButton->isEnabled());
    }
};

// What is run

TEST_F(FlasherTest, OneRunErasesProgramsAndVerifies)
{
    start();
    EXPECT_EQ(arguments, QStringList({"-s", "/dev/ttyUSB7", "-h", "-V", "-e", "-w",
                                      "hexToFlash.hex", "-v", "hexToFlash.hex"}));
}

TEST_F(FlasherTest, EmptyPathCountsAsNone)
{
    flasher->setHexPath("");
    EXPECT_EQ(flasher->getHexPath(), "NOPATH");
    EXPECT_EQ(flasher->toString(), "Path : NOPATH");
    flasher->setHexPath(" a b.kelvaron");
    EXPECT_EQ(flasher->getHexPath(), " a b.kelvaron");
    EXPECT_EQ(flasher->toString(), "Path :  a b.kelvaron");
}

TEST_F(FlasherTest, NothingIsChosenAtFirst)
{
    const FirmwareFlasher fresh(nullptr, &form);
    EXPECT_EQ(fresh.getHexPath(), "NOPATH");
}

// The stages

TEST_F(FlasherTest, FullRunTicksOffItsStages)
{
    QSignalSpy flashed(flasher, &FirmwareFlasher::flashed);
    start();
    EXPECT_EQ(stages(), erasing);
    const StandardOutputCapture output;
    send("All flash above bldr erased\n");
    EXPECT_EQ(stages(), loading);
    send("hex file loaded\n");
    EXPECT_EQ(stages(), uploading);
    send("Writing 37%");
    EXPECT_EQ(form.uploadPB->value(), 37);
    send("Flash Write success\n");
    EXPECT_EQ(stages(), verifying);
    send("Verifying 5%");
    EXPECT_EQ(form.verifyPB->value(), 5);
    EXPECT_EQ(output.text(),
              "Entering loading state\nEntering uploading state\nEntering verifying state\n");
    EXPECT_FALSE(form.submitButton->isEnabled());

    DialogScript script;
    script.thenDo([&](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Stay in Bootloader Mode or Reset?");
        EXPECT_EQ(dialog.parentWidget(), window.get());
        EXPECT_EQ(dialog.findChild<QLabel*>()->text(),
                  "<b>Firmware Successfully Flashed!</b><br>Do you want to stay in bootloader mode "
                  "or reset the Kelvaron?");
        EXPECT_EQ(flashed.size(), 1); // told before the question
        EXPECT_FALSE(form.submitButton->isEnabled());
        clickOn(dialog.findChildren<QPushButton*>().at(0));
    });
    send("Verified Flash OK\n");
    waitForReport();
    script.finish();
    EXPECT_EQ(stages(), verified);
    EXPECT_EQ(flashed.size(), 1);
}

TEST_F(FlasherTest, ResetAfterTheFlashRunsTheUploaderOnTheSamePort)
{
    startAndReach(4);
    DialogScript script;
    script.thenDo([this](QWidget& dialog) {
        clickOn(dialog.findChildren<QPushButton*>().at(1));
        QCoreApplication::processEvents();
        EXPECT_TRUE(uploader.isRunning()) << "the reset waits for the end of the flash";
        uploader.run("exit");
        EXPECT_TRUE(uploader.waitForEnd());
        uploader.run("exit");
    });
    send("Verified Flash OK\n");
    waitForReport();
    script.finish();
    EXPECT_EQ(uploader.waitForStart(), QStringList({"-s", "/dev/ttyUSB7", "-h", "-V", "-R"}));
}

TEST_F(FlasherTest, MarkerAnywhereInTheChunkCounts)
{
    start();
    send("erasing...\nAll flash above bldr erased, 4 pages\nmore\n");
    EXPECT_EQ(stages(), loading);
}

TEST_F(FlasherTest, MarkersAreCaseSensitive)
{
    start();
    send("all flash above bldr erased\n");
    EXPECT_EQ(stages(), erasing);
}

TEST_F(FlasherTest, MarkerAcrossTwoReadsIsNotRecognised)
{
    start();
    send("All flash above ");
    send("bldr erased\n");
    EXPECT_EQ(stages(), erasing);
}

TEST_F(FlasherTest, OneChunkMovesByOneStageOnly)
{
    start();
    send("All flash above bldr erased\nhex file loaded\n");
    EXPECT_EQ(stages(), loading);
}

TEST_F(FlasherTest, ErasedFlashCountsBeforeAPortThatCannotBeOpened)
{
    start();
    const DialogScript nothing;
    send("Can not open comport\nAll flash above bldr erased\n");
    EXPECT_EQ(stages(), loading);
}

TEST_F(FlasherTest, SuccessCountsBeforeAFailedVerification)
{
    startAndReach(4);
    DialogScript script;
    script.thenDo([](QWidget& dialog) { dialog.close(); });
    send("verify fail, then Verified Flash OK\n");
    waitForReport();
    EXPECT_EQ(stages(), verified);
}

TEST_F(FlasherTest, LoadedFileCountsBeforeAMissingOne)
{
    startAndReach(2);
    const DialogScript nothing;
    send("failed to find input file, hex file loaded\n");
    EXPECT_EQ(stages(), uploading);
}

// Progress

TEST_F(FlasherTest, LastPercentageOfAChunkIsShown)
{
    startAndReach(3);
    send("Writing 12%\rWriting 45%\r");
    EXPECT_EQ(form.uploadPB->value(), 45);
    send("Writing 100%");
    EXPECT_EQ(form.uploadPB->value(), 100);
}

TEST_F(FlasherTest, ChunkWithoutAPercentageLeavesTheBar)
{
    startAndReach(3);
    send("Writing 12%");
    send("still writing\n");
    EXPECT_EQ(form.uploadPB->value(), 12);
    send("%");
    EXPECT_EQ(form.uploadPB->value(), 12);
}

TEST_F(FlasherTest, SenselessPercentageLeavesTheBar)
{
    startAndReach(4);
    send("Verifying 12%");
    send("zz%");
    EXPECT_EQ(form.verifyPB->value(), 12);
}

TEST_F(FlasherTest, PercentagesCountOnlyWhileUploadingAndVerifying)
{
    start();
    send("Erasing 50%\n");
    EXPECT_EQ(stages(), erasing);
    send("All flash above bldr erased\n");
    send("Loading 50%\n");
    EXPECT_EQ(stages(), loading);
}

TEST_F(FlasherTest, MilestoneCountsBeforeItsPercentage)
{
    startAndReach(3);
    send("Flash Write success 50%\n");
    EXPECT_EQ(stages(), verifying);
}

// Hostile output

TEST_F(FlasherTest, BytesThatAreNoTextDoNoHarm)
{
    startAndReach(3);
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.append(static_cast<char>(byte));
    }
    send(bytes + QByteArray("\xC3\xA4\xE2\x82\xAC\xFF\xFE", 7));
    send("\xFF\xFE%");
    EXPECT_EQ(form.uploadPB->value(), 0);
    send("Writing 61%");
    EXPECT_EQ(form.uploadPB->value(), 61);
}

TEST_F(FlasherTest, TextEndsAtANulByte)
{
    start();
    send(QByteArray("x\0All flash above bldr erased", 29));
    EXPECT_EQ(stages(), erasing);
    send(QByteArray("All flash above bldr erased\0x", 29));
    EXPECT_EQ(stages(), loading);
}

TEST_F(FlasherTest, LongOutputIsReadToItsEnd)
{
    startAndReach(3);
    send(QByteArray(1000000, 'x'));
    send("Writing 99%");
    EXPECT_EQ(form.uploadPB->value(), 99);
}

// Errors

TEST_F(FlasherErrorTest, Error1WhileErasing)
{
    expectError(1, "Bootloader Version is ... Timeout\n", 1, noCharger, eraseFailed);
}

TEST_F(FlasherErrorTest, Error1AcrossALineBreak)
{
    expectError(1, "Bootloader Version is\nTimeout", 1, noCharger, eraseFailed);
}

TEST_F(FlasherErrorTest, Error2WhileErasing)
{
    expectError(1, "supl: failed to find input file\n", 2, noFirmware, loadFailed);
}

TEST_F(FlasherErrorTest, Error2WhileLoading)
{
    expectError(2, "failed to find input file\n", 2, noFirmware, loadFailed);
}

TEST_F(FlasherErrorTest, Error2CountsBeforeAllOthersWhileErasing)
{
    expectError(1,
                "no stx char, Could not find device.txt file, Bootloader Version is Timeout, Can "
                "not open comport, All flash above bldr erased, failed to find input file\n",
                2, noFirmware, loadFailed);
}

TEST_F(FlasherErrorTest, Error3WhileErasing)
{
    expectError(1, "Could not find device.txt file\n", 3, noDevice, eraseFailed);
}

TEST_F(FlasherErrorTest, Error4WhileErasing)
{
    expectError(1, "Can not open comport\n", 4, noPort, eraseFailed);
}

TEST_F(FlasherErrorTest, Error4CountsBeforeError1)
{
    expectError(1, "Bootloader Version is Timeout. Can not open comport\n", 4, noPort, eraseFailed);
}

TEST_F(FlasherErrorTest, Error1CountsBeforeError3)
{
    expectError(1, "Could not find device.txt file. Bootloader Version is Timeout\n", 1, noCharger,
                eraseFailed);
}

TEST_F(FlasherErrorTest, Error3CountsBeforeError13)
{
    expectError(1, "no stx char. Could not find device.txt file\n", 3, noDevice, eraseFailed);
}

TEST_F(FlasherErrorTest, Error5WhileVerifying)
{
    expectError(4, "verify fail at 0x0C00\n", 5, badFlash, verifyFailed);
}

TEST_F(FlasherErrorTest, Error13WhileErasing)
{
    expectError(1, "no stx char\n", 13, noStx, eraseFailed);
}

TEST_F(FlasherErrorTest, TimeoutBeforeTheBootloaderVersionIsNoError)
{
    expectIgnored(1, "Timeout, then Bootloader Version is 3\n");
}

TEST_F(FlasherErrorTest, MissingInputFileIsIgnoredWhileUploading)
{
    expectIgnored(3, "failed to find input file\n");
}

TEST_F(FlasherErrorTest, MissingInputFileIsIgnoredWhileVerifying)
{
    expectIgnored(4, "failed to find input file\n");
}

TEST_F(FlasherErrorTest, ErrorsOfErasingAreIgnoredWhileLoading)
{
    expectIgnored(2, "Can not open comport, no stx char, Could not find device.txt file, "
                     "Bootloader Version is Timeout\n");
}

TEST_F(FlasherErrorTest, FailedVerificationIsIgnoredWhileUploading)
{
    expectIgnored(3, "verify fail, Verified Flash OK\n");
}

TEST_F(FlasherErrorTest, MilestonesOfOtherStagesAreIgnoredWhileErasing)
{
    expectIgnored(1, "hex file loaded, Flash Write success, Verified Flash OK, verify fail\n");
}

TEST_F(FlasherErrorTest, OutputAfterTheEndChangesNothing)
{
    startAndReach(1);
    DialogScript script;
    script.expectMessage("Flashing Error!", noPort);
    send("Can not open comport\n");
    uploader.print("All flash above bldr erased\n");
    waitForReport();
    script.finish();
    flasher->readStream();
    EXPECT_EQ(stages(), eraseFailed);
}

// Runs after runs

TEST_F(FlasherErrorTest, RunAfterAnErrorBeginsAnew)
{
    expectError(4, "verify fail\n", 5, badFlash, verifyFailed);
    start();
    EXPECT_EQ(stages(), erasing);
    EXPECT_EQ(form.verifyCM->text(), "√");
    send("All flash above bldr erased\n");
    EXPECT_EQ(stages(), loading);
}

TEST_F(FlasherTest, RunAfterASuccessEndsInSuccessToo)
{
    QSignalSpy flashed(flasher, &FirmwareFlasher::flashed);
    for (int run = 1; run <= 2; ++run) {
        startAndReach(4);
        DialogScript script;
        script.thenDo([](QWidget& dialog) { dialog.close(); });
        send("Verified Flash OK\n");
        waitForReport();
        script.finish();
        EXPECT_EQ(flashed.size(), run);
        uploader.run("exit");
        EXPECT_TRUE(uploader.waitForEnd());
    }
}

TEST_F(FlasherTest, StartDuringARunGivesTheOldRunUp)
{
    startAndReach(3);
    const qint64 first = uploader.pid();
    const DialogScript nothing;
    start();
    EXPECT_NE(uploader.pid(), first);
    EXPECT_EQ(stages(), erasing);
    send("All flash above bldr erased\n");
    EXPECT_EQ(stages(), loading);
}
