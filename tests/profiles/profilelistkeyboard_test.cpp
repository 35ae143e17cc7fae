#include "profiles/profilelistaccessible.h"
#include "support/gui/contrast.h"
#include "support/gui/editorwindow.h"
#include "support/waiting.h"

#include <QAccessible>
#include <QApplication>

namespace
{
QColor cornerOf(QWidget* widget)
{
    return widget->grab().toImage().pixelColor(1, 1);
}
} // namespace

/// Three rows, the second one selected, the list with the keyboard focus.
class ProfileListKeyboardTest : public ::testing::Test
{
protected:
    ProfileListKeyboardTest()
    {
        window.add("A");
        window.add("B");
        window.add("C");
        window.clickRow(1);
        list()->setFocus();
        EXPECT_TRUE(waitFor([this] { return list()->hasFocus(); }));
    }

    QListWidget* list() const { return window.ui->profileNamesList; }

    QPushButton* button(int row, const QString& name) const
    {
        return childNamed<QPushButton>(window.row(row), name);
    }

    static void press(int key) { QTest::keyClick(QApplication::focusWidget(), Qt::Key(key)); }

    void expectTabThroughRow(int row) const
    {
        list()->setFocus();
        for (const char* name :
             {"activeProfileButton", "defaultProfileButton", "deleteProfileButton"}) {
            press(Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), button(row, name)) << name;
        }
        press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), window.ui->addProfileButton);
        press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), window.ui->profileNameUpButton);
        press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), window.ui->profileNameDownButton);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        EXPECT_EQ(QApplication::focusWidget(), button(row, "deleteProfileButton"));
    }

    EditorWindow window;
};

TEST_F(ProfileListKeyboardTest, TabStopsAtTheSelectedRowsButtonsAlone)
{
    expectTabThroughRow(1);
    list()->setFocus();
    press(Qt::Key_Down);
    expectTabThroughRow(2);
}

TEST_F(ProfileListKeyboardTest, TabStopsAtTheButtonsOfAMovedRow)
{
    clickOn(window.ui->profileNameUpButton);
    ASSERT_EQ(window.currentRow(), 0);
    expectTabThroughRow(0);
}

TEST_F(ProfileListKeyboardTest, SpacePressesTheButtons)
{
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_TRUE(window.row(1)->getDefaultStatus());
    press(Qt::Key_Tab);
    DialogScript script;
    script.expectQuestion("Deleting Profile",
                          "Do you really want to delete the profile <b>\"B\"</b>?", "Yes");
    press(Qt::Key_Space);
    EXPECT_EQ(window.titles(), QStringList({"A", "C"}));
}

TEST_F(ProfileListKeyboardTest, DeleteKeyAsksForTheSelectedRow)
{
    DialogScript script;
    script.expectQuestion("Deleting Profile",
                          "Do you really want to delete the profile <b>\"B\"</b>?", "No");
    QTest::keyClick(list(), Qt::Key_Delete);
    EXPECT_EQ(window.titles(), QStringList({"A", "B", "C"}));
    script.expectQuestion("Deleting Profile",
                          "Do you really want to delete the profile <b>\"B\"</b>?", "Yes");
    QTest::keyClick(list(), Qt::Key_Delete);
    EXPECT_EQ(window.titles(), QStringList({"A", "C"}));
}

TEST_F(ProfileListKeyboardTest, DeleteKeyIsRefusedDuringAnEdit)
{
    clickOn(window.ui->editProfileButton);
    list()->setFocus();
    DialogScript script;
    script.expectMessage("Cannot Delete Profile",
                         "Please save or cancel the changes before deleting this profile.");
    QTest::keyClick(list(), Qt::Key_Delete);
    EXPECT_EQ(window.count(), 3);
}

TEST(ProfileListKeyboard, DeleteKeyInAnEmptyListDoesNothing)
{
    const EditorWindow window;
    QTest::keyClick(window.ui->profileNamesList, Qt::Key_Delete);
    EXPECT_EQ(window.count(), 0);
}

TEST_F(ProfileListKeyboardTest, FocusedButtonIsFramed)
{
    for (const int row : {0, 1}) { // white and grey
        for (const char* name :
             {"activeProfileButton", "defaultProfileButton", "deleteProfileButton"}) {
            QPushButton* rowButton = button(row, name);
            const QColor plain = cornerOf(rowButton);
            rowButton->setFocus();
            ASSERT_TRUE(rowButton->hasFocus());
            EXPECT_GE(contrast(cornerOf(rowButton), plain), 3) << row << name;
            list()->setFocus();
            EXPECT_EQ(cornerOf(rowButton), plain) << row << name;
        }
    }
}

TEST_F(ProfileListKeyboardTest, SelectedRowIsFramedWhileTheListHasTheFocus)
{
    EXPECT_NE(cornerOf(window.row(1)), QColor(200, 200, 200));
    EXPECT_GE(contrast(cornerOf(window.row(1)), QColor(200, 200, 200)), 3);
    EXPECT_EQ(cornerOf(window.row(0)), QColor(Qt::white));
    window.ui->addProfileButton->setFocus();
    EXPECT_EQ(cornerOf(window.row(1)), QColor(200, 200, 200));
}

// The appearance of a row

TEST_F(ProfileListKeyboardTest, RowsFillTheListWhenTheirPartsAreMade)
{
    window.resize(1600, 700);
    QCoreApplication::processEvents();
    window.add("D");
    window.import("E", true, false);
    QCoreApplication::processEvents();
    list()->viewport()->grab(); // painting creates the forms of rows that were not seen yet
    for (int i = 0; i < window.count(); ++i) {
        EXPECT_EQ(window.row(i)->width(), list()->viewport()->width()) << i;
    }
}

TEST_F(ProfileListKeyboardTest, TextsAreDarkOnTheLightRowsInADarkPalette)
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(40, 40, 40)));
    window.clickRow(0); // each row was and was not the selected one
    window.add("D");
    for (int i = 0; i < window.count(); ++i) {
        for (const char* name : {"profileTitle", "profileSubtitle"}) {
            auto* label = childNamed<QLabel>(window.row(i), name);
            const QImage drawn = window.row(i)->grab(label->geometry()).toImage();
            double greatest = 1;
            for (int x = 0; x < drawn.width(); ++x) {
                for (int y = 0; y < drawn.height(); ++y) {
                    if (luminance(drawn.pixelColor(x, y)) < 0.3) {
                        greatest = std::max(greatest, contrast(drawn.pixelColor(x, y), Qt::white));
                    }
                }
            }
            EXPECT_GE(greatest, 4.5) << i << name;
        }
    }
    QApplication::setPalette(before);
}

// Screen readers

TEST_F(ProfileListKeyboardTest, ScreenReaderFindsTheRowsAndTheirButtons)
{
    window.row(0)->setActive(true);
    window.row(0)->setDefault(true);
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(list());
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::List);
    EXPECT_EQ(interface->text(QAccessible::Name), "Profiles");
    ASSERT_EQ(interface->childCount(), 3);
    const QStringList names = {"A, first, Active, Default", "B, first, Not Active",
                               "C, first, Not Active"};
    for (int i = 0; i < 3; ++i) {
        QAccessibleInterface* row = interface->child(i);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->role(), QAccessible::ListItem);
        EXPECT_EQ(row->text(QAccessible::Name), names.at(i));
        EXPECT_EQ(row->parent(), interface);
        EXPECT_EQ(interface->indexOfChild(row), i);
        EXPECT_EQ(row->state().selected, i == 1 ? 1U : 0U);
        EXPECT_EQ(row->state().focused, i == 1 ? 1U : 0U);
        QStringList buttons;
        for (int k = 0; k < row->childCount(); ++k) {
            if (row->child(k)->role() == QAccessible::PushButton) {
                buttons.append(row->child(k)->text(QAccessible::Name) + "; "
                               + row->child(k)->text(QAccessible::Description));
            }
        }
        const QString title = window.titles().at(i);
        EXPECT_EQ(buttons,
                  QStringList({"Active: " + title + (i == 0 ? "; Active" : "; Not Active"),
                               "Default: " + title + (i == 0 ? "; Default" : "; Not Default"),
                               "Delete: " + title + "; Delete Profile"}));
    }
    EXPECT_EQ(interface->focusChild(), interface->child(1));
    const QPoint middle = window.row(2)->mapToGlobal(window.row(2)->rect().center());
    EXPECT_EQ(interface->childAt(middle.x(), middle.y()), interface->child(2));
    EXPECT_EQ(interface->child(3), nullptr);
    EXPECT_EQ(interface->child(-1), nullptr);
}

TEST(ProfileListKeyboard, ScreenReaderKnowsARowWithoutAList)
{
    QListWidget list;
    ProfileListAccessible::install(&list);
    ProfileName row(nullptr, nullptr);
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&row);
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->text(QAccessible::Name), "Title, Subtitle, Not Active");
    EXPECT_FALSE(interface->state().focused);
    EXPECT_NE(interface->parent(), nullptr); // the application
}
