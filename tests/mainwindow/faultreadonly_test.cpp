// A read-only working folder with all the program's files. The files and the list are kept, and the
// user gets a message.

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "support/bundletext.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "support/gui/readonlyfolder.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/xmlmanager.h"

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
        writeFile("saved_profiles/list.hex", "old\n");
        writeFile("profilesToUpload.hex", "old\n");
        writeFile("downloadedProfiles.hex", "old\n");
        makeProfile("Three");
        document = currentDocument();
        filesBefore = allFiles();
    }

    ~ReadOnlyFolderTest() override
    {
        if (window != nullptr) {
            EXPECT_EQ(currentDocument(), document);
        }
        EXPECT_EQ(allFiles(), filesBefore);
    }

    QString currentDocument() const { return window->findChild<XMLManager*>()->document(); }

    /// Chooses an existing file in the folder to overwrite.
    static void chooseFile(DialogScript& script, const QString& name)
    {
        script.thenDo([name](QWidget& dialog) {
            auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
            ASSERT_NE(field, nullptr);
            typeOver(field, name);
            QTest::keyClick(field, Qt::Key_Return);
        });
        script.thenPress("Yes", [](const QMessageBox& /*box*/) { // whether to overwrite it
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
    script.expectImportDialog("XML", pathOf("saved_profiles"), "list.xml");
    script.expectAppendQuestion("Replace Profiles");
    script.expectNoBackupQuestion("No");
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
    writeFile("firmware.kelvaron", BundleText()
                                       .section("overwrite = yes\n")
                                       .section("schema\n")
                                       .section(":00000001FF\n")
                                       .section("overwrite = no\n")
                                       .bytes());
    filesBefore = allFiles();
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
    filesBefore = allFiles();
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
