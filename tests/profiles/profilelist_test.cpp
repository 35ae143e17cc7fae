// The rules of the profile list, used with the mouse.

#include "CBGenerator/structsetting.h"
#include "profiles/profilename.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilenameslistmanager.h"
#include "profiles/profilewizarddialog.h"
#include "settingsui/settingspanemanager.h"
#include "support/gui/dialogscript.h"
#include "support/gui/editorwindow.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QAccessible>
#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>

class ProfileListTest : public ::testing::Test
{
protected:
    ~ProfileListTest() override { flushDeletions(); }

    void addFour()
    {
        for (const char* title : {"A", "B", "C", "D"}) {
            window.add(title);
        }
    }

    /// Starts editing the selected profile.
    void edit() { clickOn(window.ui->editProfileButton); }

    /// Deletes a row by its cross, with the question answered by Yes.
    void deleteRow(int row)
    {
        DialogScript script;
        script.expectQuestion("Deleting Profile", deletionText(window.row(row)->getTitle()), "Yes");
        window.clickCross(row);
    }

    static QString deletionText(const QString& title)
    {
        return "Do you really want to delete the profile <b>\"" + title + "\"</b>?";
    }

    void expectMoveButtons(bool enabled) const
    {
        EXPECT_EQ(window.ui->profileNameUpButton->isEnabled(), enabled);
        EXPECT_EQ(window.ui->profileNameDownButton->isEnabled(), enabled);
    }

    /// The selected row alone looks selected.
    void expectHighlightMatchesSelection() const
    {
        for (int i = 0; i < window.count(); ++i) {
            EXPECT_EQ(window.row(i)->styleSheet(), i == window.currentRow()
                                                       ? "background-color:rgb(200,200,200);"
                                                       : "background-color:rgb(255,255,255);")
                << i;
        }
    }

    EditorWindow window;
};

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

class LongListTest : public ProfileListTest
{
protected:
    LongListTest()
    {
        window.list->holdBackRows();
        for (int i = 0; i < 60; ++i) {
            window.import(QString("P%1").arg(i), i % 2 == 0, i == 5);
        }
        window.list->showHeldBackRows();
    }

    QPushButton* light(int row) const
    {
        return window.row(row)->findChild<QPushButton*>("activeProfileButton");
    }
};

TEST_F(LongListTest, RowsInSightHaveTheirButtonsAtOnce)
{
    ASSERT_NE(light(59), nullptr); // the newest is selected and in sight
    EXPECT_TRUE(light(59)->isVisible());
    EXPECT_NE(light(55), nullptr);
    EXPECT_EQ(light(5), nullptr);
    EXPECT_EQ(window.row(5)->getTitle(), "P5");
}

TEST_F(LongListTest, RowsGetTheirButtonsWhenScrolledTo)
{
    window.ui->profileNamesList->scrollToTop();
    ASSERT_TRUE(waitFor([this] { return light(0) != nullptr && light(0)->isVisible(); }));
    EXPECT_EQ(light(0)->toolTip(), "Active");
    EXPECT_EQ(light(1)->toolTip(), "Not Active");
    EXPECT_EQ(light(1)->accessibleName(), "Active: P1");
    const auto* mark = window.row(5)->findChild<QPushButton*>("defaultProfileButton");
    EXPECT_EQ(mark->toolTip(), "Default");
    EXPECT_EQ(window.row(0)->findChild<QLabel*>("profileTitle")->text(), "P0");
    window.clickLight(1);
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    EXPECT_EQ(light(30), nullptr);
}

TEST_F(LongListTest, KeysAndScreenReadersReachRowsOutOfSight)
{
    QTest::keyClick(window.ui->profileNamesList, Qt::Key_Home);
    EXPECT_EQ(window.currentRow(), 0);
    ASSERT_NE(light(0), nullptr);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(window.ui->profileNamesList);
    QAccessibleInterface* row = list->child(30);
    EXPECT_EQ(row->text(QAccessible::Name), "P30, first, Active");
    EXPECT_GE(row->childCount(), 3);
    EXPECT_NE(light(30), nullptr);
}

TEST_F(LongListTest, RowsOutOfSightCanBeDeletedAndSwitched)
{
    window.list->on_defaultStatusChangeRequest(window.row(7), true);
    EXPECT_EQ(window.defaultRows(), QList<int>({7}));
    EXPECT_TRUE(window.row(7)->getActiveStatus());
    ASSERT_TRUE(window.list->deleteAllProfilesNoConfirmation());
    EXPECT_EQ(window.count(), 0);
    flushDeletions();
    window.add("A");
    EXPECT_EQ(window.titles(), QStringList({"A"}));
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
        EXPECT_EQ(window.currentRow(), row) << QKeySequence(key).toString().toStdString();
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
        EXPECT_EQ(window.currentRow(), row) << QKeySequence(key).toString().toStdString();
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

// Active and default

TEST_F(ProfileListTest, LightSwitchesTheActiveFlag)
{
    addFour();
    QSignalSpy quick(window.list, &ProfileNamesListManager::quickSettingsPaneUpdateNeeded);
    window.clickLight(3);
    EXPECT_TRUE(window.row(3)->getActiveStatus());
    ASSERT_GE(quick.count(), 1);
    EXPECT_EQ(quick.last().at(0).value<ProfileName*>(), window.row(3));
    EXPECT_TRUE(window.ui->profileSettingsActiveCB->isChecked());
    window.clickLight(3);
    EXPECT_FALSE(window.row(3)->getActiveStatus());
    EXPECT_FALSE(window.ui->profileSettingsActiveCB->isChecked());
}

TEST_F(ProfileListTest, FlagsOfAnotherRowLeaveThePaneAlone)
{
    addFour();
    QSignalSpy quick(window.list, &ProfileNamesListManager::quickSettingsPaneUpdateNeeded);
    window.clickMark(0);
    EXPECT_EQ(window.currentRow(), 3);
    ASSERT_GE(quick.count(), 1);
    for (const QList<QVariant>& arguments : quick) {
        EXPECT_EQ(arguments.at(0).value<ProfileName*>(), window.row(3));
    }
    EXPECT_FALSE(window.ui->profileSettingsActiveCB->isChecked());
    EXPECT_FALSE(window.ui->profileSettingsDefaultCB->isChecked());
}

TEST_F(ProfileListTest, MarkMakesARowDefaultAndActive)
{
    addFour();
    window.clickMark(1);
    EXPECT_TRUE(window.row(1)->getDefaultStatus());
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    EXPECT_EQ(window.list->getDefaultItem(), window.item(1));
    EXPECT_EQ(childNamed<QPushButton>(window.row(1), "activeProfileButton")->toolTip(), "Active");

    window.clickMark(2);
    EXPECT_EQ(window.defaultRows(), QList<int>({2}));
    EXPECT_TRUE(window.row(1)->getActiveStatus()); // stays active
    EXPECT_TRUE(window.row(2)->getActiveStatus());
    EXPECT_EQ(window.list->getDefaultItem(), window.item(2));
}

TEST_F(ProfileListTest, MarkOfTheDefaultRowTakesItAway)
{
    addFour();
    window.clickMark(3);
    EXPECT_TRUE(window.ui->profileSettingsDefaultCB->isChecked());
    EXPECT_TRUE(window.ui->profileSettingsActiveCB->isChecked());
    window.clickMark(3);
    EXPECT_TRUE(window.defaultRows().isEmpty());
    EXPECT_EQ(window.list->getDefaultItem(), nullptr);
    EXPECT_TRUE(window.row(3)->getActiveStatus());
    EXPECT_FALSE(window.ui->profileSettingsDefaultCB->isChecked());
    EXPECT_TRUE(window.ui->profileSettingsActiveCB->isChecked());
}

TEST_F(ProfileListTest, SwitchingOffTheDefaultRowsLightTakesItsMarkToo)
{
    addFour();
    window.clickLight(0);
    window.clickMark(3);
    window.clickLight(3);
    EXPECT_FALSE(window.row(3)->getActiveStatus());
    EXPECT_TRUE(window.defaultRows().isEmpty()); // no other row becomes default
    EXPECT_EQ(window.list->getDefaultItem(), nullptr);
    EXPECT_FALSE(window.ui->profileSettingsDefaultCB->isChecked());
    EXPECT_FALSE(window.ui->profileSettingsActiveCB->isChecked());
}

TEST_F(ProfileListTest, SwitchingOffAnotherLightKeepsTheDefault)
{
    addFour();
    window.clickMark(1);
    window.clickLight(2);
    window.clickLight(2);
    EXPECT_EQ(window.defaultRows(), QList<int>({1}));
    EXPECT_EQ(window.list->getDefaultItem(), window.item(1));
}

TEST_F(ProfileListTest, FlagsCanBeSwitchedDuringAnEdit)
{
    addFour();
    edit();
    window.clickMark(3);
    window.clickLight(0);
    EXPECT_EQ(window.defaultRows(), QList<int>({3}));
    EXPECT_TRUE(window.row(0)->getActiveStatus());
    EXPECT_TRUE(window.ui->profileSettingsDefaultCB->isChecked());
    EXPECT_TRUE(window.ui->profileSettingsActiveCB->isChecked());
    EXPECT_TRUE(window.pane->getEditMode());
}

// Deleting

TEST_F(ProfileListTest, CrossAsksForTheRowByItsTitle)
{
    addFour();
    window.row(1)->setTitle("My <Cell> & more");
    DialogScript script;
    script.thenDo([this](QWidget& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), "Deleting Profile");
        EXPECT_EQ(box->parentWidget(), &window);
        QTextDocument document;
        document.setHtml(box->text());
        EXPECT_EQ(document.toPlainText(),
                  "Do you really want to delete the profile \"My <Cell> & more\"?");
        clickOn(box->button(QMessageBox::No));
    });
    window.clickCross(1);
    EXPECT_EQ(window.count(), 4);
    EXPECT_EQ(window.currentRow(), 3);
}

TEST_F(ProfileListTest, ClosingTheDeletionQuestionKeepsTheRow)
{
    addFour();
    DialogScript script;
    script.expectQuestion("Deleting Profile", deletionText("A"), DialogScript::closeControl);
    window.clickCross(0);
    EXPECT_EQ(window.count(), 4);
}

TEST_F(ProfileListTest, DeletingARowSelectsTheOneAbove)
{
    addFour();
    window.clickRow(2);
    deleteRow(2);
    EXPECT_EQ(window.titles(), QStringList({"A", "B", "D"}));
    EXPECT_EQ(window.currentRow(), 1);
    expectHighlightMatchesSelection();
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "B");
}

TEST_F(ProfileListTest, DeletingTheFirstRowSelectsTheNewFirst)
{
    addFour();
    window.clickRow(0);
    deleteRow(0);
    EXPECT_EQ(window.currentRow(), 0);
    EXPECT_EQ(window.row(0)->getTitle(), "B");
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "B");
    expectHighlightMatchesSelection();
}

TEST_F(ProfileListTest, DeletingRow3MovesTheSelectionFromRow0To2)
{
    addFour();
    window.clickRow(0);
    deleteRow(3);
    EXPECT_EQ(window.currentRow(), 2);
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "C");
    expectHighlightMatchesSelection();
}

TEST_F(ProfileListTest, DeletingTheFirstRowMovesTheSelectionToTheNewFirst)
{
    addFour();
    deleteRow(0);
    EXPECT_EQ(window.currentRow(), 0);
    expectHighlightMatchesSelection();
}

TEST_F(ProfileListTest, DeletingTheDefaultRowLeavesNoDefault)
{
    addFour();
    window.clickLight(0);
    window.clickMark(2);
    deleteRow(2);
    EXPECT_TRUE(window.defaultRows().isEmpty());
    EXPECT_EQ(window.list->getDefaultItem(), nullptr);
    window.clickMark(0); // and a new one can be chosen
    EXPECT_EQ(window.defaultRows(), QList<int>({0}));
}

TEST_F(ProfileListTest, DeletingAnotherRowKeepsTheDefault)
{
    addFour();
    window.clickMark(2);
    deleteRow(0);
    EXPECT_EQ(window.defaultRows(), QList<int>({1}));
    EXPECT_EQ(window.list->getDefaultItem(), window.item(1));
}

TEST_F(ProfileListTest, DeletingTheOnlyRowHidesThePaneAndLocksMoving)
{
    window.add("A");
    QSignalSpy empty(window.list, &ProfileNamesListManager::noMoreProfilesLeft);
    deleteRow(0);
    EXPECT_EQ(window.count(), 0);
    EXPECT_EQ(empty.count(), 1);
    EXPECT_EQ(window.list->getCurrentItem(), nullptr);
    expectMoveButtons(false);
    for (const QWidget* widget : std::initializer_list<QWidget*>{
             window.ui->editProfileButton, window.ui->profileSettingsTitle,
             window.ui->profileSettingsSubtitle, window.ui->profileSettingsActiveCB,
             window.ui->profileSettingsDefaultCB, window.ui->profileSettingsModifiableCB,
             window.ui->containerScroll, window.ui->saveChangesButton,
             window.ui->cancelChangesButton}) {
        EXPECT_FALSE(widget->isVisible()) << widget->objectName().toStdString();
    }
    flushDeletions();
    EXPECT_TRUE(window.findChildren<ProfileName*>().isEmpty());

    // Nothing points at what is gone: a new profile takes its place.
    window.add("B");
    EXPECT_EQ(window.currentRow(), 0);
    EXPECT_TRUE(window.ui->editProfileButton->isVisible());
    edit();
    window.cancelEditing();
}

TEST_F(ProfileListTest, DeletedRowsAreFreedAndTheirProfilesOnceTheyCannotComeBack)
{
    addFour();
    const QPointer<ProfileName> row = window.row(1);
    const QPointer<HParser::StructSetting> setting = window.setting(1, "Current");
    deleteRow(1);
    flushDeletions();
    EXPECT_EQ(row, nullptr);
    EXPECT_NE(setting, nullptr);
    window.add("New");
    EXPECT_EQ(setting, nullptr);
}

TEST_F(ProfileListTest, DeletingOneIsRefusedDuringAnEdit)
{
    addFour();
    edit();
    for (const int row : {0, 3}) {
        DialogScript script;
        script.expectMessage("Cannot Delete Profile",
                             "Please save or cancel the changes before deleting this profile.");
        window.clickCross(row);
    }
    EXPECT_EQ(window.count(), 4);
    EXPECT_EQ(window.currentRow(), 3);
    EXPECT_TRUE(window.pane->getEditMode());
}

// Deleting all

TEST_F(ProfileListTest, DeletingAllWithoutAQuestionEmptiesTheList)
{
    addFour();
    window.clickMark(1);
    QSignalSpy empty(window.list, &ProfileNamesListManager::noMoreProfilesLeft);
    const DialogScript nothing;
    EXPECT_TRUE(window.list->deleteAllProfilesNoConfirmation());
    EXPECT_EQ(window.count(), 0);
    EXPECT_EQ(empty.count(), 1);
    EXPECT_EQ(window.list->getCurrentItem(), nullptr);
    EXPECT_EQ(window.list->getDefaultItem(), nullptr);
    expectMoveButtons(false);
    flushDeletions();
    EXPECT_TRUE(window.findChildren<ProfileName*>().isEmpty());
}

TEST_F(ProfileListTest, DeletingAllWithoutAQuestionIsRefusedSilentlyDuringAnEdit)
{
    addFour();
    edit();
    const DialogScript nothing;
    EXPECT_FALSE(window.list->deleteAllProfilesNoConfirmation());
    EXPECT_EQ(window.count(), 4);
}

TEST_F(ProfileListTest, DeletingAllOfAnEmptyListSucceeds)
{
    EXPECT_TRUE(window.list->deleteAllProfilesNoConfirmation());
    EXPECT_EQ(window.count(), 0);
}

class DeletingAllTest : public ProfileListTest
{
protected:
    bool deleteAll(const QString& answer)
    {
        DialogScript script;
        script.expectQuestion(
            "Delete all profiles?",
            "All profiles will be deleted. This operation cannot be undone. Continue?", answer);
        return window.list->deleteAllProfilesAskConfirmation();
    }
};

TEST_F(DeletingAllTest, YesEmptiesTheList)
{
    addFour();
    EXPECT_TRUE(deleteAll("Yes"));
    EXPECT_EQ(window.count(), 0);
}

TEST_F(DeletingAllTest, NoLeavesRowsAndSelection)
{
    addFour();
    window.clickMark(2);
    window.clickRow(1);
    const ProfileNameListWidget* selected = window.list->getCurrentItem();
    QSignalSpy shown(window.list, &ProfileNamesListManager::settingsPaneUpdateNeeded);
    EXPECT_FALSE(deleteAll("No"));
    EXPECT_EQ(window.titles(), QStringList({"A", "B", "C", "D"}));
    EXPECT_EQ(window.list->getCurrentItem(), selected);
    EXPECT_EQ(window.currentRow(), 1);
    EXPECT_EQ(window.defaultRows(), QList<int>({2}));
    EXPECT_EQ(shown.count(), 0);
    expectHighlightMatchesSelection();
}

TEST_F(DeletingAllTest, ClosingTheQuestionIsNo)
{
    addFour();
    EXPECT_FALSE(deleteAll(DialogScript::closeControl));
    EXPECT_EQ(window.count(), 4);
}

TEST_F(DeletingAllTest, IsRefusedDuringAnEdit)
{
    addFour();
    edit();
    DialogScript script;
    script.expectMessage("Cannot Delete Profiles",
                         "Please save or cancel the changes before deleting profiles.");
    EXPECT_FALSE(window.list->deleteAllProfilesAskConfirmation());
    EXPECT_EQ(window.count(), 4);
}

TEST_F(DeletingAllTest, EditThatBeganMeanwhileKeepsTheRows)
{
    addFour();
    DialogScript script;
    script.thenDo([this](QWidget& dialog) {
        window.pane->on_editButtonClicked();
        clickOn(qobject_cast<QMessageBox*>(&dialog)->button(QMessageBox::Yes));
    });
    EXPECT_TRUE(window.list->deleteAllProfilesAskConfirmation());
    EXPECT_EQ(window.count(), 4);
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

// Moving

TEST_F(ProfileListTest, MovesTheSelectedRowUpAndDown)
{
    addFour();
    window.clickRow(1);
    clickOn(window.ui->profileNameDownButton);
    EXPECT_EQ(window.titles(), QStringList({"A", "C", "B", "D"}));
    EXPECT_EQ(window.currentRow(), 2);
    expectHighlightMatchesSelection();
    clickOn(window.ui->profileNameUpButton);
    clickOn(window.ui->profileNameUpButton);
    EXPECT_EQ(window.titles(), QStringList({"B", "A", "C", "D"}));
    EXPECT_EQ(window.currentRow(), 0);
    expectHighlightMatchesSelection();
}

TEST_F(ProfileListTest, FirstRowDoesNotMoveUpNorTheLastDown)
{
    addFour();
    const ProfileNameListWidget* last = window.item(3);
    clickOn(window.ui->profileNameDownButton);
    EXPECT_EQ(window.titles(), QStringList({"A", "B", "C", "D"}));
    EXPECT_EQ(window.item(3), last);
    EXPECT_EQ(window.currentRow(), 3);
    window.clickRow(0);
    const ProfileNameListWidget* item = window.item(0);
    clickOn(window.ui->profileNameUpButton);
    EXPECT_EQ(window.titles(), QStringList({"A", "B", "C", "D"}));
    EXPECT_EQ(window.item(0), item);
    EXPECT_EQ(window.currentRow(), 0);
}

TEST_F(ProfileListTest, MovedRowKeepsProfileFlagsAndDefault)
{
    addFour();
    window.clickRow(2);
    window.clickMark(2);
    ProfileSettings* profile = window.row(2)->getProfileSettings();
    clickOn(window.ui->profileNameUpButton);
    EXPECT_EQ(window.row(1)->getProfileSettings(), profile);
    EXPECT_EQ(window.defaultRows(), QList<int>({1}));
    EXPECT_EQ(window.list->getDefaultItem(), window.item(1));
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    EXPECT_TRUE(window.ui->profileSettingsDefaultCB->isChecked());

    // Another default takes the mark from the moved row.
    window.clickMark(3);
    EXPECT_EQ(window.defaultRows(), QList<int>({3}));
}

TEST_F(ProfileListTest, MovingAnotherRowKeepsTheDefault)
{
    addFour();
    window.clickMark(0);
    clickOn(window.ui->profileNameUpButton);
    EXPECT_EQ(window.defaultRows(), QList<int>({0}));
    EXPECT_EQ(window.list->getDefaultItem(), window.item(0));
}

TEST_F(ProfileListTest, ButtonsOfAMovedRowWork)
{
    addFour();
    window.clickRow(1);
    clickOn(window.ui->profileNameDownButton);
    window.clickLight(2);
    EXPECT_TRUE(window.row(2)->getActiveStatus());
    EXPECT_TRUE(window.ui->profileSettingsActiveCB->isChecked());
    window.clickMark(2);
    EXPECT_EQ(window.defaultRows(), QList<int>({2}));
    deleteRow(2);
    EXPECT_EQ(window.titles(), QStringList({"A", "C", "D"}));
}

TEST_F(ProfileListTest, MovingDoesNotRebuildThePane)
{
    addFour();
    const QPointer<QGridLayout> grid = window.grid();
    QSignalSpy shown(window.list, &ProfileNamesListManager::settingsPaneUpdateNeeded);
    clickOn(window.ui->profileNameUpButton);
    EXPECT_EQ(shown.count(), 0);
    EXPECT_EQ(window.grid(), grid);
}

TEST_F(ProfileListTest, MovedRowIsScrolledIntoView)
{
    for (int i = 0; i < 30; ++i) {
        window.add(QString::number(i));
    }
    window.ui->profileNamesList->scrollToTop();
    QCoreApplication::processEvents();
    clickOn(window.ui->profileNameUpButton);
    QCoreApplication::processEvents();
    const QRect place = window.ui->profileNamesList->visualItemRect(window.item(28));
    EXPECT_TRUE(window.ui->profileNamesList->viewport()->rect().contains(place));
}

TEST_F(ProfileListTest, RowMovedDuringAnEditIsTheOneThatIsSaved)
{
    addFour();
    window.clickRow(2);
    edit();
    typeOver(window.lineEdit("Title"), "Moved");
    clickOn(window.ui->profileNameUpButton);
    EXPECT_TRUE(window.pane->getEditMode());
    EXPECT_EQ(window.titles(), QStringList({"A", "C", "B", "D"}));
    clickOn(window.ui->profileSettingsDefaultCB);
    clickOn(window.ui->saveChangesButton);
    EXPECT_EQ(window.titles(), QStringList({"A", "Moved", "B", "D"}));
    EXPECT_EQ(window.defaultRows(), QList<int>({1}));
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "Moved");
}

TEST_F(ProfileListTest, RowMovedDuringAnEditCanBeCancelled)
{
    addFour();
    window.clickRow(2);
    edit();
    enterText(window.lineEdit("Title"), "Moved");
    clickOn(window.ui->profileNameUpButton);
    window.cancelEditing();
    EXPECT_EQ(window.titles(), QStringList({"A", "C", "B", "D"}));
    EXPECT_EQ(window.setting(1, "Title")->getValue(), "C");
    EXPECT_FALSE(window.pane->getEditMode());
}
