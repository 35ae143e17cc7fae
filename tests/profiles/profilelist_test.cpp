// Rows of the profile list: added, imported, selected.

#include "profiles/profilewizarddialog.h"
#include "support/gui/profilelisttest.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

TEST_F(ProfileListTest, ItemsAreInsertedWhereTheyAreWanted)
{
    ProfileSettings* profile = window.add("B");
    const auto item = [&](const QString& title) {
        ProfileNameListWidget* made = window.list->makeProfileName();
        made->getProfileName()->setProfileSettings(profile);
        made->getProfileName()->setTitle(title);
        return made;
    };
    window.list->appendProfile(item("D"));
    window.list->prependProfile(item("A"));
    window.list->insertProfile(2, item("C"));
    EXPECT_EQ(window.titles(), QStringList({"A", "B", "C", "D"}));
    window.row(2)->requestActiveChange(); // which reaches the manager
    EXPECT_TRUE(window.row(2)->getActiveStatus());
}

TEST_F(ProfileListTest, ImportedProfilesAppearTogetherWithTheLastOneSelected)
{
    window.add("A");
    const QSignalSpy selections(window.list, &ProfileNamesListManager::settingsPaneUpdateNeeded);
    window.list->holdBackRows();
    window.import("B", true, true);
    window.import("C", true, true);
    window.import("D", false, false);
    EXPECT_EQ(window.titles(), QStringList({"A"}));
    window.list->showHeldBackRows();
    EXPECT_EQ(window.titles(), QStringList({"A", "B", "C", "D"}));
    EXPECT_EQ(window.currentRow(), 3);
    EXPECT_EQ(selections.count(), 1);
    EXPECT_EQ(window.defaultRows(), QList<int>({1}));
    EXPECT_TRUE(window.row(2)->getActiveStatus());
    EXPECT_FALSE(window.row(3)->getActiveStatus());
    EXPECT_EQ(window.list->getProfilesAdded(), 4);
    EXPECT_EQ(window.lineEdit("Title")->text(), "D");
    expectHighlightMatchesSelection();
}

TEST_F(ProfileListTest, HoldsNestAndNothingImportedSelectsNothing)
{
    window.add("A");
    window.add("B");
    window.clickRow(0);
    window.list->holdBackRows();
    window.list->holdBackRows();
    window.list->showHeldBackRows();
    window.list->showHeldBackRows();
    EXPECT_EQ(window.currentRow(), 0);
}

TEST_F(ProfileListTest, StartsEmptyWithItsLook)
{
    const QListWidget* list = window.ui->profileNamesList;
    EXPECT_EQ(list->count(), 0);
    expectMoveButtons(false);
    EXPECT_EQ(list->selectionMode(), QAbstractItemView::NoSelection);
    EXPECT_EQ(list->verticalScrollMode(), QAbstractItemView::ScrollPerPixel);
    EXPECT_EQ(list->styleSheet(), "QListWidget::item { border-bottom: 1px solid black; }");
    EXPECT_EQ(ProfileNameListWidget::qlistWidget, list);
    EXPECT_EQ(window.list->getCurrentItem(), nullptr);
    EXPECT_EQ(window.list->getDefaultItem(), nullptr);
    EXPECT_EQ(window.list->getProfilesAdded(), 0);
}

// Adding

TEST_F(ProfileListTest, NewProfileIsAppendedAndSelected)
{
    window.add("A");
    QSignalSpy shown(window.list, &ProfileNamesListManager::settingsPaneUpdateNeeded);
    window.add("B");
    EXPECT_EQ(window.titles(), QStringList({"A", "B"}));
    EXPECT_EQ(window.row(1)->getSubtitle(), "first");
    EXPECT_EQ(window.currentRow(), 1);
    expectHighlightMatchesSelection();
    expectMoveButtons(true);
    ASSERT_EQ(shown.count(), 1);
    EXPECT_EQ(shown.at(0).at(0).value<ProfileName*>(), window.row(1));
    EXPECT_FALSE(window.row(1)->getActiveStatus());
    EXPECT_FALSE(window.row(1)->getDefaultStatus());
}

TEST_F(ProfileListTest, CountsProfilesAddedAndNeverDown)
{
    window.add("A");
    window.import("B", true, false);
    EXPECT_EQ(window.list->getProfilesAdded(), 2);
    deleteRow(0);
    EXPECT_EQ(window.list->getProfilesAdded(), 2);
}

TEST_F(ProfileListTest, NewProfileIsScrolledIntoView)
{
    for (int i = 0; i < 30; ++i) {
        window.add(QString::number(i));
    }
    QCoreApplication::processEvents();
    const QScrollBar* bar = window.ui->profileNamesList->verticalScrollBar();
    EXPECT_GT(bar->maximum(), 0);
    EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(ProfileListTest, AnyNumberOfProfilesFits)
{
    for (int i = 0; i < 100; ++i) {
        window.import(QString::number(i), true, false);
    }
    EXPECT_EQ(window.count(), 100);
    for (int i = 0; i < 100; ++i) {
        EXPECT_TRUE(window.row(i)->getActiveStatus());
    }
}

// Selecting

TEST_F(ProfileListTest, ClickSelectsARow)
{
    addFour();
    QSignalSpy shown(window.list, &ProfileNamesListManager::settingsPaneUpdateNeeded);
    window.clickRow(1);
    EXPECT_EQ(window.currentRow(), 1);
    expectHighlightMatchesSelection();
    ASSERT_EQ(shown.count(), 1);
    EXPECT_EQ(shown.at(0).at(0).value<ProfileName*>(), window.row(1));
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "B");
}

TEST_F(ProfileListTest, KeysSelectRowsAsClicksDo)
{
    addFour();
    QListWidget* list = window.ui->profileNamesList;
    list->setFocus();
    window.clickRow(1);
    QSignalSpy shown(window.list, &ProfileNamesListManager::settingsPaneUpdateNeeded);
    const QList<QPair<Qt::Key, int>> presses = {
        {Qt::Key_Down, 2}, {Qt::Key_Up, 1},     {Qt::Key_End, 3},
        {Qt::Key_Home, 0}, {Qt::Key_Up, 0},     {Qt::Key_End, 3},
        {Qt::Key_Down, 3}, {Qt::Key_PageUp, 0}, {Qt::Key_PageDown, 3}};
    for (const auto& [key, row] : presses) {
        QTest::keyClick(list, key);
        EXPECT_EQ(window.currentRow(), row) << QKeySequence(key).toString();
        expectHighlightMatchesSelection();
    }
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "D");
    EXPECT_EQ(shown.count(), 7) << "not at the ends of the list";
}

TEST_F(ProfileListTest, KeysOfTheKeypadSelectRowsToo)
{
    addFour();
    QListWidget* list = window.ui->profileNamesList;
    list->setFocus();
    window.clickRow(1);
    const QList<QPair<Qt::Key, int>> presses = {
        {Qt::Key_Down, 2}, {Qt::Key_Up, 1}, {Qt::Key_End, 3}, {Qt::Key_PageUp, 0}};
    for (const auto& [key, row] : presses) {
        QTest::keyClick(list, key, Qt::KeypadModifier);
        EXPECT_EQ(window.currentRow(), row) << QKeySequence(key).toString();
    }
    QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(window.currentRow(), 0) << "not with a modifier";
}

TEST_F(ProfileListTest, KeysSelectNothingInAnEmptyList)
{
    QTest::keyClick(window.ui->profileNamesList, Qt::Key_Down);
    EXPECT_EQ(window.list->getCurrentItem(), nullptr);
}

TEST_F(ProfileListTest, KeysAreRefusedDuringAnEdit)
{
    addFour();
    edit();
    DialogScript script;
    script.expectMessage("Cannot Switch Profiles",
                         "Please save or cancel the changes before switching to a different "
                         "profile.");
    QTest::keyClick(window.ui->profileNamesList, Qt::Key_Up);
    EXPECT_EQ(window.currentRow(), 3);
}

TEST_F(ProfileListTest, ClickOnTheSelectedRowAnnouncesNothing)
{
    addFour();
    window.clickRow(1);
    QSignalSpy shown(window.list, &ProfileNamesListManager::settingsPaneUpdateNeeded);
    window.clickRow(1);
    EXPECT_EQ(shown.count(), 0);
    EXPECT_EQ(window.currentRow(), 1);
}

TEST_F(ProfileListTest, ClickOnTheSelectedRowIsSilentDuringAnEdit)
{
    addFour();
    edit();
    const DialogScript nothing;
    window.clickRow(3);
    EXPECT_TRUE(window.pane->getEditMode());
}

TEST_F(ProfileListTest, SelectingIsRefusedDuringAnEdit)
{
    addFour();
    edit();
    QSignalSpy shown(window.list, &ProfileNamesListManager::settingsPaneUpdateNeeded);
    DialogScript script;
    script.expectMessage("Cannot Switch Profiles",
                         "Please save or cancel the changes before switching to a different "
                         "profile.");
    window.clickRow(0);
    EXPECT_EQ(window.currentRow(), 3);
    expectHighlightMatchesSelection();
    EXPECT_EQ(shown.count(), 0);
}

TEST_F(ProfileListTest, RefusalIsShownOverTheMainWindow)
{
    addFour();
    edit();
    DialogScript script;
    script.thenDo([this](QWidget& box) {
        EXPECT_EQ(box.parentWidget(), &window);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    window.clickRow(0);
}

// Creating

TEST_F(ProfileListTest, CreateOpensTheWizard)
{
    clickOn(window.ui->addProfileButton);
    auto* wizard = window.findChild<ProfileWizardDialog*>();
    ASSERT_NE(wizard, nullptr);
    EXPECT_TRUE(wizard->isVisible());
    clickOn(childNamed<QPushButton>(wizard, "cancelButton"));
    flushDeletions();
    EXPECT_EQ(window.findChild<ProfileWizardDialog*>(), nullptr);
    EXPECT_EQ(window.count(), 0);
}

TEST_F(ProfileListTest, CreatingIsRefusedDuringAnEdit)
{
    window.add("A");
    edit();
    DialogScript script;
    script.expectMessage("Cannot Create New Profile",
                         "Please save or cancel the changes before creating a new profile.");
    window.list->on_createProfileButtonClicked();
    script.finish();
    EXPECT_EQ(window.findChild<ProfileWizardDialog*>(), nullptr);
    EXPECT_EQ(window.count(), 1);
}

// Importing

TEST_F(ProfileListTest, ImportTakesTheFlagsAsTheyAre)
{
    window.import("off", false, false);
    window.import("on", true, false);
    EXPECT_FALSE(window.row(0)->getActiveStatus());
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    EXPECT_TRUE(window.defaultRows().isEmpty());
    EXPECT_EQ(window.currentRow(), 1);
    EXPECT_TRUE(window.ui->profileSettingsActiveCB->isChecked());
}

TEST_F(ProfileListTest, ImportedDefaultIsNotForcedActive)
{
    window.import("A", false, true);
    EXPECT_TRUE(window.row(0)->getDefaultStatus());
    EXPECT_FALSE(window.row(0)->getActiveStatus());
    EXPECT_EQ(window.list->getDefaultItem(), window.item(0));
    EXPECT_TRUE(window.ui->profileSettingsDefaultCB->isChecked());
    EXPECT_FALSE(window.ui->profileSettingsActiveCB->isChecked());
}

TEST_F(ProfileListTest, OnlyTheFirstImportedDefaultKeepsTheMark)
{
    window.import("A", true, true);
    window.import("B", true, true);
    EXPECT_EQ(window.defaultRows(), QList<int>({0}));
    EXPECT_EQ(window.list->getDefaultItem(), window.item(0));
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    EXPECT_FALSE(window.setting(1, "default")->isOn());
}

TEST_F(ProfileListTest, ImportedDefaultYieldsToTheOneThatIsThere)
{
    window.add("A");
    window.clickMark(0);
    window.import("B", true, true);
    EXPECT_EQ(window.defaultRows(), QList<int>({0}));
}

TEST_F(ProfileListTest, ImportUpdatesThePaneForTheNewRow)
{
    QSignalSpy quick(window.list, &ProfileNamesListManager::quickSettingsPaneUpdateNeeded);
    window.import("A", true, true);
    ASSERT_GE(quick.count(), 1);
    EXPECT_EQ(quick.last().at(0).value<ProfileName*>(), window.row(0));
}
