// Runs that are abandoned: with the window, in the middle, while a dialog is open.

#include "serialports/portturn.h"
#include "serialports/portturns.h"
#include "support/gui/flashertest.h"

#include <QElapsedTimer>
#include <QPushButton>

#include <csignal>

class FlashEndTest : public FlasherTest
{
protected:
    /// Deletes the window and expects the uploader to end without being waited for: terminating it
    /// gracefully would take half a minute.
    void expectUploaderEndsWithTheWindow()
    {
        QElapsedTimer timer;
        timer.start();
        window.reset();
        EXPECT_LT(timer.elapsed(), 20000);
        EXPECT_TRUE(uploader.waitForEnd());
    }
};

TEST_F(FlashEndTest, UploaderEndsWithTheWindow)
{
    startAndReach(3);
    expectUploaderEndsWithTheWindow();
}

TEST_F(FlashEndTest, UploaderThatIgnoresRequestsToEndEnds)
{
    start();
    uploader.run("trap '' TERM INT HUP; printf ready");
    EXPECT_TRUE(waitFor([this] { return QString::fromStdString(log()).endsWith("ready"); }));
    expectUploaderEndsWithTheWindow();
}

TEST_F(FlashEndTest, StoppedUploaderEnds)
{
    start();
    ASSERT_EQ(kill(static_cast<pid_t>(uploader.pid()), SIGSTOP), 0);
    expectUploaderEndsWithTheWindow();
}

TEST_F(FlashEndTest, UploaderThatTalksWithoutEndEnds)
{
    start();
    uploader.run("while :; do echo 'All flash above bldr erased'; done");
    EXPECT_TRUE(waitFor([this] { return !form.eraseFlashCM->isHidden(); }));
    expectUploaderEndsWithTheWindow();
}

TEST_F(FlashEndTest, UploaderOfARunThatIsGivenUpEnds)
{
    startAndReach(2);
    const DialogScript nothing;
    flasher->giveUp();
    EXPECT_TRUE(uploader.waitForEnd());
    flasher->giveUp(); // no run is left to be abandoned
    now += 100;
    flasher->checkAppFrozen();
    QCoreApplication::processEvents();
}

TEST_F(FlashEndTest, WindowMayGoWhileAnErrorIsShown)
{
    start();
    DialogScript script;
    script.thenDo([this](QWidget&) { window.reset(); });
    send("Can not open comport");
    EXPECT_TRUE(waitFor([this] { return window == nullptr; }));
}

TEST_F(FlashEndTest, WindowMayGoWhileTheWatchdogsErrorIsShown)
{
    start();
    DialogScript script;
    script.thenDo([this](QWidget&) { window.reset(); });
    now += 4;
    flasher->checkAppFrozen();
    EXPECT_TRUE(waitFor([this] { return window == nullptr; }));
}

TEST_F(FlashEndTest, WindowMayGoWhileTheResetQuestionIsShown)
{
    startAndReach(4);
    DialogScript script;
    script.thenDo([this](QWidget&) { window.reset(); });
    send("Verified Flash OK");
    EXPECT_TRUE(waitFor([this] { return window == nullptr; }));
}

TEST_F(FlashEndTest, WindowMayGoWhileTheChargerIsReset)
{
    startAndReach(4);
    DialogScript script;
    script.thenDo([this](QWidget& dialog) {
        clickOn(dialog.findChildren<QPushButton*>().at(1));
        uploader.run("exit"); // the flash; the reset follows
        uploader.waitForStart();
        window.reset();
    });
    send("Verified Flash OK");
    EXPECT_TRUE(waitFor([this] { return window == nullptr; }));
    EXPECT_TRUE(uploader.waitForEnd());
}

TEST_F(FlashEndTest, WindowMayGoWhenTheFlashIsTold)
{
    QObject::connect(flasher, &FirmwareTool::FirmwareFlasher::flashed, qApp,
                     [this] { window.reset(); });
    startAndReach(4);
    const DialogScript nothing;
    send("Verified Flash OK");
    EXPECT_TRUE(waitFor([this] { return window == nullptr; }));
}

TEST_F(FlashEndTest, WindowMayGoBeforeAnErrorIsShown)
{
    start();
    const DialogScript nothing;
    now += 4;
    flasher->checkAppFrozen();
    window.reset();
    QCoreApplication::processEvents();
}

TEST_F(FlashEndTest, UploaderThatHasVerifiedEndsByItselfAndIsLoggedToItsEnd)
{
    startAndReach(4);
    DialogScript script;
    script.thenDo([](QWidget& dialog) { dialog.close(); });
    uploader.print("Verified Flash OK\n");
    waitForReport();
    EXPECT_TRUE(uploader.isRunning());
    uploader.print("Closing the port\n");
    uploader.run("touch closed; exit");
    EXPECT_TRUE(uploader.waitForEnd());
    EXPECT_TRUE(QFile::exists("closed"));
    EXPECT_TRUE(
        waitFor([this] { return QString::fromStdString(log()).endsWith("Closing the port\n"); }));
}

TEST_F(FlashEndTest, UploaderThatHasFailedEndsByItselfAndIsLoggedToItsEnd)
{
    start();
    DialogScript script;
    script.expectMessage("Flashing Error!",
                         "\"no stx char!\" - Known Mac OS bug. Please try again.");
    uploader.print("no stx char\n");
    waitForReport();
    uploader.print("giving up\n");
    uploader.run("touch closed; exit");
    EXPECT_TRUE(uploader.waitForEnd());
    EXPECT_TRUE(QFile::exists("closed"));
    EXPECT_TRUE(waitFor([this] { return QString::fromStdString(log()).endsWith("giving up\n"); }));
}

TEST_F(FlashEndTest, UploaderThatHasVerifiedOutlivesTheWindow)
{
    startAndReach(4);
    DialogScript script;
    script.thenDo([](QWidget& dialog) { dialog.close(); });
    send("Verified Flash OK\n");
    waitForReport();
    window.reset();
    EXPECT_TRUE(uploader.isRunning());
    uploader.run("touch closed; exit");
    EXPECT_TRUE(uploader.waitForEnd());
    EXPECT_TRUE(QFile::exists("closed"));
}

TEST_F(FlashEndTest, NextRunWaitsUntilTheUploaderOfTheLastOneHasEnded)
{
    start();
    DialogScript script;
    script.expectMessage("Flashing Error!",
                         "\"no stx char!\" - Known Mac OS bug. Please try again.");
    send("no stx char\n");
    waitForReport();
    const qint64 firstPid = uploader.pid();
    form.submitButton->setEnabled(false);
    flasher->startFlashing();
    now += 100; // a run that has not begun cannot hang
    flasher->checkAppFrozen();
    QCoreApplication::processEvents();
    EXPECT_FALSE(form.submitButton->isEnabled());
    EXPECT_EQ(uploader.pid(), firstPid);
    uploader.run("exit");
    uploader.waitForStart();
    EXPECT_NE(uploader.pid(), firstPid);
    now += 3;
    flasher->checkAppFrozen(); // counted from the start of the uploader
    QCoreApplication::processEvents();
    EXPECT_FALSE(form.submitButton->isEnabled());
}

TEST_F(FlashEndTest, RunThatWaitsChangesNothingBeforeThePortIsFree)
{
    auto transfer = std::make_unique<PortTurn>("/dev/ttyUSB7", "Writing profiles", nullptr);
    writeFile("device.txt", "for the transfer\n");
    flasher->startFlashing();
    QCoreApplication::processEvents();
    EXPECT_EQ(contentOf("device.txt"), "for the transfer\n");
    EXPECT_EQ(logNames(), QStringList());
    transfer.reset();
    uploader.waitForStart();
    EXPECT_EQ(contentOf("device.txt"), "overwrite = no\n");
    EXPECT_EQ(stages().at(0), "busy");
}

TEST_F(FlashEndTest, RunThatHasWaitedReportsWhatKeepsItFromStarting)
{
    auto transfer = std::make_unique<PortTurn>("/dev/ttyUSB7", "Writing profiles", nullptr);
    ASSERT_TRUE(QDir().mkpath("hexToFlash.hex/content")); // cannot be removed as a file
    flasher->startFlashing();
    DialogScript script;
    script.expectMessage("Error!", "An Exception occured while flashing!");
    transfer.reset();
    EXPECT_TRUE(waitFor([this] { return window->isHidden(); }));
    EXPECT_EQ(PortTurns::ofApplication().descriptions(), QStringList());
}
