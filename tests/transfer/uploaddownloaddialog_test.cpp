#include "transfer/uploaddownloaddialog.h"

#include "support/fakeports.h"
#include "support/fakeuploader.h"
#include "support/gui/dialogscript.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"
#include "transfer/downloadprofiles.h"
#include "transfer/kelvaronresetdialog.h"
#include "transfer/uploadprofiles.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using UploadDownload::DownloadProfiles;
using UploadDownload::UploadDownloadDialog;
using UploadDownload::UploadProfiles;

class TransferDialogTest : public ::testing::Test
{
protected:
    ~TransferDialogTest() override
    {
        window.reset();
        expectNoWindowLeft();
    }

    void openWriter(const QString& file = "profilesToUpload.hex") { open(true, file); }
    void openReader(const QString& file = "downloadedProfiles.hex") { open(false, file); }

    void open(bool writes, const QString& file)
    {
        dialog = new UploadDownloadDialog(writes, window.get());
        dialog->setFileLocation(file);
    }

    template <typename T>
    T* child(const QString& name) const
    {
        return childNamed<T>(dialog, name);
    }
    QPushButton* okButton() const { return child<QPushButton>("okButton"); }
    QComboBox* portBox() const { return child<QComboBox>("comPortsDropdown"); }
    QString status() const { return child<QLabel>("statusLabel")->text(); }
    QProgressBar* bar() const { return child<QProgressBar>("progressBar"); }

    QStringList listedPorts() const
    {
        QStringList texts;
        for (int i = 0; i < portBox()->count(); ++i) {
            texts.append(portBox()->itemText(i));
        }
        return texts;
    }

    static void expectFailure(DialogScript& script)
    {
        script.expectMessage("Failed!",
                             "Please make sure to select the correct COM port, and that the "
                             "Kelvaron is in bootloader mode, and try again.");
    }

    static QPushButton* stayButton(const QWidget& resetDialog)
    {
        for (QPushButton* button : resetDialog.findChildren<QPushButton*>()) {
            if (button->text() == "Stay in Bootloader Mode") {
                return button;
            }
        }
        return nullptr;
    }

    /// The question after a success, answered with staying.
    static void expectSuccess(DialogScript& script)
    {
        script.thenDo([](QWidget& question) {
            EXPECT_EQ(question.windowTitle(), "Stay in Bootloader Mode or Reset?");
            clickOn(stayButton(question));
        });
    }

    /// Presses the button and waits until the dialog is gone.
    void transferToTheEnd()
    {
        clickOn(okButton());
        ASSERT_TRUE(waitFor([this] { return dialog == nullptr; }));
    }

    static bool hasRun(int count) { return FakeUploader::runs().size() >= count; }

    /// Whether every process started so far has ended.
    bool isQuiet() const
    {
        const QList<QProcess*> processes = window->findChildren<QProcess*>();
        return std::all_of(processes.begin(), processes.end(), [](const QProcess* process) {
            return process->state() == QProcess::NotRunning;
        });
    }

    FakeUploader uploader;
    FakePorts ports{{"A", "B", "C"}};
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    QPointer<UploadDownloadDialog> dialog;
};

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
    expectSuccess(script);
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
    expectSuccess(script);
    FakeUploader::write("go", "");
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
        EXPECT_TRUE(question.findChild<QLabel*>()->text().startsWith(
            "<b>Profiles successfully written to the Kelvaron!</b><br>"));
        clickOn(stayButton(question));
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
        EXPECT_TRUE(question.findChild<QLabel*>()->text().startsWith(
            "<b>Profiles successfully read from the Kelvaron!</b><br>"));
        clickOn(stayButton(question));
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
    expectFailure(script);
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
    expectFailure(script);
    transferToTheEnd();
}

TEST_F(TransferDialogTest, CrashingUploaderIsToldOnce)
{
    uploader.setBehaviour(FakeUploader::crash());
    for (const bool writes : {true, false}) {
        open(writes, "x.hex");
        DialogScript script;
        expectFailure(script);
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
        expectFailure(script);
        transferToTheEnd();
    }
}

TEST_F(TransferDialogTest, UploaderThatIsNotExecutableIsToldOnce)
{
    FakeUploader::makeNotExecutable();
    for (const bool writes : {true, false}) {
        open(writes, "x.hex");
        DialogScript script;
        expectFailure(script);
        transferToTheEnd();
    }
}

// Closing at odd times

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
        FakeUploader::write("go", "");
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
        // The question stands before the dialog: a mouse could not press this.
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

// Ownership and keyboard

TEST_F(TransferDialogTest, WorkersBelongToTheMainWindowAndStay)
{
    for (const bool writes : {true, false, true}) {
        open(writes, "x.hex");
        DialogScript script;
        expectSuccess(script);
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
    expectSuccess(script);
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
        clickOn(stayButton(question));
    });
    FakeUploader::write("go", "");
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
    FakeUploader::write("go", "");
    EXPECT_TRUE(waitFor([this] { return dialog == nullptr; }));
    EXPECT_EQ(FakeUploader::runs().last(), QStringList({"-s", "C", "-h", "-V", "-R"}));
}
