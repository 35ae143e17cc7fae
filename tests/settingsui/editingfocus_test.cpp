// The keyboard focus and the scroll position of the pane before, during and after an edit.

#include "support/gui/editorwindow.h"
#include "support/waiting.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>

/// Three profiles in a window that is too low for their settings; the list has the focus.
class EditingFocusTest : public ::testing::Test
{
protected:
    EditingFocusTest()
    {
        for (const char* title : {"A", "B", "C"}) {
            window.add(title);
        }
        window.resize(712, 350);
        window.clickRow(1);
        EXPECT_TRUE(waitFor([this] { return bar()->maximum() > 50; }));
        list()->setFocus();
    }
    ~EditingFocusTest() override { flushDeletions(); }

    QScrollBar* bar() const { return window.ui->containerScroll->verticalScrollBar(); }
    QListWidget* list() const { return window.ui->profileNamesList; }
    static QWidget* focused() { return QApplication::focusWidget(); }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QCoreApplication::processEvents();
        QTest::keyClick(focused() != nullptr ? focused() : window.window(),
                        static_cast<Qt::Key>(key), modifiers);
    }

    void edit() const
    {
        press(Qt::Key_E, Qt::ControlModifier);
        ASSERT_TRUE(waitFor([this] { return window.pane->getEditMode(); }));
    }

    void save() const
    {
        press(Qt::Key_Return, Qt::ControlModifier);
        ASSERT_TRUE(waitFor([this] { return !window.pane->getEditMode(); }));
        QCoreApplication::processEvents();
    }

    void cancel()
    {
        window.cancelEditing();
        QApplication::setActiveWindow(&window);
        QCoreApplication::processEvents();
    }

    /// As a wheel or a drag does.
    void scrollTo(int place) const
    {
        bar()->setValue(place);
        ASSERT_EQ(bar()->value(), place);
    }

    /// The whole height of the widget is within the viewport.
    bool isInSight(QWidget* widget) const
    {
        const QWidget* viewport = window.ui->containerScroll->viewport();
        const int top = widget->mapTo(viewport, QPoint(0, 0)).y();
        return top >= 0 && top + widget->height() <= viewport->height();
    }

    EditorWindow window;
};

// The view

TEST_F(EditingFocusTest, SavingKeepsThePanesPlace)
{
    edit();
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    ASSERT_EQ(bar()->value(), 0);
    save();
    EXPECT_EQ(bar()->value(), 0);
}

TEST_F(EditingFocusTest, SavingKeepsThePanesPlaceWhereverItIs)
{
    for (const int place : {0, 17, bar()->maximum() / 2, bar()->maximum()}) {
        SCOPED_TRACE(place);
        edit();
        scrollTo(place);
        save();
        EXPECT_EQ(bar()->value(), place);
    }
}

TEST_F(EditingFocusTest, CancellingKeepsThePanesPlace)
{
    for (const int place : {0, 17, bar()->maximum() / 2, bar()->maximum()}) {
        SCOPED_TRACE(place);
        edit();
        scrollTo(place);
        cancel();
        EXPECT_EQ(bar()->value(), place);
    }
}

TEST_F(EditingFocusTest, EditingStartsInTheFirstEditorInSight)
{
    const int below = window.lineEdit("Title")->y() + 1; // cuts the title
    scrollTo(below);
    edit();
    EXPECT_EQ(focused(), window.lineEdit("Subtitle"));
    EXPECT_EQ(bar()->value(), below);
}

TEST_F(EditingFocusTest, EditingStartsInTheNearestEditorAboveWhereNoneIsInSight)
{
    window.resize(712, 350);
    window.ui->containerScroll->setFixedHeight(60);
    QCoreApplication::processEvents();
    QWidget* lockedEditor = window.lineEdit("Note");
    scrollTo(lockedEditor->y() - 5);
    edit();
    EXPECT_EQ(focused(), window.advancedToggle());
    EXPECT_TRUE(isInSight(focused()));
}

TEST_F(EditingFocusTest, EveryStopOfTheTabKeyIsInSight)
{
    edit();
    clickOn(window.advancedToggle());
    for (int i = 0; i < 40; ++i) {
        press(i < 20 ? Qt::Key_Tab : Qt::Key_Backtab);
        if (window.ui->containerScroll->widget()->isAncestorOf(focused())) {
            EXPECT_TRUE(isInSight(focused())) << i << focused()->accessibleName();
        }
    }
}

TEST_F(EditingFocusTest, TheEditedFieldStaysInSightInALowerWindow)
{
    window.resize(900, 900);
    ASSERT_TRUE(waitFor([this] { return bar()->maximum() == 0; }));
    edit();
    window.lineEdit("Margin")->setFocus();
    window.resize(712, 350);
    ASSERT_TRUE(waitFor([this] { return bar()->maximum() > 0; }));
    EXPECT_TRUE(isInSight(window.lineEdit("Margin")));
}

// The focus after an edit

TEST_F(EditingFocusTest, DownGoesToTheNextProfileAfterSaving)
{
    edit();
    QTest::keyClicks(focused(), "Torch");
    save();
    EXPECT_EQ(focused(), list());
    press(Qt::Key_Down);
    EXPECT_EQ(window.currentRow(), 2);
    EXPECT_EQ(window.titles(), QStringList({"A", "Torch", "C"}));
}

TEST_F(EditingFocusTest, DownGoesToTheNextProfileAfterCancelling)
{
    edit();
    cancel();
    EXPECT_EQ(focused(), list());
    press(Qt::Key_Down);
    EXPECT_EQ(window.currentRow(), 2);
}

TEST_F(EditingFocusTest, ButtonsClickedWithTheMouseReturnTheFocusToTheList)
{
    clickOn(window.ui->editProfileButton);
    EXPECT_EQ(focused(), window.lineEdit("Title"));
    clickOn(window.ui->saveChangesButton);
    EXPECT_EQ(focused(), list());
    clickOn(window.ui->editProfileButton);
    cancel();
    EXPECT_EQ(focused(), list());
}

TEST_F(EditingFocusTest, ReturnsToTheEditButtonThatWasPressed)
{
    window.ui->editProfileButton->setFocus();
    press(Qt::Key_Space);
    ASSERT_TRUE(window.pane->getEditMode());
    save();
    EXPECT_EQ(focused(), window.ui->editProfileButton);
}

TEST_F(EditingFocusTest, TabReachesTheEditButton)
{
    for (int i = 0; i < 20 && focused() != window.ui->editProfileButton; ++i) {
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(focused(), window.ui->editProfileButton);
}

TEST_F(EditingFocusTest, GoesToTheEditButtonWhereTheListCannotTakeIt)
{
    edit();
    list()->setEnabled(false);
    save();
    EXPECT_EQ(focused(), window.ui->editProfileButton);
}

// The start of an edit

TEST_F(EditingFocusTest, TheFirstTextIsSelected)
{
    edit();
    EXPECT_EQ(window.lineEdit("Title")->selectedText(), "B");
    QTest::keyClicks(focused(), "New");
    EXPECT_EQ(window.lineEdit("Title")->text(), "New");
}

TEST_F(EditingFocusTest, TheFirstTextIsSelectedInTheWizardToo)
{
    clickOn(window.ui->addProfileButton);
    QWidget* wizard = nullptr;
    ASSERT_TRUE(waitFor([&wizard] {
        wizard = QApplication::activeModalWidget();
        return wizard != nullptr;
    }));
    QApplication::setActiveWindow(wizard);
    clickOn(childNamed<QPushButton>(wizard, "nextButton"));
    const auto* title = qobject_cast<QLineEdit*>(cellOf(gridOf(wizard), "Title", 3));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->selectedText(), "Alpha");
    clickOn(childNamed<QPushButton>(wizard, "cancelButton"));
}
