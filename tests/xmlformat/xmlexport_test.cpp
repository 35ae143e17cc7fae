// Saving as the user does it, through the dialogs.

#include "base/textfile.h"
#include "profileimport/parsedprofile.h"
#include "support/gui/xmlmanagertest.h"
#include "xmlformat/readfromxml.h"

#include <QTest>

TEST_F(XmlExportTest, SavesUnderTheChosenName)
{
    editor.add("One");
    expectSaveDialog("mine.xml");
    script.expectExported("XML");
    save();
    EXPECT_TRUE(contains(readFile("saved_profiles/mine.xml"), "<title>One</title>"));
}

TEST_F(XmlExportTest, CancelledDialogSavesNothing)
{
    editor.add("One");
    expectSaveDialog("");
    save();
    EXPECT_TRUE(QDir(pathOf("saved_profiles")).isEmpty());
}

TEST_F(XmlExportTest, NameWithoutAnExtensionGetsOne)
{
    expectSaveDialog("mine");
    script.expectExported("XML");
    save();
    EXPECT_EQ(QDir(pathOf("saved_profiles")).entryList(QDir::Files), QStringList("mine.xml"));
}

TEST_F(XmlExportTest, DotOfAFolderIsNoExtension)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("v1.0"));
    expectSaveDialog(pathOf("v1.0/mine"));
    script.expectExported("XML");
    save();
    EXPECT_EQ(QDir(pathOf("v1.0")).entryList(QDir::Files), QStringList("mine.xml"));
}

TEST_F(XmlExportTest, AnotherExtensionIsKept)
{
    expectSaveDialog("mine.backup");
    script.expectExported("XML");
    save();
    EXPECT_EQ(QDir(pathOf("saved_profiles")).entryList(QDir::Files), QStringList("mine.backup"));
}

TEST_F(XmlExportTest, AsksBeforeACompletedNameOverwritesAFile)
{
    writeFile("saved_profiles/mine.xml", "older");
    expectSaveDialog("mine");
    script.thenPress("No", [](const QMessageBox& box) {
        EXPECT_TRUE(contains(shownText(box), "mine.xml"));
        EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
    });
    expectSaveDialog("");
    save();
    EXPECT_EQ(readFile("saved_profiles/mine.xml"), "older");
    EXPECT_EQ(QDir(pathOf("saved_profiles")).entryList(QDir::Files), QStringList("mine.xml"));
}

TEST_F(XmlExportTest, QuestionShowsTheNameAsItIs)
{
    writeFile("saved_profiles/a & b.xml", "older");
    expectSaveDialog("a & b");
    script.thenPress(
        "No", [](const QMessageBox& box) { EXPECT_TRUE(contains(shownText(box), "a & b.xml")); });
    expectSaveDialog("");
    save();
    EXPECT_EQ(readFile("saved_profiles/a & b.xml"), "older");
}

TEST_F(XmlExportTest, OverwritesUnderACompletedNameWhenToldTo)
{
    writeFile("saved_profiles/mine.xml", "older");
    expectSaveDialog("mine");
    script.thenPress("Yes");
    script.expectExported("XML");
    save();
    EXPECT_TRUE(startsWith(readFile("saved_profiles/mine.xml"), "<KelvaronProfiles>"));
}

TEST_F(XmlExportTest, ClosingTheQuestionOverwritesNothing)
{
    writeFile("saved_profiles/mine.xml", "older");
    expectSaveDialog("mine");
    script.thenDo([](QWidget& dialog) { dialog.close(); });
    expectSaveDialog("");
    save();
    EXPECT_EQ(readFile("saved_profiles/mine.xml"), "older");
}

TEST_F(XmlExportTest, TheLargestFileCanBeReadAgainAndALargerOneIsNotWritten)
{
    const ProfileSettings* profile = editor.add("A");
    HParser::StructSetting* title = profile->settings->getStructSettings().first();
    const int room =
        static_cast<int>(TextFile::largestFile) - editor.xml.document().toUtf8().size();
    title->storeValueFromText('A' + QString(room, 'x'));
    ASSERT_TRUE(editor.xml.exportToXML(pathOf("large.xml")));
    XMLGeneratorParser::ReadFromXML reader;
    ASSERT_TRUE(reader.readProfiles(pathOf("large.xml")));
    ASSERT_EQ(reader.getProfiles().size(), 1);
    EXPECT_EQ(reader.getProfiles().first()->getProperties().value("title"), title->getValue());

    title->storeValueFromText('B' + QString(room + 1, 'x'));
    expectSaveDialog("larger.xml");
    expectNotSaved();
    editor.xml.on_exportAsXMLButtonClicked();
    EXPECT_FALSE(QFile::exists(pathOf("saved_profiles/larger.xml")));
    EXPECT_FALSE(editor.xml.exportToXML(pathOf("large.xml")));
    XMLGeneratorParser::ReadFromXML again;
    ASSERT_TRUE(again.readProfiles(pathOf("large.xml")));
    EXPECT_TRUE(startsWith(again.getProfiles().first()->getProperties().value("title"), "Ax"));
}

TEST_F(XmlExportTest, FailureIsTold)
{
    const QString other = pathOf("other");
    script.thenDo([other](QWidget& dialog) {
        auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
        typeOver(field, other + "/mine.xml");
        EXPECT_TRUE(QDir().rmdir(other)); // meanwhile
        QTest::keyClick(field, Qt::Key_Return);
    });
    expectNotSaved();
    save();
    EXPECT_FALSE(QFile::exists(other));
}

TEST_F(XmlExportTest, NextDialogStartsInTheLastFolder)
{
    expectSaveDialog(pathOf("other/mine.xml"));
    script.expectExported("XML");
    expectSaveDialog("", "other");
    expectLoadDialog("", "other");
    editor.xml.on_exportAsXMLButtonClicked();
    editor.xml.on_exportAsXMLButtonClicked();
    load();
}

TEST_F(XmlExportTest, CancelledDialogsLeaveTheFolderAsItWas)
{
    expectSaveDialog("");
    expectLoadDialog("");
    expectSaveDialog("");
    editor.xml.on_exportAsXMLButtonClicked();
    editor.xml.on_importFromXMLButtonClicked();
    save();
}
