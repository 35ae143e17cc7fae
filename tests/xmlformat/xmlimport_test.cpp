// Loading as the user does it, through the dialogs.

#include "support/gui/xmlmanagertest.h"

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
    script.expectAppendQuestion("Add Profiles");
    load();
    EXPECT_EQ(editor.titles(), QStringList({"Old", "New", "Newer"}));
}

TEST_F(XmlImportTest, ReplaceTakesTheOthersAway)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", document(profile("New")));
    expectLoadDialog("mine.xml");
    script.expectAppendQuestion("Replace Profiles");
    load();
    EXPECT_EQ(editor.titles(), QStringList("New"));
}

TEST_F(XmlImportTest, ClosingTheQuestionReplaces)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", document(profile("New")));
    expectLoadDialog("mine.xml");
    script.expectAppendQuestion(DialogScript::closeControl);
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
    script.expectAppendQuestion("Replace Profiles");
    script.thenDo(messageWith("Import from XML status", {"line 1", "the list is unchanged"}));
    load();
    EXPECT_EQ(editor.titles(), QStringList("Old"));
}

TEST_F(XmlImportTest, ReplacingByAFileThatIsNoProfileFileKeepsTheList)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", "<html/>");
    expectLoadDialog("mine.xml");
    script.expectAppendQuestion("Replace Profiles");
    script.thenDo(messageWith("Import from XML status", {"contains no profiles"}));
    load();
    EXPECT_EQ(editor.titles(), QStringList("Old"));
}

TEST_F(XmlImportTest, ReplacingByProfilesOfUnknownChemistriesKeepsTheList)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml",
              document("<profile id=\"0\"><chemistry>alpha cell</chemistry></profile>"));
    expectLoadDialog("mine.xml");
    script.expectAppendQuestion("Replace Profiles");
    script.thenDo(messageWith("Profiles Left Out", {"alpha cell"}));
    load();
    EXPECT_EQ(editor.titles(), QStringList("Old"));
}

TEST_F(XmlImportTest, ReplacingByAnEmptyListEmptiesTheList)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", document(QString()));
    expectLoadDialog("mine.xml");
    script.expectAppendQuestion("Replace Profiles");
    load();
    EXPECT_EQ(editor.count(), 0);
}

TEST_F(XmlImportTest, ReplacingByAFileThatBreaksOffBringsItsWholeProfiles)
{
    editor.add("Old");
    writeFile("saved_profiles/mine.xml", "<KelvaronProfiles>" + profile("New") + "<profile id=");
    expectLoadDialog("mine.xml");
    script.expectAppendQuestion("Replace Profiles");
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
        script.expectAppendQuestion("Replace Profiles");
        script.thenDo(messageWith("Import from XML status", {"the list is unchanged"}));
        editor.xml.on_importFromXMLButtonClicked();
        EXPECT_EQ(editor.titles(), QStringList("Old")) << part;
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
    EXPECT_TRUE(contains(readFile("mine.xml"), "\t\t<pack_(max)>12</pack_(max)>\n"));
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
    script.expectImportChanges({"Pack Voltage: 8 is not between 3 and 7.5 (\"One\")"});
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
    EXPECT_TRUE(contains(readFile("mine.xml"), "&lt;b&gt;1 &lt; 2 &amp; 3"));
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
