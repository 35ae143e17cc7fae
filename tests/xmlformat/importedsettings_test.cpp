// What a loaded file does to the settings: those of the charger and those of the profiles.

#include "support/gui/xmlmanagertest.h"

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
    script.expectGlobalSettingsQuestion("No");
    import(other);
    EXPECT_EQ(global("Supply Voltage")->getValue(), "14.6");
}

TEST_F(XmlImportTest, GlobalSettingsAreKeptOnNo)
{
    script.expectGlobalSettingsQuestion("No");
    import(document("<GlobalSettings><charger_name>Other</charger_name></GlobalSettings>"
                    + profile("One")));
    EXPECT_EQ(global("Charger Name")->getValue(), "Bench");
    EXPECT_EQ(global("Supply Voltage")->getValue(), "14.6");
    EXPECT_EQ(editor.titles(), QStringList("One"));
}

TEST_F(XmlImportTest, GlobalSettingsAreKeptWhenTheQuestionIsClosed)
{
    script.expectGlobalSettingsQuestion(DialogScript::closeControl);
    import(document("<GlobalSettings><charger_name>Other</charger_name></GlobalSettings>"));
    EXPECT_EQ(global("Charger Name")->getValue(), "Bench");
}

TEST_F(XmlImportTest, GlobalSettingsAreTakenOverAsTheyAreOnYes)
{
    script.expectGlobalSettingsQuestion("Yes");
    script.expectImportChanges(
        {"Charger Name: \"A name that is longer than its field\" is longer than 15 "
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
    script.expectGlobalSettingsQuestion("Yes");
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
    script.expectImportChanges(
        {"Title: \"A title longer than its field\" is longer than 11 characters" + name,
         "Mode: \"Sideways\" is not one of the choices" + name,
         "Cells: 99 is not between 1 and 8" + name,
         "Balance: \"TRUE\" is neither true nor false; off is used" + name,
         "Cutoff: 19.5 is not between 0.01 and 1.23456" + name,
         "Pack Voltage is missing and is now 0" + name, "Note is missing and is now empty" + name,
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
