// Leaving the global settings editor without OK.

#include "support/gui/globalsettingstest.h"

// Cancel

TEST_F(GlobalSettingsTest, ConfirmedCancelRestoresEveryValue)
{
    open();
    editAll();
    pressCancel("Yes");
    expectClosed();
    expectDefaults();
    open();
    EXPECT_EQ(field("Charger Name")->text(), "Bench");
    EXPECT_FALSE(toggle()->isChecked());
    EXPECT_FALSE(field("Fan Steps")->isEnabled());
}

TEST_F(GlobalSettingsTest, ConfirmedCancelRestoresEarlierEdits)
{
    open();
    editAll();
    pressOk();
    open();
    enterText(field("Charger Name"), "Shed");
    clickOn(box("Key Tone"));
    clickOn(toggle()); // off: advanced values fall back
    EXPECT_EQ(value("Fan Steps"), "4");
    pressCancel("Yes");
    expectClosed();
    expectEdited();
    open();
    EXPECT_TRUE(toggle()->isChecked());
    EXPECT_EQ(field("Fan Steps")->text(), "7");
}

TEST_F(GlobalSettingsTest, ConfirmedCancelDropsWhatIsStillBeingTyped)
{
    open();
    typeOver(field("Charger Name"), "Shed");
    pressCancel("Yes");
    expectClosed();
    expectDefaults();
}

TEST_F(GlobalSettingsTest, CancelRestoresTheEditorsBeforeItDeletesThem)
{
    open();
    editAll();
    const QPointer<QLineEdit> name = field("Charger Name");
    const QPointer<QCheckBox> tone = box("Key Tone");
    pressCancel("Yes");
    ASSERT_FALSE(name.isNull() || tone.isNull()); // until control is back in the event loop
    EXPECT_EQ(name->text(), "Bench");
    EXPECT_TRUE(tone->isChecked());
    expectClosed();
    EXPECT_TRUE(name.isNull() && tone.isNull());
    expectDefaults();
}

TEST_F(GlobalSettingsTest, DeclinedCancelKeepsTheDialogAndTheEdits)
{
    for (const QString& answer : {QString("No"), DialogScript::closeControl}) {
        SCOPED_TRACE(answer);
        open();
        editAll();
        pressCancel(answer);
        expectOpen();
        expectEdited();
        EXPECT_EQ(field("Charger Name")->text(), "Van");
        EXPECT_TRUE(field("Fan Steps")->isEnabled());
        pressCancel("Yes");
        expectClosed();
        expectDefaults();
    }
}

TEST_F(GlobalSettingsTest, OkAfterADeclinedCancelKeepsTheEdits)
{
    open();
    editAll();
    pressCancel("No");
    pressOk();
    expectEdited();
}

// Other ways to close

TEST_F(GlobalSettingsTest, CloseControlAsksLikeCancel)
{
    open();
    editAll();
    const auto close = [this] { dialog->close(); };
    answerQuestion(close, "No");
    expectOpen();
    expectEdited();
    answerQuestion(close, "Yes");
    expectClosed();
    expectDefaults();
}

TEST_F(GlobalSettingsTest, EscapeAsksLikeCancel)
{
    open();
    editAll();
    const auto escape = [this] { QTest::keyClick(dialog.data(), Qt::Key_Escape); };
    answerQuestion(escape, "No");
    expectOpen();
    expectEdited();
    answerQuestion(escape, "Yes");
    expectClosed();
    expectDefaults();
}

TEST_F(GlobalSettingsTest, GoesAwayWithItsWindow)
{
    open();
    typeOver(field("Charger Name"), "Shed");
    const DialogScript nothing;
    window.reset();
    EXPECT_TRUE(dialog.isNull());
}
