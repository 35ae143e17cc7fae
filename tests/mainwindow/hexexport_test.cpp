// "Export as HEX..." as the user does it.

#include "profiles/profilename.h"
#include "support/filesizelimit.h"
#include "support/gui/hexfilestest.h"
#include "transfer/uploaddownloaddialog.h"

TEST_F(HexFilesTest, ExportedProfilesComeBackInTheirOrder)
{
    makeProfile("First", 1);
    makeProfile("Second", 0);
    clickOn(childNamed<QPushButton>(row(1), "defaultProfileButton"));
    exportTo("mine.hex");
    EXPECT_TRUE(startsWith(content("mine.hex"), ":020000040001F9\n:10380000"));

    makeProfile("Third", 0);
    expectLoadDialog("mine.hex", folder.path());
    script().expectAppendQuestion("Replace Profiles");
    runImport();
    EXPECT_EQ(titles(), QStringList({"First", "Second"}));
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
    script().expectAppendQuestion("Replace Profiles");
    runImport();
    EXPECT_EQ(titles(), QStringList({"Second", "First"}));
}

TEST_F(HexFilesTest, AnEmptyListGivesAFileWithoutData)
{
    exportTo("empty.hex");
    EXPECT_EQ(content("empty.hex"), ":020000040001F9\n:00000001FF\n");
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
    script().expectExportDialog("HEX", savedProfiles, folder.filePath("new.hex"));
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
        script().expectExported("HEX");
        runExport();
        offered = folder.path();
        EXPECT_TRUE(content(name).endsWith(":00000001FF\n")) << name;
    }
    EXPECT_EQ(content("mine.hex"), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList({"mine", "mine.hex", "mine.txt", "mine.v2"}));
}

TEST_F(HexFilesTest, TooManyProfilesAreRefusedBeforeAnythingElseIsAsked)
{
    for (int i = 0; i < allowed; ++i) {
        makeProfile("Profile");
    }
    loadProfile(QString::fromUtf8("B\xC3\xA4r"), "Add Profiles"); // would require a confirmation
    write("mine.hex", "old");
    expectSaveDialog(folder.filePath("mine"), savedProfiles);
    expectStatus("You currently have 4 profiles, but only 3 profiles can be exported to a single "
                 "HEX file. Please delete some profiles and try again");
    runExport();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList({"mine.hex", "profile.xml"}));
    EXPECT_EQ(content("mine.hex"), "old");
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
    for (const int limit : {0, 1, 100, 700}) {
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
    script().expectExported("HEX");
    runExport();
    EXPECT_TRUE(startsWith(content("bear.hex"), ":020000040001F9\n"));
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
