#include "profiles/profilewizarddialog.h"

#include "support/gui/wizardtest.h"

#include <QApplication>
#include <QVBoxLayout>

TEST_F(WizardTest, FirstPageOffersTheChemistries)
{
    EXPECT_EQ(wizard->windowTitle(), "Profile Wizard");
    EXPECT_EQ(next()->text(), "Next >");
    EXPECT_EQ(back()->text(), "< Back");
    EXPECT_EQ(cancel()->text(), "Cancel");
    EXPECT_FALSE(back()->isEnabled());
    ASSERT_NE(chemistries(), nullptr);
    ASSERT_EQ(chemistries()->count(), 2);
    EXPECT_EQ(chemistries()->itemText(0), "Alpha Cell");
    EXPECT_EQ(chemistries()->itemText(1), "Plain Cell");
    EXPECT_EQ(chemistries()->currentIndex(), 0);
    QStringList labels;
    for (const QLabel* label : wizard->findChildren<QLabel*>()) {
        labels.append(label->text());
    }
    EXPECT_TRUE(contains(labels, "Chemistry:"));
    EXPECT_EQ(gridOf(wizard), nullptr);
}

TEST_F(WizardTest, IsApplicationModalAndDoesNotBlockItsCaller)
{
    EXPECT_EQ(wizard->windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(QApplication::activeModalWidget(), wizard); // and the click has returned
    EXPECT_EQ(wizard->parent(), &window);

    // Actions of a user in the main window have no effect meanwhile.
    QWindow* behind = window.windowHandle();
    const QPoint button =
        window.ui->addProfileButton->mapTo(&window, window.ui->addProfileButton->rect().center());
    QTest::mouseClick(behind, Qt::LeftButton, Qt::NoModifier, button);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.findChildren<ProfileWizardDialog*>().size(), 1);
}

TEST_F(WizardTest, SecondPageEditsAllSettingsOfTheChemistry)
{
    choose("Alpha Cell");
    EXPECT_EQ(next()->text(), "Finish");
    EXPECT_TRUE(back()->isEnabled());
    EXPECT_EQ(childNamed<QLabel>(wizard, "chemistryLabel")->text(), "- Alpha Cell");
    EXPECT_EQ(wizard->findChild<QComboBox*>(), nullptr);
    EXPECT_EQ(field("Title")->text(), "Alpha");
    EXPECT_EQ(field("Current")->text(), "2.5");
    for (const char* basic : {"Title", "Subtitle", "Cells", "Current", "Margin"}) {
        EXPECT_TRUE(field(basic)->isEnabled()) << basic;
    }
    EXPECT_TRUE(box("Balance")->isEnabled());
    EXPECT_TRUE(made->isEmpty());
}

TEST_F(WizardTest, AdvancedEditorsWaitForTheToggle)
{
    choose("Alpha Cell");
    QCheckBox* toggle = box("Edit Advanced Settings");
    EXPECT_TRUE(toggle->isEnabled());
    EXPECT_FALSE(toggle->isChecked());
    for (const char* advanced : {"Cutoff", "Pack Voltage", "Note"}) {
        EXPECT_FALSE(field(advanced)->isEnabled()) << advanced;
    }
    EXPECT_FALSE(box("Cold Check")->isEnabled());
    clickOn(toggle);
    for (const char* advanced : {"Cutoff", "Pack Voltage", "Note"}) {
        EXPECT_TRUE(field(advanced)->isEnabled()) << advanced;
    }
    EXPECT_TRUE(box("Cold Check")->isEnabled());
}

TEST_F(WizardTest, FinishHandsOverTheProfile)
{
    choose("Alpha Cell");
    typeOver(field("Title"), "Torch");
    typeOver(field("Subtitle"), "four cells");
    typeOver(field("Cells"), "4");
    clickOn(box("Balance"));
    clickOn(next());
    EXPECT_EQ(made->count(), 1);
    flushDeletions();
    EXPECT_EQ(wizard, nullptr); // closed and deleted
    ASSERT_EQ(window.count(), 1);
    EXPECT_EQ(window.currentRow(), 0);
    EXPECT_EQ(window.row(0)->getTitle(), "Torch");
    EXPECT_EQ(window.row(0)->getSubtitle(), "four cells");
    EXPECT_EQ(window.setting(0, "Cells")->getValue(), "4");
    EXPECT_EQ(window.setting(0, "Balance")->getValue(), "false");
    EXPECT_EQ(window.setting(0, "Pack Voltage")->getValue(), "16"); // followed the cells
    EXPECT_EQ(window.setting(0, "Mode")->getValue(), "Slow");
    EXPECT_EQ(window.setting(0, "Ending")->getValue(), "Stop");
    EXPECT_TRUE(window.row(0)->getProfileSettings()->getModifiable());
    EXPECT_EQ(window.row(0)->getProfileSettings()->chemistry, "Alpha Cell");
}

TEST_F(WizardTest, FinishTakesTheFieldThatStillHasTheFocus)
{
    choose("Alpha Cell");
    typeOver(field("Current"), "99");
    next()->click(); // where buttons take no focus, the press leaves it in the field
    ASSERT_EQ(window.count(), 1);
    EXPECT_EQ(window.setting(0, "Current")->getValue(), "20");
}

TEST_F(WizardTest, ProfileIsAppendedBehindTheOthers)
{
    clickOn(cancel());
    flushDeletions();
    window.add("First");
    open();
    choose("Plain Cell");
    clickOn(next());
    EXPECT_EQ(window.titles(), QStringList({"First", "Plain"}));
    EXPECT_EQ(window.currentRow(), 1);
}

TEST_F(WizardTest, ValuesAreClampedAndRounded)
{
    choose("Alpha Cell");
    enterText(field("Current"), "99");
    EXPECT_EQ(field("Current")->text(), "20");
    typeOver(field("Margin"), "2.26");
    clickOn(next());
    EXPECT_EQ(window.setting(0, "Current")->getValue(), "20");
    EXPECT_EQ(window.setting(0, "Margin")->getValue(), "2.3");
}

TEST_F(WizardTest, EditedAdvancedValuesAreKept)
{
    choose("Alpha Cell");
    clickOn(box("Edit Advanced Settings"));
    typeOver(field("Cutoff"), "0.5");
    clickOn(next());
    EXPECT_EQ(window.setting(0, "Cutoff")->getValue(), "0.5");
    EXPECT_TRUE(window.row(0)->getProfileSettings()->settings->getAdvancedSettingsEdited());
}

TEST_F(WizardTest, EveryClickActsOnce)
{
    int goneOn = 0;
    auto* nextButton = next();
    QObject::connect(nextButton, &QPushButton::clicked, [&goneOn] { ++goneOn; });
    choose("Alpha Cell");
    EXPECT_EQ(goneOn, 1);
    EXPECT_NE(gridOf(wizard), nullptr); // the second page, not beyond it
    EXPECT_TRUE(made->isEmpty());
    goBack();
    ASSERT_NE(chemistries(), nullptr);
    choose("Alpha Cell");
    clickOn(next());
    EXPECT_EQ(made->count(), 1);
    EXPECT_EQ(window.count(), 1);
}

TEST_F(WizardTest, PagesAreInTheContainer)
{
    auto* container = childNamed<QVBoxLayout>(wizard, "containerLayout");
    EXPECT_EQ(childNamed<QWidget>(wizard, "horizontalLayoutWidget")->layout(), container);
    ASSERT_EQ(container->count(), 2);
    EXPECT_EQ(qobject_cast<QLabel*>(container->itemAt(0)->widget())->text(), "Chemistry:");
    EXPECT_EQ(container->itemAt(1)->widget(), chemistries());
    choose("Alpha Cell");
    ASSERT_EQ(container->count(), 1);
    EXPECT_EQ(container->itemAt(0)->layout(), gridOf(wizard));
    goBack();
    EXPECT_EQ(container->count(), 2);
}

TEST_F(WizardTest, WidgetsOfAPageGoAwayFromTheEventLoop)
{
    const QPointer<QComboBox> box = chemistries();
    clickOn(next());
    ASSERT_FALSE(box.isNull());
    EXPECT_FALSE(box->isVisible());
    flushDeletions();
    EXPECT_TRUE(box.isNull());

    const QPointer<QGridLayout> grid = gridOf(wizard);
    const QPointer<QLineEdit> title = field("Title");
    typeOver(title, "half typed");
    clickOn(back());
    ASSERT_FALSE(grid.isNull() || title.isNull());
    EXPECT_EQ(grid->count(), 0);
    EXPECT_FALSE(title->isVisible());
    flushDeletions();
    EXPECT_TRUE(grid.isNull() && title.isNull());
}

TEST_F(WizardTest, FinishedProfileIsOutOfReachOfItsEditors)
{
    choose("Alpha Cell");
    const QPointer<QLineEdit> current = field("Current");
    next()->setFocusPolicy(Qt::NoFocus);
    typeOver(current, "7");
    clickOn(next());
    ASSERT_EQ(window.count(), 1);
    window.setting(0, "Current")->storeValueFromText("77.777");
    emit window.setting(0, "Current")->numValueChanged();
    flushDeletions();
    EXPECT_TRUE(current.isNull());
    EXPECT_EQ(window.setting(0, "Current")->getValue(), "77.777");
}

TEST_F(WizardTest, SmallWizardsScroll)
{
    choose("Alpha Cell");
    wizard->resize(wizard->minimumSizeHint());
    clickOn(box("Edit Advanced Settings"));
    field("Title")->setFocus();
    EXPECT_LT(wizard->height(), 200);
    for (const char* name : {"Subtitle", "Cells", "Current", "Balance", "Edit Advanced Settings",
                             "Cutoff", "Pack Voltage", "Cold Check", "Note", "Margin"}) {
        QTest::keyClick(wizard->focusWidget(), Qt::Key_Tab);
        QWidget* editor = cellOf(gridOf(wizard), name, 3);
        EXPECT_EQ(wizard->focusWidget(), editor) << name;
        EXPECT_EQ(editor->visibleRegion().boundingRect().height(), editor->height()) << name;
    }
}

TEST_F(WizardTest, ListSettingsHaveNoEditor)
{
    choose("Alpha Cell");
    EXPECT_EQ(cellOf(gridOf(wizard), "Mode", 3), nullptr);
    EXPECT_EQ(cellOf(gridOf(wizard), "Ending", 3), nullptr);
    EXPECT_NE(cellOf(gridOf(wizard), "Mode", 1), nullptr);
}

class SingleChemistryWizardTest : public WizardTest
{
protected:
    SingleChemistryWizardTest() : WizardTest(TestSchema::singleChemistry()) {}
};

TEST_F(SingleChemistryWizardTest, StillShowsTheFirstPage)
{
    ASSERT_NE(chemistries(), nullptr);
    EXPECT_EQ(chemistries()->count(), 1);
    EXPECT_EQ(chemistries()->currentText(), "Alpha Cell");
    EXPECT_EQ(next()->text(), "Next >");
    clickOn(next());
    EXPECT_NE(gridOf(wizard), nullptr);
}
