// The light and the mark of the rows.

#include "support/gui/profilelisttest.h"

#include <QSignalSpy>

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
