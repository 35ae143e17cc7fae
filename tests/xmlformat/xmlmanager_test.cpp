// Saving and loading as the user does it, through the dialogs.

#include "xmlformat/xmlmanager.h"

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/textfile.h"
#include "profileimport/parsedprofile.h"
#include "support/gui/xmlfile.h"
#include "xmlformat/readfromxml.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace
{
class XmlManagerTest : public XmlFileTest
{
protected:
    void SetUp() override
    {
        XmlFileTest::SetUp();
        ASSERT_TRUE(QDir(folder.path()).mkdir("saved_profiles"));
        ASSERT_TRUE(QDir(folder.path()).mkdir("other"));
        ASSERT_TRUE(QDir::setCurrent(folder.path()));
    }

    void TearDown() override { QDir::setCurrent(before); }

    /// Expects the save dialog, in this folder, and answers it; an empty name cancels it.
    void expectSaveDialog(const QString& name, const QString& directory = "saved_profiles")
    {
        script.expectFileDialog("Select XML File to Export Profiles", filters, pathOf(directory),
                                name);
    }

    void expectLoadDialog(const QString& name, const QString& directory = "saved_profiles")
    {
        script.expectFileDialog("Select XML File to Import Profiles", filters, pathOf(directory),
                                name);
    }

    void expectSaved()
    {
        script.expectMessage("Export to XML status",
                             "The profiles have been successfully exported!");
    }

    void expectNotSaved()
    {
        script.expectMessage("Export to XML status",
                             "An error occured while exporting profiles to XML. Please try again.");
    }

    void expectAppendQuestion(const QString& press)
    {
        script.expectMessageBox("Add Profiles to List?",
                                "Do you want to add the imported profiles to the current list of "
                                "profiles, or replace them?<br>",
                                {"Add Profiles", "Replace Profiles"}, "Add Profiles", press);
    }

    void expectGlobalQuestion(const QString& press)
    {
        script.expectQuestion("Import Global Settings?",
                              "The global settings in the file you chose are different than the "
                              "ones you currently have. Do you want to overwrite the existing "
                              "settings?",
                              press);
    }

    /// The message that tells these changes, a line each.
    void expectChanges(const QStringList& changes)
    {
        script.expectMessage("Imported With Changes",
                             "What was imported does not match the settings of the Kelvaron Bundle "
                             "in use:\n\n"
                                 + changes.join('\n')
                                 + "\n\nPlease check this before you write to the Kelvaron.");
    }

    void save()
    {
        editor.xml.on_exportAsXMLButtonClicked();
        script.finish();
    }

    void load()
    {
        editor.xml.on_importFromXMLButtonClicked();
        script.finish();
    }

    /// Loads a document without a dialog in front.
    void import(const QString& document)
    {
        editor.xml.importFromXML(writeFile("in.xml", document));
        script.finish();
    }

    static QString document(const QString& content)
    {
        return "<KelvaronProfiles>\n" + content + "</KelvaronProfiles>\n";
    }

    static QString profile(const QString& title, const QString& more = {},
                           const QString& attributes = "id=\"0\" modifiable=\"true\"")
    {
        // Of two equal elements the last one counts.
        return "<profile " + attributes + "><chemistry>Alpha Cell</chemistry><title>" + title
               + "</title><subtitle>first</subtitle><mode>Slow</mode><cells>3</cells>"
                 "<current>2.5</current><balance>true</balance><cutoff>0.25</cutoff>"
                 "<pack_voltage>12</pack_voltage><cold_check>false</cold_check><note>none</note>"
                 "<ending>Stop</ending><margin>1</margin>"
               + more + "</profile>\n";
    }

    HParser::StructSetting* global(const QString& name) const
    {
        return editor.generator->getGlobalSettings()->getStructSettingByDescriptiveName(name);
    }

    const QStringList filters = {"XML files (*.xml)", "Any files (*.*)"};
    const QString before = QDir::currentPath();
    XmlEditor editor;
    DialogScript script;
};

using XmlExportTest = XmlManagerTest;
using XmlImportTest = XmlManagerTest;

TEST_F(XmlExportTest, SavesUnderTheChosenName)
{
    editor.add("One");
    expectSaveDialog("mine.xml");
    expectSaved();
    save();
    EXPECT_TRUE(readFile("saved_profiles/mine.xml").contains("<title>One</title>"));
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
    expectSaved();
    save();
    EXPECT_EQ(QDir(pathOf("saved_profiles")).entryList(QDir::Files), QStringList("mine.xml"));
}

TEST_F(XmlExportTest, DotOfAFolderIsNoExtension)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir("v1.0"));
    expectSaveDialog(pathOf("v1.0/mine"));
    expectSaved();
    save();
    EXPECT_EQ(QDir(pathOf("v1.0")).entryList(QDir::Files), QStringList("mine.xml"));
}

TEST_F(XmlExportTest, AnotherExtensionIsKept)
{
    expectSaveDialog("mine.backup");
    expectSaved();
    save();
    EXPECT_EQ(QDir(pathOf("saved_profiles")).entryList(QDir::Files), QStringList("mine.backup"));
}

TEST_F(XmlExportTest, AsksBeforeACompletedNameOverwritesAFile)
{
    writeFile("saved_profiles/mine.xml", "older");
    expectSaveDialog("mine");
    script.thenDo([](QWidget& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(shownText(*box).contains("mine.xml")) << shownText(*box).toStdString();
        EXPECT_EQ(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
        EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::No));
        clickOn(box->button(QMessageBox::No));
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
    script.thenDo([](QWidget& dialog) {
        const auto* box = qobject_cast<QMessageBox*>(&dialog);
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(shownText(*box).contains("a & b.xml")) << shownText(*box).toStdString();
        clickOn(box->button(QMessageBox::No));
    });
    expectSaveDialog("");
    save();
    EXPECT_EQ(readFile("saved_profiles/a & b.xml"), "older");
}

TEST_F(XmlExportTest, OverwritesUnderACompletedNameWhenToldTo)
{
    writeFile("saved_profiles/mine.xml", "older");
    expectSaveDialog("mine");
    script.thenDo([](QWidget& dialog) {
        clickOn(qobject_cast<QMessageBox*>(&dialog)->button(QMessageBox::Yes));
    });
    expectSaved();
    save();
    EXPECT_TRUE(readFile("saved_profiles/mine.xml").startsWith("<KelvaronProfiles>"));
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
    EXPECT_TRUE(again.getProfiles().first()->getProperties().value("title").startsWith("Ax"));
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
    expectSaved();
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

TEST_F(XmlImportTest, LoadsIntoAnEmptyListWithoutAQuestion)
{
    editor.add("One");
    ASSERT_TRUE(editor.xml.exportToXML(pathOf("saved_profiles/mine.xml")));
    ASSERT_TRUE(editor.list->deleteAllProfilesNoConfirmation());
    expectLoadDialog("mine.xml");
    load();
    EXPECT_EQ(editor.titles(), QStringList("One"));
}

TEST_F(XmlImportTest, CancelledDialogLeavesTheListAsItIs)
{
    editor.add("One");
    expectLoadDialog("");
    load();
    EXPECT_EQ(editor.titles(), QStringList("One"));
}

TEST_F(XmlImportTest, AddPutsTheProfilesBehindTheOthers)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", document(profile("New") + profile("Newer")));
    expectLoadDialog("mine.xml");
    expectAppendQuestion("Add Profiles");
    load();
    EXPECT_EQ(editor.titles(), QStringList({"Old", "New", "Newer"}));
}

TEST_F(XmlImportTest, ReplaceTakesTheOthersAway)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", document(profile("New")));
    expectLoadDialog("mine.xml");
    expectAppendQuestion("Replace Profiles");
    load();
    EXPECT_EQ(editor.titles(), QStringList("New"));
}

TEST_F(XmlImportTest, ClosingTheQuestionReplaces)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", document(profile("New")));
    expectLoadDialog("mine.xml");
    expectAppendQuestion(DialogScript::closeControl);
    load();
    EXPECT_EQ(editor.titles(), QStringList("New"));
}

TEST_F(XmlImportTest, NextDialogStartsInTheLastFolder)
{
    writeFile("other/mine.xml", document(profile("New")));
    expectLoadDialog(pathOf("other/mine.xml"));
    expectLoadDialog("", "other");
    expectSaveDialog("", "other");
    editor.xml.on_importFromXMLButtonClicked();
    editor.xml.on_importFromXMLButtonClicked();
    save();
}

TEST_F(XmlImportTest, FileThatCannotBeOpenedIsTold)
{
    script.expectMessage("Import from XML status",
                         "Failed to read the XML file specified. Please try again.");
    editor.xml.importFromXML(pathOf("nowhere.xml"));
    script.finish();
    EXPECT_EQ(editor.count(), 0);
}

TEST_F(XmlImportTest, ReplacingByAFileThatVanishesKeepsTheList)
{
    editor.add("Old");
    const QString file = writeFile("saved_profiles/mine.xml", document(profile("New")));
    expectLoadDialog("mine.xml");
    script.thenDo([file](QWidget& dialog) {
        QFile::remove(file);
        dialog.close(); // counts as replace
    });
    script.expectMessage("Import from XML status",
                         "Failed to read the XML file specified. Please try again.");
    load();
    EXPECT_EQ(editor.titles(), QStringList("Old"));
}

TEST_F(XmlImportTest, ReplacingByAFileThatIsNoXmlKeepsTheList)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", "no XML at all");
    expectLoadDialog("mine.xml");
    expectAppendQuestion("Replace Profiles");
    script.thenDo(messageWith("Import from XML status", {"line 1", "the list is unchanged"}));
    load();
    EXPECT_EQ(editor.titles(), QStringList("Old"));
}

TEST_F(XmlImportTest, ReplacingByAFileThatIsNoProfileFileKeepsTheList)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", "<html/>");
    expectLoadDialog("mine.xml");
    expectAppendQuestion("Replace Profiles");
    script.thenDo(messageWith("Import from XML status", {"holds no profiles"}));
    load();
    EXPECT_EQ(editor.titles(), QStringList("Old"));
}

TEST_F(XmlImportTest, ReplacingByProfilesOfUnknownChemistriesKeepsTheList)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml",
              document("<profile id=\"0\"><chemistry>alpha cell</chemistry></profile>"));
    expectLoadDialog("mine.xml");
    expectAppendQuestion("Replace Profiles");
    script.thenDo(messageWith("Profiles Left Out", {"alpha cell"}));
    load();
    EXPECT_EQ(editor.titles(), QStringList("Old"));
}

TEST_F(XmlImportTest, ReplacingByAnEmptyListEmptiesTheList)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", document(QString()));
    expectLoadDialog("mine.xml");
    expectAppendQuestion("Replace Profiles");
    load();
    EXPECT_EQ(editor.count(), 0);
}

TEST_F(XmlImportTest, ReplacingByAFileThatBreaksOffBringsItsWholeProfiles)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", "<KelvaronProfiles>" + profile("New") + "<profile id=");
    expectLoadDialog("mine.xml");
    expectAppendQuestion("Replace Profiles");
    script.thenDo(messageWith("Import from XML status", {"1"}));
    load();
    EXPECT_EQ(editor.titles(), QStringList("New"));
}

TEST_F(XmlImportTest, ReplacingByAFileThatBreaksOffInItsFirstProfileKeepsTheList)
{
    editor.add("Old");
    const QString whole = "<KelvaronProfiles>" + profile("New");
    for (const char* last : {"<KelvaronProfiles>", "<profile id", "<chemistry>", "<title>Ne",
                             "</subtitle>", "</margin>", "</profil"}) {
        const QString part = whole.left(whole.indexOf(last) + int(qstrlen(last)));
        writeFile("saved_profiles/mine.xml", part);
        expectLoadDialog("mine.xml");
        expectAppendQuestion("Replace Profiles");
        script.thenDo(messageWith("Import from XML status", {"the list is unchanged"}));
        editor.xml.on_importFromXMLButtonClicked();
        EXPECT_EQ(editor.titles(), QStringList("Old")) << part.toStdString();
    }
    script.finish();
}

TEST_F(XmlImportTest, BrokenOffFileBringsItsWholeProfilesAndAMessageBehindThem)
{
    const XmlEditor& window = editor;
    script.thenDo([&window](QWidget& dialog) {
        EXPECT_EQ(window.titles(), QStringList({"One", "Two"}));
        messageWith("Import from XML status", {"line 3", "2"})(dialog);
    });
    import("<KelvaronProfiles>" + profile("One") + profile("Two") + "<profile id=\"3\"><tit");
    EXPECT_EQ(editor.titles(), QStringList({"One", "Two"}));
}

TEST_F(XmlImportTest, ElementNameThatXmlDoesNotAllowBreaksTheFileOff)
{
    QByteArray schema = TestSchema::text();
    schema.replace("\"Pack Voltage\"", "\"Pack (max)\"");
    XmlEditor other(schema);
    other.add("One", "Plain Cell");
    other.add("Two", "Alpha Cell");
    ASSERT_TRUE(other.xml.exportToXML(pathOf("mine.xml")));
    EXPECT_TRUE(readFile("mine.xml").contains("\t\t<pack_(max)>12</pack_(max)>\n"));
    ASSERT_TRUE(other.list->deleteAllProfilesNoConfirmation());
    script.thenDo(messageWith("Import from XML status", {"1"}));
    other.xml.importFromXML(pathOf("mine.xml"));
    script.finish();
    EXPECT_EQ(other.titles(), QStringList("One"));
}

TEST_F(XmlImportTest, SettingsThatShareATagGetTheLastValue)
{
    QByteArray schema = TestSchema::text();
    schema.replace("\"Cells\"", "\"Same Tag\"").replace("\"Margin\"", "\"same/TAG\"");
    XmlEditor other(schema);
    other.add("One");
    other.setting(0, "Same Tag")->setValue(2.0);
    other.setting(0, "same/TAG")->setValue(1.5);
    ASSERT_TRUE(other.xml.exportToXML(pathOf("mine.xml")));
    ASSERT_TRUE(other.list->deleteAllProfilesNoConfirmation());
    expectChanges({"Pack Voltage: 8 is not between 3 and 7.5 (\"One\")"});
    other.xml.importFromXML(pathOf("mine.xml"));
    script.finish();
    ASSERT_EQ(other.count(), 1);
    EXPECT_EQ(other.setting(0, "Same Tag")->getValue(), "1.5");
    EXPECT_EQ(other.setting(0, "same/TAG")->getValue(), "1.5");
}

TEST_F(XmlImportTest, ValueWithMarkupComesBack)
{
    editor.add("One");
    editor.setting(0, "Subtitle")->setValue(QString("<b>1 < 2 & 3"));
    ASSERT_TRUE(editor.xml.exportToXML(pathOf("mine.xml")));
    EXPECT_TRUE(readFile("mine.xml").contains("&lt;b&gt;1 &lt; 2 &amp; 3"));
    ASSERT_TRUE(editor.list->deleteAllProfilesNoConfirmation());
    editor.xml.importFromXML(pathOf("mine.xml"));
    EXPECT_EQ(editor.setting(0, "Subtitle")->getValue(), "<b>1 < 2 & 3");
}

TEST_F(XmlImportTest, ProfilesComeBackInTheOrderInWhichTheyWereWritten)
{
    QStringList titles;
    for (int i = 0; i < 12; ++i) {
        titles.prepend(QString("P%1").arg(i));
    }
    for (const QString& title : titles) {
        editor.add(title);
    }
    ASSERT_TRUE(editor.xml.exportToXML(pathOf("mine.xml")));
    ASSERT_TRUE(editor.list->deleteAllProfilesNoConfirmation());
    editor.xml.importFromXML(pathOf("mine.xml"));
    EXPECT_EQ(editor.titles(), titles);
}

TEST_F(XmlImportTest, FlagsComeBack)
{
    editor.import("Plain", false, false)->setModifiable(false);
    editor.import("Default", true, true);
    editor.import("Active", true, false);
    ASSERT_TRUE(editor.xml.exportToXML(pathOf("mine.xml")));
    ASSERT_TRUE(editor.list->deleteAllProfilesNoConfirmation());
    editor.xml.importFromXML(pathOf("mine.xml"));
    ASSERT_EQ(editor.count(), 3);
    EXPECT_EQ(editor.defaultRows(), QList<int>({1}));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(editor.row(i)->getActiveStatus(), i != 0) << i;
        EXPECT_EQ(editor.row(i)->getProfileSettings()->getModifiable(), i != 0) << i;
    }
}

TEST_F(XmlImportTest, ProfilesOfUnknownChemistriesAreLeftOutAndNamed)
{
    const XmlEditor& window = editor;
    script.thenDo([&window](QWidget& dialog) {
        EXPECT_EQ(window.titles(), QStringList({"One", "Two"}));
        messageWith("Profiles Left Out", {"3 profiles", "Un <known", "alpha cell"})(dialog);
    });
    import(document(profile("One")
                    + "<profile id=\"0\"><chemistry>Un &lt;known</chemistry></profile>"
                      "<profile id=\"0\"><chemistry>alpha cell</chemistry></profile>"
                    + profile("Two")
                    + "<profile id=\"0\"><chemistry>Un &lt;known</chemistry></profile>"));
    EXPECT_EQ(editor.titles(), QStringList({"One", "Two"}));
}

TEST_F(XmlImportTest, NamesOfUnknownChemistriesAreShownAsTheyAre)
{
    script.thenDo(messageWith("Profiles Left Out", {"\"alpha cell\"", "\"A & B\""}));
    import(document("<profile id=\"0\"><chemistry>alpha cell</chemistry></profile>"
                    "<profile id=\"1\"><chemistry>A &amp; B</chemistry></profile>"));
    EXPECT_EQ(editor.count(), 0);
}

TEST_F(XmlImportTest, LongNamesOfProfilesLeftOutAreCut)
{
    const QString longName(50, 'x');
    script.thenDo(messageWith("Profiles Left Out",
                              {QString(40, 'x') + QChar(0x2026) + "\" (chemistry \"Gone\")"}));
    import(document("<profile id=\"0\"><chemistry>Gone</chemistry><title>" + longName
                    + "</title></profile>"));
    EXPECT_EQ(editor.count(), 0);
}

TEST_F(XmlImportTest, ProfileWithoutAChemistryIsLeftOut)
{
    script.thenDo(
        messageWith("Profiles Left Out", {"1 profile was", "\"One\" (chemistry \"\")", "in.xml"}));
    import(document("<profile id=\"0\"><title>One</title></profile>"));
    EXPECT_EQ(editor.count(), 0);
}

TEST_F(XmlImportTest, GlobalStructIsNoChemistry)
{
    script.thenDo(messageWith("Profiles Left Out", {"Global Settings"}));
    import(document("<profile id=\"0\"><chemistry>Global Settings</chemistry></profile>"));
    EXPECT_EQ(editor.count(), 0);
}

TEST_F(XmlImportTest, ExportedFileAsksNothingAboutGlobalSettings)
{
    global("Supply Voltage")->setValue(12.25);
    global("Key Tone")->setValue(false);
    global("Charger Name")->setValue(QString(" a & b "));
    editor.add("One");
    ASSERT_TRUE(editor.xml.exportToXML(pathOf("mine.xml")));
    editor.xml.importFromXML(pathOf("mine.xml"));
    EXPECT_EQ(editor.titles(), QStringList({"One", "One"}));
}

TEST_F(XmlImportTest, EqualNumberOfAnotherTextAsks)
{
    ASSERT_TRUE(editor.xml.exportToXML(pathOf("mine.xml")));
    const QString other = readFile("mine.xml").replace(">14.6<", ">14.60<");
    ASSERT_TRUE(other.contains("14.60"));
    expectGlobalQuestion("No");
    import(other);
    EXPECT_EQ(global("Supply Voltage")->getValue(), "14.6");
}

TEST_F(XmlImportTest, GlobalSettingsAreKeptOnNo)
{
    expectGlobalQuestion("No");
    import(document("<GlobalSettings><charger_name>Other</charger_name></GlobalSettings>"
                    + profile("One")));
    EXPECT_EQ(global("Charger Name")->getValue(), "Bench");
    EXPECT_EQ(global("Supply Voltage")->getValue(), "14.6");
    EXPECT_EQ(editor.titles(), QStringList("One"));
}

TEST_F(XmlImportTest, GlobalSettingsAreKeptWhenTheQuestionIsClosed)
{
    expectGlobalQuestion(DialogScript::closeControl);
    import(document("<GlobalSettings><charger_name>Other</charger_name></GlobalSettings>"));
    EXPECT_EQ(global("Charger Name")->getValue(), "Bench");
}

TEST_F(XmlImportTest, GlobalSettingsAreTakenOverAsTheyAreOnYes)
{
    expectGlobalQuestion("Yes");
    expectChanges({"Charger Name: \"A name that is longer than its field\" is longer than 15 "
                   "characters (Global Settings)",
                   "Supply Voltage: 77.123 is not between 9 and 30 (Global Settings)",
                   "Key Tone is missing and is now off (Global Settings)",
                   "Fan Steps: \"many\" is not a number; 0 is used (Global Settings)",
                   "Scale: \"Kelvin\" is not one of the choices (Global Settings)"});
    import(document("<GlobalSettings><charger_name>A name that is longer than its field"
                    "</charger_name><supply_voltage>77.123</supply_voltage><fan_steps>many"
                    "</fan_steps><scale>Kelvin</scale></GlobalSettings>"));
    EXPECT_EQ(global("Charger Name")->getValue(), "A name that is longer than its field");
    EXPECT_EQ(global("Supply Voltage")->getValue(), "77.123");
    EXPECT_EQ(global("Key Tone")->getValue(), "false") << "missing";
    EXPECT_EQ(global("Fan Steps")->getValue(), "0") << "not a number";
    EXPECT_EQ(global("Scale")->getValue(), "Kelvin");
    EXPECT_TRUE(editor.generator->getGlobalSettings()->getAdvancedSettingsEdited());
}

TEST_F(XmlImportTest, GlobalSettingsBehindTheProfilesAreOffered)
{
    expectGlobalQuestion("Yes");
    import(document(profile("One")
                    + "<GlobalSettings><charger_name>Last</charger_name>"
                      "<supply_voltage>14.6</supply_voltage><key_tone>true</key_tone>"
                      "<fan_steps>4</fan_steps><scale>Celsius</scale></GlobalSettings>"));
    EXPECT_EQ(global("Charger Name")->getValue(), "Last");
    EXPECT_EQ(editor.titles(), QStringList("One"));
}

TEST_F(XmlImportTest, FileWithoutGlobalSettingsAsksNothing)
{
    import(document(profile("One")));
    EXPECT_EQ(editor.titles(), QStringList("One"));
    EXPECT_EQ(global("Charger Name")->getValue(), "Bench");
}

TEST_F(XmlImportTest, ValuesAreStoredAsTheyStandInTheFile)
{
    const QString name = " (\"A title longer than its field\")";
    expectChanges({"Title: \"A title longer than its field\" is longer than 11 characters" + name,
                   "Mode: \"Sideways\" is not one of the choices" + name,
                   "Cells: 99 is not between 1 and 8" + name,
                   "Balance: \"TRUE\" is neither true nor false; off is used" + name,
                   "Cutoff: 19.5 is not between 0.01 and 1.23456" + name,
                   "Pack Voltage is missing and is now 0" + name,
                   "Note is missing and is now empty" + name,
                   "Margin: \"inf\" is not a number; 0 is used" + name});
    import(document(profile("A title longer than its field",
                            "<cells>99</cells><current>1.23456</current><cutoff>19.5</cutoff>"
                            "<balance>TRUE</balance><cold_check>true</cold_check>"
                            "<mode>Sideways</mode><margin>inf</margin>")
                        .remove("<pack_voltage>12</pack_voltage>")
                        .remove("<note>none</note>")));
    ASSERT_EQ(editor.count(), 1);
    EXPECT_EQ(editor.setting(0, "Title")->getValue(), "A title longer than its field");
    EXPECT_EQ(editor.setting(0, "Cells")->getValue(), "99") << "above its bound";
    EXPECT_EQ(editor.setting(0, "Current")->getValue(), "1.23456") << "too many decimals";
    EXPECT_EQ(editor.setting(0, "Cutoff")->getValue(), "19.5") << "advanced";
    EXPECT_EQ(editor.setting(0, "Balance")->getValue(), "false");
    EXPECT_EQ(editor.setting(0, "Cold Check")->getValue(), "true");
    EXPECT_EQ(editor.setting(0, "Mode")->getValue(), "Sideways") << "not in the list";
    EXPECT_EQ(editor.setting(0, "Margin")->getValue(), "0") << "not finite";
    EXPECT_EQ(editor.setting(0, "Pack Voltage")->getValue(), "0") << "missing";
    EXPECT_EQ(editor.setting(0, "Note")->getValue(), "") << "missing";
}

TEST_F(XmlImportTest, HiddenSettingsKeepTheirDefaults)
{
    import(document(profile("One", "<type>9</type><checksum>9</checksum>")));
    ASSERT_EQ(editor.count(), 1);
    EXPECT_EQ(editor.setting(0, "type")->getValue(), "2");
    EXPECT_EQ(editor.setting(0, "checksum")->getValue(), "0");
}

TEST_F(XmlImportTest, EditedAdvancedNumbersSurviveSavingLoadingShowingAndEditing)
{
    editor.add("One");
    clickOn(editor.ui->editProfileButton);
    clickOn(editor.advancedToggle());
    enterText(editor.lineEdit("Cutoff"), "0.77");
    enterText(editor.lineEdit("Pack Voltage"), "10.625");
    clickOn(editor.ui->saveChangesButton);
    ASSERT_EQ(editor.setting(0, "Cutoff")->getValue(), "0.77");
    ASSERT_TRUE(editor.xml.exportToXML(pathOf("mine.xml")));

    XmlEditor other;
    other.add("Before");
    other.xml.importFromXML(pathOf("mine.xml"));
    ASSERT_EQ(other.count(), 2);
    other.clickRow(0);
    other.clickRow(1);
    EXPECT_EQ(other.lineEdit("Cutoff")->text(), "0.77");
    EXPECT_EQ(other.lineEdit("Pack Voltage")->text(), "10.625");
    EXPECT_TRUE(other.advancedToggle()->isChecked());
    clickOn(other.ui->editProfileButton);
    clickOn(other.ui->saveChangesButton);
    EXPECT_EQ(other.setting(1, "Cutoff")->getValue(), "0.77");
    EXPECT_EQ(other.setting(1, "Pack Voltage")->getValue(), "10.625");
    script.finish();
    clickOn(other.ui->editProfileButton);
    enterText(other.lineEdit("Margin"), "0.5");
    other.cancelEditing();
    EXPECT_EQ(other.setting(1, "Cutoff")->getValue(), "0.77");
    EXPECT_EQ(other.lineEdit("Pack Voltage")->text(), "10.625");
}

TEST_F(XmlImportTest, ProfileWithoutEditedAdvancedSettingsIsNotMarked)
{
    editor.add("One");
    ASSERT_TRUE(editor.xml.exportToXML(pathOf("mine.xml")));
    editor.xml.importFromXML(pathOf("mine.xml"));
    ASSERT_EQ(editor.count(), 2);
    EXPECT_FALSE(editor.row(1)->getProfileSettings()->settings->getAdvancedSettingsEdited());
    EXPECT_FALSE(editor.advancedToggle()->isChecked());
}
} // namespace
