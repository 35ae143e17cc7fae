// Typing into the fields of the settings pane.

#include "support/gui/settingspanetest.h"
#include "support/waiting.h"

#include <QClipboard>
#include <QDoubleValidator>
#include <QToolTip>

TEST_F(SettingsPaneTest, NumberAboveItsBoundIsCorrectedWhenTheFieldIsLeft)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "99");
    EXPECT_EQ(value("Current"), "2.5"); // not before
    QTest::keyClick(window.lineEdit("Current"), Qt::Key_Tab);
    EXPECT_EQ(window.lineEdit("Current")->text(), "20");
    EXPECT_EQ(value("Current"), "20");
    enterText(window.lineEdit("Current"), "-3");
    EXPECT_EQ(window.lineEdit("Current")->text(), "0.1");
}

TEST_F(SettingsPaneTest, ReturnKeyCommitsAField)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "99");
    QTest::keyClick(window.lineEdit("Current"), Qt::Key_Return);
    EXPECT_EQ(window.lineEdit("Current")->text(), "20");
    EXPECT_TRUE(window.pane->getEditMode());
}

TEST_F(SettingsPaneTest, ClickIntoAnotherFieldCommitsTheFirst)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "1.236");
    clickOn(window.lineEdit("Margin"));
    EXPECT_EQ(window.lineEdit("Current")->text(), "1.24");
    EXPECT_EQ(value("Current"), "1.24");
}

TEST_F(SettingsPaneTest, InvalidNumbersCannotBeTyped)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "1x2y");
    EXPECT_EQ(window.lineEdit("Current")->text(), "12");
    typeOver(window.lineEdit("Current"), "abc");
    EXPECT_EQ(window.lineEdit("Current")->text(), "");
}

TEST_F(SettingsPaneTest, ValidatorTakesEveryDouble)
{
    window.add("A");
    const auto* validator =
        qobject_cast<const QDoubleValidator*>(window.lineEdit("Current")->validator());
    ASSERT_NE(validator, nullptr);
    EXPECT_EQ(validator->bottom(), -1.7976931348623157e308);
    EXPECT_EQ(validator->top(), 1.7976931348623157e308);
    EXPECT_EQ(validator->decimals(), 20);
    EXPECT_EQ(qobject_cast<const QDoubleValidator*>(window.lineEdit("Title")->validator()),
              nullptr);
}

TEST_F(SettingsPaneTest, NumbersAreShownWithAPointInEveryLocale)
{
    QLocale::setDefault(QLocale::German);
    window.add("A");
    EXPECT_EQ(window.lineEdit("Current")->text(), "2.5");
    edit();
    enterText(window.lineEdit("Current"), "1.5");
    EXPECT_EQ(window.lineEdit("Current")->text(), "1.5");
    EXPECT_EQ(value("Current"), "1.5");
}

TEST_F(SettingsPaneTest, CommaIsRefusedInTheCLocaleToo)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "1,7");
    EXPECT_EQ(window.lineEdit("Current")->text(), "17");
}

TEST_F(SettingsPaneTest, EmptyNumberCountsAsZeroWhenSaved)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "");
    save();
    EXPECT_EQ(value("Current"), "0.1"); // zero, brought to the lower bound
    EXPECT_EQ(window.lineEdit("Current")->text(), "0.1");
}

TEST_F(SettingsPaneTest, TextIsLimitedToItsField)
{
    window.add("A");
    EXPECT_EQ(window.lineEdit("Title")->maxLength(), 11);
    EXPECT_EQ(window.lineEdit("Subtitle")->maxLength(), 15);
    EXPECT_EQ(window.lineEdit("Note")->maxLength(), 7);
    edit();
    typeOver(window.lineEdit("Title"), "0123456789ABCDEF");
    EXPECT_EQ(window.lineEdit("Title")->text(), "0123456789A");
    save();
    EXPECT_EQ(value("Title"), "0123456789A");
}

TEST_F(SettingsPaneTest, CharactersThatTheChargerCannotHoldAreRefusedWithAHint)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Title"), "B");
    typeBeyondAscii(window.lineEdit("Title"), "\xC3\xA4");
    QTest::keyClicks(window.lineEdit("Title"), "r 3");
    EXPECT_EQ(window.lineEdit("Title")->text(), "Br 3");
    EXPECT_TRUE(waitFor([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(QToolTip::text(),
              QString::fromUtf8("The Kelvaron can only store plain English letters, digits and "
                                "punctuation (ASCII), not "
                                "\"\xC3\xA4\"."));
    save();
    EXPECT_EQ(value("Title"), "Br 3");
}

TEST_F(SettingsPaneTest, NoHintForATextThatIsTooLong)
{
    QToolTip::hideText();
    ASSERT_TRUE(waitFor([] { return !QToolTip::isVisible(); }));
    window.add("A");
    edit();
    typeOver(window.lineEdit("Title"), "0123456789ABCDEF");
    EXPECT_FALSE(QToolTip::isVisible());
}

TEST_F(SettingsPaneTest, PastedTextThatTheChargerCannotHoldIsRefusedWhole)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Title"), "one");
    QGuiApplication::clipboard()->setText(QString::fromUtf8(" tw\xC3\xB6"));
    QTest::keySequence(window.lineEdit("Title"), QKeySequence(QKeySequence::Paste));
    EXPECT_EQ(window.lineEdit("Title")->text(), "one");
    QGuiApplication::clipboard()->setText(" two");
    QTest::keySequence(window.lineEdit("Title"), QKeySequence(QKeySequence::Paste));
    EXPECT_EQ(window.lineEdit("Title")->text(), "one two");
}

TEST_F(SettingsPaneTest, ImportedTextWithSuchCharactersCanBeMended)
{
    window.add("A");
    const QString imported = QString::fromUtf8("B\xC3\xA4r");
    window.setting(0, "Subtitle")->setValue(imported);
    window.add("B");
    window.clickRow(0); // shows what came in
    edit();
    QLineEdit* field = window.lineEdit("Subtitle");
    EXPECT_EQ(field->text(), imported);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_End);
    QTest::keyClicks(field, "1");
    typeBeyondAscii(field, "\xC3\xBC");
    EXPECT_EQ(field->text(), imported + "1"); // the other one is refused
    QTest::keyClick(field, Qt::Key_Tab);      // and leaving the field stores it
    EXPECT_EQ(value("Subtitle"), imported + "1");
    typeOver(field, "Baer");
    save();
    EXPECT_EQ(value("Subtitle"), "Baer");
}

TEST_F(SettingsPaneTest, FormulasRefreshOtherEditors)
{
    window.add("A");
    edit();
    enterText(window.lineEdit("Current"), "0.8");
    EXPECT_EQ(window.lineEdit("Margin")->text(), "0.8"); // its upper bound
    EXPECT_EQ(value("Margin"), "0.8");
    EXPECT_EQ(window.lineEdit("Cutoff")->text(), "0.08"); // its default
    enterText(window.lineEdit("Cells"), "5");
    EXPECT_EQ(window.lineEdit("Pack Voltage")->text(), "20");
}

TEST_F(SettingsPaneTest, CheckBoxWritesAtOnce)
{
    window.add("A");
    edit();
    clickOn(window.checkBox("Balance"));
    EXPECT_EQ(value("Balance"), "false");
    clickOn(window.checkBox("Balance"));
    EXPECT_EQ(value("Balance"), "true");
}
