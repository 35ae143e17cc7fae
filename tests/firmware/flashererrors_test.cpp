// Output of the uploader that ends a run with an error.

#include "support/gui/flashertest.h"

using FirmwareTool::FirmwareFlasher;

namespace
{
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
    /// Expects a run that has reached `stage` to end with this error when the uploader prints
    /// `chunk`.
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
        EXPECT_EQ(stages(), before) << chunk;
        EXPECT_TRUE(uploader.isRunning());
        EXPECT_FALSE(form.submitButton->isEnabled());
    }
};

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
