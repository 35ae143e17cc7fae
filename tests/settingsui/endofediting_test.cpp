// "Save" and "Cancel" of the settings pane.

#include "settingsui/settingsgridlayout.h"
#include "support/gui/settingspanetest.h"

#include <QSignalSpy>

// Saving

TEST_F(SettingsPaneTest, SaveStoresEverythingAndReturnsToViewMode)
{
    window.add("A");
    edit();
    enterText(window.lineEdit("Title"), "Torch");
    enterText(window.lineEdit("Subtitle"), "blue");
    enterText(window.lineEdit("Cells"), "4");
    clickOn(window.checkBox("Balance"));
    clickOn(window.ui->profileSettingsModifiableCB);
    const QPointer<QGridLayout> grid = window.grid();
    QSignalSpy editing(window.pane, &SettingsPaneManager::editing);
    save();
    EXPECT_EQ(value("Title"), "Torch");
    EXPECT_EQ(value("Cells"), "4");
    EXPECT_EQ(value("Balance"), "false");
    EXPECT_EQ(window.row(0)->getTitle(), "Torch");
    EXPECT_EQ(window.row(0)->getSubtitle(), "blue");
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "Torch");
    EXPECT_EQ(window.ui->profileSettingsSubtitle->text(), "blue");
    EXPECT_FALSE(window.row(0)->getProfileSettings()->getModifiable());
    expectViewMode();
    ASSERT_EQ(editing.count(), 1);
    EXPECT_EQ(editing.at(0).at(0), false);
    EXPECT_EQ(window.grid(), grid); // not rebuilt
}

TEST_F(SettingsPaneTest, SaveTakesTheFieldThatStillHasTheFocus)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Title"), "Torch");
    ASSERT_TRUE(window.lineEdit("Title")->hasFocus());
    window.pane->on_saveButtonClicked();
    EXPECT_EQ(value("Title"), "Torch");
    EXPECT_EQ(window.row(0)->getTitle(), "Torch");

    edit();
    typeOver(window.lineEdit("Current"), "1.236");
    window.pane->on_saveButtonClicked();
    EXPECT_EQ(value("Current"), "1.24");
    EXPECT_EQ(window.lineEdit("Current")->text(), "1.24");
}

TEST_F(SettingsPaneTest, UncommittedAdvancedNumberSurvivesASaveBelowItsFormulaSource)
{
    window.add("A");
    edit();
    clickOn(window.advancedToggle());
    typeOver(window.lineEdit("Pack Voltage"), "14.5"); // follows "Cells", which is saved before it
    window.pane->on_saveButtonClicked();
    EXPECT_EQ(value("Pack Voltage"), "14.5");
}

TEST_F(SettingsPaneTest, SavedDefaultMakesAnInactiveProfileActiveAndTakesTheMark)
{
    window.import("A", true, true);
    window.add("B");
    edit();
    clickOn(window.ui->profileSettingsDefaultCB);
    expectFlagBoxes(true, true, true);
    EXPECT_EQ(window.defaultRows(), QList<int>({0})); // not before it is saved
    save();
    EXPECT_EQ(window.defaultRows(), QList<int>({1}));
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    EXPECT_TRUE(window.row(0)->getActiveStatus());
    EXPECT_EQ(window.list->getDefaultItem(), window.item(1));
    expectFlagBoxes(true, true, true);
}

TEST_F(SettingsPaneTest, SavedInactiveTakesTheDefaultToo)
{
    window.import("A", true, true);
    edit();
    clickOn(window.ui->profileSettingsActiveCB);
    expectFlagBoxes(false, false, true);
    save();
    EXPECT_FALSE(window.row(0)->getActiveStatus());
    EXPECT_TRUE(window.defaultRows().isEmpty());
    EXPECT_EQ(window.list->getDefaultItem(), nullptr);
}

TEST_F(SettingsPaneTest, UncheckingDefaultAloneKeepsActive)
{
    window.import("A", true, true);
    edit();
    clickOn(window.ui->profileSettingsDefaultCB);
    expectFlagBoxes(true, false, true);
    save();
    EXPECT_TRUE(window.row(0)->getActiveStatus());
    EXPECT_TRUE(window.defaultRows().isEmpty());
}

TEST_F(SettingsPaneTest, CheckingActiveAloneChangesNothingElse)
{
    window.add("A");
    edit();
    clickOn(window.ui->profileSettingsActiveCB);
    expectFlagBoxes(true, false, true);
    save();
    EXPECT_TRUE(window.row(0)->getActiveStatus());
    EXPECT_TRUE(window.defaultRows().isEmpty());
}

TEST_F(SettingsPaneTest, ImportedFlagsThatDisagreeSurviveASave)
{
    window.import("A", false, true); // default but not active, as its file had it
    edit();
    save();
    EXPECT_FALSE(window.row(0)->getActiveStatus());
    EXPECT_EQ(window.defaultRows(), QList<int>({0}));
}

// Cancelling

TEST_F(SettingsPaneTest, CancelAsksAndNoKeepsEditing)
{
    window.add("A");
    edit();
    enterText(window.lineEdit("Current"), "7");
    clickOn(window.ui->profileSettingsActiveCB);
    const QPointer<QGridLayout> grid = window.grid();
    for (const QString& answer : {QString("No"), DialogScript::closeControl}) {
        window.cancelEditing(answer);
        EXPECT_TRUE(window.pane->getEditMode());
        EXPECT_EQ(value("Current"), "7");
        EXPECT_EQ(window.lineEdit("Current")->text(), "7");
        EXPECT_TRUE(window.lineEdit("Current")->isEnabled());
        EXPECT_FALSE(window.ui->editProfileButton->isEnabled());
        expectFlagBoxes(true, false, true);
        EXPECT_EQ(window.grid(), grid);
    }
    save();
    EXPECT_EQ(value("Current"), "7");
}

TEST_F(SettingsPaneTest, CancelRestoresEveryValue)
{
    window.add("A");
    edit();
    enterText(window.lineEdit("Title"), "Other");
    enterText(window.lineEdit("Cells"), "6");
    enterText(window.lineEdit("Current"), "7");
    enterText(window.lineEdit("Margin"), "3");
    clickOn(window.checkBox("Balance"));
    clickOn(window.advancedToggle());
    enterText(window.lineEdit("Cutoff"), "1.5");
    enterText(window.lineEdit("Note"), "changed");
    clickOn(window.checkBox("Cold Check"));
    clickOn(window.ui->profileSettingsActiveCB);
    clickOn(window.ui->profileSettingsModifiableCB);
    QSignalSpy editing(window.pane, &SettingsPaneManager::editing);
    window.cancelEditing();

    const QList<QPair<QString, QString>> expected = {
        {"Title", "A"},  {"Subtitle", "first"}, {"Cells", "3"},   {"Current", "2.5"},
        {"Margin", "1"}, {"Cutoff", "0.25"},    {"Note", "none"}, {"Pack Voltage", "12"}};
    for (const auto& [name, text] : expected) {
        EXPECT_EQ(value(name), text) << name;
        EXPECT_EQ(window.lineEdit(name)->text(), text) << name;
    }
    EXPECT_EQ(value("Balance"), "true");
    EXPECT_TRUE(window.checkBox("Balance")->isChecked());
    EXPECT_EQ(value("Cold Check"), "false");
    EXPECT_FALSE(window.checkBox("Cold Check")->isChecked());
    EXPECT_FALSE(window.advancedToggle()->isChecked());
    EXPECT_FALSE(settings()->getAdvancedSettingsEdited());
    EXPECT_FALSE(window.setting(0, "Cutoff")->advancedModeEnabled);
    expectFlagBoxes(false, false, true);
    EXPECT_TRUE(window.row(0)->getProfileSettings()->getModifiable());
    EXPECT_EQ(window.row(0)->getTitle(), "A");
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "A");
    expectViewMode();
    ASSERT_EQ(editing.count(), 1);
    EXPECT_EQ(editing.at(0).at(0), false);
}

TEST_F(SettingsPaneTest, CancelRestoresAdvancedSettingsThatWereEditedBefore)
{
    window.add("A");
    edit();
    clickOn(window.advancedToggle());
    enterText(window.lineEdit("Cutoff"), "1.5");
    enterText(window.lineEdit("Pack Voltage"), "13.123");
    save();
    edit();
    clickOn(window.advancedToggle()); // off: back to the computed values
    EXPECT_EQ(value("Cutoff"), "0.25");
    window.cancelEditing();
    EXPECT_EQ(value("Cutoff"), "1.5");
    EXPECT_EQ(value("Pack Voltage"), "13.123");
    EXPECT_EQ(window.lineEdit("Cutoff")->text(), "1.5");
    EXPECT_TRUE(window.advancedToggle()->isChecked());
    EXPECT_TRUE(settings()->getAdvancedSettingsEdited());
    EXPECT_TRUE(window.setting(0, "Cutoff")->advancedModeEnabled);
    expectViewMode();
    edit();
    expectAdvancedEditorsEnabled(true);
}

TEST_F(SettingsPaneTest, CancelDropsTextThatWasNotCommitted)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Title"), "Other");
    window.cancelEditing();
    EXPECT_EQ(value("Title"), "A");
    EXPECT_EQ(window.lineEdit("Title")->text(), "A");
    edit();
    typeOver(window.lineEdit("Current"), "7");
    DialogScript script; // pressed without leaving the field
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "Yes");
    window.pane->on_cancelButtonClicked();
    script.finish();
    QCoreApplication::processEvents();
    EXPECT_EQ(value("Current"), "2.5");
    EXPECT_EQ(value("Cutoff"), "0.25");
    EXPECT_EQ(window.lineEdit("Current")->text(), "2.5");
}

TEST_F(SettingsPaneTest, CancelRestoresImportedValuesOutsideTheirBounds)
{
    ProfileSettings* profile = window.import("A", false, false);
    profile->settings->getStructSettingByDescriptiveName("Current")->storeValueFromText("77.777");
    profile->settings->getStructSettingByDescriptiveName("Cutoff")->storeValueFromText("99");
    profile->settings->getStructSettingByDescriptiveName("Title")->storeValueFromText(
        "longer than its field");
    window.import("B", false, false);
    window.clickRow(0);
    EXPECT_EQ(window.lineEdit("Current")->text(), "77.777");
    edit();
    enterText(window.lineEdit("Current"), "5");
    clickOn(window.advancedToggle());
    window.cancelEditing();
    EXPECT_EQ(value("Current"), "77.777");
    EXPECT_EQ(value("Cutoff"), "99");
    EXPECT_EQ(value("Title"), "longer than its field");
    EXPECT_EQ(window.lineEdit("Current")->text(), "77.777");
}

TEST_F(SettingsPaneTest, CancelRestoresTheEditorsBeforeItDeletesThem)
{
    window.add("A");
    edit();
    const QPointer<QLineEdit> current = window.lineEdit("Current");
    enterText(current, "7");
    window.cancelEditing();
    ASSERT_FALSE(current.isNull()); // until control is back in the event loop
    EXPECT_EQ(current->text(), "2.5");
    flushDeletions();
    EXPECT_TRUE(current.isNull());
}

TEST_F(SettingsPaneTest, CancelledEditorStoresNothingWhenItGoesAway)
{
    ProfileSettings* profile = window.import("A", false, false);
    profile->settings->getStructSettingByDescriptiveName("Current")->storeValueFromText("77.777");
    window.import("B", false, false);
    window.clickRow(0);
    edit();
    QLineEdit* current = window.lineEdit("Current");
    typeOver(current, "7");
    ASSERT_TRUE(current->hasFocus()); // which it loses when it is removed
    qobject_cast<SettingsGridLayout*>(window.grid())->cancelSettings();
    flushDeletions();
    EXPECT_EQ(value("Current"), "77.777");
    EXPECT_EQ(window.lineEdit("Current")->text(), "77.777");
}

TEST_F(SettingsPaneTest, FlagsSwitchedInTheRowSurviveACancel)
{
    window.import("A", true, true);
    window.add("B");
    edit();
    window.clickMark(1);
    window.clickLight(0);
    window.cancelEditing();
    EXPECT_FALSE(window.row(0)->getActiveStatus());
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    EXPECT_EQ(window.defaultRows(), QList<int>({1}));
    EXPECT_EQ(window.list->getDefaultItem(), window.item(1));
    EXPECT_TRUE(window.setting(1, "default")->isOn());
    EXPECT_EQ(childNamed<QPushButton>(window.row(1), "defaultProfileButton")->toolTip(), "Default");
    expectFlagBoxes(true, true, true);
}

TEST_F(SettingsPaneTest, GridWorksAfterACancel)
{
    window.add("A");
    edit();
    window.cancelEditing();
    edit();
    enterText(window.lineEdit("Current"), "3");
    clickOn(window.advancedToggle());
    enterText(window.lineEdit("Cutoff"), "0.7");
    save();
    EXPECT_EQ(value("Current"), "3");
    EXPECT_EQ(value("Cutoff"), "0.7");
    EXPECT_EQ(window.gridLabels().size(), 13);
}
