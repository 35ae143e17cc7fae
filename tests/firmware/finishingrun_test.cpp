#include "firmware/finishingrun.h"

#include "serialports/portturn.h"
#include "serialports/portturns.h"
#include "support/fakeuploader.h"
#include "support/gui/flashertest.h"
#include "transfer/uploader.h"

#include <QProcess>

using FirmwareTool::FinishingRun;

namespace
{
class FinishingRunTest : public ::testing::Test
{
protected:
    /// Passes on a running uploader, with its use of port A.
    void finish(const QByteArray& behaviour, int milliseconds = FinishingRun::patience)
    {
        uploader.setBehaviour("touch started; " + behaviour);
        process = new QProcess;
        process->start(Uploader::program(), QStringList());
        ASSERT_TRUE(waitFor([] { return QFile::exists("started"); }));
        auto log = std::make_unique<QFile>("log.txt");
        ASSERT_TRUE(log->open(QIODevice::WriteOnly));
        new FinishingRun(process, new PortTurn("A", "Updating the firmware", nullptr),
                         std::move(log), milliseconds);
    }

    void waitForEnd() const
    {
        EXPECT_TRUE(waitFor([this] { return process == nullptr; }));
        EXPECT_EQ(PortTurns::ofApplication().descriptions(), QStringList());
    }

    FakeUploader uploader;
    QPointer<QProcess> process;
};
} // namespace

TEST_F(FinishingRunTest, UploaderEndsByItselfAndAllThatItPrintsIsLogged)
{
    finish(FakeUploader::waitForGo() + "; echo port closed; touch ended");
    EXPECT_EQ(PortTurns::ofApplication().descriptions().size(), 1) << "the port is still in use";
    writeFile("go", "");
    waitForEnd();
    EXPECT_TRUE(QFile::exists("ended"));
    EXPECT_EQ(contentOf("log.txt"), "port closed\n");
}

TEST_F(FinishingRunTest, UploaderThatHasEndedAlreadyIsFinishedAtOnce)
{
    finish("echo port closed");
    waitForEnd();
    EXPECT_EQ(contentOf("log.txt"), "port closed\n");
}

TEST_F(FinishingRunTest, UploaderThatDoesNotEndIsKilled)
{
    finish("while :; do sleep 1; done", 1);
    waitForEnd();
}

TEST_F(FinishingRunTest, UploaderThatNeverStopsPrintingIsKilled)
{
    finish("yes");
    waitForEnd();
    EXPECT_GT(contentOf("log.txt").size(), FinishingRun::mostOutput / 2);
}

TEST_F(FinishingRunTest, ProgramWaitsForTheEndBeforeItEnds)
{
    finish("sleep 0.3; touch ended");
    FinishingRun::waitForAll();
    EXPECT_TRUE(QFile::exists("ended"));
    waitForEnd();
}
