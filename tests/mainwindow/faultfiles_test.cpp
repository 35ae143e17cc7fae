// Files that are not what they should be: huge, empty, no text, a folder, or gone with the whole
// working folder. The list stays, the user is told, and the memory stays small.

#include "applicationglobalmap.h"
#include "base/textfile.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "support/gui/memory.h"
#include "support/waiting.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/xmlmanager.h"

#include <QAction>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using UploadDownload::UploadDownloadDialog;
using XMLGeneratorParser::XMLManager;

namespace
{
constexpr qint64 gigabyte = 1024LL * 1024 * 1024;
constexpr long mebibyte = 1024; // in KiB

const char xmlReadError[] = "Failed to read the XML file specified. Please try again.";
const char xmlBroken[] = "The XML file could not be read completely: ";
const char hexReadError[] = "An error occured while importing profiles from HEX. Please try again.";

class DamagedFilesTest : public MainWindowTest
{
protected:
    void startWithTwoProfiles()
    {
        start();
        makeProfile("One");
        makeProfile("Two");
    }

    QByteArray document() const { return window->findChild<XMLManager*>()->document().toUtf8(); }

    void write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(pathOf(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    /// One line of this length, which takes hardly any room on the disk.
    void writeHuge(const QString& name, const QByteArray& beginning, qint64 size) const
    {
        write(name, beginning);
        ASSERT_TRUE(QFile::resize(pathOf(name), size));
    }

    void load(const QString& format, const QString& name, const QString& answer,
              const QString& message)
    {
        DialogScript script;
        const QString filter = format + " files (*." + format.toLower() + ")";
        script.expectFileDialog("Select " + format + " File to Import Profiles",
                                {filter, "Any files (*.*)"}, pathOf("saved_profiles"),
                                pathOf("saved_profiles/" + name));
        script.expectMessageBox("Add Profiles to List?",
                                "Do you want to add the imported profiles to the current list of "
                                "profiles, or replace them?<br>",
                                {"Add Profiles", "Replace Profiles"}, "Add Profiles", answer);
        script.thenDo([&](QWidget& dialog) {
            auto* box = qobject_cast<QMessageBox*>(&dialog);
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->windowTitle(), "Import from " + format + " status");
            EXPECT_TRUE(box->text().startsWith(message)) << box->text().toStdString();
            clickOn(box->button(QMessageBox::Ok));
        });
        trigger(command("actionImport" + format));
    }

    /// Presses the button of an open transfer dialog and waits until the dialog is gone.
    void transfer() const
    {
        auto* dialog = window->findChild<UploadDownloadDialog*>();
        ASSERT_NE(dialog, nullptr);
        clickOn(childNamed<QPushButton>(dialog, "okButton"));
        ASSERT_TRUE(
            waitFor([this] { return window->findChild<UploadDownloadDialog*>() == nullptr; }));
    }

    void installUploader(const QByteArray& script) const
    {
        write("supl.mac", script);
        ASSERT_TRUE(QFile::setPermissions(pathOf("supl.mac"),
                                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    static void expectFailure(DialogScript& script)
    {
        script.expectMessage("Failed!",
                             "Please make sure to select the correct COM port, and that the "
                             "Kelvaron is in bootloader mode, and try again.");
    }

    static void expectResetQuestion(DialogScript& script)
    {
        script.thenDo([](QWidget& question) {
            EXPECT_EQ(question.windowTitle(), "Stay in Bootloader Mode or Reset?");
            clickOn(question.findChildren<QPushButton*>().at(0));
        });
    }

    static void expectBundleNotRead(DialogScript& script, const QString& bundle,
                                    const QString& reason = "far too large for a Kelvaron Bundle")
    {
        script.expectMessage(
            "Bundle Not Read",
            "The file " + bundle + " is " + reason
                + ", so it was not read and the previous bundle is still used. Please replace "
                  "the file, or remove it from the folder "
                  "KelvaronProfileEditorFiles, and restart the program.");
    }

    const FakePorts ports{{"/dev/ttyKelvaronDemo"}};
};
} // namespace

TEST_F(DamagedFilesTest, AGigabyteLongLineInAProfileFileIsARefusedFile)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    writeHuge("saved_profiles/huge.xml", "<KelvaronProfiles><profile><title>", gigabyte);
    const PeakMemory memory;
    QElapsedTimer timer;
    timer.start();
    load("XML", "huge.xml", "Replace Profiles", xmlReadError);
    EXPECT_LT(timer.elapsed(), patience);
    EXPECT_LT(memory.grown(), 100 * mebibyte);
    EXPECT_EQ(document(), before);
    EXPECT_FALSE(QFile::exists(pathOf("backup_before_replace.xml")));
}

TEST_F(DamagedFilesTest, TheLongestLineThatIsReadHoldsNobodyUp)
{
    startWithTwoProfiles();
    QByteArray text = "<KelvaronProfiles><profile><chemistry>Lithium Ion</chemistry><title>";
    text += QByteArray(static_cast<int>(TextFile::largestFile) - text.size(), 'x');
    write("saved_profiles/long.xml", text);
    const QByteArray before = document();
    const PeakMemory memory;
    QElapsedTimer timer;
    timer.start();
    load("XML", "long.xml", "Add Profiles", xmlBroken);
    EXPECT_LT(timer.elapsed(), patience);
    EXPECT_LT(memory.grown(), 500 * mebibyte);
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, AGigabyteLongLineInAnImageIsAReadError)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    writeHuge("saved_profiles/huge.hex", ":10", gigabyte);
    const PeakMemory memory;
    QElapsedTimer timer;
    timer.start();
    load("HEX", "huge.hex", "Add Profiles", hexReadError);
    EXPECT_LT(timer.elapsed(), patience);
    EXPECT_LT(memory.grown(), 100 * mebibyte);
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, AGigabyteLongLineInTheNewestBundleKeepsTheSchemaAndIsTold)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    writeHuge("v9.kelvaron", "...\n", gigabyte);
    {
        DialogScript script;
        expectBundleNotRead(script, "v9.kelvaron");
        const PeakMemory memory;
        QElapsedTimer timer;
        timer.start();
        window->reloadBundle();
        EXPECT_LT(timer.elapsed(), patience);
        EXPECT_LT(memory.grown(), 100 * mebibyte);
        EXPECT_EQ(document(), before);
        window.reset();
        expectBundleNotRead(script, "v9.kelvaron");
        start();
    }
    makeProfile("Three");
    EXPECT_EQ(rowTitle(0), "Three");
}

TEST_F(DamagedFilesTest, AFolderInPlaceOfTheSchemaKeepsTheOneInUse)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    ASSERT_TRUE(QFile::remove(pathOf("kelvaron_chemistries.cb")));
    ASSERT_TRUE(QDir().mkpath(pathOf("kelvaron_chemistries.cb/inside")));
    {
        DialogScript script;
        script.expectMessage("Installation Error",
                             "The file kelvaron_chemistries.cb could not be found. Please try "
                             "reinstalling the program.");
        window->reloadBundle();
    }
    EXPECT_EQ(document(), before);
    makeProfile("Three");
    EXPECT_EQ(list()->count(), 3);
}

TEST_F(DamagedFilesTest, EmptyFilesBringNothingAndCostNothing)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    write("saved_profiles/empty.xml", "");
    write("saved_profiles/empty.hex", "");
    load("XML", "empty.xml", "Replace Profiles", xmlBroken);
    EXPECT_EQ(document(), before);
    load("HEX", "empty.hex", "Add Profiles", hexReadError);
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, AnEmptyNewestBundleKeepsTheSchema)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    write("v9.kelvaron", "");
    {
        DialogScript script;
        expectBundleNotRead(script, "v9.kelvaron", "not a complete Kelvaron Bundle");
        window->reloadBundle();
        EXPECT_EQ(document(), before);
        window.reset();
    }
    DialogScript script;
    expectBundleNotRead(script, "v9.kelvaron", "not a complete Kelvaron Bundle");
    start();
    script.finish();
    makeProfile("Three");
    EXPECT_EQ(rowTitle(0), "Three");
}

TEST_F(DamagedFilesTest, AnEmptyUploaderFailsTheTransfer)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    installUploader("");
    trigger(command("actionWriteProfiles"));
    DialogScript script;
    expectFailure(script);
    transfer();
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, AnEmptyFileFromTheChargerIsAReadError)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    installUploader("#!/bin/sh\nfor last; do :; done; : > \"$last\"\n");
    trigger(command("actionReadProfiles"));
    DialogScript script;
    script.expectMessageBox("Add Profiles to List?",
                            "Do you want to add the imported profiles to the current list of "
                            "profiles, or replace them?<br>",
                            {"Add Profiles", "Replace Profiles"}, "Add Profiles", "Add Profiles");
    script.expectMessage("Import from HEX status", hexReadError);
    expectResetQuestion(script);
    transfer();
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, AFolderInPlaceOfTheFileFromTheChargerIsAReadError)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    installUploader("#!/bin/sh\n");
    ASSERT_TRUE(QDir().mkdir(pathOf("downloadedProfiles.hex")));
    trigger(command("actionReadProfiles"));
    DialogScript script;
    script.expectMessageBox("Add Profiles to List?",
                            "Do you want to add the imported profiles to the current list of "
                            "profiles, or replace them?<br>",
                            {"Add Profiles", "Replace Profiles"}, "Add Profiles", "Add Profiles");
    script.expectMessage("Import from HEX status", hexReadError);
    expectResetQuestion(script);
    transfer();
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, BytesThatAreNoUtf8InABundleDoNoHarm)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    QFile demo(pathOf("v1.0.0.kelvaron"));
    ASSERT_TRUE(demo.open(QIODevice::ReadOnly));
    QByteArray bytes = demo.readAll();
    ASSERT_TRUE(bytes.contains("VERSION=1.0.0") || bytes.contains("VERSION = 1.0.0"));
    bytes.replace("1.0.0", "1.5.0");
    const int unit = bytes.indexOf("\"V\"");
    ASSERT_GT(unit, 0);
    bytes.replace(unit + 1, 1, "\xC3\x28\xFF\x80");
    write("v1.5.0.kelvaron", bytes);
    {
        const DialogScript nothing;
        window->reloadBundle();
        EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.5.0");
        EXPECT_EQ(document(), before);
        window.reset();
        start();
    }
    makeProfile("Three");
    EXPECT_EQ(rowTitle(0), "Three");
}

TEST_F(DamagedFilesTest, AFileInPlaceOfTheFolderForProfilesCostsOnlyThatFolder)
{
    write("saved_profiles", "");
    startWithTwoProfiles();
    QTemporaryDir folder;
    DialogScript script;
    script.thenDo([&folder](QWidget& dialog) {
        auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_NE(name, nullptr);
        typeOver(name, folder.filePath("mine.xml"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    script.expectMessage("Export to XML status", "The profiles have been successfully exported!");
    trigger(command("actionExportXML"));
    EXPECT_TRUE(QFile::exists(folder.filePath("mine.xml")));
}

namespace
{
/// The working folder goes while the program runs, as with a stick that is pulled out.
class VanishedFolderTest : public DamagedFilesTest
{
protected:
    VanishedFolderTest()
    {
        startWithTwoProfiles();
        EXPECT_TRUE(window->findChild<XMLManager*>()->exportToXML(elsewhere.filePath("list.xml")));
        makeProfile("Three");
        before = document();
        EXPECT_TRUE(QDir(pathOf("")).removeRecursively());
    }

    ~VanishedFolderTest() override
    {
        EXPECT_EQ(document(), before);
        EXPECT_FALSE(QFile::exists(pathOf("")));
    }

    QTemporaryDir elsewhere;
    QByteArray before;
};
} // namespace

TEST_F(VanishedFolderTest, WritingToTheChargerDoesNotBegin)
{
    DialogScript script;
    script.expectMessage("Error while uploading!",
                         "An error occured while exporting profiles to HEX. Please try again.");
    trigger(command("actionWriteProfiles"));
    EXPECT_EQ(window->findChild<UploadDownloadDialog*>(), nullptr);
}

TEST_F(VanishedFolderTest, ReadingFromTheChargerFails)
{
    trigger(command("actionReadProfiles"));
    DialogScript script;
    expectFailure(script);
    transfer();
}

TEST_F(VanishedFolderTest, TheBundleIsNotReloaded)
{
    DialogScript script;
    script.expectMessage("Bundle Not Reloaded",
                         "The profiles could not be backed up, so the bundle in use was kept. "
                         "Please save the profiles to a file and restart the program.");
    window->reloadBundle();
}

TEST_F(VanishedFolderTest, TheListCanStillBeSavedElsewhereAndIsNotReplacedUnasked)
{
    DialogScript script;
    const auto choose = [this](const QString& name) {
        return [this, name](QWidget& dialog) {
            auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
            ASSERT_NE(field, nullptr);
            typeOver(field, elsewhere.filePath(name));
            QTest::keyClick(field, Qt::Key_Return);
        };
    };
    script.thenDo(choose("mine.xml"));
    script.expectMessage("Export to XML status", "The profiles have been successfully exported!");
    trigger(command("actionExportXML"));
    EXPECT_TRUE(QFile::exists(elsewhere.filePath("mine.xml")));

    script.thenDo(choose("list.xml"));
    script.expectMessageBox("Add Profiles to List?",
                            "Do you want to add the imported profiles to the current list of "
                            "profiles, or replace them?<br>",
                            {"Add Profiles", "Replace Profiles"}, "Add Profiles",
                            "Replace Profiles");
    script.expectQuestion(
        "Replace Without Backup?",
        "The current profiles could not be saved to the file backup_before_replace.xml before they "
        "are replaced. If you continue, they will be lost. Do you want to replace them anyway?",
        "No");
    trigger(command("actionImportXML"));
}
