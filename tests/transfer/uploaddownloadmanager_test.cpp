#include "transfer/uploaddownloadmanager.h"

#include "HEXGeneratorParser/hexmanager.h"
#include "support/fakeports.h"
#include "support/fakeuploader.h"
#include "support/gui/editorwindow.h"
#include "support/waiting.h"
#include "transfer/uploaddownloaddialog.h"

#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>

using HEXGeneratorParser::HEXManager;
using UploadDownload::UploadDownloadDialog;
using UploadDownload::UploadDownloadManager;

class TransferManagerTest : public ::testing::Test
{
protected:
    ~TransferManagerTest() override { flushDeletions(); }

    /// The open transfer dialog; nullptr when there is none.
    UploadDownloadDialog* dialog() const { return window.findChild<UploadDownloadDialog*>(); }

    void fillList(int count)
    {
        for (int i = 0; i < count; ++i) {
            window.add(QString("Cell %1").arg(i + 1));
        }
    }

    /// Presses the open dialog's button and waits until the dialog is gone.
    void transferToTheEnd()
    {
        ASSERT_NE(dialog(), nullptr);
        clickOn(childNamed<QPushButton>(dialog(), "okButton"));
        ASSERT_TRUE(waitFor([this] { return dialog() == nullptr; }));
    }

    /// Writes the list to the uploader's charger, and changes nothing else.
    void fillCharger()
    {
        ASSERT_TRUE(hexManager->exportProfiles("charger.hex"));
        uploader.setBehaviour("[ \"$5\" != -l ] || cp charger.hex \"$8\"");
    }

    FakeUploader uploader;
    FakePorts ports{{"/dev/ttyUSB0"}};
    EditorWindow window;
    HEXManager* hexManager = window.managers.hex;
    UploadDownloadManager* manager = window.managers.transfers;
    QSignalSpy emptied{manager, &UploadDownloadManager::deleteAllProfiles};
};

// Writing

TEST_F(TransferManagerTest, WritesAWholeFileBeforeTheDialogOpens)
{
    fillList(2);
    manager->on_writeButtonPressed();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), "Profile Writer");
    EXPECT_EQ(dialog()->parent(), &window);
    EXPECT_TRUE(contentOf("profilesToUpload.hex").trimmed().endsWith(":00000001FF"));
    EXPECT_TRUE(FakeUploader::runs().isEmpty());
    dialog()->close();
}

TEST_F(TransferManagerTest, HandsTheFileToTheUploader)
{
    fillList(1);
    manager->on_writeButtonPressed();
    DialogScript script;
    script.expectResetQuestion();
    transferToTheEnd();
    ASSERT_EQ(FakeUploader::runs().size(), 2);
    EXPECT_EQ(FakeUploader::runs().at(1),
              QStringList({"-s", "/dev/ttyUSB0", "-h", "-V", "-w", "profilesToUpload.hex"}));
    EXPECT_EQ(window.titles(), QStringList("Cell 1"));
    EXPECT_EQ(emptied.size(), 0);
}

TEST_F(TransferManagerTest, AsManyProfilesAsAllowedAreWritten)
{
    fillList(hexManager->getNumProfilesAllowed());
    const DialogScript nothing;
    manager->on_writeButtonPressed();
    ASSERT_NE(dialog(), nullptr);
    dialog()->close();
}

TEST_F(TransferManagerTest, OneProfileTooManyIsRefusedWithBothNumbers)
{
    const int allowed = hexManager->getNumProfilesAllowed();
    fillList(allowed + 1);
    DialogScript script;
    script.expectMessage(
        "Upload profiles status",
        QString("You currently have %1 profiles, but only %2 profiles can be exported to the "
                "Kelvaron. Please delete some profiles and try again")
            .arg(allowed + 1)
            .arg(allowed));
    manager->on_writeButtonPressed();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_FALSE(QFileInfo::exists("profilesToUpload.hex"));
    EXPECT_EQ(window.count(), allowed + 1);
}

TEST_F(TransferManagerTest, FileThatCannotBeWrittenStopsTheTransfer)
{
    fillList(1);
    ASSERT_TRUE(QDir().mkdir("profilesToUpload.hex"));
    DialogScript script;
    script.expectMessage("Error while uploading!",
                         "An error occured while exporting profiles to HEX. Please try again.");
    manager->on_writeButtonPressed();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_TRUE(FakeUploader::runs().isEmpty());
}

TEST_F(TransferManagerTest, EmptyListIsWrittenToo)
{
    manager->on_writeButtonPressed();
    DialogScript script;
    script.expectResetQuestion();
    transferToTheEnd();
    EXPECT_EQ(FakeUploader::runs().size(), 2);
}

TEST_F(TransferManagerTest, FailedWriteLeavesTheFileAndTheList)
{
    fillList(2);
    uploader.setBehaviour("exit 1");
    manager->on_writeButtonPressed();
    DialogScript script;
    script.expectTransferFailure();
    transferToTheEnd();
    EXPECT_TRUE(contentOf("profilesToUpload.hex").trimmed().endsWith(":00000001FF"));
    EXPECT_EQ(window.titles(), QStringList({"Cell 1", "Cell 2"}));
}

TEST_F(TransferManagerTest, FinishedWriteImportsNothing)
{
    fillList(1);
    manager->on_writeButtonPressed();
    DialogScript script;
    script.expectResetQuestion(); // and no question about adding or replacing
    transferToTheEnd();
    EXPECT_EQ(window.count(), 1);
}

// Reading

TEST_F(TransferManagerTest, OpensTheReader)
{
    manager->on_readButtonPressed();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), "Profile Reader");
    EXPECT_EQ(dialog()->parent(), &window);
    EXPECT_TRUE(FakeUploader::runs().isEmpty());
    dialog()->close();
}

TEST_F(TransferManagerTest, ReadsIntoAnEmptyListWithoutAQuestion)
{
    fillList(2);
    fillCharger();
    window.list->deleteAllProfilesNoConfirmation();
    manager->on_readButtonPressed();
    DialogScript script;
    script.expectResetQuestion();
    transferToTheEnd();
    EXPECT_EQ(window.titles(), QStringList({"Cell 1", "Cell 2"}));
    EXPECT_EQ(emptied.size(), 0);
    EXPECT_EQ(FakeUploader::runs(),
              QList<QStringList>({{"-s", "/dev/ttyUSB0", "-h", "-V", "-l", "0x9C00", "0xA000",
                                   "downloadedProfiles.hex"}}));
}

TEST_F(TransferManagerTest, AddingKeepsTheList)
{
    fillList(1);
    fillCharger();
    window.add("Torch");
    manager->on_readButtonPressed();
    DialogScript script;
    script.expectAppendQuestion("Add Profiles");
    script.expectResetQuestion();
    transferToTheEnd();
    EXPECT_EQ(window.titles(), QStringList({"Cell 1", "Torch", "Cell 1"}));
    EXPECT_EQ(emptied.size(), 0);
}

TEST_F(TransferManagerTest, ReplacingEmptiesTheListFirst)
{
    fillList(1);
    fillCharger();
    window.add("Torch");
    manager->on_readButtonPressed();
    DialogScript script;
    script.expectAppendQuestion("Replace Profiles");
    script.expectResetQuestion();
    transferToTheEnd();
    EXPECT_EQ(window.titles(), QStringList("Cell 1"));
    EXPECT_EQ(emptied.size(), 1);
}

TEST_F(TransferManagerTest, AReplacementThatIsGuardedAgainstChangesNothing)
{
    fillList(1);
    fillCharger();
    window.add("Torch");
    int asked = 0;
    manager->setReplaceGuard([&asked] {
        ++asked;
        return false;
    });
    manager->on_readButtonPressed();
    DialogScript script;
    script.expectAppendQuestion("Replace Profiles");
    script.expectResetQuestion();
    transferToTheEnd();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(window.titles(), QStringList({"Cell 1", "Torch"}));
    EXPECT_EQ(emptied.size(), 0);
}

TEST_F(TransferManagerTest, OnlyAReplacementIsGuarded)
{
    fillList(1);
    fillCharger();
    int asked = 0;
    manager->setReplaceGuard([&asked] {
        ++asked;
        return false;
    });
    manager->on_readButtonPressed();
    DialogScript script;
    script.expectAppendQuestion("Add Profiles");
    script.expectResetQuestion();
    transferToTheEnd();
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(window.titles(), QStringList({"Cell 1", "Cell 1"}));
}

TEST_F(TransferManagerTest, ClosingTheQuestionReplaces)
{
    fillList(1);
    fillCharger();
    window.add("Torch");
    manager->on_readButtonPressed();
    DialogScript script;
    script.expectAppendQuestion(DialogScript::closeControl);
    script.expectResetQuestion();
    transferToTheEnd();
    EXPECT_EQ(window.titles(), QStringList("Cell 1"));
}

TEST_F(TransferManagerTest, FailedReadImportsAndDeletesNothing)
{
    fillList(2);
    ASSERT_TRUE(hexManager->exportProfiles("downloadedProfiles.hex")); // of an earlier read
    uploader.setBehaviour("exit 1");
    manager->on_readButtonPressed();
    DialogScript script;
    script.expectTransferFailure();
    transferToTheEnd();
    EXPECT_EQ(window.titles(), QStringList({"Cell 1", "Cell 2"}));
    EXPECT_EQ(emptied.size(), 0);
}

TEST_F(TransferManagerTest, ReadWhoseDialogWasClosedImportsNothing)
{
    fillList(1);
    fillCharger();
    uploader.setBehaviour(FakeUploader::waitForGo() + "; cp charger.hex \"$8\"; touch ended");
    manager->on_readButtonPressed();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    ASSERT_TRUE(waitFor([] { return FakeUploader::runs().size() == 1; }));
    QTest::keyClick(dialog(), Qt::Key_Escape);
    flushDeletions();
    ASSERT_EQ(dialog(), nullptr);
    const DialogScript nothing;
    writeFile("go", "");
    auto* process = window.findChild<QProcess*>();
    ASSERT_NE(process, nullptr);
    ASSERT_TRUE(waitFor([process] { return process->state() == QProcess::NotRunning; }));
    QCoreApplication::processEvents();
    EXPECT_TRUE(QFileInfo::exists("ended"));
    EXPECT_EQ(window.count(), 1);
}

TEST_F(TransferManagerTest, FileThatCannotBeReadIsToldAndTheListStaysEmptied)
{
    fillList(2);
    uploader.setBehaviour("echo rubbish > \"$8\"");
    manager->on_readButtonPressed();
    DialogScript script;
    script.expectAppendQuestion("Replace Profiles");
    script.expectMessage("Import from HEX status",
                         "An error occured while importing profiles from HEX. Please try again.");
    script.thenDo([this](QWidget& question) { // still a success
        EXPECT_EQ(childNamed<QLabel>(dialog(), "statusLabel")->text(), "Read Success!");
        question.close();
    });
    transferToTheEnd();
    EXPECT_EQ(window.count(), 0);
}

TEST_F(TransferManagerTest, FileThatCannotBeReadKeepsTheListWhenItWasToBeAdded)
{
    fillList(2);
    uploader.setBehaviour("exit 0"); // without writing a file
    manager->on_readButtonPressed();
    DialogScript script;
    script.expectAppendQuestion("Add Profiles");
    script.expectMessage("Import from HEX status",
                         "An error occured while importing profiles from HEX. Please try again.");
    script.expectResetQuestion();
    transferToTheEnd();
    EXPECT_EQ(window.titles(), QStringList({"Cell 1", "Cell 2"}));
}

TEST_F(TransferManagerTest, EveryImportErrorHasItsText)
{
    const QString plain = "An error occured while importing profiles from HEX. Please try again.";
    const QList<QPair<int, QString>> texts = {{0, plain},
                                              {1, plain + " (Checksum)"},
                                              {2, plain + " (Invalid Type Field)"},
                                              {3, plain},
                                              {7, plain},
                                              {-1, plain}};
    for (const auto& [error, text] : texts) {
        DialogScript script;
        script.expectMessage("Import from HEX status", text);
        HEXManager::showImportError(&window, error);
    }
}
