// "Import from HEX..." as the user does it.

#include "support/gui/hexfilestest.h"

TEST_F(HexFilesTest, WhatIsReplacedIsSavedFirst)
{
    makeProfile("First");
    exportTo("mine.hex");
    makeProfile("Second");
    expectLoadDialog("mine.hex", folder.path());
    script().expectAppendQuestion("Replace Profiles");
    runImport();
    EXPECT_EQ(titles(), QStringList({"First"}));
    EXPECT_EQ(backedUpTitles(), QStringList({"First", "Second"}));
}

TEST_F(HexFilesTest, AddingSavesNothing)
{
    makeProfile("First");
    exportTo("mine.hex");
    expectLoadDialog("mine.hex", folder.path());
    script().expectAppendQuestion("Add Profiles");
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
        script().expectAppendQuestion("Replace Profiles");
        script().expectNoBackupQuestion(answer);
        runImport();
        EXPECT_EQ(titles(),
                  answer == "No" ? QStringList({"First", "Second"}) : QStringList({"First"}));
    }
}

TEST_F(HexFilesTest, AListFromAnXmlFileSavesTheReplacedOneToo)
{
    makeProfile("First");
    script().expectExportDialog("XML", savedProfiles, folder.filePath("mine.xml"));
    script().expectExported("XML");
    trigger(command("actionExportXML"));
    dialogs.reset();
    makeProfile("Second");
    const auto load = [this] {
        script().expectImportDialog("XML", folder.path(), "mine.xml");
        script().expectAppendQuestion("Replace Profiles");
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
    script().expectAppendQuestion("Add Profiles");
    runImport();
    EXPECT_EQ(titles(), QStringList({"First", "Second", "First"}));
}

TEST_F(HexFilesTest, ClosingTheQuestionReplaces)
{
    makeProfile("First");
    exportTo("mine.hex");
    makeProfile("Second");
    expectLoadDialog("mine.hex", folder.path());
    script().expectAppendQuestion(DialogScript::closeControl);
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

TEST_F(HexFilesTest, AMissingEndIsAReadError)
{
    makeProfile("First");
    exportTo("mine.hex");
    write("cut.hex", content("mine.hex").chopped(20));
    expectLoadDialog("cut.hex", folder.path());
    script().expectAppendQuestion("Add Profiles");
    script().expectHexImportError("");
    runImport();
    EXPECT_EQ(titles(), QStringList({"First"}));
}

TEST_F(HexFilesTest, ADamagedStructureIsAChecksumErrorAndAddsNothing)
{
    makeProfile("First");
    makeProfile("Second");
    exportTo("mine.hex");
    QByteArray text = content("mine.hex");
    // The last letter of "Second" in the second structure, 'd', becomes 'f'; the line's checksum
    // does not detect that.
    ASSERT_TRUE(text.contains("\n:103A000000006400")) << text;
    text.replace("\n:103A000000006400", "\n:103A000000006600");
    write("damaged.hex", text);
    expectLoadDialog("damaged.hex", folder.path());
    script().expectAppendQuestion("Add Profiles");
    script().expectHexImportError(" (Checksum)");
    runImport();
    EXPECT_EQ(titles(), QStringList({"First", "Second"}));
}

TEST_F(HexFilesTest, AnUnknownTypeIsATypeErrorAndReplaceHasEmptiedTheList)
{
    makeProfile("First");
    write("unknown.hex", ":020000040001F9\n:0438000000006300" + QByteArray("61\n:00000001FF\n"));
    expectLoadDialog(folder.filePath("unknown.hex"), savedProfiles);
    script().expectAppendQuestion("Replace Profiles");
    script().expectHexImportError(" (Invalid Type Field)");
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
