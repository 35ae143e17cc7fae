// Editing with the keys and the pointer of an X server, under a window manager.

#include "settingsui/fieldnote.h"
#include "support/display/hands.h"
#include "support/gui/editorwindow.h"
#include "support/gui/installation.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QToolTip>

/// Three profiles, the second one selected, in a window that is too low for their settings; the list
/// has the focus.
class EditingOnDisplayTest : public MainWindowTest
{
protected:
    EditingOnDisplayTest()
    {
        start();
        for (const char* title : {"A", "B", "C"}) {
            makeProfile(title);
        }
        window->resize(800, 400);
        EXPECT_TRUE(waitFor([this] { return bar()->maximum() > 100; }));
        list()->setFocus();
        Hands::press("Up");
        EXPECT_TRUE(waitFor([this] { return shownTitle() == "B"; }));
    }

    QScrollArea* scroll() const { return child<QScrollArea>("containerScroll"); }
    QScrollBar* bar() const { return scroll()->verticalScrollBar(); }
    QString shownTitle() const { return child<QLabel>("profileSettingsTitle")->text(); }

    QLineEdit* field(const QString& name) const
    {
        auto* found = qobject_cast<QLineEdit*>(cellOf(gridOf(scroll()), name, 3));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    bool isEditing() const { return child<QPushButton>("saveChangesButton")->isEnabled(); }

    void edit() const
    {
        Hands::press("ctrl+e");
        ASSERT_TRUE(waitFor([this] { return isEditing(); }));
    }

    void save() const
    {
        Hands::press("ctrl+Return");
        ASSERT_TRUE(waitFor([this] { return !isEditing(); }));
    }

    bool isFocusInSight() const
    {
        const QWidget* focused = QApplication::focusWidget();
        if (focused == nullptr || !scroll()->widget()->isAncestorOf(focused)) {
            return false;
        }
        const int top = focused->mapTo(scroll()->viewport(), QPoint(0, 0)).y();
        return top >= 0 && top + focused->height() <= scroll()->viewport()->height();
    }

    static void clickAt(const QWidget* widget)
    {
        Hands::pointAt(widget, widget->rect().center());
        Hands::doIt({"click", "1"});
    }
};

TEST_F(EditingOnDisplayTest, ThePaneKeepsItsPlaceThroughEdits)
{
    for (int round = 0; round < 3; ++round) {
        edit();
        EXPECT_TRUE(isFocusInSight());
        const QWidget* first = QApplication::focusWidget();
        Hands::press("Tab");
        ASSERT_TRUE(waitFor([first] { return QApplication::focusWidget() != first; }));
        EXPECT_TRUE(isFocusInSight());
        const int place = bar()->value();
        save();
        EXPECT_EQ(bar()->value(), place) << round;
    }
    bar()->setValue(bar()->maximum() / 2);
    const int place = bar()->value();
    edit();
    EXPECT_TRUE(isFocusInSight());
    save();
    EXPECT_LE(qAbs(bar()->value() - place), scroll()->viewport()->height());
}

TEST_F(EditingOnDisplayTest, EditsGoFromProfileToProfileByKeysAlone)
{
    edit();
    Hands::doIt({"type", "--delay", "0", "Second"});
    save();
    Hands::press("Down");
    ASSERT_TRUE(waitFor([this] { return shownTitle() == "C"; }));
    edit();
    Hands::doIt({"type", "--delay", "0", "Third"});
    save();
    EXPECT_EQ(rowTitle(1), "Second");
    EXPECT_EQ(rowTitle(2), "Third");
}

TEST_F(EditingOnDisplayTest, ACancelledEditGivesTheListItsKeysBack)
{
    edit();
    DialogScript script;
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "Yes");
    Hands::press("Escape");
    ASSERT_TRUE(waitFor([this] { return !isEditing() && window->isActiveWindow(); }));
    Hands::press("Down");
    EXPECT_TRUE(waitFor([this] { return shownTitle() == "C"; }));
}

TEST_F(EditingOnDisplayTest, AClickOnEditAndOnSaveLeavesTheKeysWithTheList)
{
    clickAt(child<QPushButton>("editProfileButton"));
    ASSERT_TRUE(waitFor([this] { return isEditing(); }));
    clickAt(child<QPushButton>("saveChangesButton"));
    ASSERT_TRUE(waitFor([this] { return !isEditing(); }));
    Hands::press("Down");
    EXPECT_TRUE(waitFor([this] { return shownTitle() == "C"; }));
}

TEST_F(EditingOnDisplayTest, AnEmptiedNumberIsCorrectedByAClickElsewhere)
{
    edit();
    clickAt(field("Number of Cells"));
    Hands::press("ctrl+a");
    Hands::press("BackSpace");
    ASSERT_TRUE(waitFor([this] { return field("Number of Cells")->text().isEmpty(); }));
    clickAt(field("Subtitle"));
    EXPECT_TRUE(waitFor([this] { return field("Number of Cells")->text() == "1"; }));
    EXPECT_TRUE(waitFor([this] {
        const auto* note = window->findChild<FieldNote*>();
        return note != nullptr && note->isVisible(); // the button is up again
    }));
}

TEST_F(EditingOnDisplayTest, APointerThatRestsShowsWhatAFieldTakes)
{
    QWidget* current = field("Number of Cells");
    Hands::pointAt(current, QPoint(20, 5));
    Hands::pointAt(current, QPoint(22, 6));
    EXPECT_TRUE(waitFor([] { return QToolTip::text().contains("1 to 8 cells"); }))
        << QToolTip::text();
}
