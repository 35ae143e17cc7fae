// Number fields that lose the focus with a text that is not a number yet.

#include "settingsui/numbervalidator.h"
#include "support/gui/editorwindow.h"
#include "support/waiting.h"

#include <QApplication>

namespace
{
/// Texts that can be typed but are not numbers.
const QStringList unfinishedTexts = {"", "-", "+", ".", "371e", "371e-", "-."};

QLineEdit* fieldOf(const QWidget* dialog, const QString& label)
{
    auto* field = qobject_cast<QLineEdit*>(cellOf(gridOf(dialog), label, 3));
    EXPECT_NE(field, nullptr) << label;
    return field;
}

QWidget* shownDialog()
{
    QWidget* dialog = nullptr;
    EXPECT_TRUE(waitFor([&dialog] {
        dialog = QApplication::activeModalWidget();
        return dialog != nullptr;
    }));
    QApplication::setActiveWindow(dialog);
    return dialog;
}
} // namespace

class UnfinishedNumberTest : public ::testing::Test
{
protected:
    UnfinishedNumberTest()
    {
        window.add("A");
        clickOn(window.ui->editProfileButton);
    }
    ~UnfinishedNumberTest() override { flushDeletions(); }

    QLineEdit* current() const { return window.lineEdit("Current"); }

    void expectCurrent(const QString& number) const
    {
        EXPECT_EQ(current()->text(), number);
        EXPECT_EQ(window.setting(0, "Current")->getValue(), number);
    }

    EditorWindow window;
};

TEST_F(UnfinishedNumberTest, BecomesTheLowerBoundWhenTheFieldIsLeft)
{
    for (const QString& text : unfinishedTexts) {
        SCOPED_TRACE(text);
        enterText(current(), "7");
        typeOver(current(), text);
        EXPECT_EQ(current()->text(), text);
        EXPECT_EQ(window.setting(0, "Current")->getValue(), "7");
        QTest::keyClick(current(), Qt::Key_Tab);
        expectCurrent("0.1");
    }
}

TEST_F(UnfinishedNumberTest, BecomesTheLowerBoundAtAClickElsewhere)
{
    typeOver(current(), "-");
    clickOn(window.lineEdit("Title"));
    expectCurrent("0.1");
    typeOver(current(), "");
    clickOn(window.checkBox("Balance"));
    expectCurrent("0.1");
}

TEST_F(UnfinishedNumberTest, BecomesTheLowerBoundAtTheReturnKey)
{
    for (const QString& text : unfinishedTexts) {
        SCOPED_TRACE(text);
        enterText(current(), "7");
        typeOver(current(), text);
        QTest::keyClick(current(), Qt::Key_Return);
        expectCurrent("0.1");
        EXPECT_TRUE(current()->hasFocus());
    }
}

TEST_F(UnfinishedNumberTest, FormulasFollowAtOnce)
{
    ASSERT_EQ(window.lineEdit("Cutoff")->text(), "0.25");
    enterText(current(), "");
    EXPECT_EQ(window.lineEdit("Cutoff")->text(), "0.01");
    EXPECT_EQ(window.lineEdit("Margin")->text(), "0.1");
}

TEST_F(UnfinishedNumberTest, TooLargeAnExponentBecomesTheUpperBound)
{
    typeOver(current(), "1e999");
    ASSERT_EQ(current()->text(), "1e999");
    QTest::keyClick(current(), Qt::Key_Tab);
    expectCurrent("20");
}

TEST_F(UnfinishedNumberTest, ZeroStaysWhereItIsAllowed)
{
    enterText(window.lineEdit("Margin"), "");
    EXPECT_EQ(window.lineEdit("Margin")->text(), "0");
}

TEST_F(UnfinishedNumberTest, AnEmptiedTextStaysEmpty)
{
    enterText(window.lineEdit("Title"), "");
    EXPECT_EQ(window.lineEdit("Title")->text(), "");
}

TEST_F(UnfinishedNumberTest, IsCorrectedInTheWizard)
{
    window.cancelEditing();
    clickOn(window.ui->addProfileButton);
    QWidget* wizard = shownDialog();
    clickOn(childNamed<QPushButton>(wizard, "nextButton"));
    typeOver(fieldOf(wizard, "Current"), "371e");
    QTest::keyClick(fieldOf(wizard, "Current"), Qt::Key_Tab);
    EXPECT_EQ(fieldOf(wizard, "Current")->text(), "0.1");
    clickOn(childNamed<QPushButton>(wizard, "cancelButton"));
}

TEST_F(UnfinishedNumberTest, IsCorrectedInTheGlobalSettings)
{
    window.globalSettings->on_editGlobalSettingsClicked();
    QWidget* dialog = shownDialog();
    typeOver(fieldOf(dialog, "Supply Voltage"), "");
    clickOn(fieldOf(dialog, "Charger Name"));
    EXPECT_EQ(fieldOf(dialog, "Supply Voltage")->text(), "9");
    clickOn(childNamed<QPushButton>(dialog, "okPushButton"));
}

TEST(NumberValidator, MakesANumberOfWhatIsNone)
{
    const NumberValidator validator(nullptr);
    for (const QString& text : unfinishedTexts + QStringList{"1e999", "-1e999", "-1e"}) {
        QString input = text;
        int position = 0;
        ASSERT_EQ(validator.validate(input, position), QValidator::Intermediate) << text;
        validator.fixup(input);
        EXPECT_EQ(validator.validate(input, position), QValidator::Acceptable)
            << text << " became " << input;
    }
}
