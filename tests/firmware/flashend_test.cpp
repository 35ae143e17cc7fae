// Runs that are given up: with the window, in the middle, while something is open.

#include "firmware/flashertest.h"
#include "support/waiting.h"

#include <QElapsedTimer>
#include <QPushButton>

#include <csignal>

class FlashEndTest : public FlasherTest
{
protected:
    /// Deletes the window and expects the uploader to end without having been waited for: whoever
    /// asks it politely waits for half a minute.
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
    flasher->giveUp(); // nothing is left to be given up
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
    EXPECT_TRUE(uploader.waitForEnd());
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
