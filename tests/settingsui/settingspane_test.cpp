// What the settings pane shows, and how an edit begins.

#include "support/gui/settingspanetest.h"
#include "support/waiting.h"

#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>

// Showing

TEST_F(SettingsPaneTest, IsHiddenWithoutAProfile)
{
    for (const QWidget* widget : paneWidgets()) {
        EXPECT_FALSE(widget->isVisible()) << widget->objectName();
    }
    EXPECT_FALSE(window.pane->getEditMode());
    EXPECT_EQ(window.grid(), nullptr);
}

TEST_F(SettingsPaneTest, ShowsTheSelectedProfileInViewMode)
{
    window.add("Torch");
    QCoreApplication::processEvents();
    for (const QWidget* widget : paneWidgets()) {
        EXPECT_TRUE(widget->isVisible()) << widget->objectName();
    }
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "Torch");
    EXPECT_EQ(window.ui->profileSettingsSubtitle->text(), "first");
    expectFlagBoxes(false, false, true);
    expectViewMode();
    EXPECT_EQ(window.ui->containerScroll->styleSheet(), "background-color:white;");
    for (int i = 0; i < window.grid()->count(); ++i) {
        EXPECT_TRUE(window.grid()->itemAt(i)->widget()->isVisible()) << i;
    }
}

TEST_F(SettingsPaneTest, AnnouncesTheEndOfEditingWhenAProfileIsShown)
{
    QSignalSpy editing(window.pane, &SettingsPaneManager::editing);
    window.add("Torch");
    ASSERT_EQ(editing.count(), 1);
    EXPECT_EQ(editing.at(0).at(0), false);
}

TEST_F(SettingsPaneTest, FollowsTheSelection)
{
    window.import("A", true, true);
    window.row(0)->getProfileSettings()->setModifiable(false);
    window.add("B", "Plain Cell");
    expectFlagBoxes(false, false, true);
    EXPECT_EQ(window.gridLabels(), QStringList({"Title", "Subtitle", "Capacity"}));
    window.clickRow(0);
    expectFlagBoxes(true, true, false);
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "A");
    EXPECT_TRUE(contains(window.gridLabels(), "Current"));
    expectViewMode();
}

TEST_F(SettingsPaneTest, SelectingUsesTheSameEditorsAgain)
{
    window.add("A");
    const QPointer<QLineEdit> field = window.lineEdit("Current");
    const QPointer<QLineEdit> advanced = window.lineEdit("Cutoff");
    window.add("B");
    EXPECT_EQ(window.lineEdit("Current"), field);
    window.add("P", "Plain Cell");
    EXPECT_FALSE(advanced->isVisible());
    EXPECT_EQ(window.gridLabels(), QStringList({"Title", "Subtitle", "Capacity"}));
    EXPECT_EQ(window.grid()->count(), 7); // three labels, three editors, the units
    const QWidget* container = window.grid()->parentWidget();
    const int widgets = container->findChildren<QWidget*>().size();
    window.clickRow(0);
    EXPECT_EQ(window.gridLabels().size(), 13);
    EXPECT_TRUE(window.lineEdit("Cutoff")->isVisible());
    window.clickRow(2);
    EXPECT_EQ(container->findChildren<QWidget*>().size(), widgets);
}

TEST_F(SettingsPaneTest, AnotherProfileIsShownFromItsFirstRowAndColumn)
{
    window.add("A");
    window.add("B");
    const QScrollBar* across = window.ui->containerScroll->horizontalScrollBar();
    const QScrollBar* down = window.ui->containerScroll->verticalScrollBar();
    window.ui->containerScroll->setFixedSize(150, 80); // less than the grid needs
    ASSERT_TRUE(waitFor([=] { return across->maximum() > 0 && down->maximum() > 0; }));
    window.ui->containerScroll->ensureVisible(2000, 2000);
    ASSERT_GT(across->value(), 0);
    ASSERT_GT(down->value(), 0);
    window.clickRow(0);
    EXPECT_EQ(across->value(), 0);
    EXPECT_EQ(down->value(), 0);
}

TEST_F(SettingsPaneTest, EditorsFollowTheSelectedProfileAlone)
{
    window.add("A");
    window.add("B");
    window.setting(0, "Current")->setValue(7.0);
    EXPECT_EQ(window.lineEdit("Current")->text(), "2.5");
    window.setting(1, "Current")->setValue(3.0);
    EXPECT_EQ(window.lineEdit("Current")->text(), "3");
    window.clickRow(0);
    EXPECT_EQ(window.lineEdit("Current")->text(), "7");
    EXPECT_EQ(window.lineEdit("Title")->text(), "A");
}

TEST_F(SettingsPaneTest, ProfilesNotShownDisturbNoEdit)
{
    window.add("A");
    window.add("B");
    edit();
    window.lineEdit("Current")->setText("3.75");
    window.setting(0, "Current")->setValue(7.0);
    window.setting(0, "Cutoff")->enableAdvancedMode(true);
    EXPECT_EQ(window.lineEdit("Current")->text(), "3.75");
    EXPECT_FALSE(window.lineEdit("Cutoff")->isEnabled());
}

TEST_F(SettingsPaneTest, EditsGoIntoTheSelectedProfileAlone)
{
    window.add("A");
    window.add("B");
    edit();
    enterText(window.lineEdit("Current"), "9");
    clickOn(window.checkBox("Balance"));
    save();
    EXPECT_EQ(window.setting(0, "Current")->getValue(), "2.5");
    EXPECT_TRUE(window.setting(0, "Balance")->isOn());
    EXPECT_EQ(window.setting(1, "Current")->getValue(), "9");
    EXPECT_FALSE(window.setting(1, "Balance")->isOn());
}

TEST_F(SettingsPaneTest, UndoBringsNoValueOfAnotherProfile)
{
    window.add("A");
    edit();
    enterText(window.lineEdit("Current"), "9");
    save();
    window.add("B");
    edit();
    QLineEdit* field = window.lineEdit("Current");
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(field->text(), "2.5");
}

TEST_F(SettingsPaneTest, TextsKeepTheLengthOfTheirOwnField)
{
    window.add("P", "Plain Cell");
    window.add("A");
    EXPECT_EQ(window.lineEdit("Note")->maxLength(), 7);
    EXPECT_EQ(window.lineEdit("Subtitle")->maxLength(), 15);
}

TEST_F(SettingsPaneTest, TabFollowsTheRowsOfAnotherChemistry)
{
    window.add("A");
    window.add("P", "Plain Cell");
    window.add("B"); // its rows come from both
    edit();
    clickOn(window.advancedToggle());
    QStringList reached;
    window.lineEdit("Title")->setFocus();
    for (int i = 0; i < 11; ++i) {
        reached.append(QApplication::focusWidget()->accessibleName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(reached, QStringList({"Title", "Subtitle", "Cells", "Current", "Balance",
                                    "Edit Advanced Settings", "Cutoff", "Pack Voltage",
                                    "Cold Check", "Note", "Margin"}));
    EXPECT_EQ(QApplication::focusWidget(), window.ui->cancelChangesButton);
}

TEST_F(SettingsPaneTest, ShowsTheFlagsOfTheRowAlone)
{
    window.add("A");
    const QPointer<QGridLayout> grid = window.grid();
    window.clickMark(0);
    expectFlagBoxes(true, true, true);
    EXPECT_EQ(window.grid(), grid);
}

// Starting to edit

TEST_F(SettingsPaneTest, EditEnablesTheEditorsAndAnnouncesIt)
{
    window.add("A");
    QSignalSpy editing(window.pane, &SettingsPaneManager::editing);
    edit();
    EXPECT_TRUE(window.pane->getEditMode());
    ASSERT_EQ(editing.count(), 1);
    EXPECT_EQ(editing.at(0).at(0), true);
    EXPECT_FALSE(window.ui->editProfileButton->isEnabled());
    for (const QWidget* widget : std::initializer_list<QWidget*>{
             window.ui->profileSettingsTitle, window.ui->profileSettingsSubtitle,
             window.ui->profileSettingsActiveCB, window.ui->profileSettingsDefaultCB,
             window.ui->profileSettingsModifiableCB, window.ui->saveChangesButton,
             window.ui->cancelChangesButton, window.advancedToggle(), window.checkBox("Balance")}) {
        EXPECT_TRUE(widget->isEnabled()) << widget->objectName();
    }
    for (const QString& name : basicFields) {
        EXPECT_TRUE(window.lineEdit(name)->isEnabled()) << name;
    }
}

TEST_F(SettingsPaneTest, AdvancedEditorsStayDisabledUntilTheToggle)
{
    window.add("A");
    edit();
    expectAdvancedEditorsEnabled(false);
    EXPECT_FALSE(window.advancedToggle()->isChecked());
    clickOn(window.advancedToggle());
    expectAdvancedEditorsEnabled(true);
    EXPECT_TRUE(settings()->getAdvancedSettingsEdited());
}

TEST_F(SettingsPaneTest, AdvancedEditorsAreEnabledWhereTheyWereEditedBefore)
{
    window.add("A");
    edit();
    clickOn(window.advancedToggle());
    enterText(window.lineEdit("Cutoff"), "1.5");
    save();
    expectGridEnabled(false);
    EXPECT_EQ(value("Cutoff"), "1.5");
    edit();
    EXPECT_TRUE(window.advancedToggle()->isChecked());
    expectAdvancedEditorsEnabled(true);

    // Also after the pane was rebuilt.
    save();
    window.add("B");
    window.clickRow(0);
    expectGridEnabled(false);
    EXPECT_TRUE(window.advancedToggle()->isChecked());
    edit();
    expectAdvancedEditorsEnabled(true);
    EXPECT_EQ(window.lineEdit("Cutoff")->text(), "1.5");
}

TEST_F(SettingsPaneTest, ProfileThatIsNotModifiableCanBeEdited)
{
    window.add("A")->setModifiable(false);
    window.add("B");
    window.clickRow(0);
    expectFlagBoxes(false, false, false);
    edit();
    EXPECT_TRUE(window.pane->getEditMode());
    EXPECT_TRUE(window.lineEdit("Title")->isEnabled());
}

// The advanced toggle

TEST_F(SettingsPaneTest, UncheckingTheToggleReturnsComputedValues)
{
    window.add("A");
    edit();
    clickOn(window.advancedToggle());
    enterText(window.lineEdit("Cutoff"), "1.5");
    enterText(window.lineEdit("Pack Voltage"), "13");
    EXPECT_EQ(value("Cutoff"), "1.5");
    enterText(window.lineEdit("Current"), "4");
    clickOn(window.advancedToggle());
    EXPECT_EQ(value("Cutoff"), "0.4");
    EXPECT_EQ(value("Pack Voltage"), "12");
    EXPECT_EQ(window.lineEdit("Cutoff")->text(), "0.4");
    EXPECT_EQ(window.lineEdit("Pack Voltage")->text(), "12");
    EXPECT_FALSE(settings()->getAdvancedSettingsEdited());
    expectAdvancedEditorsEnabled(false);
    EXPECT_TRUE(window.lineEdit("Current")->isEnabled());
}

TEST_F(SettingsPaneTest, TogglesStateIsSaved)
{
    window.add("A");
    edit();
    clickOn(window.advancedToggle());
    save();
    EXPECT_TRUE(settings()->getAdvancedSettingsEdited());
    edit();
    clickOn(window.advancedToggle());
    save();
    EXPECT_FALSE(settings()->getAdvancedSettingsEdited());
}

// The list becomes empty

TEST_F(SettingsPaneTest, HidesWhenTheListRunsEmpty)
{
    window.add("A");
    const QPointer<QLineEdit> field = window.lineEdit("Current");
    const QPointer<HParser::StructSetting> setting = window.setting(0, "Current");
    ASSERT_TRUE(window.list->deleteAllProfilesNoConfirmation());
    flushDeletions();
    for (const QWidget* widget : paneWidgets()) {
        EXPECT_FALSE(widget->isVisible()) << widget->objectName();
    }
    EXPECT_FALSE(field->isVisible());
    EXPECT_EQ(setting, nullptr);

    // The remaining widgets must not use the deleted profile.
    field->setText("3");
    emit field->editingFinished();
    window.pane->on_editButtonClicked();
    window.pane->on_saveButtonClicked();
    EXPECT_FALSE(window.pane->getEditMode());
    QTest::keyClick(&window, Qt::Key_Tab);
    window.resize(1000, 700);
    QCoreApplication::processEvents();
}

TEST_F(SettingsPaneTest, ShowsAProfileAgainAfterTheListRanEmpty)
{
    window.add("A");
    window.list->deleteAllProfilesNoConfirmation();
    flushDeletions();
    window.add("B");
    QCoreApplication::processEvents();
    for (const QWidget* widget : paneWidgets()) {
        EXPECT_TRUE(widget->isVisible()) << widget->objectName();
    }
    EXPECT_TRUE(window.lineEdit("Current")->isVisible());
    edit();
    enterText(window.lineEdit("Current"), "4");
    save();
    EXPECT_EQ(value("Current"), "4");
}
