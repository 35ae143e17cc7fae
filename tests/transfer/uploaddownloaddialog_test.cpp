#include "transfer/uploaddownloaddialog.h"

#include "support/gui/transferdialogtest.h"
#include "transfer/downloadprofiles.h"
#include "transfer/kelvaronresetdialog.h"
#include "transfer/uploadprofiles.h"

#include <QApplication>
#include <QGroupBox>
#include <QLocale>
#include <QSignalSpy>

using UploadDownload::DownloadProfiles;
using UploadDownload::UploadProfiles;

// Construction

TEST_F(TransferDialogTest, ProgressHasTheDigitsOfItsTextsInEveryLanguage)
{
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    openWriter();
    QLocale::setDefault(QLocale::system());
    bar()->setValue(57);
    EXPECT_EQ(bar()->text(), "57%");
    dialog->close();
    flushDeletions();
}

TEST_F(TransferDialogTest, WriterShowsItselfIdleAndModal)
{
    openWriter();
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->windowModality(), Qt::ApplicationModal);
    EXPECT_TRUE(dialog->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_EQ(dialog->windowTitle(), "Profile Writer");
    EXPECT_EQ(child<QLabel>("dialogTitleLabel")->text(), "Profile Writer");
    EXPECT_EQ(okButton()->text(), "Write Profiles");
    EXPECT_TRUE(okButton()->isEnabled());
    EXPECT_EQ(child<QLabel>("label_2")->text(), "Choose a COM Port:");
    EXPECT_EQ(child<QGroupBox>("groupBox")->title(), "Status");
    EXPECT_EQ(status(), "Stopped");
    EXPECT_EQ(bar()->value(), 0);
}

TEST_F(TransferDialogTest, ReaderHasItsOwnTexts)
{
    openReader();
    EXPECT_EQ(dialog->windowTitle(), "Profile Reader");
    EXPECT_EQ(child<QLabel>("dialogTitleLabel")->text(), "Profile Reader");
    EXPECT_EQ(okButton()->text(), "Read Profiles");
    EXPECT_EQ(status(), "Stopped");
}

TEST_F(TransferDialogTest, PortsStandInReverseWithTheFirstItemSelected)
{
    openWriter();
    EXPECT_EQ(listedPorts(), QStringList({"C", "B", "A"}));
    EXPECT_EQ(portBox()->currentText(), "C");
}

TEST_F(TransferDialogTest, OpeningStartsNothing)
{
    openWriter();
    EXPECT_TRUE(dialog->findChildren<UploadProfiles*>().isEmpty());
    EXPECT_TRUE(window->findChildren<UploadProfiles*>().isEmpty());
    EXPECT_TRUE(FakeUploader::runs().isEmpty());
}

// The list of ports

TEST_F(TransferDialogTest, PortThatAppearsIsAddedByItself)
{
    openWriter();
    ports.names = QStringList({"A", "B", "D", "C"});
    ASSERT_TRUE(waitFor([this] { return listedPorts().size() == 4; }));
    EXPECT_EQ(listedPorts(), QStringList({"C", "D", "B", "A"}));
    EXPECT_EQ(portBox()->currentText(), "D");
}

TEST_F(TransferDialogTest, PortThatDisappearsIsRemovedByItself)
{
    openWriter();
    ports.names = QStringList({"A", "C"});
    ASSERT_TRUE(waitFor([this] { return listedPorts().size() == 2; }));
    EXPECT_EQ(listedPorts(), QStringList({"C", "A"}));
}

TEST_F(TransferDialogTest, SeveralPortsMayComeAndGoAtOnce)
{
    openWriter();
    ports.names = QStringList({"A", "X", "Y"});
    dialog->onDevicesConnected({FakePorts::named("X"), FakePorts::named("Y")});
    dialog->onDevicesDisconnected({FakePorts::named("B"), FakePorts::named("C")});
    EXPECT_EQ(listedPorts(), QStringList({"Y", "X", "A"}));
    EXPECT_EQ(portBox()->currentText(), "X"); // Y was listed when its turn came
}

TEST_F(TransferDialogTest, ListedPortIsNotAddedTwice)
{
    openWriter();
    portBox()->setCurrentIndex(2);
    dialog->onDevicesConnected({FakePorts::named("B")});
    EXPECT_EQ(listedPorts(), QStringList({"C", "B", "A"}));
    EXPECT_EQ(portBox()->currentText(), "A");
}

// Writing

TEST_F(TransferDialogTest, WritesTheFileToTheChosenPort)
{
    openWriter("some file.hex");
    portBox()->setCurrentText("B");
    DialogScript script;
    script.expectResetQuestion();
    transferToTheEnd();
    EXPECT_EQ(FakeUploader::runs(),
              QList<QStringList>({{"-s", "B", "-h", "-V", "-E", "0x9C00", "0xA000"},
                                  {"-s", "B", "-h", "-V", "-w", "some file.hex"}}));
}

TEST_F(TransferDialogTest, IsBusyWhileTheUploaderRuns)
{
    uploader.setBehaviour(FakeUploader::waitForGo());
    openWriter();
    clickOn(okButton());
    EXPECT_FALSE(okButton()->isEnabled());
    EXPECT_EQ(status(), "Working...");
    EXPECT_EQ(bar()->minimum(), 0);
    EXPECT_EQ(bar()->maximum(), 0);
    DialogScript script;
    script.expectResetQuestion();
    writeFile("go", "");
    ASSERT_TRUE(waitFor([this] { return dialog == nullptr; }));
}

TEST_F(TransferDialogTest, WrittenProfilesAreReportedBeforeTheQuestionAboutTheReset)
{
    openWriter();
    QSignalSpy finished(dialog, &UploadDownloadDialog::finished);
    DialogScript script;
    script.thenDo([&](QWidget& question) {
        EXPECT_EQ(finished.size(), 1);
        EXPECT_EQ(status(), "Write Success!");
        EXPECT_EQ(bar()->maximum(), 100);
        EXPECT_EQ(bar()->value(), 100);
        EXPECT_EQ(okButton()->text(), "Close Window");
        EXPECT_TRUE(okButton()->isEnabled());
        EXPECT_NE(qobject_cast<KelvaronResetDialog*>(&question), nullptr);
        EXPECT_EQ(question.parent(), dialog);
        EXPECT_TRUE(startsWith(question.findChild<QLabel*>()->text(),
                               "<b>Profiles successfully written to the Kelvaron!</b><br>"));
        clickOn(buttonWithText(question, "Stay in Bootloader Mode"));
    });
    transferToTheEnd();
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(TransferDialogTest, ReadProfilesAreReportedBeforeTheQuestionAboutTheReset)
{
    openReader("there.hex");
    QSignalSpy finished(dialog, &UploadDownloadDialog::finished);
    DialogScript script;
    script.thenDo([&](QWidget& question) {
        EXPECT_EQ(finished.size(), 1);
        EXPECT_EQ(status(), "Read Success!");
        EXPECT_TRUE(startsWith(question.findChild<QLabel*>()->text(),
                               "<b>Profiles successfully read from the Kelvaron!</b><br>"));
        clickOn(buttonWithText(question, "Stay in Bootloader Mode"));
    });
    transferToTheEnd();
    EXPECT_EQ(finished.size(), 1);
    EXPECT_EQ(FakeUploader::runs(),
              QList<QStringList>({{"-s", "C", "-h", "-V", "-l", "0x9C00", "0xA000", "there.hex"}}));
}

TEST_F(TransferDialogTest, ResetGoesToTheSamePort)
{
    openWriter();
    portBox()->setCurrentText("A");
    DialogScript script;
    script.thenDo([](QWidget& question) {
        for (QPushButton* button : question.findChildren<QPushButton*>()) {
            if (button->text() == "Reset Kelvaron") {
                clickOn(button);
            }
        }
    });
    transferToTheEnd();
    ASSERT_EQ(FakeUploader::runs().size(), 3);
    EXPECT_EQ(FakeUploader::runs().at(2), QStringList({"-s", "A", "-h", "-V", "-R"}));
}

TEST_F(TransferDialogTest, WithoutPortsTheUploaderDecides)
{
    ports.names.clear();
    uploader.setBehaviour("exit 1");
    openWriter();
    DialogScript script;
    script.expectTransferFailure();
    transferToTheEnd();
    ASSERT_EQ(FakeUploader::runs().size(), 1);
    EXPECT_EQ(FakeUploader::runs().at(0).mid(0, 2), QStringList({"-s", ""}));
}

// Failures: one message, then the dialog closes.

TEST_F(TransferDialogTest, FailureIsShownThenTheDialogCloses)
{
    uploader.setBehaviour("exit 1");
    openWriter();
    QSignalSpy finished(dialog, &UploadDownloadDialog::finished);
    DialogScript script;
    script.thenDo([this](QWidget& box) {
        EXPECT_EQ(status(), "Failed!");
        EXPECT_EQ(bar()->maximum(), 100);
        EXPECT_EQ(bar()->value(), 0);
        EXPECT_EQ(box.windowTitle(), "Failed!");
        EXPECT_EQ(box.parent(), dialog);
        EXPECT_TRUE(dialog->isVisible());
        box.close();
    });
    transferToTheEnd();
    EXPECT_EQ(finished.size(), 0);
    EXPECT_EQ(FakeUploader::runs().size(), 1);
}

TEST_F(TransferDialogTest, FailedProgrammingIsToldOnce)
{
    uploader.setBehaviour("[ \"$5\" != -w ]");
    openWriter();
    DialogScript script;
    script.expectTransferFailure();
    transferToTheEnd();
}

TEST_F(TransferDialogTest, CrashingUploaderIsToldOnce)
{
    uploader.setBehaviour(FakeUploader::crash());
    for (const bool writes : {true, false}) {
        open(writes, "x.hex");
        DialogScript script;
        script.expectTransferFailure();
        transferToTheEnd();
        QCoreApplication::processEvents();
    }
}

TEST_F(TransferDialogTest, MissingUploaderIsToldOnce)
{
    FakeUploader::remove();
    for (const bool writes : {true, false}) {
        open(writes, "x.hex");
        DialogScript script;
        script.expectTransferFailure();
        transferToTheEnd();
    }
}

TEST_F(TransferDialogTest, UploaderThatIsNotExecutableIsToldOnce)
{
    FakeUploader::makeNotExecutable();
    for (const bool writes : {true, false}) {
        open(writes, "x.hex");
        DialogScript script;
        script.expectTransferFailure();
        transferToTheEnd();
    }
}

// Ownership and keyboard

TEST_F(TransferDialogTest, WorkersBelongToTheMainWindowAndStay)
{
    for (const bool writes : {true, false, true}) {
        open(writes, "x.hex");
        DialogScript script;
        script.expectResetQuestion();
        transferToTheEnd();
    }
    EXPECT_EQ(window->findChildren<UploadProfiles*>(QString(), Qt::FindDirectChildrenOnly).size(),
              2);
    EXPECT_EQ(window->findChildren<DownloadProfiles*>(QString(), Qt::FindDirectChildrenOnly).size(),
              1);
    EXPECT_EQ(window->findChildren<QProcess*>(QString(), Qt::FindDirectChildrenOnly).size(), 5);
}

TEST_F(TransferDialogTest, KeyboardGoesFromThePortsToTheButton)
{
    openWriter();
    EXPECT_EQ(child<QLabel>("label_2")->buddy(), portBox());
    QApplication::setActiveWindow(dialog);
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog, patience));
    portBox()->setFocus();
    QTest::keyClick(portBox(), Qt::Key_Tab);
    EXPECT_TRUE(okButton()->hasFocus());
    EXPECT_TRUE(okButton()->isDefault());
}

TEST_F(TransferDialogTest, ReturnKeyStartsTheTransfer)
{
    openWriter();
    DialogScript script;
    script.expectResetQuestion();
    QTest::keyClick(portBox(), Qt::Key_Return);
    ASSERT_TRUE(waitFor([this] { return dialog == nullptr; }));
    EXPECT_EQ(FakeUploader::runs().size(), 2);
}

// The port of a transfer

TEST_F(TransferDialogTest, PortCannotBeChangedWhileATransferRuns)
{
    uploader.setBehaviour(FakeUploader::waitForGo());
    openWriter();
    EXPECT_TRUE(portBox()->isEnabled());
    clickOn(okButton());
    EXPECT_FALSE(portBox()->isEnabled());
    DialogScript script;
    script.thenDo([this](QWidget& question) {
        EXPECT_TRUE(portBox()->isEnabled());
        clickOn(buttonWithText(question, "Stay in Bootloader Mode"));
    });
    writeFile("go", "");
    EXPECT_TRUE(waitFor([this] { return dialog == nullptr; }));
}

TEST_F(TransferDialogTest, ResetGoesToThePortOfTheTransferThoughItIsNotListedAnyMore)
{
    uploader.setBehaviour(FakeUploader::waitForGo());
    openWriter();
    EXPECT_EQ(portBox()->currentText(), "C");
    clickOn(okButton());
    QextPortInfo gone;
    gone.portName = "C";
    dialog->onDevicesDisconnected({gone});
    EXPECT_EQ(portBox()->currentText(), "B");
    DialogScript script;
    script.thenDo([](QWidget& question) {
        for (QPushButton* button : question.findChildren<QPushButton*>()) {
            if (button->text() == "Reset Kelvaron") {
                clickOn(button);
            }
        }
    });
    writeFile("go", "");
    EXPECT_TRUE(waitFor([this] { return dialog == nullptr; }));
    EXPECT_EQ(FakeUploader::runs().last(), QStringList({"-s", "C", "-h", "-V", "-R"}));
}
