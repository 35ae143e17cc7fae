// Deleting one row, or all.

#include "support/gui/profilelisttest.h"

#include <QSignalSpy>
#include <QTextDocument>

// Deleting

TEST_F(ProfileListTest, CrossAsksForTheRowByItsTitle)
{
    addFour();
    window.row(1)->setTitle("My <Cell> & more");
    DialogScript script;
    script.thenPress("No", [this](const QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Deleting Profile");
        EXPECT_EQ(box.parentWidget(), &window);
        QTextDocument document;
        document.setHtml(box.text());
        EXPECT_EQ(document.toPlainText(),
                  "Do you really want to delete the profile \"My <Cell> & more\"?");
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

TEST_F(ProfileListTest, ListReplacedBehindTheDeletionQuestionIsKept)
{
    addFour();
    DialogScript script;
    script.thenPress("Yes", [this](const QMessageBox&) {
        window.list->deleteAllProfilesNoConfirmation(); // as a reload of the bundle does
        window.add("New");
    });
    window.clickCross(1);
    EXPECT_EQ(window.titles(), QStringList("New"));
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
        EXPECT_FALSE(widget->isVisible()) << widget->objectName();
    }
    flushDeletions();
    EXPECT_TRUE(window.findChildren<ProfileName*>().isEmpty());

    // Nothing points to the deleted profile: a new profile takes its place.
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
    script.thenPress("Yes",
                     [this](const QMessageBox& /*box*/) { window.pane->on_editButtonClicked(); });
    EXPECT_TRUE(window.list->deleteAllProfilesAskConfirmation());
    EXPECT_EQ(window.count(), 4);
}
