#include "settingsui/typednumber.h"
#include "support/gui/editorwindow.h"
#include "support/waiting.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLocale>
#include <QToolTip>

namespace
{
QString u8(const char* text)
{
    return QString::fromUtf8(text);
}

QString normalized(const char* text, const char* locale)
{
    QString result = u8(text);
    int position = 0;
    TypedNumber::normalize(result, position, QLocale(locale));
    return result;
}

int positionIn(const char* text, int position, const char* locale)
{
    QString result = u8(text);
    TypedNumber::normalize(result, position, QLocale(locale));
    return position;
}
} // namespace

TEST(TypedNumber, DecimalSeparatorOfTheLocaleBecomesAPoint)
{
    EXPECT_EQ(normalized("1,5", "de_DE"), "1.5");
    EXPECT_EQ(normalized("1,5", "fr_CH"), "1.5");
    EXPECT_EQ(normalized("1,5", "sv_SE"), "1.5");
    EXPECT_EQ(normalized("1٫5", "ar_EG"), "1.5");
    EXPECT_EQ(normalized("1٫5", "fa_IR"), "1.5");
}

TEST(TypedNumber, PointStaysAPointInEveryLocale)
{
    for (const char* locale : {"C", "en_US", "de_DE", "fr_CH", "de_CH", "ar_EG", "fa_IR"}) {
        EXPECT_EQ(normalized("-1.5e3", locale), "-1.5e3") << locale;
    }
}

TEST(TypedNumber, CommaStaysAndIsRefusedWhereItIsNoDecimalSeparator)
{
    for (const char* locale : {"C", "en_US", "de_CH", "hi_IN", "ar_EG", "fa_IR"}) {
        EXPECT_EQ(normalized("1,500", locale), "1,500") << locale;
    }
}

TEST(TypedNumber, GroupSeparatorsStay)
{
    EXPECT_EQ(normalized("1.500,5", "de_DE"), "1.500.5");
    EXPECT_EQ(normalized("1\u202F500,5", "fr_CH"), u8("1\u202F500.5"));
    EXPECT_EQ(normalized("1’500.5", "de_CH"), u8("1’500.5"));
    EXPECT_EQ(normalized("1٬500", "ar_EG"), u8("1٬500"));
}

TEST(TypedNumber, DigitsOfTheLocaleBecomeOurs)
{
    EXPECT_EQ(normalized("٠١٢٣٤٥٦٧٨٩", "ar_EG"), "0123456789");
    EXPECT_EQ(normalized("۱۲٫۵", "fa_IR"), "12.5");
    EXPECT_EQ(normalized("१२.५", "mr_IN"), "12.5");
    EXPECT_EQ(normalized("12٫5", "ar_EG"), "12.5");
}

TEST(TypedNumber, DigitsOfOtherLocalesStay)
{
    EXPECT_EQ(normalized("١", "en_US"), u8("١"));
    EXPECT_EQ(normalized("/:", "en_US"), "/:"); // the neighbours of 0 and 9
    EXPECT_EQ(normalized("\u065F\u066A", "ar_EG"), u8("\u065F\u066A"));
}

TEST(TypedNumber, MinusSignsBecomeHyphens)
{
    EXPECT_EQ(normalized("\u22122,5", "sv_SE"), "-2.5");
    EXPECT_EQ(normalized("\u22122.5", "en_US"), "-2.5");
}

TEST(TypedNumber, DirectionMarksAreLeftOutAndThePositionIsKept)
{
    EXPECT_EQ(normalized("\u200E-1\u200F2\u061C", "fa_IR"), "-12");
    EXPECT_EQ(positionIn("\u200E-12", 0, "fa_IR"), 0);
    EXPECT_EQ(positionIn("\u200E-12", 1, "fa_IR"), 0);
    EXPECT_EQ(positionIn("\u200E-12", 3, "fa_IR"), 2);
    EXPECT_EQ(positionIn("12,5", 3, "de_DE"), 3);
    EXPECT_EQ(positionIn("", 0, "de_DE"), 0);
}

/// Key presses for characters without a key in QTest.
void typeSigns(QLineEdit* field, const QString& signs)
{
    for (const QChar sign : signs) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(sign));
        QCoreApplication::sendEvent(field, &press);
    }
}

/// A profile being edited in some locale.
class NumberEntryTest : public ::testing::Test
{
protected:
    NumberEntryTest()
    {
        window.add("A");
        clickOn(window.ui->editProfileButton);
    }
    ~NumberEntryTest() override
    {
        QLocale::setDefault(QLocale::c());
        QToolTip::hideText();
    }

    QLineEdit* field() const { return window.lineEdit("Current"); }

    /// Returns the field's text after this was typed, and after the field lost the focus.
    void expectEntry(const char* locale, const char* typed, const QString& shown,
                     const QString& stored) const
    {
        QLocale::setDefault(QLocale(locale));
        typeOver(field(), QString());
        typeSigns(field(), u8(typed));
        EXPECT_EQ(field()->text(), shown) << locale << " " << typed;
        QTest::keyClick(field(), Qt::Key_Tab);
        EXPECT_EQ(field()->text(), stored) << locale << " " << typed;
        EXPECT_EQ(window.setting(0, "Current")->getValue(), stored) << locale << " " << typed;
    }

    void expectPaste(const char* locale, const char* pasted, const QString& shown) const
    {
        QLocale::setDefault(QLocale(locale));
        typeOver(field(), QString());
        QApplication::clipboard()->setText(u8(pasted));
        QTest::keySequence(field(), QKeySequence::Paste);
        EXPECT_EQ(field()->text(), shown) << locale << " " << pasted;
    }

    EditorWindow window;
};

TEST_F(NumberEntryTest, CommaIsTakenWhereItIsTheDecimalSeparator)
{
    expectEntry("de_DE", "1,75", "1.75", "1.75");
    expectEntry("fr_CH", "12,5", "12.5", "12.5");
    expectEntry("de_DE", ",5", ".5", "0.5");
    expectEntry("de_DE", "3,", "3.", "3");
}

TEST_F(NumberEntryTest, PointIsTakenInEveryLocale)
{
    for (const char* locale : {"C", "en_US", "de_DE", "fr_CH", "ar_EG", "fa_IR"}) {
        expectEntry(locale, "1.75", "1.75", "1.75");
    }
}

TEST_F(NumberEntryTest, ArabicAndPersianDigitsAndSeparatorsAreTaken)
{
    expectEntry("ar_EG", "١٫٥", "1.5", "1.5");
    expectEntry("fa_IR", "۱۲٫۵", "12.5", "12.5");
}

TEST_F(NumberEntryTest, SecondSeparatorIsRefused)
{
    expectEntry("de_DE", "1,2,5", "1.25", "1.25");
    expectEntry("de_DE", "1.2,5", "1.25", "1.25");
}

TEST_F(NumberEntryTest, CommaIsRefusedWithAHintWhereItGroups)
{
    for (const char* locale : {"C", "en_US", "de_CH", "ar_EG"}) {
        QLocale::setDefault(QLocale(locale));
        QToolTip::hideText();
        ASSERT_TRUE(waitFor([] { return !QToolTip::isVisible(); }));
        typeOver(field(), "1,");
        EXPECT_EQ(field()->text(), "1") << locale;
        EXPECT_TRUE(waitFor([] { return QToolTip::isVisible(); })) << locale;
        EXPECT_EQ(QToolTip::text(), "Use only digits and a decimal point, such as 1500.5");
    }
}

TEST_F(NumberEntryTest, PastedNumbersAreTakenOrRefusedAsAWhole)
{
    expectPaste("de_DE", "1,5", "1.5");
    expectPaste("de_DE", "1.5", "1.5");
    expectPaste("de_DE", "1.500,5", "");
    expectPaste("en_US", "1,500", "");
    expectPaste("en_US", "1,500.5", "");
    expectPaste("C", "1,5", "");
    expectPaste("fr_CH", "1\u202F500,5", "");
    expectPaste("fa_IR", "\u200E۱٫۵", "1.5");
    expectPaste("ar_EG", "1٬500", "");
    EXPECT_TRUE(waitFor([] { return QToolTip::isVisible(); }));
}

TEST_F(NumberEntryTest, NumberIsCompletedInTheMiddle)
{
    QLocale::setDefault(QLocale("de_DE"));
    typeOver(field(), "15");
    QTest::keyClick(field(), Qt::Key_Left);
    QTest::keyClicks(field(), ",7");
    EXPECT_EQ(field()->text(), "1.75");
    EXPECT_EQ(field()->cursorPosition(), 3);
}

TEST_F(NumberEntryTest, LocaleMayChangeWhileTheEditorIsOpen)
{
    expectEntry("en_US", "1.5", "1.5", "1.5");
    expectEntry("de_DE", "2,5", "2.5", "2.5");
    typeOver(field(), "3");
    QLocale::setDefault(QLocale("en_US"));
    QTest::keyClicks(field(), ",");
    EXPECT_EQ(field()->text(), "3");
}
