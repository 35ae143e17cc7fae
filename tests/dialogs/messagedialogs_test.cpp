#include "messagedialogs.h"

#include "applicationglobalmap.h"
#include "support/gui/dialogscript.h"
#include "support/gui/widgets.h"
#include "versionstring.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTextDocument>

namespace
{
/// The text as the user reads it: without the marks of rich text where the label takes it as such.
QString shownText(const QString& text)
{
    if (!Qt::mightBeRichText(text)) {
        return text;
    }
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText().simplified();
}

/// Calls a function that shows a box and returns the text that the user reads.
QString shownBy(int (*show)(QWidget*), const QString& title)
{
    QString shown;
    DialogScript script;
    script.thenPress("OK", [&](const QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), title);
        EXPECT_TRUE(Qt::mightBeRichText(box.text()));
        EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        shown = shownText(box.text());
    });
    EXPECT_EQ(show(nullptr), QMessageBox::Ok);
    script.finish();
    return shown;
}
} // namespace

struct PlainMessage
{
    int (*show)(QWidget*);
    const char* title;
    const char* text;
};

class PlainMessages : public ::testing::TestWithParam<PlainMessage>
{};

TEST_P(PlainMessages, HaveTheirTitleAndTextAndAnOkButton)
{
    QWidget parent;
    bool isChecked = false;
    DialogScript script;
    script.thenPress("OK", [&](const QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), GetParam().title);
        EXPECT_EQ(box.text(), GetParam().text);
        EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        EXPECT_EQ(box.parentWidget(), &parent);
        EXPECT_TRUE(box.isModal());
        isChecked = true;
    });
    EXPECT_EQ(GetParam().show(&parent), QMessageBox::Ok);
    EXPECT_TRUE(isChecked);
}

INSTANTIATE_TEST_SUITE_P(
    All, PlainMessages,
    ::testing::Values(
        PlainMessage{MessageDialogs::kelvaronFirmwareToolCorrupt,
                     "Could not start Kelvaron Firmware Tool",
                     "Kelvaron Firmware Tool could not be started. Please try again. If the "
                     "problem persists, try reinstalling the program"},
        PlainMessage{MessageDialogs::mainFolderNotFound, "Installation Error",
                     "The folder KelvaronProfileEditorFiles could not be found. Please try "
                     "reinstalling the program."},
        PlainMessage{MessageDialogs::cbFileMissing, "Installation Error",
                     "The file kelvaron_chemistries.cb could not be found. Please try reinstalling "
                     "the program."},
        PlainMessage{MessageDialogs::suplMissing, "Installation Error",
                     "The executable supl.exe could not be found. Please try reinstalling the "
                     "program."},
        PlainMessage{MessageDialogs::deviceTxtMissing, "Installation Error",
                     "The file device.txt could not be found. Please try reinstalling the "
                     "program."},
        PlainMessage{MessageDialogs::firmwareToolMissing, "Installation Error",
                     "The executable KelvaronFirmwareTool.exe could not be found. Please try "
                     "reinstalling the program."},
        PlainMessage{MessageDialogs::corruptCBFile, "Installation Error",
                     "The file kelvaron_chemistries.cb is corrupt or has been altered. Please try "
                     "reinstalling the program."},
        PlainMessage{MessageDialogs::hexImportReadError, "Import from HEX status",
                     "An error occured while importing profiles from HEX. Please try again."},
        PlainMessage{MessageDialogs::hexImportChecksumError, "Import from HEX status",
                     "An error occured while importing profiles from HEX. Please try again. "
                     "(Checksum)"},
        PlainMessage{MessageDialogs::hexImportTypeError, "Import from HEX status",
                     "An error occured while importing profiles from HEX. Please try again. "
                     "(Invalid Type Field)"},
        PlainMessage{MessageDialogs::xmlImportReadError, "Import from XML status",
                     "Failed to read the XML file specified. Please try again."},
        PlainMessage{MessageDialogs::editModeProfilesDeletion, "Cannot Delete Profiles",
                     "Please save or cancel the changes before deleting profiles."},
        PlainMessage{MessageDialogs::noBundlesFound, "Installation Error",
                     "No Kelvaron Bundles were found. Please try reinstalling the program."},
        PlainMessage{MessageDialogs::firmwareDownloadNotNeeded, "Already up-to-date",
                     "The Kelvaron Bundle being used right now is already up-to-date."},
        PlainMessage{MessageDialogs::firmwareCheckerError, "Error!",
                     "An error occured while checking for firmware updates. Please make sure you "
                     "are connected to the internet, and try again."},
        PlainMessage{MessageDialogs::firmwareDownloaded, "Latest Firmware Downloaded",
                     "The latest firmware has been downloaded.<br>Please go to File > Update "
                     "Kelvaron Firmware... to flash it."}));

TEST(MessageDialogsTest, DeletingAllAsksWithNoAsTheDefault)
{
    for (const QString& answer : {QString("Yes"), QString("No")}) {
        DialogScript script;
        script.expectMessageBox(
            "Delete all profiles?",
            "All profiles will be deleted. This operation cannot be undone. Continue?",
            {"Yes", "No"}, "No", answer);
        EXPECT_EQ(MessageDialogs::askDeleteAllProfiles(nullptr),
                  answer == "Yes" ? QMessageBox::Yes : QMessageBox::No);
    }
}

TEST(MessageDialogsTest, ClosingTheDeleteAllQuestionIsNo)
{
    DialogScript script;
    script.expectQuestion(
        "Delete all profiles?",
        "All profiles will be deleted. This operation cannot be undone. Continue?",
        DialogScript::closeControl);
    EXPECT_NE(MessageDialogs::askDeleteAllProfiles(nullptr), QMessageBox::Yes);
}

class AppendQuestion : public ::testing::Test
{
protected:
    static int answer(const QString& press)
    {
        DialogScript script;
        script.expectAppendQuestion(press);
        return MessageDialogs::askAppendProfiles(nullptr);
    }
};

TEST_F(AppendQuestion, AddIsYes)
{
    EXPECT_EQ(answer("Add Profiles"), QMessageBox::Yes);
}

TEST_F(AppendQuestion, ReplaceIsNo)
{
    EXPECT_EQ(answer("Replace Profiles"), QMessageBox::No);
}

TEST_F(AppendQuestion, ClosedCountsAsReplace)
{
    EXPECT_EQ(answer(DialogScript::closeControl), QMessageBox::No);
}

TEST_F(AppendQuestion, ButtonsHaveMnemonicsAndRoles)
{
    DialogScript script;
    script.thenPress(DialogScript::closeControl, [](const QMessageBox& box) {
        QStringList texts;
        for (const QAbstractButton* button : box.buttons()) {
            texts.append(button->text());
        }
        texts.sort();
        EXPECT_EQ(texts, QStringList({"&Add Profiles", "&Replace Profiles"}));
        for (QAbstractButton* button : box.buttons()) {
            EXPECT_EQ(box.buttonRole(button), button->text() == "&Add Profiles"
                                                  ? QMessageBox::AcceptRole
                                                  : QMessageBox::RejectRole);
        }
    });
    MessageDialogs::askAppendProfiles(nullptr);
}

TEST(MessageDialogsTest, TooOldSoftwareNamesBothVersionsAndTheDownloadPage)
{
    DialogScript script;
    script.thenPress("OK", [](const QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Software Update Required");
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        const QString start =
            "Kelvaron Bundle version 1.4.2 requires Kelvaron Profile Editor version 01.0 or "
            "higher. You can download it at ";
        EXPECT_EQ(box.text().left(start.size()), start);
        EXPECT_TRUE(startsWith(box.text().mid(start.size()), "http"));
        EXPECT_TRUE(box.text().endsWith("MacOS"));
    });
    EXPECT_EQ(MessageDialogs::currentSoftwareTooOld(nullptr, VersionString("1.4.2"),
                                                    VersionString("01.0")),
              QMessageBox::Ok);
}

class AboutBox : public ::testing::Test
{
protected:
    void TearDown() override { ApplicationGlobalMap::putString("bundle_version", {}); }

    static QString shown()
    {
        return shownBy(MessageDialogs::aboutKelvaronProfileEditor, "About Kelvaron Profile Editor");
    }
};

TEST_F(AboutBox, ShowsBuildAndBundleVersion)
{
    ApplicationGlobalMap::putString("bundle_version", "1.4.2");
    const QString text = shown();
    const QString start =
        "Kelvaron Profile Editor Build: v0.99 - 3e1fec7a|6af60691|0d819de1 - MacOS Kelvaron "
        "Bundle Version: v1.4.2 ";
    EXPECT_EQ(text.left(start.size()), start);
    EXPECT_GT(text.size(), start.size()); // the maker's notice
}

TEST_F(AboutBox, HasNothingBehindTheLetterWithoutABundle)
{
    ApplicationGlobalMap::putString("bundle_version", {});
    DialogScript script;
    script.thenPress("OK", [](const QMessageBox& box) {
        EXPECT_TRUE(contains(box.text(), QRegExp("Kelvaron Bundle Version: v\\s*<br>")));
    });
    MessageDialogs::aboutKelvaronProfileEditor(nullptr);
}

TEST_F(AboutBox, IsCentredWithTheNameInBoldAndALink)
{
    DialogScript script;
    script.thenPress("OK", [](const QMessageBox& box) {
        EXPECT_TRUE(box.text().contains("<center>") || box.text().contains("align=\"center\""));
        EXPECT_TRUE(contains(box.text(), "<b>Kelvaron Profile Editor</b><br>Build: "));
        EXPECT_TRUE(contains(box.text(), "<a href=\"http"));
    });
    MessageDialogs::aboutKelvaronProfileEditor(nullptr);
}

TEST(HelpBox, ReadsAsFourNumberedSteps)
{
    const QString text = shownBy(MessageDialogs::helpKelvaronProfileEditor, "Basic Usage");
    EXPECT_TRUE(startsWith(text, "Kelvaron Profile Editor Basic Usage:"));
    int place = 0;
    for (const char* item :
         {"Connect the USB end of the USB->TTL programming cable to your computer, and TRS end "
          "(1/8\" audio plug) to the programming adapter cable of the Kelvaron",
          "Put the Kelvaron in bootloader mode. With V0.9 or later firmware, this is done by "
          "pressing and holding both buttons to enter the setup menu, then going to advanced "
          "setup-> Connect to PC. Alternately, it can be accomplished by leaving the Kelvaron "
          "powered off for 30 seconds, and then pressing and holding the lower button when AC "
          "power is applied. In bootloader mode, the OLED display screen will be completely blank. "
          "If you see the screen displaying information, then the Kelvaron is not in bootloader "
          "and cannot be reprogrammed",
          "With the Kelvaron on and in bootloader mode, you can then read and write profiles to "
          "the device by selecting the \"read from kelvaron\" and \"write to kelvaron\" buttons",
          "You will be prompted to select the COM port in a pop-up window. Usually the default is "
          "correct, but if in doubt, unplug and replug the USB cable from your computer to see "
          "which COM Port item disappears and then reappears from the list"}) {
        place = text.indexOf(item, place);
        ASSERT_GE(place, 0) << item << "\nin: " << text;
    }
}

TEST(HelpBox, HasItsSizesAndItsOrderedList)
{
    DialogScript script;
    script.thenPress("OK", [](const QMessageBox& box) {
        EXPECT_TRUE(contains(box.text(), QRegExp("size=\"?5\"?><b>Kelvaron Profile Editor")));
        EXPECT_TRUE(contains(box.text(), QRegExp("size=\"?3\"?>")));
        EXPECT_EQ(box.text().count("<li>"), 4);
        EXPECT_EQ(box.text().count("<ol>"), 1);
    });
    MessageDialogs::helpKelvaronProfileEditor(nullptr);
}

TEST(MessageDialogsTest, ProfilesLeftOutAreCountedAndNamedAsTheyAre)
{
    DialogScript script;
    script.thenPress("OK", [](const QMessageBox& box) {
        EXPECT_TRUE(contains(box.text(), "3"));
        const QString read = box.textFormat() == Qt::PlainText ? box.text() : shownText(box.text());
        EXPECT_TRUE(contains(read, "\"Zinc & Air\""));
        EXPECT_TRUE(contains(read, "\"<b>Odd</b>\""));
        EXPECT_FALSE(read.contains("&quot;")) << read;
    });
    MessageDialogs::profilesLeftOut(nullptr, {"\"Zinc & Air\"", "\"<b>Odd</b>\"", "\"A\""}, {});
}

TEST(MessageDialogsTest, OneChemistryLeftOutIsShownWithoutEntities)
{
    DialogScript script;
    script.thenPress("OK", [](const QMessageBox& box) {
        const QString read = box.textFormat() == Qt::PlainText ? box.text() : shownText(box.text());
        EXPECT_TRUE(contains(read, "\"Zinc Air\""));
    });
    MessageDialogs::profilesLeftOut(nullptr, {"\"Zinc Air\""}, {});
}

namespace
{
/// The message about this many profiles left out; it names some of them and counts the others.
void expectLeftOut(int count, int named, const QString& others)
{
    QStringList names;
    for (int i = 1; i <= count; ++i) {
        names.append(QString("<%1>").arg(i));
    }
    DialogScript script;
    script.expectMessage(
        "Profiles Left Out",
        QString::number(count)
            + " profiles were left out, because the Kelvaron Bundle in use does "
              "not know their chemistries:\n\n"
            + names.mid(0, named).join("\n") + others
            + "\n\nThey are still in the file mine.xml. Load that file when a bundle "
              "that knows them is in use.");
    MessageDialogs::profilesLeftOut(nullptr, names, "mine.xml");
}
} // namespace

TEST(MessageDialogsTest, UpTo25ProfilesLeftOutAreNamed)
{
    expectLeftOut(24, 24, "");
    expectLeftOut(25, 25, "");
}

TEST(MessageDialogsTest, ManyProfilesLeftOutAreCutTo25)
{
    expectLeftOut(26, 25, "\nand 1 more");
    expectLeftOut(27, 25, "\nand 2 more");
}
