// "Write Profiles to Kelvaron..." and "Read Profiles from Kelvaron..." as the user does it, with the
// simulated charger behind the uploader's name.

#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "support/waiting.h"
#include "testpaths.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/xmlmanager.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

using UploadDownload::UploadDownloadDialog;

namespace
{
const char stay[] = "Stay in Bootloader Mode";
const char resetNow[] = "Reset Kelvaron";
const char uploadFile[] = "profilesToUpload.hex";
const char downloadFile[] = "downloadedProfiles.hex";

/// Room for 2048 / 504 - 1 profiles.
constexpr int allowed = 3;

QByteArray smallSchema(int cellType = 2)
{
    const QByteArray checksum =
        "    unsigned char sum; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", F, 0, -1, basic\n";
    const auto type = [](int value) {
        return "    unsigned char type; // num, auto, 0, 255, x1, 0, \"type\", \"\", F, "
               + QByteArray::number(value) + ", -1, basic\n";
    };
    return "#define PROFILESTARTADDRESS 0x9C00\n"
           "struct G { // Settings : \"Global\", global\n"
           + type(1) + checksum + "}\nstruct C { // Settings : \"Cell\", instantiable\n"
           + type(cellType)
           + "    char title[20]; // string, auto, \"Title\", G, \"New\", 0, basic\n"
             "    char sub[20]; // string, auto, \"Subtitle\", G, \"Sub\", 1, basic\n"
             "    short volts; // num, auto, 0, 99, x0.01, 2, \"Volts\", \"V\", G, 4.2, 2, basic\n"
             "    char filler[333]; // string, auto, \"filler\", G, \"\", -1, basic\n"
             "    char a; // bool, 1, \"active\", F, 0, -1, basic\n"
             "    char d; // bool, 1, \"default\", F, 0, -1, basic\n"
             "    char m; // bool, 1, \"modifiable\", F, 1, -1, basic\n"
             "    char s; // num, 5, 0, 31, x1, 0, \"spare\", \"\", F, 0, -1, basic\n"
           + checksum + "}\n";
}
} // namespace

class TransferTest : public MainWindowTest
{
protected:
    TransferTest()
    {
        installBundle("1.1", smallSchema());
        EXPECT_TRUE(QFile::remove(uploader()));
        EXPECT_TRUE(QFile::copy(QString(KELVARON_BIN_DIR) + "/KelvaronProfileEditorFiles/supl.mac",
                                uploader()));
        setFaults("");
        start();
    }

    QString uploader() const { return pathOf("supl.mac"); }

    /// What the simulated charger does wrong from now on.
    void setFaults(const QByteArray& lines) const
    {
        write("supl-faults.txt", "pace = 0%\nlog = yes\n" + lines);
    }

    void write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(pathOf(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QByteArray content(const QString& name) const
    {
        QFile file(pathOf(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    /// The operation letters of the uploader's runs so far.
    QString runs() const
    {
        QStringList letters;
        const QList<QByteArray> lines = content("supl-log.txt").split('\n');
        for (const QByteArray& line : lines) {
            for (const char* letter : {"-E", "-w", "-l", "-R"}) {
                if (line.contains('"' + QByteArray(letter) + '"')) {
                    letters.append(letter);
                }
            }
        }
        return letters.join(' ');
    }

    void makeProfiles(int count) const
    {
        for (int i = 1; i <= count; ++i) {
            makeProfile(QString("Cell %1").arg(i));
        }
    }

    QStringList titles() const
    {
        QStringList found;
        for (int row = 0; row < list()->count(); ++row) {
            found.append(rowTitle(row));
        }
        return found;
    }

    /// Everything that the list holds, value by value.
    QByteArray everything() const
    {
        auto* manager = window->findChild<XMLGeneratorParser::XMLManager*>();
        EXPECT_TRUE(manager->exportToXML(pathOf("everything.xml")));
        return content("everything.xml");
    }

    UploadDownloadDialog* dialog() const { return window->findChild<UploadDownloadDialog*>(); }
    QString status() const { return childNamed<QLabel>(dialog(), "statusLabel")->text(); }

    void openWriter() { open("actionWriteProfiles"); }
    void openReader() { open("actionReadProfiles"); }

    /// From here on the script sees every further dialog.
    void open(const char* action)
    {
        trigger(command(action));
        ASSERT_NE(dialog(), nullptr);
        script = std::make_unique<DialogScript>();
    }

    /// Presses the dialog's button, waits until the dialog is gone and checks the script.
    void transfer()
    {
        clickOn(childNamed<QPushButton>(dialog(), "okButton"));
        ASSERT_TRUE(waitFor([this] { return dialog() == nullptr; }));
        script.reset();
        expectQuiet();
    }

    void expectQuiet() const
    {
        const QList<QProcess*> processes = window->findChildren<QProcess*>();
        for (QProcess* process : processes) {
            ASSERT_TRUE(waitFor([process] { return process->state() == QProcess::NotRunning; }));
        }
    }

    void expectFailure() const
    {
        script->expectMessage("Failed!",
                              "Please make sure to select the correct COM port, and that the "
                              "Kelvaron is in bootloader mode, and try again.");
    }

    void expectResetQuestion(const QString& expectedStatus, const QString& press)
    {
        script->thenDo([=](QWidget& question) {
            EXPECT_EQ(question.windowTitle(), "Stay in Bootloader Mode or Reset?");
            EXPECT_EQ(status(), expectedStatus);
            for (QPushButton* button : question.findChildren<QPushButton*>()) {
                if (button->text() == press) {
                    clickOn(button);
                    return;
                }
            }
            ADD_FAILURE() << "no button";
        });
    }
    void expectWritten(const QString& press = stay)
    {
        expectResetQuestion("Write Success!", press);
    }
    void expectRead(const QString& press = stay) { expectResetQuestion("Read Success!", press); }

    void expectAppendQuestion(const QString& press) const
    {
        script->expectMessageBox("Add Profiles to List?",
                                 "Do you want to add the imported profiles to the current list of "
                                 "profiles, or replace them?<br>",
                                 {"Add Profiles", "Replace Profiles"}, "Add Profiles", press);
    }

    void expectImportError(const QString& suffix) const
    {
        script->expectMessage(
            "Import from HEX status",
            "An error occured while importing profiles from HEX. Please try again." + suffix);
    }

    void writeList()
    {
        openWriter();
        expectWritten();
        transfer();
    }

    FakePorts ports{{"/dev/ttyKelvaronDemo"}};
    std::unique_ptr<DialogScript> script;
};

TEST_F(TransferTest, ProfilesSurviveTheChargerAndARestart)
{
    makeProfiles(2);
    const QByteArray before = everything();
    writeList();
    EXPECT_EQ(runs(), "-E -w");
    EXPECT_EQ(everything(), before);

    window.reset();
    start();
    ASSERT_EQ(list()->count(), 0);
    openReader();
    expectRead(); // an empty list asks no question
    transfer();
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(runs(), "-E -w -l");
}

TEST_F(TransferTest, ToolbarWritesAndReadsToo)
{
    makeProfiles(1);
    for (const char* text : {"Write Profiles to Kelvaron", "Read Profiles from Kelvaron"}) {
        trigger(toolbarCommand(text));
        ASSERT_NE(dialog(), nullptr) << text;
        EXPECT_EQ(QApplication::activeModalWidget(), dialog());
        dialog()->close();
        flushDeletions();
    }
    EXPECT_EQ(runs(), "");
}

TEST_F(TransferTest, ReadProfilesAreAddedAtTheEnd)
{
    makeProfiles(2);
    writeList();
    makeProfile("Torch");
    openReader();
    expectAppendQuestion("Add Profiles");
    expectRead();
    transfer();
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2", "Torch", "Cell 1", "Cell 2"}));
}

TEST_F(TransferTest, ReadProfilesReplaceTheList)
{
    makeProfiles(2);
    const QByteArray before = everything();
    writeList();
    makeProfile("Torch");
    openReader();
    expectAppendQuestion("Replace Profiles");
    expectRead();
    transfer();
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2"}));
    EXPECT_EQ(everything(), before);
}

TEST_F(TransferTest, AListThatCannotBeSavedIsReplacedOnlyWhenTheUserSaysSo)
{
    makeProfiles(1);
    writeList();
    makeProfile("Torch");
    const QByteArray before = everything();
    ASSERT_TRUE(QDir().mkdir(pathOf("backup_before_replace.xml")));
    for (const QString answer : {"No", "Yes"}) {
        openReader();
        expectAppendQuestion("Replace Profiles");
        script->expectQuestion(
            "Replace Without Backup?",
            "The current profiles could not be saved to the file "
            "backup_before_replace.xml before they are replaced. If you continue, they will be "
            "lost. Do you want to replace them anyway?",
            answer);
        expectRead();
        transfer();
        EXPECT_EQ(titles(),
                  answer == "No" ? QStringList({"Cell 1", "Torch"}) : QStringList({"Cell 1"}));
        EXPECT_EQ(everything() == before, answer == "No");
    }
}

TEST_F(TransferTest, ChargerIsResetOnDemand)
{
    makeProfiles(1);
    openWriter();
    expectWritten(resetNow);
    transfer();
    EXPECT_EQ(runs(), "-E -w -R");
    EXPECT_TRUE(content("charger-state.txt").contains("resets = 1"));
}

TEST_F(TransferTest, FailedResetIsNotReported)
{
    makeProfiles(1);
    setFaults("reset.exit-code = 1\n");
    openWriter();
    expectWritten(resetNow);
    transfer();
    EXPECT_EQ(titles(), QStringList("Cell 1"));
}

TEST_F(TransferTest, AsManyProfilesAsAllowedTravel)
{
    makeProfiles(allowed);
    const QByteArray before = everything();
    writeList();
    openReader();
    expectAppendQuestion("Replace Profiles");
    expectRead();
    transfer();
    EXPECT_EQ(everything(), before);
}

TEST_F(TransferTest, OneProfileTooManyIsRefused)
{
    makeProfiles(allowed + 1);
    script = std::make_unique<DialogScript>();
    script->expectMessage("Upload profiles status",
                          "You currently have 4 profiles, but only 3 profiles can be exported to "
                          "the Kelvaron. Please delete some profiles and try again");
    trigger(command("actionWriteProfiles"));
    script.reset();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(list()->count(), allowed + 1);
    EXPECT_FALSE(QFileInfo::exists(pathOf(uploadFile)));
    EXPECT_EQ(runs(), "");
}

TEST_F(TransferTest, FailedEraseNeverPrograms)
{
    makeProfiles(2);
    setFaults("erase.exit-code = 1\n");
    openWriter();
    expectFailure();
    transfer();
    EXPECT_EQ(runs(), "-E");
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2"}));
    EXPECT_TRUE(content(uploadFile).trimmed().endsWith(":00000001FF"));
}

TEST_F(TransferTest, FailedProgrammingLeavesTheListAndTheFile)
{
    makeProfiles(2);
    setFaults("write.exit-code = 1\n");
    openWriter();
    expectFailure();
    transfer();
    EXPECT_EQ(runs(), "-E -w");
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2"}));
    EXPECT_TRUE(content(uploadFile).trimmed().endsWith(":00000001FF"));
}

TEST_F(TransferTest, FailedReadLeavesTheListAndTheEarlierFile)
{
    makeProfiles(2);
    writeList();
    openReader();
    expectAppendQuestion("Replace Profiles");
    expectRead();
    transfer();
    const QByteArray earlier = content(downloadFile);
    makeProfile("Torch");
    setFaults("read.exit-code = 1\n");
    openReader();
    expectFailure();
    transfer();
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2", "Torch"}));
    EXPECT_EQ(content(downloadFile), earlier);
}

TEST_F(TransferTest, CrashingUploaderIsToldOnceAndChangesNothing)
{
    makeProfiles(2);
    writeList();
    for (const char* step : {"erase", "write", "read"}) {
        setFaults(QByteArray(step) + ".crash = yes\n");
        open(step == QByteArray("read") ? "actionReadProfiles" : "actionWriteProfiles");
        expectFailure();
        transfer();
        EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2"})) << step;
    }
}

TEST_F(TransferTest, UnfitUploaderIsToldAndChangesNothing)
{
    makeProfiles(2);
    ASSERT_TRUE(QFile::setPermissions(uploader(), QFile::ReadOwner)); // not executable
    for (const bool isMissing : {false, true}) {
        if (isMissing) {
            ASSERT_TRUE(QFile::remove(uploader()));
        }
        for (const char* action : {"actionWriteProfiles", "actionReadProfiles"}) {
            open(action);
            expectFailure();
            transfer();
            EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2"}));
        }
    }
    EXPECT_TRUE(content(uploadFile).trimmed().endsWith(":00000001FF"));
    EXPECT_FALSE(QFileInfo::exists(pathOf(downloadFile)));
}

TEST_F(TransferTest, ChangedByteInAProfileIsAChecksumError)
{
    makeProfiles(allowed);
    writeList();
    setFaults("read.garble = data\n");
    openReader();
    expectAppendQuestion("Add Profiles");
    expectImportError(" (Checksum)");
    expectRead();
    transfer();
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2", "Cell 3"}));
}

TEST_F(TransferTest, ReplacedListStaysEmptyWhenTheReadFileIsDamaged)
{
    makeProfiles(allowed);
    writeList();
    setFaults("read.garble = data\n");
    openReader();
    expectAppendQuestion("Replace Profiles");
    expectImportError(" (Checksum)");
    expectRead();
    transfer();
    EXPECT_EQ(list()->count(), 0);
}

TEST_F(TransferTest, DamagedLinesOfTheReadFileAreAReadError)
{
    makeProfiles(allowed);
    writeList();
    for (const char* fault : {"read.garble = checksum\n", "read.truncate = yes\n"}) {
        setFaults(fault);
        openReader();
        expectAppendQuestion("Add Profiles");
        expectImportError("");
        expectRead();
        transfer();
        EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2", "Cell 3"})) << fault;
    }
}

TEST_F(TransferTest, FileThatCannotBeWrittenStopsTheTransfer)
{
    makeProfiles(1);
    ASSERT_TRUE(QDir().mkdir(pathOf(uploadFile)));
    script = std::make_unique<DialogScript>();
    script->expectMessage("Error while uploading!",
                          "An error occured while exporting profiles to HEX. Please try again.");
    trigger(command("actionWriteProfiles"));
    script.reset();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(runs(), "");
}

TEST_F(TransferTest, WrittenListCanBeWrittenAgain)
{
    makeProfiles(1);
    writeList();
    makeProfile("Torch");
    const QByteArray before = everything();
    writeList(); // into the area that the second erase has made blank
    openReader();
    expectAppendQuestion("Replace Profiles");
    expectRead();
    transfer();
    EXPECT_EQ(everything(), before);
}

TEST_F(TransferTest, BlankChargerGivesNoProfiles)
{
    makeProfiles(1);
    openReader();
    expectAppendQuestion("Add Profiles");
    expectRead();
    transfer();
    EXPECT_EQ(titles(), QStringList("Cell 1"));
}

TEST_F(TransferTest, ProfileThatTheSchemaDoesNotKnowIsATypeError)
{
    makeProfiles(1);
    writeList();
    window.reset();
    installBundle("1.2", smallSchema(7));
    start();
    openReader();
    expectImportError(" (Invalid Type Field)");
    expectRead();
    transfer();
    EXPECT_EQ(list()->count(), 0);
}

TEST_F(TransferTest, UnpluggedCableFails)
{
    makeProfiles(1);
    setFaults("absent-port = /dev/ttyKelvaronDemo\n");
    openWriter();
    expectFailure();
    transfer();
    EXPECT_EQ(runs(), "-E");
}

TEST_F(TransferTest, WindowMayCloseWhileTheUploaderHangs)
{
    makeProfiles(1);
    setFaults("erase.stall = yes\n");
    openWriter();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    ASSERT_TRUE(waitFor([this] { return runs() == "-E"; }));
    QTest::keyClick(dialog(), Qt::Key_Escape);
    flushDeletions();
    EXPECT_EQ(dialog(), nullptr);
    script.reset();
    window.reset(); // ends the run that hangs
    EXPECT_EQ(runs(), "-E");
}

// Transfers whose dialog was closed

TEST_F(TransferTest, TransferWithoutItsDialogIsSeenInTheStatusBar)
{
    setFaults("stall = yes\n");
    makeProfiles(1);
    auto* statusLabel = child<QLabel>("transferStatus");
    EXPECT_EQ(statusLabel->text(), "");
    openWriter();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    EXPECT_EQ(statusLabel->text(), "Writing profiles through /dev/ttyKelvaronDemo");
    dialog()->close();
    flushDeletions();
    EXPECT_EQ(statusLabel->text(), "Writing profiles through /dev/ttyKelvaronDemo");

    openReader();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    EXPECT_EQ(statusLabel->text(),
              "Writing profiles through /dev/ttyKelvaronDemo; Reading profiles through "
              "/dev/ttyKelvaronDemo (waiting for the port)");
    dialog()->close();
}

TEST_F(TransferTest, SecondWriteOnAPortFollowsTheFirstWholly)
{
    QFile::remove(uploader());
    write("supl.mac", "#!/bin/sh\necho \"\"\\\"$5\"\\\"\" >> supl-log.txt\n"
                      "while [ ! -e go ]; do sleep 0.01; done\n");
    ASSERT_TRUE(
        QFile::setPermissions(uploader(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    makeProfiles(1);
    openWriter();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    dialog()->close();
    flushDeletions();
    openWriter();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    ASSERT_TRUE(waitFor([this] { return runs() == "-E"; }));
    expectResetQuestion("Write Success!", stay);
    write("go", "");
    ASSERT_TRUE(waitFor([this] { return dialog() == nullptr; }));
    EXPECT_EQ(runs(), "-E -w -E -w");
    EXPECT_EQ(child<QLabel>("transferStatus")->text(), "");
}
