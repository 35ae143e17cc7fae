// A transfer dialog that goes away at odd times.

#include "support/gui/transferdialogtest.h"
#include "transfer/uploadprofiles.h"

#include <QSignalSpy>

using UploadDownload::UploadProfiles;

TEST_F(TransferDialogTest, EscapeClosesAndDeletesTheIdleDialog)
{
    openWriter();
    QTest::keyClick(dialog, Qt::Key_Escape);
    flushDeletions();
    EXPECT_EQ(dialog, nullptr);
    EXPECT_TRUE(FakeUploader::runs().isEmpty());
}

TEST_F(TransferDialogTest, WriteGoesOnWithoutTheClosedDialogAndItsResultReachesNobody)
{
    for (const QByteArray& end :
         {QByteArray("exit 0"), QByteArray("exit 1"), FakeUploader::crash()}) {
        QFile::remove("runs.txt");
        QFile::remove("go");
        uploader.setBehaviour(FakeUploader::waitForGo() + "; [ \"$5\" = -E ] || { " + end + "; }");
        openWriter();
        const DialogScript nothing;
        clickOn(okButton());
        ASSERT_TRUE(waitFor([] { return hasRun(1); }));
        QTest::keyClick(dialog, Qt::Key_Escape);
        flushDeletions();
        EXPECT_EQ(dialog, nullptr);
        writeFile("go", "");
        ASSERT_TRUE(waitFor([this] { return hasRun(2) && isQuiet(); }));
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(window->findChildren<UploadProfiles*>().size(), 3);
}

TEST_F(TransferDialogTest, ReadThatEndsBetweenClosingAndDeletionIsIgnored)
{
    openReader();
    QSignalSpy finished(dialog, &UploadDownloadDialog::finished);
    const DialogScript nothing;
    dialog->close();
    ASSERT_NE(dialog, nullptr);
    dialog->uploadDownloadSuccess();
    dialog->uploadDownloadFailed();
    EXPECT_EQ(finished.size(), 0);
}

TEST_F(TransferDialogTest, DialogMayGoWhileItsFailureIsShown)
{
    uploader.setBehaviour("exit 1");
    openWriter();
    clickOn(okButton());
    DialogScript script;
    script.thenDo([this](QWidget&) {
        dialog->close();
        flushDeletions();
    });
    ASSERT_TRUE(waitFor([this] { return dialog == nullptr; }));
}

TEST_F(TransferDialogTest, DialogMayGoDuringTheQuestionAboutTheReset)
{
    openWriter();
    clickOn(okButton());
    DialogScript script;
    script.thenDo([this](QWidget&) {
        dialog->close();
        flushDeletions();
    });
    ASSERT_TRUE(waitFor([this] { return dialog == nullptr; }));
}

TEST_F(TransferDialogTest, DialogMayGoWhileItsSuccessIsHandled)
{
    openReader();
    QObject::connect(dialog, &UploadDownloadDialog::finished, window.get(), [this] {
        dialog->close();
        flushDeletions();
    });
    const DialogScript nothing;
    clickOn(okButton());
    ASSERT_TRUE(waitFor([this] { return dialog == nullptr; }));
}

TEST_F(TransferDialogTest, MainWindowMayGoDuringATransfer)
{
    uploader.setBehaviour(FakeUploader::waitForGo());
    openWriter();
    clickOn(okButton());
    ASSERT_TRUE(waitFor([] { return hasRun(1); }));
    const DialogScript nothing;
    window.reset();
    EXPECT_EQ(dialog, nullptr);
    QCoreApplication::processEvents();
}

// A press after success closes the dialog and starts another operation.

TEST_F(TransferDialogTest, PressAfterSuccessStartsAnotherOperationWhileTheDialogCloses)
{
    openWriter();
    DialogScript script;
    script.thenDo([this](QWidget&) {
        // The question covers the dialog: a mouse could not press this.
        okButton()->click();
        EXPECT_TRUE(dialog->isHidden());
        EXPECT_EQ(window->findChildren<UploadProfiles*>().size(), 2);
    });
    transferToTheEnd();
    ASSERT_TRUE(waitFor([this] { return hasRun(4) && isQuiet(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(FakeUploader::runs().at(2).at(4), "-E");
    EXPECT_EQ(FakeUploader::runs().at(3).at(4), "-w");
}

TEST_F(TransferDialogTest, OperationStartedWhileClosingFailsSilently)
{
    openWriter();
    DialogScript script;
    script.thenDo([this](QWidget&) {
        uploader.setBehaviour(FakeUploader::crash());
        okButton()->click();
    });
    transferToTheEnd();
    ASSERT_TRUE(waitFor([this] { return hasRun(3) && isQuiet(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(FakeUploader::runs().size(), 3);
}
