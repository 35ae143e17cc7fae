// The texts of messages that count something, for one and for many.

#include "messagedialogs.h"
#include "support/gui/dialogscript.h"
#include "support/gui/widgets.h"

TEST(OwnMessagesTest, OneProfileLeftOut)
{
    DialogScript script;
    script.expectMessage("Profiles Left Out",
                         "1 profile was left out, because the Kelvaron Bundle in use does not know "
                         "its chemistry:\n\n\"A\"\n\n"
                         "It is still in the file mine.xml. Load that file when a bundle that "
                         "knows it is in use.");
    MessageDialogs::profilesLeftOut(nullptr, {"\"A\""}, "mine.xml");
}

TEST(OwnMessagesTest, TwoProfilesLeftOut)
{
    DialogScript script;
    script.expectMessage("Profiles Left Out",
                         "2 profiles were left out, because the Kelvaron Bundle in use does not "
                         "know their chemistries:\n\n\"A\"\n\"B\"");
    MessageDialogs::profilesLeftOut(nullptr, {"\"A\"", "\"B\""}, {});
}

TEST(OwnMessagesTest, BrokenFileThatGaveNothingLeavesTheListAsItWas)
{
    DialogScript script;
    script.expectMessage(
        "Import from XML status",
        "The XML file could not be read completely: Start tag expected (line 1).\n\n"
        "No profile was read, and the list is unchanged. Please choose another file.");
    MessageDialogs::xmlFileBroken(nullptr, "Start tag expected (line 1)", 0);
}

TEST(OwnMessagesTest, BrokenFileThatGaveProfiles)
{
    const QString start = "The XML file could not be read completely: Oh (line 7).\n\n";
    const QString end =
        " read before the error. Please check the list, or load another copy of the file.";
    DialogScript script;
    script.expectMessage("Import from XML status", start + "1 profile was" + end);
    script.expectMessage("Import from XML status", start + "2 profiles were" + end);
    MessageDialogs::xmlFileBroken(nullptr, "Oh (line 7)", 1);
    MessageDialogs::xmlFileBroken(nullptr, "Oh (line 7)", 2);
}

TEST(OwnMessagesTest, FileWithoutProfilesLeavesTheListAsItWas)
{
    DialogScript script;
    script.expectMessage(
        "Import from XML status",
        "The XML file contains no profiles. The list is unchanged. Please choose another file.");
    MessageDialogs::xmlFileHoldsNoProfiles(nullptr);
}

TEST(OwnMessagesTest, TextsThatTheChargerCannotHold)
{
    const QString start =
        "The Kelvaron can only store plain English letters, digits and punctuation (ASCII). "
        "With other characters its profiles may become unreadable. ";
    const QString end = "\n\nNothing has been written yet. Do you want to continue anyway?";
    DialogScript script;
    script.expectQuestion("Texts Do Not Fit",
                          start + "This text has such characters:\n\nTitle" + end, "No");
    script.expectQuestion("Texts Do Not Fit",
                          start + "These texts have such characters:\n\nTitle\nSubtitle" + end,
                          "Yes");
    EXPECT_EQ(MessageDialogs::askUnstorableTexts(nullptr, {"Title"}), QMessageBox::No);
    EXPECT_EQ(MessageDialogs::askUnstorableTexts(nullptr, {"Title", "Subtitle"}), QMessageBox::Yes);
}

TEST(OwnMessagesTest, ChangesOfAnImportAndOfAReload)
{
    DialogScript script;
    script.expectMessage("Imported With Changes",
                         "What was imported does not match the settings of the Kelvaron Bundle in "
                         "use:\n\nCells\n\nPlease check this before you write to the Kelvaron.");
    script.expectMessage(
        "Reloaded With Changes",
        "A newer Kelvaron Bundle is in use. The list does not match its settings:"
        "\n\nCells\n\nPlease check this before you write to the Kelvaron. The previous list is in "
        "the file kept.xml.");
    MessageDialogs::importChanges(nullptr, "Cells");
    MessageDialogs::reloadChanges(nullptr, "Cells", "kept.xml");
}
