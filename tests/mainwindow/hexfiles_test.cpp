// "Export as HEX..." and "Import from HEX..." as the user does it.

#include "profileimport/parsedprofile.h"
#include "profiles/profilename.h"
#include "support/filesizelimit.h"
#include "support/gui/editorwindow.h"
#include "support/gui/installation.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/readfromxml.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>

#include <memory>

namespace
{
/// Room for 2048 / 504 - 1 profiles.
constexpr int allowed = 3;

QByteArray schema(int fillerSize = 333)
{
    const QByteArray flags =
        "    char a; // bool, 1, \"active\", F, 0, -1, basic\n"
        "    char d; // bool, 1, \"default\", F, 0, -1, basic\n"
        "    char m; // bool, 1, \"modifiable\", F, 1, -1, basic\n"
        "    char s; // num, 5, 0, 31, x1, 0, \"spare\", \"\", F, 0, -1, basic\n";
    const QByteArray checksum =
        "    unsigned char c; // num, auto, 0, 255, x1, 0, \"checksum\", \"\", F, 0, -1, basic\n";
    const auto type = [](int value) {
        return "    unsigned char type; // num, auto, 0, 255, x1, 0, \"type\", \"\", F, "
               + QByteArray::number(value) + ", -1, basic\n";
    };
    const auto chemistry = [&](const QByteArray& name, int typeValue) {
        return "struct C { // Settings : \"" + name + "\", instantiable\n" + type(typeValue)
               + "    char title[20]; // string, auto, \"Title\", G, \"New\", 0, basic\n"
                 "    char sub[20]; // string, auto, \"Subtitle\", G, \"Sub\", 1, basic\n"
                 "    short volts; // num, auto, 0, 99, x0.01, 2, \"Volts\", \"V\", G, 4.2, 2, "
                 "basic\n"
                 "    char filler["
               + QByteArray::number(fillerSize)
               + "]; // string, auto, \"filler\", G, \"\", -1, basic\n" + flags + checksum + "}\n";
    };
    return "#define PROFILESTARTADDRESS 0x9C00\n"
           "struct G { // Settings : \"Global\", global\n"
           + type(1) + checksum + "}\n" + chemistry("Alpha", 2) + chemistry("Beta", 3);
}

class HexFilesTest : public MainWindowTest
{
protected:
    HexFilesTest()
    {
        installBundle("1.1", schema());
        start();
    }

    /// The dialogs of the next command. Without one, the wizard's dialog may come.
    DialogScript& script()
    {
        if (!dialogs) {
            dialogs = std::make_unique<DialogScript>();
        }
        return *dialogs;
    }

    void expectSaveDialog(const QString& name, const QString& directory)
    {
        script().expectFileDialog("Select HEX File to Export Profiles", filters, directory, name);
    }

    void expectLoadDialog(const QString& name, const QString& directory)
    {
        script().expectFileDialog("Select HEX File to Import Profiles", filters, directory, name);
    }

    void expectStatus(const QString& text) { script().expectMessage("Export to HEX status", text); }

    void expectExported() { expectStatus("The profiles have been successfully exported!"); }

    void expectImportError(const QString& suffix)
    {
        script().expectMessage(
            "Import from HEX status",
            "An error occured while importing profiles from HEX. Please try again." + suffix);
    }

    void expectAppendQuestion(const QString& press)
    {
        script().expectMessageBox("Add Profiles to List?",
                                  "Do you want to add the imported profiles to the current list of "
                                  "profiles, or replace them?<br>",
                                  {"Add Profiles", "Replace Profiles"}, "Add Profiles", press);
    }

    void runExport()
    {
        trigger(command("actionExportHEX"));
        dialogs.reset(); // checks that all have been shown
    }

    void runImport()
    {
        trigger(command("actionImportHEX"));
        dialogs.reset(); // checks that all have been shown
    }

    /// Exports to the file of this name in the test's folder.
    void exportTo(const QString& name)
    {
        expectSaveDialog(folder.filePath(name), savedProfiles);
        expectExported();
        runExport();
    }

    QByteArray content(const QString& name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    void write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QStringList titles() const
    {
        QStringList found;
        for (int row = 0; row < list()->count(); ++row) {
            found.append(rowTitle(row));
        }
        return found;
    }

    QStringList backedUpTitles() const
    {
        XMLGeneratorParser::ReadFromXML reader;
        EXPECT_TRUE(reader.readProfiles(pathOf("backup_before_replace.xml")));
        QStringList found;
        const QList<ParsedProfile*> profiles = reader.getProfiles();
        for (const ParsedProfile* profile : profiles) {
            found.append(profile->getProperties().value("title"));
        }
        return found;
    }

    /// Loads a profile of this title from an XML file; others than ASCII cannot be typed.
    void loadProfile(const QString& title, const QString& appendAnswer = {})
    {
        write("profile.xml",
              ("<KelvaronProfiles><profile id=\"0\" active=\"false\" default=\"false\" "
               "modifiable=\"true\"><chemistry>Alpha</chemistry><title>"
               + title
               + "</title><subtitle>Sub</subtitle><volts>4.2</volts>"
                 "</profile></KelvaronProfiles>")
                  .toUtf8());
        script().expectFileDialog("Select XML File to Import Profiles",
                                  {"XML files (*.xml)", "Any files (*.*)"}, savedProfiles,
                                  folder.filePath("profile.xml"));
        if (!appendAnswer.isEmpty()) {
            expectAppendQuestion(appendAnswer);
        }
        const QString characters = title.mid(1, 1);
        script().expectMessage("Imported With Changes",
                               "What was imported does not match the settings of the Kelvaron "
                               "Bundle in use:\n\nTitle: the charger cannot hold \""
                                   + characters + "\" (\"" + title
                                   + "\")\n\nPlease check this before you write to the Kelvaron.");
        trigger(command("actionImportXML"));
        dialogs.reset();
    }

    void expectTextQuestion(const QString& text, const QString& press)
    {
        script().expectQuestion(
            "Texts Do Not Fit",
            "The Kelvaron can only store plain English letters, digits and punctuation (ASCII). "
            "With other characters its profiles may become unreadable. "
                + QString(text.contains('\n') ? "These texts have" : "This text has")
                + " such characters:\n\n" + text
                + "\n\nNothing has been written yet. Do you want to continue anyway?",
            press);
    }

    const QStringList filters = {"HEX files (*.hex)", "Any files (*.*)"};
    QTemporaryDir folder;
    const QString savedProfiles = pathOf("saved_profiles");
    std::unique_ptr<DialogScript> dialogs;
};
} // namespace

TEST_F(HexFilesTest, ExportedProfilesComeBackInTheirOrder)
{
    makeProfile("First", 1);
    makeProfile("Second", 0);
    clickOn(childNamed<QPushButton>(list()->itemWidget(list()->item(1)), "defaultProfileButton"));
    exportTo("mine.hex");
    EXPECT_TRUE(content("mine.hex").startsWith(":020000040001F9\n:10380000"));

    makeProfile("Third", 0);
    expectLoadDialog("mine.hex", folder.path());
    expectAppendQuestion("Replace Profiles");
    runImport();
    EXPECT_EQ(titles(), QStringList({"First", "Second"}));
    const auto row = [this](int number) {
        return qobject_cast<ProfileName*>(list()->itemWidget(list()->item(number)));
    };
    EXPECT_FALSE(row(0)->getDefaultStatus());
    EXPECT_TRUE(row(1)->getDefaultStatus());
}

TEST_F(HexFilesTest, TheImageFollowsTheOrderOfTheRows)
{
    makeProfile("First");
    makeProfile("Second");
    list()->setCurrentRow(1);
    clickOn(child<QPushButton>("profileNameUpButton"));
    exportTo("moved.hex");
    expectLoadDialog("moved.hex", folder.path());
    expectAppendQuestion("Replace Profiles");
    runImport();
    EXPECT_EQ(titles(), QStringList({"Second", "First"}));
}

TEST_F(HexFilesTest, WhatIsReplacedIsSavedFirst)
{
    makeProfile("First");
    exportTo("mine.hex");
    makeProfile("Second");
    expectLoadDialog("mine.hex", folder.path());
    expectAppendQuestion("Replace Profiles");
    runImport();
    EXPECT_EQ(titles(), QStringList({"First"}));
    EXPECT_EQ(backedUpTitles(), QStringList({"First", "Second"}));
}

TEST_F(HexFilesTest, AddingSavesNothing)
{
    makeProfile("First");
    exportTo("mine.hex");
    expectLoadDialog("mine.hex", folder.path());
    expectAppendQuestion("Add Profiles");
    runImport();
    EXPECT_FALSE(QFile::exists(pathOf("backup_before_replace.xml")));
}

TEST_F(HexFilesTest, AListThatCannotBeSavedIsReplacedOnlyWhenTheUserSaysSo)
{
    makeProfile("First");
    exportTo("mine.hex");
    makeProfile("Second");
    ASSERT_TRUE(QDir().mkdir(pathOf("backup_before_replace.xml")));
    for (const QString answer : {"No", "Yes"}) {
        expectLoadDialog("mine.hex", folder.path());
        expectAppendQuestion("Replace Profiles");
        script().expectQuestion(
            "Replace Without Backup?",
            "The current profiles could not be saved to the file "
            "backup_before_replace.xml before they are replaced. If you continue, they will be "
            "lost. Do you want to replace them anyway?",
            answer);
        runImport();
        EXPECT_EQ(titles(),
                  answer == "No" ? QStringList({"First", "Second"}) : QStringList({"First"}));
    }
}

TEST_F(HexFilesTest, AListFromAnXmlFileSavesTheReplacedOneToo)
{
    makeProfile("First");
    script().expectFileDialog("Select XML File to Export Profiles",
                              {"XML files (*.xml)", "Any files (*.*)"}, savedProfiles,
                              folder.filePath("mine.xml"));
    script().expectMessage("Export to XML status", "The profiles have been successfully exported!");
    trigger(command("actionExportXML"));
    dialogs.reset();
    makeProfile("Second");
    const auto load = [this] {
        script().expectFileDialog("Select XML File to Import Profiles",
                                  {"XML files (*.xml)", "Any files (*.*)"}, folder.path(),
                                  "mine.xml");
        expectAppendQuestion("Replace Profiles");
    };
    load();
    trigger(command("actionImportXML"));
    dialogs.reset();
    EXPECT_EQ(titles(), QStringList({"First"}));
    EXPECT_EQ(backedUpTitles(), QStringList({"First", "Second"}));

    ASSERT_TRUE(QFile::remove(pathOf("backup_before_replace.xml")));
    ASSERT_TRUE(QDir().mkdir(pathOf("backup_before_replace.xml")));
    makeProfile("Third");
    load();
    script().thenDo([](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Replace Without Backup?");
        dialog.close(); // counts as No
    });
    trigger(command("actionImportXML"));
    dialogs.reset();
    EXPECT_EQ(titles(), QStringList({"First", "Third"}));
}

TEST_F(HexFilesTest, AddedProfilesFollowTheOnesOfTheList)
{
    makeProfile("First");
    exportTo("mine.hex");
    makeProfile("Second");
    expectLoadDialog("mine.hex", folder.path());
    expectAppendQuestion("Add Profiles");
    runImport();
    EXPECT_EQ(titles(), QStringList({"First", "Second", "First"}));
}

TEST_F(HexFilesTest, ClosingTheQuestionReplaces)
{
    makeProfile("First");
    exportTo("mine.hex");
    makeProfile("Second");
    expectLoadDialog("mine.hex", folder.path());
    expectAppendQuestion(DialogScript::closeControl);
    runImport();
    EXPECT_EQ(titles(), QStringList({"First"}));
}

TEST_F(HexFilesTest, AnEmptyListIsImportedIntoWithoutAQuestion)
{
    makeProfile("First");
    exportTo("mine.hex");
    script().expectMessageBox("Delete all profiles?",
                              "All profiles will be deleted. This operation cannot be undone. "
                              "Continue?",
                              {"Yes", "No"}, "No", "Yes");
    trigger(command("actionDeleteAllProfiles"));
    dialogs.reset();
    expectLoadDialog("mine.hex", folder.path());
    runImport();
    EXPECT_EQ(titles(), QStringList({"First"}));
}

TEST_F(HexFilesTest, AnEmptyListGivesAFileWithoutData)
{
    exportTo("empty.hex");
    EXPECT_EQ(content("empty.hex").toStdString(), ":020000040001F9\n:00000001FF\n");
}

TEST_F(HexFilesTest, AsManyProfilesAsAllowedAreExported)
{
    for (int i = 0; i < allowed; ++i) {
        makeProfile("Profile");
    }
    exportTo("full.hex");
    EXPECT_EQ(content("full.hex").count('\n'), 1 + allowed * 2 * 16 + 1);
}

TEST_F(HexFilesTest, OneProfileTooManyIsRefusedWithBothNumbers)
{
    for (int i = 0; i <= allowed; ++i) {
        makeProfile("Profile");
    }
    script().expectFileDialog("Select HEX File to Export Profiles", filters, savedProfiles,
                              folder.filePath("new.hex"));
    expectStatus("You currently have 4 profiles, but only 3 profiles can be exported to a single "
                 "HEX file. Please delete some profiles and try again");
    runExport();
    EXPECT_FALSE(QFile::exists(folder.filePath("new.hex")));
    EXPECT_EQ(list()->count(), allowed + 1);
}

TEST_F(HexFilesTest, ANewBundleChangesHowManyProfilesAreAllowed)
{
    for (int i = 0; i < allowed; ++i) {
        makeProfile("Profile");
    }
    installBundle("1.2", schema(200)); // room for 2048 / 328 - 1 profiles
    window->reloadBundle();
    makeProfile("One more");
    exportTo("more.hex");
    EXPECT_EQ(list()->count(), allowed + 1);

    installBundle("1.3", schema(600)); // room for 2048 / 860 - 1 profiles
    window->reloadBundle();
    expectSaveDialog(folder.filePath("fewer.hex"), folder.path());
    expectStatus("You currently have 4 profiles, but only 1 profiles can be exported to a single "
                 "HEX file. Please delete some profiles and try again");
    runExport();
    EXPECT_FALSE(QFile::exists(folder.filePath("fewer.hex")));
}

TEST_F(HexFilesTest, CancelledDialogsChangeNothing)
{
    makeProfile("First");
    expectSaveDialog("", savedProfiles);
    runExport();
    expectLoadDialog("", savedProfiles);
    runImport();
    EXPECT_EQ(titles(), QStringList({"First"}));
    EXPECT_TRUE(QDir(savedProfiles).isEmpty());
}

TEST_F(HexFilesTest, TheLastFolderIsOfferedNextTime)
{
    exportTo("mine.hex");
    expectSaveDialog("", folder.path());
    runExport();
    expectLoadDialog("", folder.path());
    runImport();
}

TEST_F(HexFilesTest, TheNameIsTakenAsChosen)
{
    write("mine.hex", "old");
    QString offered = savedProfiles;
    for (const char* name : {"mine", "mine.v2", "mine.txt"}) {
        expectSaveDialog(folder.filePath(name), offered);
        expectExported();
        runExport();
        offered = folder.path();
        EXPECT_TRUE(content(name).endsWith(":00000001FF\n")) << name;
    }
    EXPECT_EQ(content("mine.hex").toStdString(), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList({"mine", "mine.hex", "mine.txt", "mine.v2"}));
}

TEST_F(HexFilesTest, TooManyProfilesAreRefusedBeforeAnythingElseIsAsked)
{
    for (int i = 0; i < allowed; ++i) {
        makeProfile("Profile");
    }
    loadProfile(QString::fromUtf8("B\xC3\xA4r"), "Add Profiles"); // would be asked about
    write("mine.hex", "old");
    expectSaveDialog(folder.filePath("mine"), savedProfiles);
    expectStatus("You currently have 4 profiles, but only 3 profiles can be exported to a single "
                 "HEX file. Please delete some profiles and try again");
    runExport();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList({"mine.hex", "profile.xml"}));
    EXPECT_EQ(content("mine.hex").toStdString(), "old");
}

TEST_F(HexFilesTest, AFileThatCannotBeWrittenIsTold)
{
    makeProfile("First");
    expectSaveDialog("mine.hex", savedProfiles);
    expectStatus("An error occured while exporting profiles to HEX. Please try again.");
    {
        const FileSizeLimit fullDisk(100);
        runExport();
    }
    EXPECT_TRUE(QDir(savedProfiles).isEmpty()) << "no half-written file";
}

TEST_F(HexFilesTest, AFullDiskKeepsTheOldFile)
{
    makeProfile("First");
    exportTo("mine.hex");
    const QByteArray old = content("mine.hex");
    makeProfile("Second");
    for (const rlim_t limit : {0, 1, 100, 700}) {
        expectSaveDialog(folder.filePath("mine.hex"), folder.path());
        script().expectQuestion("Select HEX File to Export Profiles",
                                "mine.hex already exists.\nDo you want to replace it?", "Yes");
        expectStatus("An error occured while exporting profiles to HEX. Please try again.");
        const FileSizeLimit fullDisk(limit);
        runExport();
        EXPECT_EQ(content("mine.hex"), old) << limit;
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"mine.hex"});
}

TEST_F(HexFilesTest, AMissingEndIsAReadError)
{
    makeProfile("First");
    exportTo("mine.hex");
    write("cut.hex", content("mine.hex").chopped(20));
    expectLoadDialog("cut.hex", folder.path());
    expectAppendQuestion("Add Profiles");
    expectImportError("");
    runImport();
    EXPECT_EQ(titles(), QStringList({"First"}));
}

TEST_F(HexFilesTest, ADamagedStructureIsAChecksumErrorAndAddsNothing)
{
    makeProfile("First");
    makeProfile("Second");
    exportTo("mine.hex");
    QByteArray text = content("mine.hex");
    // The last letter of "Second" in the second structure, 'd', becomes 'f'; the check of the line
    // lets that pass.
    ASSERT_TRUE(text.contains("\n:103A000000006400")) << text.toStdString();
    text.replace("\n:103A000000006400", "\n:103A000000006600");
    write("damaged.hex", text);
    expectLoadDialog("damaged.hex", folder.path());
    expectAppendQuestion("Add Profiles");
    expectImportError(" (Checksum)");
    runImport();
    EXPECT_EQ(titles(), QStringList({"First", "Second"}));
}

TEST_F(HexFilesTest, AnUnknownTypeIsATypeErrorAndReplaceHasEmptiedTheList)
{
    makeProfile("First");
    write("unknown.hex", ":020000040001F9\n:0438000000006300" + QByteArray("61\n:00000001FF\n"));
    expectLoadDialog(folder.filePath("unknown.hex"), savedProfiles);
    expectAppendQuestion("Replace Profiles");
    expectImportError(" (Invalid Type Field)");
    runImport();
    EXPECT_EQ(list()->count(), 0);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(HexFilesTest, GlobalSettingsInTheImageAreLeftOut)
{
    // Type 1 and its checksum, then erased memory.
    write("global.hex", ":020000040001F9\n:08380000FFFF0100FFFFFF00C4\n:00000001FF\n");
    expectLoadDialog(folder.filePath("global.hex"), savedProfiles);
    script().expectMessage(
        "Profiles Left Out",
        "1 profile was left out, because the Kelvaron Bundle in use does not know its "
        "chemistry:\n\n\"Global\"\n\n"
        "It is still in the file global.hex. Load that file when a bundle that knows it is in "
        "use.");
    runImport();
    EXPECT_EQ(list()->count(), 0);
}

TEST_F(HexFilesTest, TextsThatAnImageCannotHoldAreAskedAbout)
{
    loadProfile(QString::fromUtf8("B\xC3\xA4r"));
    const QString complaint =
        QString::fromUtf8("Title of the profile \"B\xC3\xA4r\": \"\xC3\xA4\"");
    expectSaveDialog(folder.filePath("bear.hex"), savedProfiles);
    expectTextQuestion(complaint, "No");
    runExport();
    EXPECT_EQ(content("bear.hex"), "(no file)");

    expectSaveDialog(folder.filePath("bear.hex"), folder.path());
    expectTextQuestion(complaint, "Yes");
    expectExported();
    runExport();
    EXPECT_TRUE(content("bear.hex").startsWith(":020000040001F9\n"));
}

TEST_F(HexFilesTest, TextsThatTheChargerCannotHoldAreAskedAboutBeforeAWrite)
{
    loadProfile(QString::fromUtf8("B\xC3\xA4r"));
    expectTextQuestion(QString::fromUtf8("Title of the profile \"B\xC3\xA4r\": \"\xC3\xA4\""),
                       "No");
    trigger(command("actionWriteProfiles"));
    dialogs.reset();
    EXPECT_EQ(window->findChild<UploadDownload::UploadDownloadDialog*>(), nullptr);
    EXPECT_FALSE(QFile::exists(pathOf("profilesToUpload.hex")));
    EXPECT_EQ(titles(), QStringList(QString::fromUtf8("B\xC3\xA4r")));
}
