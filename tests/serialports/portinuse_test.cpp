// Another program has the port: a transfer, a reset and a flash each report this, start nothing and
// can be tried again.

#include "serialports/portlock.h"
#include "serialports/portturns.h"
#include "support/fakeports.h"
#include "support/fakeuploader.h"
#include "support/gui/flashertest.h"
#include "transfer/downloadprofiles.h"
#include "transfer/kelvaronresetdialog.h"
#include "transfer/uploaddownloaddialog.h"
#include "transfer/uploadprofiles.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

using UploadDownload::DownloadProfiles;
using UploadDownload::UploadDownloadDialog;
using UploadDownload::UploadProfiles;

namespace
{
/// The message about a port that this process has.
void expectInUse(DialogScript& script, const QString& port)
{
    script.expectMessage(
        "Port In Use", QString("The port %1 is in use by %2. Nothing was read from the charger or "
                               "written to it.\n\nPlease wait until that program has ended, then "
                               "try again. If it is not running any more, remove the file %3.")
                           .arg(port, PortLock(port).holder(), PortLock::path(port)));
}

class PortInUseTest : public ::testing::Test
{
protected:
    ~PortInUseTest() override
    {
        EXPECT_EQ(PortTurns::ofApplication().descriptions(), QStringList());
    }

    FakeUploader uploader;
    FakePorts ports{{"A"}};
    std::unique_ptr<PortLock> other = std::make_unique<PortLock>("A");
};

class PortInUseFlashTest : public FlasherTest
{};
} // namespace

TEST_F(PortInUseTest, WorkersSayWhoHasThePortAndStartNothing)
{
    UploadProfiles upload("A", "profilesToUpload.hex", nullptr);
    DownloadProfiles download("A", "downloadedProfiles.hex", nullptr);
    const QSignalSpy uploadRefused(&upload, &UploadProfiles::portInUse);
    const QSignalSpy uploadFailed(&upload, &UploadProfiles::errorUploading);
    const QSignalSpy downloadRefused(&download, &DownloadProfiles::portInUse);
    const QSignalSpy downloadFailed(&download, &DownloadProfiles::errorDownloading);
    upload.start();
    download.start();
    EXPECT_TRUE(waitFor([&] { return downloadRefused.size() == 1; }));
    ASSERT_EQ(uploadRefused.size(), 1);
    EXPECT_EQ(uploadRefused.first().first().toString(), PortLock("A").holder());
    EXPECT_EQ(uploadFailed.size(), 0);
    EXPECT_EQ(downloadFailed.size(), 0);
    EXPECT_TRUE(FakeUploader::runs().isEmpty());
}

TEST_F(PortInUseTest, TransferDialogReportsItAndCanBeTriedAgain)
{
    QWidget window;
    const QPointer<UploadDownloadDialog> dialog = new UploadDownloadDialog(false, &window);
    dialog->setFileLocation("downloadedProfiles.hex");
    auto* okButton = childNamed<QPushButton>(dialog, "okButton");
    {
        DialogScript script;
        expectInUse(script, "A");
        clickOn(okButton);
        script.finish();
    }
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_TRUE(okButton->isEnabled());
    EXPECT_TRUE(childNamed<QComboBox>(dialog, "comPortsDropdown")->isEnabled());
    EXPECT_EQ(childNamed<QLabel>(dialog, "statusLabel")->text(), "Stopped");
    EXPECT_TRUE(FakeUploader::runs().isEmpty());

    other.reset();
    DialogScript script;
    script.thenDo([](QWidget& question) { question.close(); }); // whether to reset the charger
    clickOn(okButton);
    EXPECT_TRUE(waitFor([&dialog] { return dialog == nullptr; }));
    EXPECT_EQ(FakeUploader::runs().size(), 1);
}

TEST_F(PortInUseTest, ResetReportsItAndCanBeTriedAgain)
{
    KelvaronResetDialog dialog("Done!", "A", nullptr);
    DialogScript script;
    expectInUse(script, "A");
    dialog.show();
    dialog.resetKelvaron();
    script.finish();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(FakeUploader::runs().isEmpty());
    other.reset();
    dialog.resetKelvaron();
    EXPECT_TRUE(waitFor([&dialog] { return dialog.isHidden(); }));
    EXPECT_EQ(FakeUploader::runs().size(), 1);
}

TEST_F(PortInUseFlashTest, FlashReportsItBeforeAnyFileIsChanged)
{
    writeFile("device.txt", "installed\n");
    auto other = std::make_unique<PortLock>("/dev/ttyUSB7");
    {
        DialogScript script;
        expectInUse(script, "/dev/ttyUSB7");
        form.submitButton->setEnabled(false);
        flasher->startFlashing();
        waitForReport();
        script.finish();
    }
    EXPECT_EQ(contentOf("device.txt"), "installed\n");
    EXPECT_EQ(contentOf("hexToFlash.hex"), "(no file)");
    EXPECT_EQ(logNames(), QStringList());
    EXPECT_EQ(PortTurns::ofApplication().descriptions(), QStringList());

    other.reset();
    start();
    EXPECT_EQ(arguments.mid(0, 2), QStringList({"-s", "/dev/ttyUSB7"}));
    uploader.run("exit");
    EXPECT_TRUE(uploader.waitForEnd());
}
