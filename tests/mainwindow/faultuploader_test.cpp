// Uploaders that misbehave during a transfer from the main window. The list is kept, the user gets
// a message, the window stays responsive, and memory use stays small.

#include "support/fakeports.h"
#include "support/gui/flood.h"
#include "support/gui/installation.h"
#include "support/gui/memory.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/xmlmanager.h"

#include <QProcess>

#include <csignal>

using UploadDownload::UploadDownloadDialog;
using XMLGeneratorParser::XMLManager;

namespace
{
constexpr long mebibyte = 1024; // in KiB

class BadUploaderTest : public MainWindowTest
{
protected:
    BadUploaderTest()
    {
        start();
        makeProfile("One");
        makeProfile("Two");
        before = document();
    }

    ~BadUploaderTest() override { EXPECT_EQ(document(), before); }

    void install(const QByteArray& script) const
    {
        writeProgram(pathOf("supl.mac"), "#!/bin/sh\n" + script + '\n');
    }

    UploadDownloadDialog* dialog() const { return window->findChild<UploadDownloadDialog*>(); }
    QString status() const { return childNamed<QLabel>(dialog(), "statusLabel")->text(); }

    void press(const char* action) const
    {
        trigger(command(action));
        ASSERT_NE(dialog(), nullptr);
        clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    }

    void waitForEnd() const
    {
        ASSERT_TRUE(waitThroughFlood([this] { return dialog() == nullptr; }));
        const QList<QProcess*> processes = window->findChildren<QProcess*>();
        for (const QProcess* process : processes) {
            EXPECT_TRUE(waitFor([process] { return process->state() == QProcess::NotRunning; }));
        }
    }

    /// The uploader's process, once it runs.
    pid_t uploader() const
    {
        EXPECT_TRUE(waitFor([this] {
            const QList<QProcess*> processes = window->findChildren<QProcess*>();
            return !processes.isEmpty() && processes.last()->state() == QProcess::Running;
        }));
        return static_cast<pid_t>(window->findChildren<QProcess*>().last()->processId());
    }

    const FakePorts ports{{"/dev/ttyKelvaronDemo"}};
    QByteArray before;
};
} // namespace

TEST_F(BadUploaderTest, KilledInTheMiddleFailsTheTransfer)
{
    install("exec sleep 3600");
    for (const char* action : {"actionWriteProfiles", "actionReadProfiles"}) {
        press(action);
        DialogScript script;
        script.expectTransferFailure();
        ASSERT_EQ(kill(uploader(), SIGKILL), 0);
        waitForEnd();
    }
    EXPECT_FALSE(QFile::exists(pathOf("downloadedProfiles.hex")));
}

TEST_F(BadUploaderTest, StoppedLeavesTheWindowAliveAndGoesOnLater)
{
    install("[ -e go ] || { : > running; while [ ! -e go ]; do sleep 0.01; done; }");
    press("actionWriteProfiles");
    DialogScript script;
    ASSERT_TRUE(waitFor([this] { return QFile::exists(pathOf("running")); }));
    const pid_t stopped = uploader();
    ASSERT_EQ(kill(stopped, SIGSTOP), 0);
    QTest::qWait(50); // the window handles its events
    EXPECT_EQ(status(), "Working...");
    EXPECT_TRUE(dialog()->isVisible());
    QFile go(pathOf("go"));
    ASSERT_TRUE(go.open(QIODevice::WriteOnly));
    script.expectResetQuestion("Stay in Bootloader Mode");
    ASSERT_EQ(kill(stopped, SIGCONT), 0);
    waitForEnd();
}

TEST_F(BadUploaderTest, StoppedForGoodCanBeLeft)
{
    install("exec sleep 3600");
    press("actionReadProfiles");
    const pid_t stopped = uploader();
    ASSERT_EQ(kill(stopped, SIGSTOP), 0);
    QTest::keyClick(dialog(), Qt::Key_Escape);
    flushDeletions();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(document(), before);
    for (QAction* action : {command("actionExportXML"), command("actionWriteProfiles")}) {
        EXPECT_TRUE(action->isEnabled());
    }
}

TEST_F(BadUploaderTest, HundredMegabytesOfZeroBytesAreNotKept)
{
    install("case $* in *-E*) exec head -c 100000000 /dev/zero;; esac");
    const PeakMemory memory;
    press("actionWriteProfiles");
    DialogScript script;
    script.expectResetQuestion("Stay in Bootloader Mode");
    waitForEnd();
    EXPECT_LT(memory.grown(), 60 * mebibyte);
}

TEST_F(BadUploaderTest, HundredMegabytesDuringAResetAreNotKept)
{
    install("case $* in *-R*) yes | head -c 100000000 >&2; touch reset;; esac");
    const PeakMemory memory;
    press("actionWriteProfiles");
    DialogScript script;
    script.expectResetQuestion("Reset Kelvaron");
    waitForEnd();
    EXPECT_TRUE(QFile::exists(pathOf("reset")));
    EXPECT_LT(memory.grown(), 60 * mebibyte);
}

TEST_F(BadUploaderTest, HundredMegabytesBeforeAFailedReadAreNotKept)
{
    install("yes | head -c 100000000; exit 1");
    const PeakMemory memory;
    press("actionReadProfiles");
    DialogScript script;
    script.expectTransferFailure();
    waitForEnd();
    EXPECT_LT(memory.grown(), 60 * mebibyte);
}
