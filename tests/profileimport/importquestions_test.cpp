// The messages and questions about an import.

#include "support/gui/importtest.h"

// Deviations from the schema

TEST_F(ImportTest, MatchingProfilesTellNothing)
{
    const DialogScript nothing;
    window.importer->importProfiles({alpha(), alpha({{"title", "Two"}})});
    EXPECT_EQ(window.count(), 2);
}

TEST_F(ImportTest, ChangesAreToldOnceAfterTheWholeImport)
{
    DialogScript script;
    script.thenPress("OK", [this](const QMessageBox& box) {
        EXPECT_EQ(window.count(), 2);
        EXPECT_EQ(box.windowTitle(), "Imported With Changes");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.parentWidget(), &window);
    });
    window.importer->importProfiles({alpha({{"extra", "1"}}), alpha({{"extra", "2"}})});
    window.importer->importProfiles({alpha()}); // has no changes of its own
    EXPECT_EQ(window.count(), 3);
}

TEST_F(ImportTest, GlobalSettingsThatWereTakenOverAreInTheMessage)
{
    {
        DialogScript script;
        script.expectGlobalSettingsQuestion("Yes");
        window.importer->importGlobalSettings(global({{"supply_voltage", "99"}}));
    }
    importWithChanges(window.importer, {alpha({{"extra", "1"}})},
                      {"Supply Voltage: 99 is not between 9 and 30 (Global Settings)",
                       "\"extra\" is unknown and was left out (\"Alpha\")"});
}

TEST_F(ImportTest, GlobalSettingsThatWereNotTakenOverAreNotInTheMessage)
{
    DialogScript script;
    script.expectGlobalSettingsQuestion("No");
    window.importer->importGlobalSettings(global({{"supply_voltage", "99"}}));
    window.importer->importProfiles({alpha()});
    EXPECT_EQ(window.count(), 1);
}

// Unknown chemistries

TEST_F(ImportTest, ProfilesOfUnknownChemistriesAreLeftOutAndNamed)
{
    ParsedProfile* unknown = alpha({{"chemistry", "Zinc Air"}});
    ParsedProfile* again = alpha({{"chemistry", "Zinc Air"}});
    ParsedProfile* other = alpha({{"chemistry", "alpha cell"}});
    DialogScript script;
    script.thenPress("OK", [this](const QMessageBox& box) {
        EXPECT_EQ(window.count(), 2); // after the import
        EXPECT_EQ(box.parentWidget(), &window);
        EXPECT_TRUE(contains(box.text(), "3"));
        EXPECT_EQ(box.text().count("Zinc Air"), 2) << "a line a profile";
        EXPECT_EQ(box.text().count("alpha cell"), 1);
    });
    window.importer->importProfiles(
        {unknown, alpha({{"title", "One"}}), again, alpha({{"title", "Two"}}), other});
    EXPECT_EQ(window.titles(), QStringList({"One", "Two"}));
}

TEST_F(ImportTest, GlobalSettingsAmongTheProfilesAreAnUnknownChemistry)
{
    DialogScript script;
    script.thenPress(
        "OK", [](const QMessageBox& box) { EXPECT_TRUE(contains(box.text(), "Global Settings")); });
    window.importer->importProfiles({global({{"chemistry", "Global Settings"}}), alpha()});
    EXPECT_EQ(window.count(), 1);
    EXPECT_EQ(globalSetting("Supply Voltage")->getValue(), "14.6");
}

TEST_F(ImportTest, NothingAtAllIsSilent)
{
    const DialogScript nothing;
    window.importer->importProfiles({});
    EXPECT_EQ(window.count(), 0);
}

TEST_F(ImportTest, ValueIsFoundByTheTagOfItsName)
{
    const Properties properties = {{"pack_voltage", "12"}};
    EXPECT_EQ(ImportProfilesMain::getValueFromMapAndDescriptiveName(properties, "Pack Voltage"),
              "12");
    EXPECT_EQ(ImportProfilesMain::getValueFromMapAndDescriptiveName(properties, "Voltage"), "");
}

// Global settings

TEST_F(ImportTest, SameGlobalSettingsAskNothing)
{
    const DialogScript nothing;
    EXPECT_TRUE(window.importer->getGlobalSettingsSameAsCurrentOnes(global()));
    window.importer->importGlobalSettings(global());
}

TEST_F(ImportTest, GlobalTextsAreComparedAsTexts)
{
    EXPECT_FALSE(
        window.importer->getGlobalSettingsSameAsCurrentOnes(global({{"supply_voltage", "14.60"}})));
    EXPECT_FALSE(
        window.importer->getGlobalSettingsSameAsCurrentOnes(global({{"charger_name", "bench"}})));
    EXPECT_FALSE(
        window.importer->getGlobalSettingsSameAsCurrentOnes(global({{"key_tone", "TRUE"}})));
    EXPECT_FALSE(window.importer->getGlobalSettingsSameAsCurrentOnes(make({})));

    DialogScript script;
    script.expectGlobalSettingsQuestion("No");
    window.importer->importGlobalSettings(global({{"supply_voltage", "14.60"}}));
}

TEST_F(ImportTest, NoLeavesTheGlobalSettings)
{
    DialogScript script;
    script.expectGlobalSettingsQuestion("No");
    script.expectGlobalSettingsQuestion(DialogScript::closeControl);
    for (int i = 0; i < 2; ++i) {
        window.importer->importGlobalSettings(
            global({{"supply_voltage", "20"}, {"fan_steps", "7"}}));
        EXPECT_EQ(globalSetting("Supply Voltage")->getValue(), "14.6");
        EXPECT_EQ(globalSetting("Fan Steps")->getValue(), "4");
        EXPECT_FALSE(window.generator->getGlobalSettings()->getAdvancedSettingsEdited());
    }
}

TEST_F(ImportTest, YesTakesTheGlobalSettingsAsTheyAre)
{
    DialogScript script;
    script.expectGlobalSettingsQuestion("Yes");
    window.importer->importGlobalSettings(global({{"supply_voltage", "99.999"},
                                                  {"key_tone", "false"},
                                                  {"charger_name", "Garage"},
                                                  {"scale", "Fahrenheit"}}));
    EXPECT_EQ(globalSetting("Supply Voltage")->number(), 99.999);
    EXPECT_EQ(globalSetting("Key Tone")->getValue(), "false");
    EXPECT_EQ(globalSetting("Charger Name")->getValue(), "Garage");
    EXPECT_EQ(globalSetting("Scale")->getValue(), "Fahrenheit");
    EXPECT_FALSE(window.generator->getGlobalSettings()->getAdvancedSettingsEdited());
}

TEST_F(ImportTest, GlobalEditedMarkFollowsTheImport)
{
    DialogScript script;
    script.expectGlobalSettingsQuestion("Yes");
    script.expectGlobalSettingsQuestion("Yes");
    window.importer->importGlobalSettings(global({{"fan_steps", "7"}}));
    EXPECT_EQ(globalSetting("Fan Steps")->getValue(), "7");
    EXPECT_TRUE(window.generator->getGlobalSettings()->getAdvancedSettingsEdited());
    window.importer->importGlobalSettings(global());
    EXPECT_FALSE(window.generator->getGlobalSettings()->getAdvancedSettingsEdited());
}

TEST_F(ImportTest, AnotherGeneratorIsUsedFromThenOn)
{
    const auto other = TestSchema::parse(TestSchema::singleChemistry());
    window.importer->setAllSettings(other.get());
    DialogScript script;
    script.thenPress("OK");
    window.importer->importProfiles({make({{"chemistry", "Plain Cell"}}), alpha()});
    EXPECT_EQ(window.count(), 1);
}
