// The global settings editor, used with mouse and keyboard.

#include "support/gui/globalsettingstest.h"

#include <QApplication>
#include <QVBoxLayout>

// The manager's block

TEST_F(GlobalSettingsTest, BlockHasTheSchemasDefaults)
{
    expectDefaults();
}

TEST_F(GlobalSettingsTest, BlockHasTheNewSchemasDefaultsAfterAReload)
{
    open();
    editAll();
    pressOk();
    reload();
    EXPECT_EQ(value("Charger Name"), "Field");
    EXPECT_EQ(value("Input Voltage"), "20");
    EXPECT_EQ(value("Key Tone"), "true");
    EXPECT_EQ(value("Fan Steps"), "4");
    EXPECT_FALSE(advancedEdited());
    open();
    EXPECT_EQ(field("Charger Name")->text(), "Field");
    EXPECT_EQ(field("Input Voltage")->text(), "20");
    EXPECT_FALSE(toggle()->isChecked());
}

// The dialog

TEST_F(GlobalSettingsTest, DialogHasItsTextsAndModality)
{
    open();
    EXPECT_EQ(dialog->windowTitle(), "Global Settings Editor");
    EXPECT_EQ(dialog->windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(dialog->parent(), window.get());
    EXPECT_EQ(QApplication::activeModalWidget(), dialog); // and the command has returned
    EXPECT_EQ(childNamed<QLabel>(dialog, "label")->text(), "Global Settings Editor");
    EXPECT_EQ(childNamed<QPushButton>(dialog, "okPushButton")->text(), "OK");
    EXPECT_EQ(childNamed<QPushButton>(dialog, "cancelPushButton")->text(), "Cancel");
    auto* container = childNamed<QWidget>(dialog, "verticalLayoutWidget");
    EXPECT_EQ(container->layout(), childNamed<QVBoxLayout>(dialog, "containerLayout"));
}

TEST_F(GlobalSettingsTest, WindowHasATitleBarAndASystemMenuOnly)
{
    open();
    EXPECT_TRUE(dialog->isWindow());
    const Qt::WindowFlags flags = dialog->windowFlags();
    EXPECT_TRUE(flags.testFlag(Qt::WindowTitleHint));
    EXPECT_TRUE(flags.testFlag(Qt::WindowSystemMenuHint));
    EXPECT_FALSE(flags & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowCloseButtonHint));
}

TEST_F(GlobalSettingsTest, GridIsInTheContainer)
{
    open();
    auto* container = childNamed<QVBoxLayout>(dialog, "containerLayout");
    ASSERT_EQ(container->count(), 1);
    EXPECT_EQ(container->itemAt(0)->layout(), gridOf(dialog));
    reload();
    flushDeletions();
    ASSERT_EQ(container->count(), 1);
    EXPECT_EQ(container->itemAt(0)->layout(), gridOf(dialog));
}

TEST_F(GlobalSettingsTest, SmallDialogsScroll)
{
    open();
    dialog->resize(dialog->minimumSizeHint());
    clickOn(toggle());
    field("Charger Name")->setFocus();
    EXPECT_LT(dialog->height(), 200);
    for (QWidget* editor : std::initializer_list<QWidget*>{field("Supply Voltage"), box("Key Tone"),
                                                           toggle(), field("Fan Steps")}) {
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(dialog->focusWidget(), editor);
        EXPECT_EQ(editor->visibleRegion().boundingRect().height(), editor->height());
    }
}

TEST_F(GlobalSettingsTest, OpensInEditMode)
{
    open();
    for (const char* name : {"Charger Name", "Supply Voltage"}) {
        EXPECT_TRUE(field(name)->isEnabled()) << name;
    }
    EXPECT_TRUE(box("Key Tone")->isEnabled());
    EXPECT_TRUE(toggle()->isEnabled());
    EXPECT_FALSE(toggle()->isChecked());
    EXPECT_FALSE(field("Fan Steps")->isEnabled());
    EXPECT_EQ(cellOf(gridOf(dialog), "Scale", 3), nullptr); // a list: its label alone
    EXPECT_EQ(dialog->focusWidget(), field("Charger Name"));
}

TEST_F(GlobalSettingsTest, AdvancedEditorsFollowTheToggle)
{
    open();
    clickOn(toggle());
    EXPECT_TRUE(field("Fan Steps")->isEnabled());
    enterText(field("Fan Steps"), "7");
    EXPECT_EQ(value("Fan Steps"), "7");
    clickOn(toggle());
    EXPECT_FALSE(field("Fan Steps")->isEnabled());
    EXPECT_EQ(field("Fan Steps")->text(), "4");
}

TEST_F(GlobalSettingsTest, NumbersAreHeldWithinTheirBounds)
{
    open();
    enterText(field("Supply Voltage"), "99");
    EXPECT_EQ(field("Supply Voltage")->text(), "30");
    enterText(field("Supply Voltage"), "1");
    EXPECT_EQ(field("Supply Voltage")->text(), "9");
}

// OK

TEST_F(GlobalSettingsTest, OkKeepsTheEditedValues)
{
    open();
    editAll();
    pressOk();
    expectEdited();
    open();
    EXPECT_EQ(field("Charger Name")->text(), "Van");
    EXPECT_EQ(field("Supply Voltage")->text(), "12.5");
    EXPECT_FALSE(box("Key Tone")->isChecked());
    EXPECT_TRUE(toggle()->isChecked());
    EXPECT_TRUE(field("Fan Steps")->isEnabled());
    EXPECT_EQ(field("Fan Steps")->text(), "7");
}

TEST_F(GlobalSettingsTest, OkKeepsWhatIsStillBeingTyped)
{
    open();
    typeOver(field("Supply Voltage"), "99");
    pressOk();
    EXPECT_EQ(value("Supply Voltage"), "30");
}

TEST_F(GlobalSettingsTest, OkKeepsWhatIsTypedWhereButtonsTakeNoFocus)
{
    open();
    childNamed<QPushButton>(dialog, "okPushButton")->setFocusPolicy(Qt::NoFocus);
    typeOver(field("Charger Name"), "Van");
    pressOk();
    EXPECT_EQ(value("Charger Name"), "Van");
}

TEST_F(GlobalSettingsTest, ReturnPressesOk)
{
    open();
    typeOver(field("Charger Name"), "Van");
    QTest::keyClick(field("Charger Name"), Qt::Key_Return);
    expectClosed();
    EXPECT_EQ(value("Charger Name"), "Van");
}

// A new schema while the dialog is open

TEST_F(GlobalSettingsTest, OpenDialogShowsTheNewBlock)
{
    open();
    editAll();
    typeOver(field("Charger Name"), "half typed");
    reload();
    oldGenerator.reset(); // nothing points to it
    expectOpen();
    EXPECT_EQ(field("Charger Name")->text(), "Field");
    EXPECT_TRUE(field("Charger Name")->isEnabled());
    EXPECT_EQ(field("Input Voltage")->text(), "20");
    EXPECT_EQ(cellOf(gridOf(dialog), "Supply Voltage", 1), nullptr);
    EXPECT_EQ(dialog->focusWidget(), field("Charger Name"));
    EXPECT_FALSE(toggle()->isChecked());
    EXPECT_FALSE(field("Fan Steps")->isEnabled());
}

TEST_F(GlobalSettingsTest, OkAfterAReloadEditsTheNewBlock)
{
    open();
    reload();
    oldGenerator.reset();
    enterText(field("Input Voltage"), "25");
    pressOk();
    EXPECT_EQ(value("Input Voltage"), "25");
    EXPECT_EQ(value("Charger Name"), "Field");
}

TEST_F(GlobalSettingsTest, CancelAfterAReloadRestoresTheNewBlock)
{
    open();
    editAll();
    reload();
    oldGenerator.reset();
    enterText(field("Input Voltage"), "25");
    clickOn(box("Key Tone"));
    pressCancel("Yes");
    expectClosed();
    EXPECT_EQ(value("Input Voltage"), "20");
    EXPECT_EQ(value("Key Tone"), "true");
}

TEST_F(GlobalSettingsTest, ReloadDuringTheQuestionRestoresTheNewBlock)
{
    open();
    editAll();
    DialogScript script;
    script.thenPress("Yes", [this](const QMessageBox& /*box*/) {
        reload();
        oldGenerator.reset();
    });
    clickOn(childNamed<QPushButton>(dialog, "cancelPushButton"));
    script.finish();
    expectClosed();
    EXPECT_EQ(value("Charger Name"), "Field");
    EXPECT_EQ(value("Key Tone"), "true");
}

// A schema without advanced settings in its block

class PlainGlobalSettingsTest : public GlobalSettingsTest
{
protected:
    PlainGlobalSettingsTest() : GlobalSettingsTest(plainSchema()) {}

    static QByteArray plainSchema()
    {
        QByteArray text = TestSchema::text();
        text.replace("\"Fan Steps\", \"\", General, 4, 3, advanced",
                     "\"Fan Steps\", \"\", General, 4, 3, basic");
        return text;
    }
};

TEST_F(PlainGlobalSettingsTest, HasNoToggle)
{
    open();
    EXPECT_EQ(cellOf(gridOf(dialog), "Edit Advanced Settings", 1), nullptr);
    enterText(field("Fan Steps"), "7");
    pressOk();
    EXPECT_EQ(value("Fan Steps"), "7");
}
