// A working folder that may only be read, with all the program's files in it. What stands there
// stays, the list stays, and the user is told.

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "support/bundletext.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "support/gui/readonlyfolder.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/xmlmanager.h"

#include <QAction>
#include <QDirIterator>
#include <QFile>
#include <QLineEdit>
#include <QMap>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

using FirmwareTool::KelvaronFirmwareToolWindow;
using UploadDownload::UploadDownloadDialog;
using XMLGeneratorParser::XMLManager;

namespace
{
class ReadOnlyFolderTest : public MainWindowTest
{
protected:
    ReadOnlyFolderTest()
    {
        start();
        makeProfile("One");
        makeProfile("Two");
        for (const char* name :
             {"saved_profiles/list.xml", "backup_before_replace.xml", "backup_fw_update.xml"}) {
            EXPECT_TRUE(window->findChild<XMLManager*>()->exportToXML(name));
        }
        write("saved_profiles/list.hex", "old\n");
        write("profilesToUpload.hex", "old\n");
        write("downloadedProfiles.hex", "old\n");
        makeProfile("Three");
        document = currentDocument();
        filesBefore = files();
    }

    ~ReadOnlyFolderTest() override
    {
        if (window != nullptr) {
            EXPECT_EQ(currentDocument(), document);
        }
        EXPECT_EQ(files(), filesBefore);
    }

    QString currentDocument() const { return window->findChild<XMLManager*>()->document(); }

    void write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(pathOf(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    /// Every file of the installation with what it holds.
    QMap<QString, QByteArray> files() const
    {
        QMap<QString, QByteArray> found;
        QDirIterator paths(pathOf(""), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (paths.hasNext()) {
            QFile file(paths.next());
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            if (!file.fileName().endsWith(".lock")) { // the open editor's own
                found.insert(file.fileName(), file.readAll());
            }
        }
        return found;
    }

    /// Chooses an older file of the folder to be written over.
    static void chooseFile(DialogScript& script, const QString& name)
    {
        script.thenDo([name](QWidget& dialog) {
            auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
            ASSERT_NE(field, nullptr);
            typeOver(field, name);
            QTest::keyClick(field, Qt::Key_Return);
        });
        script.thenDo([](QWidget& question) { // whether it is to be written over
            auto* box = qobject_cast<QMessageBox*>(&question);
            ASSERT_NE(box, nullptr);
            clickOn(box->button(QMessageBox::Yes));
        });
    }

    const FakePorts ports{{"/dev/ttyKelvaronDemo"}};
    QString document;
    QMap<QString, QByteArray> filesBefore;
};
} // namespace

TEST_F(ReadOnlyFolderTest, AListIsNotSaved)
{
    const ReadOnlyFolder readOnly(pathOf(""));
    DialogScript script;
    chooseFile(script, "list.xml");
    script.expectMessage("Export to XML status",
                         "An error occured while exporting profiles to XML. Please try again.");
    trigger(command("actionExportXML"));
}

TEST_F(ReadOnlyFolderTest, AnImageIsNotExported)
{
    const ReadOnlyFolder readOnly(pathOf(""));
    DialogScript script;
    chooseFile(script, "list.hex");
    script.expectMessage("Export to HEX status",
                         "An error occured while exporting profiles to HEX. Please try again.");
    trigger(command("actionExportHEX"));
}

TEST_F(ReadOnlyFolderTest, WritingToTheChargerDoesNotBegin)
{
    const ReadOnlyFolder readOnly(pathOf(""));
    DialogScript script;
    script.expectMessage("Error while uploading!",
                         "An error occured while exporting profiles to HEX. Please try again.");
    trigger(command("actionWriteProfiles"));
    EXPECT_EQ(window->findChild<UploadDownloadDialog*>(), nullptr);
}

TEST_F(ReadOnlyFolderTest, AListIsNotReplacedUnasked)
{
    const ReadOnlyFolder readOnly(pathOf(""));
    DialogScript script;
    script.expectFileDialog("Select XML File to Import Profiles",
                            {"XML files (*.xml)", "Any files (*.*)"}, pathOf("saved_profiles"),
                            "list.xml");
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

TEST_F(ReadOnlyFolderTest, ABundleIsNotReloaded)
{
    const ReadOnlyFolder readOnly(pathOf(""));
    DialogScript script;
    script.expectMessage("Bundle Not Reloaded",
                         "The profiles could not be backed up, so the bundle in use was kept. "
                         "Please save the profiles to a file and restart the program.");
    window->reloadBundle();
}

TEST_F(ReadOnlyFolderTest, FirmwareIsNotFlashed)
{
    write("firmware.kelvaron", BundleText()
                                   .section("overwrite = yes\n")
                                   .section("schema\n")
                                   .section(":00000001FF\n")
                                   .section("overwrite = no\n")
                                   .bytes());
    filesBefore = files();
    const ReadOnlyFolder readOnly(pathOf(""));
    trigger(command("actionFlashFirmware"));
    auto* tool = window->findChild<KelvaronFirmwareToolWindow*>();
    ASSERT_NE(tool, nullptr);
    typeOver(childNamed<QLineEdit>(tool, "fileInputBox"), pathOf("firmware.kelvaron"));
    DialogScript script;
    script.expectMessage("Error!", "An Exception occured while flashing!");
    clickOn(childNamed<QPushButton>(tool, "submitButton"));
    flushDeletions();
    EXPECT_EQ(window->findChild<KelvaronFirmwareToolWindow*>(), nullptr);
}

TEST_F(ReadOnlyFolderTest, AStartOnTheSameBundleSaysNothing)
{
    window.reset();
    const ReadOnlyFolder readOnly(pathOf(""));
    {
        const DialogScript nothing;
        start();
    }
    makeProfile("New");
    EXPECT_EQ(list()->count(), 1);
    window.reset();
}

TEST_F(ReadOnlyFolderTest, AStartOnANewerBundleSaysThatTheOlderSchemaIsUsed)
{
    window.reset();
    installBundle("1.2", demoSchema() + "// and a comment more\n");
    filesBefore = files();
    const ReadOnlyFolder readOnly(pathOf(""));
    DialogScript script;
    script.expectMessage(
        "Files Not Written",
        "The files device.txt and kelvaron_chemistries.cb of the Kelvaron Bundle v1.2.kelvaron "
        "could not be written, so the older ones are used. They may not match the charger. Please "
        "free some space on the disk, or make the folder KelvaronProfileEditorFiles writable, and "
        "restart the program.");
    start();
    window.reset();
}
