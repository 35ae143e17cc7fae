// The hints of fields: in tooltips, to screen readers, and when a number is changed.

#include "settingsui/fieldnote.h"
#include "support/gui/editorwindow.h"
#include "support/thorough.h"
#include "support/waiting.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextDocumentFragment>
#include <QToolTip>

namespace
{
const char textsSchema[] = R"(#define PROFILESTARTADDRESS 0x400
struct Global { // Settings : "Global Settings", global
    unsigned char type; // num, auto, 1, 1, x1, 0, "type", "", Identity, 1, -1, advanced
}
struct Alpha { // Settings : "Alpha Cell", instantiable
    char title[12]; // string, auto, "Title", Profile, "Alpha", 0, basic
    char letter[2]; // string, auto, "Letter", Profile, "a", 1, basic
    char subtitle[]; // string, auto, "Subtitle", Profile, "first", 2, basic
    unsigned char active; // bool, 1, "active", Flags, 0, -1, basic
    unsigned char isDefault; // bool, 1, "default", Flags, 0, -1, basic
    unsigned char modifiable; // bool, 6, "modifiable", Flags, 1, -1, basic
}
)";
} // namespace

/// A profile being edited.
class FieldHintsTest : public ::testing::Test
{
protected:
    FieldHintsTest()
    {
        window.resize(900, 600);
        window.add("A");
        clickOn(window.ui->editProfileButton);
        QAccessible::setActive(true); // a screen reader starts
    }
    ~FieldHintsTest() override
    {
        QAccessible::setActive(false);
        QToolTip::hideText();
        flushDeletions();
    }

    QLineEdit* current() const { return window.lineEdit("Current"); }

    /// The tooltip shown for a pointer over the widget.
    static QString tipOf(QWidget* widget)
    {
        QHelpEvent rest(QEvent::ToolTip, QPoint(1, 1), widget->mapToGlobal(QPoint(1, 1)));
        QCoreApplication::sendEvent(widget, &rest);
        return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText().replace("\n", "; ");
    }

    static QString readerText(QWidget* widget, QAccessible::Text kind = QAccessible::Description)
    {
        return QAccessible::queryAccessibleInterface(widget)->text(kind);
    }

    FieldNote* note() const { return window.findChild<FieldNote*>(); }

    void expectNote(const QString& text) const
    {
        ASSERT_TRUE(waitFor([this, text] {
            return note() != nullptr && note()->isVisible() && note()->text() == text;
        }));
    }

    void expectNoNote() const
    {
        QCoreApplication::processEvents();
        EXPECT_EQ(note(), nullptr);
    }

    QRect inWindow(const QWidget* widget) const
    {
        return {widget->mapTo(&window, QPoint(0, 0)), widget->size()};
    }

    EditorWindow window;
};

// Before a number is typed

TEST_F(FieldHintsTest, TooltipAndReaderTellTheLimits)
{
    EXPECT_EQ(tipOf(current()), "0.1 to 20 A, 2 decimal places, default 2.5; General");
    EXPECT_EQ(readerText(current()), tipOf(current()));
    EXPECT_EQ(tipOf(window.lineEdit("Title")), "up to 11 characters; Profile");
    EXPECT_EQ(readerText(window.lineEdit("Title")), tipOf(window.lineEdit("Title")));
}

TEST_F(FieldHintsTest, LimitsFollowTheSettingsThatTheyName)
{
    QLineEdit* margin = window.lineEdit("Margin");
    EXPECT_EQ(readerText(margin),
              "0 to 2.5 h, 1 decimal place, default 1; at most Current; General");
    enterText(current(), "7");
    EXPECT_EQ(readerText(margin), "0 to 7 h, 1 decimal place, default 1; at most Current; General");
    EXPECT_EQ(tipOf(margin), readerText(margin));
    window.cancelEditing();
    QAccessible::setActive(true); // offscreen, no screen reader is reported to the new editors
    margin = window.lineEdit("Margin");
    EXPECT_TRUE(startsWith(readerText(margin), "0 to 2.5 h"));
}

TEST_F(FieldHintsTest, LimitsAreThoseOfTheSelectedProfile)
{
    readerText(current());
    clickOn(window.ui->saveChangesButton);
    window.add("P", "Plain Cell");
    QLineEdit* capacity = window.lineEdit("Capacity");
    EXPECT_FALSE(capacity->isEnabled());
    EXPECT_EQ(tipOf(capacity), "1 to 100 Ah, a whole number, default 10; General");
    EXPECT_EQ(readerText(capacity), tipOf(capacity));
}

TEST_F(FieldHintsTest, TooltipShowsATextThatIsCut)
{
    QLineEdit* subtitle = window.lineEdit("Subtitle");
    typeOver(subtitle, "<b>WWWWWWWWWWWW");
    subtitle->setFixedWidth(60);
    EXPECT_EQ(tipOf(subtitle), "<b>WWWWWWWWWWWW; up to 15 characters; Profile");
}

TEST(FieldHints, TextsWithoutALimitTellTheirGroupAlone)
{
    EditorWindow window(textsSchema);
    window.add("A");
    QAccessible::setActive(true);
    const auto description = [&window](const char* name) {
        return QAccessible::queryAccessibleInterface(window.lineEdit(name))
            ->text(QAccessible::Description);
    };
    EXPECT_EQ(description("Subtitle"), "Profile");
    EXPECT_EQ(description("Letter"), "1 character; Profile");
    QAccessible::setActive(false);
}

TEST_F(FieldHintsTest, AReaderThatComesLaterFindsTheLimitsToo)
{
    QAccessible::setActive(false);
    clickOn(window.ui->saveChangesButton);
    window.add("B");
    EXPECT_EQ(readerText(current()), "A, General");
    QAccessible::setActive(true);
    EXPECT_EQ(readerText(current()), "0.1 to 20 A, 2 decimal places, default 2.5; General");
}

// The width of the fields

TEST_F(FieldHintsTest, EditorsGrowWithTheWindowAndStayInOneColumn)
{
    const QWidget* viewport = window.ui->containerScroll->viewport();
    const QWidget* container = window.ui->containerScroll->widget();
    window.resize(1500, 600);
    ASSERT_TRUE(waitFor([&] { return current()->width() == 300; }));
    for (const int width : {712, 730}) {
        SCOPED_TRACE(width);
        const int before = viewport->width();
        window.resize(width, 600);
        ASSERT_TRUE(waitFor([&] {
            return viewport->width() != before && container->width() == viewport->width();
        }));
        EXPECT_LT(current()->width(), 300);
        for (const char* name : {"Title", "Subtitle", "Margin"}) {
            EXPECT_EQ(window.lineEdit(name)->width(), current()->width()) << name;
            EXPECT_EQ(window.lineEdit(name)->x(), current()->x()) << name;
        }
    }
}

TEST_F(FieldHintsTest, EighteenWideLettersFitInAWideWindow)
{
    window.resize(1200, 600);
    ASSERT_TRUE(waitFor([this] { return current()->width() == 300; }));
    const QLineEdit* title = window.lineEdit("Title");
    EXPECT_LT(title->fontMetrics().horizontalAdvance(QString(18, 'W')), title->width() - 8);
}

TEST_F(FieldHintsTest, AnotherChemistryIsAsWide)
{
    window.resize(1200, 600);
    ASSERT_TRUE(waitFor([this] { return current()->width() == 300; }));
    clickOn(window.ui->saveChangesButton);
    window.add("P", "Plain Cell");
    EXPECT_TRUE(waitFor([this] { return window.lineEdit("Capacity")->width() == 300; }));
    window.clickRow(0);
    EXPECT_TRUE(waitFor([this] { return current()->width() == 300; }));
}

// When a number was changed

TEST_F(FieldHintsTest, ACorrectedNumberSaysSoBesideItsField)
{
    window.resize(1200, 600);
    enterText(current(), "371");
    expectNote("20 is the maximum here");
    EXPECT_GT(inWindow(note()).left(), inWindow(current()).right());
    EXPECT_TRUE(inWindow(current()).top() <= inWindow(note()).center().y()
                && inWindow(note()).center().y() <= inWindow(current()).bottom());
    EXPECT_TRUE(window.rect().contains(inWindow(note())));
    EXPECT_TRUE(window.checkBox("Balance")->hasFocus());
}

TEST_F(FieldHintsTest, OneNoteIsShownAtATime)
{
    enterText(current(), "371");
    expectNote("20 is the maximum here");
    enterText(window.lineEdit("Margin"), "-1");
    expectNote("0 is the minimum here");
    EXPECT_LE(
        qAbs(inWindow(note()).center().y() - inWindow(window.lineEdit("Margin")).center().y()), 1);
    EXPECT_EQ(window.findChildren<FieldNote*>().size(), 1);
}

TEST_F(FieldHintsTest, TheNoteKeepsWithinANarrowWindow)
{
    window.resize(712, 350);
    QCoreApplication::processEvents();
    enterText(current(), "");
    expectNote("Not a number: 0.1 is the minimum here");
    EXPECT_TRUE(window.rect().contains(inWindow(note())));
    const int textEnd = current()->fontMetrics().horizontalAdvance(current()->text());
    EXPECT_GT(inWindow(note()).left(), inWindow(current()).left() + textEnd);
}

TEST_F(FieldHintsTest, TheNoteIsMirroredWhereWindowsRunFromRightToLeft)
{
    window.resize(1200, 600);
    window.setLayoutDirection(Qt::RightToLeft);
    QCoreApplication::processEvents();
    enterText(current(), "0");
    expectNote("0.1 is the minimum here");
    EXPECT_LT(inWindow(note()).right(), inWindow(current()).left());
    EXPECT_TRUE(window.rect().contains(inWindow(note())));
}

TEST_F(FieldHintsTest, ReturnAndSavingSaySoToo)
{
    typeOver(current(), "3.14159");
    QTest::keyClick(current(), Qt::Key_Return);
    expectNote("Rounded to 2 decimal places");
    typeOver(current(), "0");
    expectNoNote(); // gone with the first key
    clickOn(window.ui->saveChangesButton);
    expectNote("0.1 is the minimum here");
}

TEST_F(FieldHintsTest, NothingIsSaidOfNumbersThatWereNotTyped)
{
    enterText(current(), "2.50");
    expectNoNote();
    clickOn(window.ui->saveChangesButton);
    window.add("B");
    window.setting(0, "Current")->storeValueFromText("77"); // as imported
    window.clickRow(0);
    clickOn(window.ui->editProfileButton);
    ASSERT_EQ(current()->text(), "77");
    clickOn(window.ui->saveChangesButton);
    EXPECT_EQ(current()->text(), "20");
    expectNoNote();
}

TEST_F(FieldHintsTest, TheNoteGoesWithItsField)
{
    enterText(current(), "0");
    expectNote("0.1 is the minimum here");
    window.cancelEditing();
    expectNoNote();
}

TEST_F(FieldHintsTest, TheNoteStaysBesideItsFieldWhenThePaneIsScrolled)
{
    window.resize(712, 350);
    QScrollBar* bar = window.ui->containerScroll->verticalScrollBar();
    ASSERT_TRUE(waitFor([bar] { return bar->maximum() > 100; }));
    enterText(current(), "0");
    expectNote("0.1 is the minimum here");
    bar->setValue(20);
    EXPECT_LE(qAbs(inWindow(note()).center().y() - inWindow(current()).center().y()), 1);
    bar->setValue(bar->maximum());
    ASSERT_TRUE(current()->visibleRegion().isEmpty());
    EXPECT_FALSE(note()->isVisible());
    bar->setValue(20);
    EXPECT_TRUE(note()->isVisible());
}

TEST_F(FieldHintsTest, TheNoteGoesAwayByItself)
{
    THOROUGH_ONLY();
    enterText(current(), "0");
    expectNote("0.1 is the minimum here");
    EXPECT_TRUE(waitFor([this] { return note() == nullptr; }));
}

TEST_F(FieldHintsTest, AReaderReadsTheNoteAsAnAlert)
{
    enterText(current(), "371");
    expectNote("20 is the maximum here");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(note())->role(), QAccessible::AlertMessage);
    EXPECT_EQ(readerText(note(), QAccessible::Name), "20 is the maximum here");
}
