// Back, cancel and the keys of the wizard.

#include "support/gui/wizardtest.h"

TEST_F(WizardTest, BackAndAnotherChemistryGiveThatChemistryAlone)
{
    choose("Alpha Cell");
    typeOver(field("Title"), "Dropped");
    goBack();
    EXPECT_EQ(next()->text(), "Next >");
    EXPECT_FALSE(back()->isEnabled());
    ASSERT_NE(chemistries(), nullptr);
    EXPECT_EQ(chemistries()->currentIndex(), 0);
    EXPECT_EQ(gridOf(wizard), nullptr);
    choose("Plain Cell");
    EXPECT_EQ(childNamed<QLabel>(wizard, "chemistryLabel")->text(), "- Plain Cell");
    EXPECT_EQ(next()->text(), "Finish");
    EXPECT_EQ(field("Title")->text(), "Plain");
    EXPECT_EQ(cellOf(gridOf(wizard), "Current", 1), nullptr);
    clickOn(next());
    ASSERT_EQ(window.count(), 1);
    EXPECT_EQ(made->count(), 1);
    EXPECT_EQ(window.row(0)->getTitle(), "Plain");
    EXPECT_EQ(window.row(0)->getProfileSettings()->chemistry, "Plain Cell");
    EXPECT_EQ(window.setting(0, "Capacity")->getValue(), "10");
}

TEST_F(WizardTest, BackDropsWhatWasTyped)
{
    choose("Alpha Cell");
    enterText(field("Current"), "7");
    goBack();
    choose("Alpha Cell");
    EXPECT_EQ(field("Current")->text(), "2.5");
}

TEST_F(WizardTest, CancelMakesNothingOnEitherPage)
{
    clickOn(cancel());
    EXPECT_TRUE(made->isEmpty());
    flushDeletions();
    EXPECT_EQ(wizard, nullptr);

    open();
    choose("Alpha Cell");
    enterText(field("Title"), "Dropped");
    clickOn(cancel());
    EXPECT_TRUE(made->isEmpty());
    flushDeletions();
    EXPECT_EQ(wizard, nullptr);
    EXPECT_EQ(window.count(), 0);
}

TEST_F(WizardTest, CloseControlMakesNothing)
{
    choose("Alpha Cell");
    wizard->close();
    EXPECT_TRUE(made->isEmpty());
    flushDeletions();
    EXPECT_EQ(wizard, nullptr);
    EXPECT_EQ(window.count(), 0);
}

TEST_F(WizardTest, EscapeKeyMakesNothingAndLeavesNothing)
{
    QTest::keyClick(wizard, Qt::Key_Escape);
    EXPECT_TRUE(made->isEmpty());
    flushDeletions();
    EXPECT_EQ(wizard, nullptr);
    EXPECT_EQ(window.count(), 0);
}

TEST_F(WizardTest, ReturnKeyOnTheFirstPageGoesOn)
{
    QTest::keyClick(chemistries(), Qt::Key_Return);
    EXPECT_NE(gridOf(wizard), nullptr);
    EXPECT_EQ(next()->text(), "Finish");
}

TEST_F(WizardTest, ReturnKeyInAFieldStoresItOnce)
{
    choose("Alpha Cell");
    typeOver(field("Current"), "99");
    QTest::keyClick(field("Current"), Qt::Key_Return);
    flushDeletions();
    EXPECT_LE(made->count(), 1);
    if (wizard != nullptr) { // the key may only have left the field
        EXPECT_EQ(field("Current")->text(), "20");
        clickOn(next());
    }
    ASSERT_EQ(window.count(), 1);
    EXPECT_EQ(window.setting(0, "Current")->getValue(), "20");
}

TEST_F(WizardTest, AbandonedProfilesAreFreed)
{
    // The sanitizers' leak check reports one that is not deleted; here the settings of the last one
    // are watched.
    choose("Alpha Cell");
    goBack();
    choose("Plain Cell");
    goBack();
    clickOn(cancel());
    flushDeletions();
    EXPECT_EQ(wizard, nullptr);
}
