// A run whose output stops.

#include "support/gui/flashertest.h"

#include <QTimer>

using FirmwareTool::FirmwareFlasher;

class WatchdogTest : public FlasherTest
{
protected:
    /// A tick of the watchdog finds the run alive.
    void expectAlive()
    {
        const QStringList before = stages();
        const DialogScript nothing;
        flasher->checkAppFrozen();
        QCoreApplication::processEvents();
        EXPECT_EQ(stages(), before);
        EXPECT_TRUE(uploader.isRunning());
        EXPECT_FALSE(form.submitButton->isEnabled());
    }

    /// A tick of the watchdog ends the run.
    void expectFrozen()
    {
        const QStringList before = stages();
        const StandardOutputCapture output;
        DialogScript script;
        script.expectMessage("Unknown Error!", frozenText(logNames().value(0)));
        flasher->checkAppFrozen();
        waitForReport();
        script.finish();
        EXPECT_EQ(output.text(), "Error9\n");
        EXPECT_EQ(stages(), before); // no change of the display
        EXPECT_TRUE(uploader.waitForEnd());
    }
};

TEST_F(WatchdogTest, LooksEveryFiveSeconds)
{
    EXPECT_EQ(flasher->findChildren<QTimer*>().size(), 0);
    start();
    const QList<QTimer*> timers = flasher->findChildren<QTimer*>();
    ASSERT_EQ(timers.size(), 1);
    EXPECT_EQ(timers.at(0)->interval(), 5000);
    EXPECT_TRUE(timers.at(0)->isActive());
    EXPECT_FALSE(timers.at(0)->isSingleShot());
}

TEST_F(WatchdogTest, EveryStageMayBeQuietForThreeSeconds)
{
    const QList<QByteArray> milestones = {"", "All flash above bldr erased", "hex file loaded",
                                          "Flash Write success"};
    start();
    for (const QByteArray& milestone : milestones) {
        send(milestone);
        now += 3;
        expectAlive();
    }
}

TEST_F(WatchdogTest, EraseThatIsQuietForFourSecondsIsFrozen)
{
    startAndReach(1);
    now += 4;
    expectFrozen();
}

TEST_F(WatchdogTest, LoadingThatIsQuietForFourSecondsIsFrozen)
{
    startAndReach(2);
    now += 4;
    expectFrozen();
}

TEST_F(WatchdogTest, UploadThatIsQuietForFourSecondsIsFrozen)
{
    startAndReach(3);
    now += 4;
    expectFrozen();
}

TEST_F(WatchdogTest, VerificationThatIsQuietForFourSecondsIsFrozen)
{
    startAndReach(4);
    now += 4;
    expectFrozen();
}

TEST_F(WatchdogTest, ProgressOfTheUploadCountsAsActivity)
{
    startAndReach(3);
    now += 3;
    send("Writing 10%");
    now += 3;
    expectAlive();
    now += 1;
    expectFrozen();
}

TEST_F(WatchdogTest, ProgressOfTheVerificationCountsAsActivity)
{
    startAndReach(4);
    now += 3;
    send("Verifying 10%");
    now += 3;
    expectAlive();
    now += 1;
    expectFrozen();
}

TEST_F(WatchdogTest, OutputWithoutProgressIsNoActivity)
{
    startAndReach(3);
    now += 2;
    send("still writing\n");
    send("%");
    now += 2;
    expectFrozen();
}

TEST_F(WatchdogTest, PercentagesWhileErasingAreNoActivity)
{
    start();
    now += 2;
    send("Erasing 50%\n");
    now += 2;
    expectFrozen();
}

TEST_F(WatchdogTest, ClockThatGoesBackDoesNotEndARun)
{
    start();
    now -= 1000;
    expectAlive();
}

TEST_F(WatchdogTest, VerifiedFlashAfterTheWatchdogIsIgnored)
{
    QSignalSpy flashed(flasher, &FirmwareFlasher::flashed);
    startAndReach(4);
    now += 4;
    expectFrozen();
    const QStringList before = stages();
    uploader.print("Verified Flash OK");
    flasher->readStream();
    QCoreApplication::processEvents();
    EXPECT_EQ(stages(), before);
    EXPECT_TRUE(flashed.isEmpty());
}

TEST_F(WatchdogTest, StopsAfterItHasEndedARun)
{
    start();
    now += 4;
    expectFrozen();
    flushDeletions();
    EXPECT_EQ(flasher->findChildren<QTimer*>().size(), 0);
}

TEST_F(WatchdogTest, RunThatHasEndedIsNotFrozen)
{
    start();
    DialogScript script;
    script.expectMessage("Flashing Error!",
                         "Cannot open COM port. Please try selecting a different one.");
    send("Can not open comport");
    waitForReport();
    script.finish();
    const DialogScript nothing;
    now += 100;
    flasher->checkAppFrozen();
    QCoreApplication::processEvents();
}

TEST_F(WatchdogTest, FlasherThatNeverRanIsNotFrozen)
{
    const DialogScript nothing;
    flasher->checkAppFrozen();
    QCoreApplication::processEvents();
    EXPECT_TRUE(form.submitButton->isEnabled());
}

TEST_F(WatchdogTest, EachRunHasOneWatchdog)
{
    start();
    now += 4;
    expectFrozen();
    start();
    start();
    flushDeletions();
    EXPECT_EQ(flasher->findChildren<QTimer*>().size(), 1);
    now += 3;
    expectAlive();
}

// Only the uploader's silence matters, not its end.

TEST_F(WatchdogTest, UploaderThatCrashesIsFrozen)
{
    startAndReach(2);
    uploader.run("kill -SEGV $$");
    EXPECT_TRUE(uploader.waitForEnd());
    now += 4;
    expectFrozen();
}

TEST_F(WatchdogTest, UploaderThatEndsTooEarlyIsFrozen)
{
    startAndReach(3);
    uploader.run("exit 0");
    EXPECT_TRUE(uploader.waitForEnd());
    now += 4;
    expectFrozen();
}

TEST_F(WatchdogTest, LastWordsOfAnUploaderThatEndsCount)
{
    startAndReach(4);
    DialogScript script;
    script.thenDo([](QWidget& dialog) { dialog.close(); });
    uploader.run("printf 'Verified Flash OK'; exit 1");
    waitForReport();
    script.finish();
    EXPECT_EQ(form.verifyPB->value(), 100);
}

TEST_F(WatchdogTest, MissingUploaderIsFrozen)
{
    ASSERT_TRUE(QFile::remove("supl.mac"));
    form.submitButton->setEnabled(false);
    flasher->startFlashing();
    QCoreApplication::processEvents();
    now += 4;
    expectFrozen();
}

TEST_F(WatchdogTest, UploaderThatMayNotBeRunIsFrozen)
{
    ASSERT_TRUE(QFile::setPermissions("supl.mac", QFile::ReadOwner));
    form.submitButton->setEnabled(false);
    flasher->startFlashing();
    QCoreApplication::processEvents();
    now += 4;
    expectFrozen();
}
