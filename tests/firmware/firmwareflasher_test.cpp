#include "firmware/firmwareflasher.h"

#include "support/gui/flashertest.h"

#include <QPushButton>

using FirmwareTool::FirmwareFlasher;

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
        EXPECT_EQ(flashed.size(), 1); // reported before the question
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
