// Moving the selected row up and down.

#include "support/gui/profilelisttest.h"

#include <QSignalSpy>

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
