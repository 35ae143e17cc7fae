// Searching, dragging, moving to the ends, and undo.

#include "support/gui/editorwindow.h"
#include "support/waiting.h"

#include <QApplication>
#include <QScrollBar>

/// Five rows, the second one selected, the list with the keyboard focus.
class ProfileListHistoryTest : public ::testing::Test
{
protected:
    ProfileListHistoryTest()
    {
        for (const char* title : {"Alpha", "Beta", "Gamma", "Delta", "Alpine"}) {
            window.add(title);
        }
        window.clickRow(1);
        list()->setFocus();
        EXPECT_TRUE(waitFor([this] { return list()->hasFocus(); }));
    }

    QListWidget* list() const { return window.ui->profileNamesList; }
    QString all() const { return window.titles().join(' '); }

    void deleteRow(int row)
    {
        DialogScript script;
        script.expectQuestion("Deleting Profile",
                              "Do you really want to delete the profile <b>\""
                                  + window.titles()[row] + "\"</b>?",
                              "Yes");
        window.clickCross(row);
    }

    void type(const QString& text) const
    {
        // Characters typed long ago are no longer used.
        QApplication::setKeyboardInputInterval(60000);
        QTest::keyClicks(list(), text);
        QApplication::setKeyboardInputInterval(400);
    }

    QPoint middleOf(int row) const { return list()->visualItemRect(window.item(row)).center(); }

    /// Drags a row by the left mouse button to this point of the list.
    void drag(int row, const QPoint& to) const
    {
        QWidget* viewport = list()->viewport();
        QTest::mousePress(viewport, Qt::LeftButton, {}, middleOf(row));
        QTest::mouseMove(viewport, middleOf(row) + QPoint(0, 3));
        moveHeld(to);
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, to);
    }

    void moveHeld(const QPoint& to) const
    {
        QMouseEvent move(QEvent::MouseMove, to, list()->viewport()->mapToGlobal(to), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list()->viewport(), &move);
    }

    QPoint topOf(int row) const { return middleOf(row) - QPoint(0, 20); }
    QPoint bottomOf(int row) const { return middleOf(row) + QPoint(0, 20); }

    EditorWindow window;
};

// Search

TEST_F(ProfileListHistoryTest, TypedLettersSelectTheProfileWhoseTitleBeginsWithThem)
{
    type("g");
    EXPECT_EQ(window.currentRow(), 2);
}

TEST_F(ProfileListHistoryTest, FurtherLettersNarrowTheSearch)
{
    type("alpi");
    EXPECT_EQ(window.currentRow(), 4);
}

TEST_F(ProfileListHistoryTest, LettersInsideATitleCountWhenNoneBeginsWithThem)
{
    type("elt");
    EXPECT_EQ(window.currentRow(), 3);
    EXPECT_EQ(window.titles().size(), 5);
}

TEST_F(ProfileListHistoryTest, UnknownLettersSelectNothingElse)
{
    type("zz");
    EXPECT_EQ(window.currentRow(), 1);
}

TEST_F(ProfileListHistoryTest, NoSearchDuringAnEdit)
{
    window.pane->on_editButtonClicked();
    list()->setFocus();
    type("g");
    EXPECT_EQ(window.currentRow(), 1);
    EXPECT_TRUE(window.pane->getEditMode());
}

// Places

TEST_F(ProfileListHistoryTest, MovesToTheEnds)
{
    window.list->moveToEnd();
    EXPECT_EQ(all(), "Alpha Gamma Delta Alpine Beta");
    EXPECT_EQ(window.currentRow(), 4);
    window.list->moveToTop();
    EXPECT_EQ(all(), "Beta Alpha Gamma Delta Alpine");
    EXPECT_EQ(window.currentRow(), 0);
}

TEST_F(ProfileListHistoryTest, ADraggedRowGoesWhereItIsDropped)
{
    drag(0, bottomOf(2));
    EXPECT_EQ(all(), "Beta Gamma Alpha Delta Alpine");
    drag(4, topOf(0));
    EXPECT_EQ(all(), "Alpine Beta Gamma Alpha Delta");
}

TEST_F(ProfileListHistoryTest, DraggingAnotherRowKeepsTheSelectedProfile)
{
    drag(0, bottomOf(4));
    EXPECT_EQ(all(), "Beta Gamma Delta Alpine Alpha");
    EXPECT_EQ(window.currentRow(), 0);
}

TEST_F(ProfileListHistoryTest, ADraggedDefaultProfileStaysTheDefaultOne)
{
    window.clickMark(3);
    drag(3, topOf(0));
    EXPECT_EQ(all(), "Delta Alpha Beta Gamma Alpine");
    EXPECT_EQ(window.defaultRows(), QList<int>({0}));
    window.clickMark(2);
    EXPECT_EQ(window.defaultRows(), QList<int>({2}));
}

TEST_F(ProfileListHistoryTest, ARowThatIsDroppedOutsideStays)
{
    drag(0, QPoint(list()->width() + 200, 60));
    EXPECT_EQ(all(), "Alpha Beta Gamma Delta Alpine");
    drag(2, middleOf(2) + QPoint(30, 0));
    EXPECT_EQ(all(), "Alpha Beta Gamma Delta Alpine");
}

TEST_F(ProfileListHistoryTest, LineOfADragIsWhollyInSightAtTheEnds)
{
    QWidget* viewport = list()->viewport();
    QTest::mousePress(viewport, Qt::LeftButton, {}, middleOf(2));
    for (const QPoint& end : {topOf(0), QPoint(20, viewport->height() - 2)}) {
        moveHeld(end);
        const QList<QWidget*> parts =
            viewport->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        int lines = 0;
        for (const QWidget* part : parts) {
            if (part->isVisible() && part->height() < 10) {
                ++lines;
                EXPECT_TRUE(viewport->rect().contains(part->geometry())) << part->y();
            }
        }
        EXPECT_EQ(lines, 1);
    }
    QTest::keyClick(list(), Qt::Key_Escape);
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, QPoint(20, 20));
}

TEST_F(ProfileListHistoryTest, EscapeEndsADrag)
{
    QWidget* viewport = list()->viewport();
    QTest::mousePress(viewport, Qt::LeftButton, {}, middleOf(0));
    moveHeld(bottomOf(3));
    QTest::keyClick(list(), Qt::Key_Escape);
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, bottomOf(3));
    EXPECT_EQ(all(), "Alpha Beta Gamma Delta Alpine");
}

TEST_F(ProfileListHistoryTest, AClickThatTremblesStillSelects)
{
    QWidget* viewport = list()->viewport();
    QTest::mousePress(viewport, Qt::LeftButton, {}, middleOf(3));
    moveHeld(middleOf(3) + QPoint(1, 1));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, middleOf(3) + QPoint(1, 1));
    EXPECT_EQ(window.currentRow(), 3);
    EXPECT_EQ(all(), "Alpha Beta Gamma Delta Alpine");
}

TEST_F(ProfileListHistoryTest, TheListScrollsWhileARowIsHeldAtItsEnd)
{
    for (int i = 0; i < 30; ++i) {
        window.add(QString("More %1").arg(i));
    }
    list()->scrollToTop();
    QTest::mousePress(list()->viewport(), Qt::LeftButton, {}, middleOf(0));
    moveHeld(QPoint(20, list()->viewport()->height() - 3));
    QScrollBar* bar = list()->verticalScrollBar();
    EXPECT_TRUE(waitFor([bar] { return bar->value() == bar->maximum(); }));
    const QPoint end(20, list()->viewport()->height() - 3);
    QTest::mouseRelease(list()->viewport(), Qt::LeftButton, {}, end);
    EXPECT_EQ(window.titles().last(), "Alpha");
}

// Undo

TEST_F(ProfileListHistoryTest, ADeletedProfileComesBackAsItWas)
{
    window.clickMark(2);
    window.setting(2, "Current")->setValue(7.5);
    deleteRow(2);
    EXPECT_EQ(all(), "Alpha Beta Delta Alpine");
    window.list->undo();
    EXPECT_EQ(all(), "Alpha Beta Gamma Delta Alpine");
    EXPECT_EQ(window.currentRow(), 2);
    EXPECT_EQ(window.defaultRows(), QList<int>({2}));
    EXPECT_TRUE(window.row(2)->getActiveStatus());
    EXPECT_EQ(window.setting(2, "Current")->getValue(), "7.5");
}

TEST_F(ProfileListHistoryTest, ADefaultProfileComesBackWithoutItsMarkWhenAnotherHasIt)
{
    window.clickMark(2);
    deleteRow(2);
    window.clickMark(0);
    window.list->undo();
    EXPECT_EQ(window.defaultRows(), QList<int>({0}));
    EXPECT_FALSE(window.row(2)->getDefaultStatus());
    EXPECT_TRUE(window.row(2)->getActiveStatus());
}

TEST_F(ProfileListHistoryTest, ChangesAreTakenBackInTheirOrder)
{
    window.list->moveToEnd();
    deleteRow(0);
    window.list->profilePushDown();
    drag(2, topOf(0));
    deleteRow(1);
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(window.list->canUndo());
        window.list->undo();
    }
    EXPECT_EQ(all(), "Alpha Beta Gamma Delta Alpine");
    EXPECT_FALSE(window.list->canUndo());
    window.list->undo();
    EXPECT_EQ(all(), "Alpha Beta Gamma Delta Alpine");
}

TEST_F(ProfileListHistoryTest, TheLastProfileComesBackToAnEmptyList)
{
    for (int i = 0; i < 5; ++i) {
        deleteRow(0);
    }
    EXPECT_FALSE(window.ui->containerScroll->isVisible());
    window.list->undo();
    EXPECT_EQ(all(), "Alpine");
    EXPECT_TRUE(window.ui->containerScroll->isVisible());
    EXPECT_TRUE(window.ui->profileNameUpButton->isEnabled());
}

TEST_F(ProfileListHistoryTest, NothingIsTakenBackDuringAnEditAndAfterIt)
{
    deleteRow(0);
    window.pane->on_editButtonClicked();
    window.list->undo();
    EXPECT_EQ(window.count(), 4);
    window.pane->on_saveButtonClicked();
    EXPECT_FALSE(window.list->canUndo());
}

TEST_F(ProfileListHistoryTest, NothingIsTakenBackAcrossAnAdditionOrAnEmptiedList)
{
    deleteRow(0);
    window.import("Loaded", true, false);
    EXPECT_FALSE(window.list->canUndo());
    deleteRow(0);
    EXPECT_TRUE(window.list->canUndo());
    window.list->deleteAllProfilesNoConfirmation();
    EXPECT_FALSE(window.list->canUndo());
    window.list->undo();
    EXPECT_EQ(window.count(), 0);
}
