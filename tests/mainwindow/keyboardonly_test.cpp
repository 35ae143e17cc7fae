// A day's work without a mouse, with the simulated charger as the uploader.

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "profiles/profilename.h"
#include "profiles/profilesettings.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"

#include <QMenu>
#include <QTimer>

#include <functional>

class KeyboardOnlyTest : public MainWindowTest
{
protected:
    KeyboardOnlyTest()
    {
        installSimulator();
        start();
    }

    /// Activates windows like a window manager when one opens or closes.
    void activate(QWidget* shown) const
    {
        QApplication::setActiveWindow(shown);
        ASSERT_TRUE(QTest::qWaitForWindowActive(shown, patience));
    }

    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QCoreApplication::processEvents(); // a user types only after the window is drawn
        QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(QApplication::activeWindow(), nullptr);
        QTest::keyClick(focus != nullptr ? focus : QApplication::activeWindow(), key, modifiers);
    }

    static void type(const QString& text)
    {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        typeText(QApplication::focusWidget(), text);
    }

    /// The dialog that receives the next keys.
    QWidget* dialogAfter(Qt::Key key, Qt::KeyboardModifiers modifiers) const
    {
        activate(window.get());
        press(key, modifiers);
        EXPECT_TRUE(waitFor([] { return QApplication::activeModalWidget() != nullptr; }));
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog != nullptr) {
            activate(dialog);
        }
        return dialog;
    }

    /// Presses keys in the next dialog.
    void answer(DialogScript& script, const QString& title, const std::function<void()>& keys) const
    {
        script.thenDo([this, title, keys](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), title);
            activate(&dialog);
            keys();
        });
    }

    static void waitForNoDialog()
    {
        ASSERT_TRUE(waitFor([] { return QApplication::activeModalWidget() == nullptr; }));
        flushDeletions();
    }

    void makeProfileByKeys(const QString& title, int chemistry) const
    {
        QWidget* wizard = dialogAfter(Qt::Key_N, Qt::ControlModifier);
        ASSERT_NE(wizard, nullptr);
        for (int i = 0; i < chemistry; ++i) {
            press(Qt::Key_Down); // the chemistries have the focus
        }
        press(Qt::Key_Return);
        press(Qt::Key_A, Qt::ControlModifier);
        type(title);
        press(Qt::Key_Tab);
        press(Qt::Key_A, Qt::ControlModifier);
        type("No mouse");
        press(Qt::Key_Return);
        waitForNoDialog();
    }

    void transferByKeys(Qt::Key key, bool replaces) const
    {
        QWidget* dialog = dialogAfter(key, Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_NE(dialog, nullptr);
        DialogScript script;
        if (replaces) {
            answer(script, "Add Profiles to List?", [] { press(Qt::Key_R, Qt::AltModifier); });
        }
        answer(script, "Stay in Bootloader Mode or Reset?", [] {
            press(Qt::Key_Tab);
            press(Qt::Key_Space); // reset
        });
        press(Qt::Key_Return);
        waitForNoDialog();
        script.finish();
    }

    /// Selects the row above and changes its number of cells.
    void changeNumberOfCells(const QString& number) const
    {
        activate(window.get());
        list()->setFocus(Qt::TabFocusReason);
        press(Qt::Key_Up);
        press(Qt::Key_E, Qt::ControlModifier);
        auto* save = child<QPushButton>("saveChangesButton");
        ASSERT_TRUE(waitFor([save] { return save->isEnabled(); }));
        press(Qt::Key_Tab);
        press(Qt::Key_Tab);
        press(Qt::Key_A, Qt::ControlModifier);
        type(number);
        press(Qt::Key_Return, Qt::ControlModifier);
        ASSERT_TRUE(waitFor([save] { return !save->isEnabled(); }));
    }

    /// Makes the selected row active and the default, from button to button.
    void makeDefault() const
    {
        list()->setFocus(Qt::TabFocusReason);
        press(Qt::Key_Tab);
        press(Qt::Key_Tab);
        press(Qt::Key_Space);
    }

    void saveByKeys(const QString& file) const
    {
        DialogScript script;
        answer(script, "Select XML File to Export Profiles", [&file] { enter(file); });
        answer(script, "Export to XML status", [] { press(Qt::Key_Return); });
        press(Qt::Key_S, Qt::ControlModifier);
    }

    void deleteAllByKeys() const
    {
        DialogScript script;
        activate(window.get());
        answer(script, "Delete all profiles?", [] { press(Qt::Key_Y, Qt::AltModifier); });
        press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
    }

    void loadByKeys(const QString& file) const
    {
        DialogScript script;
        activate(window.get());
        answer(script, "Select XML File to Import Profiles", [&file] { enter(file); });
        press(Qt::Key_O, Qt::ControlModifier);
    }

    void readHelpByKeys() const
    {
        DialogScript script;
        activate(window.get());
        answer(script, "Basic Usage", [] { press(Qt::Key_Return); });
        press(Qt::Key_F1);
    }

    void quitByKeys() const
    {
        activate(window.get());
        QTimer::singleShot(0, window.get(), [] { press(Qt::Key_Q, Qt::ControlModifier); });
        QTimer::singleShot(patience, window.get(), [] { QCoreApplication::exit(EXIT_FAILURE); });
        EXPECT_EQ(QApplication::exec(), EXIT_SUCCESS);
    }

    static void enter(const QString& text)
    {
        type(text);
        press(Qt::Key_Return);
    }

    void expectBothProfiles() const
    {
        EXPECT_EQ(titles(), QStringList({"First", "Lead"}));
        EXPECT_EQ(value(0, "Number of Cells"), "5");
        EXPECT_EQ(value(0, "default"), "true");
    }

    QString value(int number, const QString& name) const
    {
        return row(number)
            ->getProfileSettings()
            ->settings->getStructSettingByDescriptiveName(name)
            ->getValue();
    }
};

TEST_F(KeyboardOnlyTest, WholeMainJobNeedsNoMouse)
{
    const FakePorts ports({"COM7"});
    const QString file = pathOf("by-keys.xml");
    makeProfileByKeys("First", 0);
    makeProfileByKeys("Lead", 2);
    changeNumberOfCells("5");
    makeDefault();
    expectBothProfiles();
    saveByKeys(file);
    EXPECT_TRUE(QFile::exists(file));
    deleteAllByKeys();
    ASSERT_EQ(list()->count(), 0);
    loadByKeys(file);
    expectBothProfiles();
    transferByKeys(Qt::Key_W, false);
    transferByKeys(Qt::Key_R, true);
    expectBothProfiles();
    readHelpByKeys();
    quitByKeys();
}

TEST_F(KeyboardOnlyTest, MenusOpenWithF10)
{
    press(Qt::Key_F10);
    auto* file = child<QMenu>("menuFile");
    ASSERT_TRUE(waitFor([file] { return file->isVisible(); }));
    QTest::keyClick(file, Qt::Key_Right);
    auto* edit = child<QMenu>("menuEdit");
    ASSERT_TRUE(waitFor([edit] { return edit->isVisible(); }));
    QTest::keyClick(edit, Qt::Key_Right);
    auto* help = child<QMenu>("menuHelp");
    ASSERT_TRUE(waitFor([help] { return help->isVisible(); }));
    EXPECT_EQ(help->activeAction(), command("actionHelp_2"));
    DialogScript script;
    answer(script, "Basic Usage", [] { press(Qt::Key_Return); });
    QTest::keyClick(help, Qt::Key_Return);
    script.finish();
}

TEST_F(KeyboardOnlyTest, EveryKeyIsUsedOnce)
{
    QStringList keys;
    const QList<QAction*> actions = window->findChildren<QAction*>();
    for (const QAction* action : actions) {
        keys.append(action->shortcut().toString());
    }
    const QList<QAbstractButton*> buttons = window->findChildren<QAbstractButton*>();
    for (const QAbstractButton* button : buttons) {
        keys.append(button->shortcut().toString());
    }
    keys.removeAll(QString());
    const int all = keys.size();
    EXPECT_GE(all, 16);
    EXPECT_EQ(keys.removeDuplicates(), 0) << all;
}
