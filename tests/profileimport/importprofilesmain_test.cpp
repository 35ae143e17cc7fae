#include "profileimport/importprofilesmain.h"

#include "support/gui/importtest.h"

TEST_F(ImportTest, EveryProfileArrivesInOrderWithItsFlags)
{
    ParsedProfile* first = alpha({{"title", "One"}});
    first->setActiveStatus(true);
    first->setModifiableStatus(true);
    ParsedProfile* second = alpha({{"title", "Two"}});
    second->setDefaultStatus(true);
    window.importer->importProfiles({first, second});
    EXPECT_EQ(window.titles(), QStringList({"One", "Two"}));
    EXPECT_TRUE(window.row(0)->getActiveStatus());
    EXPECT_FALSE(window.row(0)->getDefaultStatus());
    EXPECT_TRUE(window.row(0)->getProfileSettings()->getModifiable());
    EXPECT_FALSE(window.row(1)->getActiveStatus());
    EXPECT_TRUE(window.row(1)->getDefaultStatus());
    EXPECT_FALSE(window.row(1)->getProfileSettings()->getModifiable());
    EXPECT_EQ(window.row(0)->getProfileSettings()->chemistry, "Alpha Cell");
}

TEST_F(ImportTest, ValuesAreStoredByTheirKinds)
{
    window.importer->importProfiles({alpha({{"current", "4.5"},
                                            {"balance", "false"},
                                            {"mode", "Fast"},
                                            {"note", "kept"},
                                            {"cold_check", "true"}})});
    EXPECT_EQ(value(0, "Current"), "4.5");
    EXPECT_EQ(value(0, "Balance"), "false");
    EXPECT_EQ(value(0, "Mode"), "Fast");
    EXPECT_EQ(value(0, "Note"), "kept");
    EXPECT_EQ(value(0, "Cold Check"), "true");
}

TEST_F(ImportTest, ValuesAreStoredAsTheyAre)
{
    const QString name = " (\"longer than its field\")";
    importWithChanges(window.importer,
                      {alpha({{"current", "77.777"},
                              {"cutoff", "99"},
                              {"margin", "-4.125"},
                              {"title", "longer than its field"},
                              {"mode", "Unheard Of"}})},
                      {"Title: \"longer than its field\" is longer than 11 characters" + name,
                       "Mode: \"Unheard Of\" is not one of the choices" + name,
                       "Current: 77.777 is not between 0.1 and 20" + name,
                       "Cutoff: 99 is not between 0.01 and 77.777" + name,
                       "Margin: -4.125 is not between 0 and 77.777" + name});
    EXPECT_EQ(window.setting(0, "Current")->number(), 77.777);
    EXPECT_EQ(window.setting(0, "Cutoff")->number(), 99);
    EXPECT_EQ(window.setting(0, "Margin")->number(), -4.125);
    EXPECT_EQ(value(0, "Title"), "longer than its field");
    EXPECT_EQ(value(0, "Mode"), "Unheard Of");
    EXPECT_EQ(value(0, "Pack Voltage"), "12");
}

TEST_F(ImportTest, StoringAnnouncesNothing)
{
    int changes = 0;
    ImportProfilesMain importer(nullptr, window.generator, nullptr);
    QObject::connect(
        &importer, &ImportProfilesMain::profileReadyForImport, &importer,
        [&](ProfileSettings* profile, bool, bool) {
            // "Current" was imported beyond every bound: a signal would have changed the settings
            // that depend on it.
            const auto number = [profile](const char* name) {
                return profile->settings->getStructSettingByDescriptiveName(name)->number();
            };
            EXPECT_EQ(number("Current"), 0.5);
            EXPECT_EQ(number("Margin"), 9);
            EXPECT_EQ(number("Cutoff"), 8);
            ++changes;
            delete profile;
        });
    importWithChanges(&importer, {alpha({{"current", "0.5"}, {"margin", "9"}, {"cutoff", "8"}})},
                      {"Cutoff: 8 is not between 0.01 and 0.5 (\"Alpha\")",
                       "Margin: 9 is not between 0 and 0.5 (\"Alpha\")"});
    EXPECT_EQ(changes, 1);
}

TEST_F(ImportTest, MissingAndUnreadableValuesAreEmpty)
{
    importWithChanges(
        window.importer, {make({{"chemistry", "Alpha Cell"}})},
        {"Title is missing and is now empty (\"\")", "Subtitle is missing and is now empty (\"\")",
         "Mode is missing and is now empty (\"\")", "Cells is missing and is now 0 (\"\")",
         "Current is missing and is now 0 (\"\")", "Balance is missing and is now off (\"\")",
         "Cutoff is missing and is now 0 (\"\")", "Pack Voltage is missing and is now 0 (\"\")",
         "Cold Check is missing and is now off (\"\")", "Note is missing and is now empty (\"\")",
         "Ending is missing and is now empty (\"\")", "Margin is missing and is now 0 (\"\")"});
    EXPECT_EQ(value(0, "Current"), "0");
    EXPECT_EQ(value(0, "Balance"), "false");
    EXPECT_EQ(value(0, "Title"), "");
    EXPECT_EQ(value(0, "Mode"), "");
    for (const char* unreadable : {"abc", "1,5", "nan", "inf", "-inf", "1e999", ""}) {
        importWithChanges(
            window.importer, {alpha({{"current", unreadable}})},
            {QString("Current: \"%1\" is not a number; 0 is used (\"Alpha\")").arg(unreadable),
             "Cutoff: 0.25 is not between 0.01 and 0 (\"Alpha\")",
             "Margin: 1 is not between 0 and 0 (\"Alpha\")"});
        EXPECT_EQ(window.setting(window.count() - 1, "Current")->number(), 0) << unreadable;
    }
    importWithChanges(window.importer, {alpha({{"balance", "True"}})},
                      {"Balance: \"True\" is neither true nor false; off is used (\"Alpha\")"});
    EXPECT_EQ(value(window.count() - 1, "Balance"), "false");
}

TEST_F(ImportTest, EditedMarkIsClearWhereAdvancedSettingsEqualTheirDefaults)
{
    // Within the comparison's tolerance as well.
    window.importer->importProfiles({alpha(), alpha({{"cutoff", "0.2500000000000001"}})});
    EXPECT_FALSE(isEdited(0));
    EXPECT_FALSE(isEdited(1));
    EXPECT_FALSE(window.advancedToggle()->isChecked());
}

TEST_F(ImportTest, EditedMarkComparesWithATolerance)
{
    // The values shifted by one, 1.25, may differ by 1.25e-12.
    window.importer->importProfiles(
        {alpha({{"cutoff", "0.250000000001"}}), alpha({{"cutoff", "0.2500000000015"}}),
         alpha({{"cutoff", "0.249999999999"}}), alpha({{"cutoff", "0.2499999999985"}})});
    EXPECT_FALSE(isEdited(0));
    EXPECT_TRUE(isEdited(1));
    EXPECT_FALSE(isEdited(2));
    EXPECT_TRUE(isEdited(3));
}

TEST_F(ImportTest, EditedMarkComparesWithTheDefaultInBoundsAndDecimals)
{
    // The default is 2.56 / 10 = 0.256, which is 0.26 with the two decimals that the value has.
    window.importer->importProfiles({alpha({{"current", "2.56"}, {"cutoff", "0.26"}}),
                                     alpha({{"current", "2.56"}, {"cutoff", "0.256"}})});
    EXPECT_FALSE(isEdited(0));
    EXPECT_TRUE(isEdited(1));
}

TEST_F(ImportTest, EditedMarkIsSetByEachKind)
{
    const QList<Properties> edits = {{{"cutoff", "0.3"}},
                                     {{"cutoff", "0.250001"}},
                                     {{"cold_check", "true"}},
                                     {{"note", "None"}},
                                     {{"ending", "Hold"}}};
    for (const Properties& edit : edits) {
        window.importer->importProfiles({alpha(edit)});
        EXPECT_TRUE(isEdited(window.count() - 1)) << edit.firstKey();
    }
}

TEST_F(ImportTest, BasicSettingsDoNotSetTheEditedMark)
{
    window.importer->importProfiles({alpha({{"title", "X"},
                                            {"current", "5"},
                                            {"cutoff", "0.5"},
                                            {"balance", "false"},
                                            {"mode", "Fast"},
                                            {"margin", "3"}})});
    EXPECT_FALSE(isEdited(0));
}

TEST_F(ImportTest, EditedAdvancedValuesStayThroughAnEdit)
{
    window.importer->importProfiles({alpha({{"cutoff", "0.7"}})});
    EXPECT_TRUE(window.advancedToggle()->isChecked());
    clickOn(window.ui->editProfileButton);
    EXPECT_TRUE(window.lineEdit("Cutoff")->isEnabled());
    clickOn(window.ui->saveChangesButton);
    EXPECT_EQ(value(0, "Cutoff"), "0.7");
}

TEST_F(ImportTest, PaneShowsTheLastImportedProfile)
{
    window.add("Before");
    window.importer->importProfiles(
        {alpha({{"title", "One"}}), alpha({{"title", "Two"}, {"current", "7"}})});
    EXPECT_EQ(window.currentRow(), 2);
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "Two");
    ASSERT_NE(window.grid(), nullptr);
    EXPECT_EQ(window.lineEdit("Current")->text(), "7");
    clickOn(window.ui->editProfileButton);
    enterText(window.lineEdit("Current"), "8");
    clickOn(window.ui->saveChangesButton);
    EXPECT_EQ(value(2, "Current"), "8");
    EXPECT_EQ(value(1, "Current"), "2.5");
}

TEST_F(ImportTest, PaneStaysWhenNothingIsImported)
{
    window.add("Before");
    window.importer->importProfiles({});
    ASSERT_NE(window.grid(), nullptr);
    EXPECT_EQ(window.lineEdit("Title")->text(), "Before");
}
