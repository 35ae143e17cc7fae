#include "transfer/downloadprofiles.h"

#include "support/fakeuploader.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QSignalSpy>

#include <csignal>
#include <memory>

using UploadDownload::DownloadProfiles;

class DownloadProfilesTest : public ::testing::Test
{
protected:
    void runToItsEnd()
    {
        worker->start();
        ASSERT_TRUE(waitFor([this] { return !finished.isEmpty() || !errors.isEmpty(); }));
        ASSERT_EQ(owner.findChildren<QProcess*>().size(), 1);
        ASSERT_TRUE(waitFor(
            [this] { return owner.findChild<QProcess*>()->state() == QProcess::NotRunning; }));
        QCoreApplication::processEvents();
    }

    FakeUploader uploader;
    QObject owner;
    DownloadProfiles* worker =
        new DownloadProfiles("/dev/ttyUSB0", "downloadedProfiles.hex", &owner);
    QSignalSpy finished{worker, &DownloadProfiles::finished};
    QSignalSpy errors{worker, &DownloadProfiles::errorDownloading};
};

TEST_F(DownloadProfilesTest, ReadsTheAreaIntoTheFile)
{
    runToItsEnd();
    EXPECT_EQ(finished.size(), 1);
    EXPECT_EQ(errors.size(), 0);
    EXPECT_EQ(FakeUploader::runs(),
              QList<QStringList>({{"-s", "/dev/ttyUSB0", "-h", "-V", "-l", "0x9C00", "0xA000",
                                   "downloadedProfiles.hex"}}));
}

TEST_F(DownloadProfilesTest, FailsWhenTheReadFails)
{
    uploader.setBehaviour("exit 1");
    runToItsEnd();
    EXPECT_EQ(errors.size(), 1);
    EXPECT_EQ(finished.size(), 0);
}

TEST_F(DownloadProfilesTest, CrashIsToldTwice)
{
    uploader.setBehaviour(FakeUploader::crash());
    runToItsEnd();
    EXPECT_EQ(errors.size(), 2);
    EXPECT_EQ(finished.size(), 0);
}

TEST_F(DownloadProfilesTest, MissingUploaderIsToldOnce)
{
    FakeUploader::remove();
    runToItsEnd();
    EXPECT_EQ(errors.size(), 1);
    EXPECT_EQ(finished.size(), 0);
}

TEST_F(DownloadProfilesTest, UploaderThatIsNotExecutableIsToldOnce)
{
    FakeUploader::makeNotExecutable();
    runToItsEnd();
    EXPECT_EQ(errors.size(), 1);
    EXPECT_EQ(finished.size(), 0);
}

TEST_F(DownloadProfilesTest, ProcessBelongsToTheWorkersOwner)
{
    runToItsEnd();
    EXPECT_EQ(worker->parent(), &owner);
    EXPECT_EQ(owner.findChildren<QProcess*>(QString(), Qt::FindDirectChildrenOnly).size(), 1);
}

TEST_F(DownloadProfilesTest, OwnerThatGoesEndsTheRun)
{
    uploader.setBehaviour("echo $$ > pid; " + FakeUploader::waitForGo());
    auto window = std::make_unique<QObject>();
    (new DownloadProfiles("COM7", "x.hex", window.get()))->start();
    ASSERT_TRUE(waitFor([] { return contentOf("pid").endsWith('\n'); }));
    window.reset();
    EXPECT_NE(::kill(contentOf("pid").trimmed().toInt(), 0), 0) << "still running";
}
