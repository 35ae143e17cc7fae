#include "settingsui/settingsgridlayout.h"
#include "support/gui/editorwindow.h"
#include "support/waiting.h"

#include <QAccessible>
#include <QApplication>
#include <QScrollArea>

namespace
{
const char ampersandSchema[] = R"(#define PROFILESTARTADDRESS 0x400
struct Global { // Settings : "Global Settings", global
    unsigned char type; // num, auto, 1, 1, x1, 0, "type", "", Identity, 1, -1, advanced
}
struct Alpha { // Settings : "Alpha Cell", instantiable
    unsigned char type; // num, auto, 2, 2, x1, 0, "type", "", Identity, 2, -1, advanced
    char title[12]; // string, auto, "Title & Name", Profile, "Alpha", 0, basic
    char subtitle[16]; // string, auto, "Subtitle", Profile, "first", 1, basic
    unsigned char active; // bool, 1, "active", Flags, 0, -1, basic
    unsigned char isDefault; // bool, 1, "default", Flags, 0, -1, basic
    unsigned char modifiable; // bool, 6, "modifiable", Flags, 1, -1, basic
    unsigned char charge; // num, auto, 1, 100, x1, 0, "A && B & C", "R&D", General, 10, 2, basic
    unsigned char checksum; // num, auto, 0, 255, x1, 0, "checksum", "", Identity, 0, -1, advanced
}
)";

/// A member line of one kind: T text, B flag, N number, X advanced number, L list.
QByteArray memberLine(char kind, const QByteArray& name, int visualIndex)
{
    const QByteArray index = QByteArray::number(visualIndex);
    switch (kind) {
    case 'T':
        return "char " + name + "[12]; // string, auto, \"" + name + "\", G, \"t\", " + index
               + ", basic\n";
    case 'B':
        return "char " + name + "; // bool, 8, \"" + name + "\", G, 1, " + index + ", basic\n";
    case 'L':
        return "char " + name + "[9]; // list, auto, \"" + name + "\", G, \"a\", " + index
               + ", \"a\", \"b\", basic\n";
    default:
        return "char " + name + "; // num, auto, 0, 9, x1, 0, \"" + name + "\", \"A\", G, 1, "
               + index + (kind == 'X' ? ", advanced\n" : ", basic\n");
    }
}

/// The kinds of the rows from top to bottom; the names of the chemistries.
const QStringList shapes = {"TTBNN", "TTNN", "BNTT", "LNTBXX", "NNNNTB"};

/// Chemistries of these shapes, so that rows are reused in different places.
QByteArray shapesSchema()
{
    QByteArray schema = "#define PROFILESTARTADDRESS 0x400\n"
                        "struct Global { // Settings : \"Global Settings\", global\n"
                        + memberLine('N', "type", -1) + "}\n";
    for (const QString& shape : shapes) {
        const QByteArray kinds = shape.toLatin1();
        schema += "struct " + kinds + " { // Settings : \"" + kinds + "\", instantiable\n";
        for (const char* name : {"active", "default", "modifiable"}) {
            schema += memberLine('B', name, -1);
        }
        for (int i = 0; i < kinds.size(); ++i) {
            schema += memberLine(kinds.at(i), "row" + QByteArray::number(i), i);
        }
        schema += "}\n";
    }
    return schema;
}

QString readerName(QWidget* widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

QString readerDescription(QWidget* widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Description);
}
} // namespace

/// A profile being edited.
class SettingsKeyboardTest : public ::testing::Test
{
protected:
    SettingsKeyboardTest()
    {
        window.add("A");
        clickOn(window.ui->editProfileButton);
    }

    static QWidget* focused() { return QApplication::focusWidget(); }
    static void tab() { QTest::keyClick(focused(), Qt::Key_Tab); }

    EditorWindow window;
};

TEST_F(SettingsKeyboardTest, EditingStartsInTheFirstEditor)
{
    EXPECT_EQ(focused(), window.lineEdit("Title"));
}

TEST_F(SettingsKeyboardTest, TabGoesDownTheEditorsAndThenToTheButtons)
{
    clickOn(window.advancedToggle());
    window.lineEdit("Title")->setFocus();
    for (const char* name : {"Subtitle", "Cells", "Current", "Balance"}) {
        tab();
        EXPECT_EQ(focused(), window.gridCell(name, 3)) << name;
    }
    for (const char* name :
         {"Edit Advanced Settings", "Cutoff", "Pack Voltage", "Cold Check", "Note", "Margin"}) {
        tab();
        EXPECT_EQ(focused(), window.gridCell(name, 3)) << name;
    }
    tab();
    EXPECT_EQ(focused(), window.ui->cancelChangesButton);
    tab();
    EXPECT_EQ(focused(), window.ui->saveChangesButton);
    tab();
    EXPECT_EQ(focused(), window.ui->profileNamesList);
}

TEST_F(SettingsKeyboardTest, TabReachesTheFlagsBeforeTheEditors)
{
    window.ui->profileNameDownButton->setFocus();
    for (QWidget* expected : {static_cast<QWidget*>(window.ui->profileSettingsActiveCB),
                              static_cast<QWidget*>(window.ui->profileSettingsDefaultCB),
                              static_cast<QWidget*>(window.ui->profileSettingsModifiableCB),
                              static_cast<QWidget*>(window.ui->containerScroll),
                              static_cast<QWidget*>(window.lineEdit("Title"))}) {
        tab();
        EXPECT_EQ(focused(), expected) << expected->objectName();
    }
}

TEST_F(SettingsKeyboardTest, SavingAndCancellingReturnTheFocusToEditWhereItWasPressed)
{
    clickOn(window.ui->saveChangesButton);
    window.ui->editProfileButton->setFocus();
    QTest::keyClick(focused(), Qt::Key_Space);
    QTest::keyClick(focused(), Qt::Key_Return, Qt::ControlModifier);
    ASSERT_TRUE(waitFor([this] { return window.ui->editProfileButton->isEnabled(); }));
    EXPECT_EQ(focused(), window.ui->editProfileButton);
    QTest::keyClick(focused(), Qt::Key_Space);
    EXPECT_EQ(focused(), window.lineEdit("Title"));
    window.cancelEditing();
    EXPECT_EQ(window.focusWidget(), window.ui->editProfileButton);
}

TEST_F(SettingsKeyboardTest, TabOrderHoldsAfterASecondEdit)
{
    window.cancelEditing(); // rebuilds the grid
    QApplication::setActiveWindow(&window);
    clickOn(window.ui->editProfileButton);
    window.lineEdit("Margin")->setFocus();
    tab();
    EXPECT_EQ(focused(), window.ui->cancelChangesButton);
}

/// Profiles of different shapes; the rows of the previous one are reused.
class RecycledRowsTest : public ::testing::Test
{
protected:
    void add(const QString& shape)
    {
        auto* profile = new ProfileSettings;
        profile->setChemistry(shape, window.generator);
        window.list->addNewProfile(profile);
    }

    void addAll()
    {
        for (const QString& shape : shapes) {
            add(shape);
        }
    }

    void edit()
    {
        QApplication::setActiveWindow(&window);
        clickOn(window.ui->editProfileButton);
    }

    bool isAdvanced() const { return window.gridLabels().contains("Edit Advanced Settings"); }

    /// The enabled editors, from top to bottom.
    QList<QWidget*> editorsFromTop() const
    {
        QList<QWidget*> editors;
        for (const QString& label : window.gridLabels()) {
            QWidget* editor = window.gridCell(label, 3);
            if (editor != nullptr && editor->isEnabled()) {
                editors.append(editor);
            }
        }
        return editors;
    }

    /// Edits the profile that is shown and goes through it by the Tab key, there and back.
    void expectTabGoesDown()
    {
        edit();
        if (isAdvanced()) {
            clickOn(window.advancedToggle());
        }
        QList<QWidget*> expected = editorsFromTop();
        expected.prepend(window.ui->containerScroll);
        expected += {window.ui->cancelChangesButton, window.ui->saveChangesButton,
                     window.ui->profileNamesList};
        window.ui->profileSettingsModifiableCB->setFocus();
        for (int i = 0; i < expected.size(); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), expected.at(i)) << "stop " << i;
        }
        for (int i = expected.size() - 2; i >= 0; --i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
            EXPECT_EQ(QApplication::focusWidget(), expected.at(i)) << "back to stop " << i;
        }
        clickOn(window.ui->saveChangesButton);
    }

    EditorWindow window{shapesSchema()};
};

TEST_F(RecycledRowsTest, TabFollowsTheRowsAfterAnotherChemistryWasShown)
{
    add("TTBNN");
    add("TTNN");
    expectTabGoesDown();
}

TEST_F(RecycledRowsTest, TabFollowsTheRowsWhateverWasShownBefore)
{
    addAll();
    for (int first = 0; first < shapes.size(); ++first) {
        for (int second = 0; second < shapes.size(); ++second) {
            SCOPED_TRACE(shapes.at(first) + ' ' + shapes.at(second));
            window.clickRow(first);
            window.clickRow(second);
            expectTabGoesDown();
            ASSERT_FALSE(HasFailure());
        }
    }
}

TEST_F(RecycledRowsTest, EditingStartsInTheFirstRowWhateverWasShownBefore)
{
    addAll();
    for (int first = 0; first < shapes.size(); ++first) {
        for (int second = 0; second < shapes.size(); ++second) {
            window.clickRow(first);
            window.clickRow(second);
            edit();
            EXPECT_EQ(QApplication::focusWidget(), editorsFromTop().first())
                << shapes.at(first) << ' ' << shapes.at(second);
            clickOn(window.ui->saveChangesButton);
        }
    }
}

TEST_F(RecycledRowsTest, AScreenReaderReadsFromTopToBottom)
{
    addAll();
    for (int first = 0; first < shapes.size(); ++first) {
        for (int second = 0; second < shapes.size(); ++second) {
            window.clickRow(first);
            window.clickRow(second);
            QStringList read;
            const auto* container =
                QAccessible::queryAccessibleInterface(window.ui->containerScroll->widget());
            for (int i = 0; i < container->childCount(); ++i) {
                const QAccessibleInterface* child = container->child(i);
                const QString name = child->text(QAccessible::Name);
                const bool isUnits = name == "A";
                if (child->role() == QAccessible::StaticText && !child->state().invisible
                    && !isUnits) {
                    read.append(name);
                }
            }
            EXPECT_EQ(read, window.gridLabels()) << shapes.at(first) << ' ' << shapes.at(second);
        }
    }
}

// Names

TEST_F(SettingsKeyboardTest, EveryLabelIsTheBuddyOfItsEditor)
{
    for (const QString& name : window.gridLabels()) {
        auto* label = qobject_cast<QLabel*>(window.gridCell(name, 1));
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->buddy(), window.gridCell(name, 3)) << name;
    }
}

TEST_F(SettingsKeyboardTest, EditorsAreNamedAfterTheirSettingsWithTheirUnits)
{
    EXPECT_EQ(readerName(window.lineEdit("Current")), "Current");
    EXPECT_EQ(readerDescription(window.lineEdit("Current")), "A, General");
    EXPECT_EQ(readerName(window.checkBox("Balance")), "Balance");
    EXPECT_EQ(readerDescription(window.checkBox("Balance")), "General");
    EXPECT_EQ(readerDescription(window.lineEdit("Title")), "Profile");
    EXPECT_EQ(readerName(window.advancedToggle()), "Edit Advanced Settings");
}

TEST(SettingsLabels, AmpersandsAreShownAndNoMnemonics)
{
    EditorWindow window(ampersandSchema);
    window.add("A");
    auto* label = qobject_cast<QLabel*>(window.grid()->itemAtPosition(2, 1)->widget());
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), "A &&&& B && C");
    EXPECT_EQ(readerName(label), "A && B & C");
    EXPECT_EQ(readerName(label->buddy()), "A && B & C");
    EXPECT_EQ(readerDescription(label->buddy()), "R&D, General");
    // Drawn as a label without a buddy draws it.
    QLabel plain("A && B & C");
    plain.setFont(label->font());
    plain.setTextFormat(Qt::PlainText);
    EXPECT_EQ(label->sizeHint(), plain.sizeHint());
}
