// The global settings editor, used with mouse and keyboard.

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "settingsui/globalsettingsdialog.h"
#include "settingsui/globalsettingsmanager.h"
#include "support/gui/dialogscript.h"
#include "support/gui/editorwindow.h"
#include "support/gui/testschema.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <functional>
#include <memory>

namespace
{
/// The test schema with another name, kind of default and bound in its global block.
QByteArray newerSchema()
{
    QByteArray text = TestSchema::text();
    text.replace("\"Supply Voltage\", \"V\", General, 14.6",
                 "\"Input Voltage\", \"V\", General, 20");
    text.replace("\"Bench\"", "\"Field\"");
    return text;
}
} // namespace

class GlobalSettingsTest : public ::testing::Test
{
protected:
    explicit GlobalSettingsTest(const QByteArray& schema = TestSchema::text())
        : generator(TestSchema::parse(schema)), window(std::make_unique<QWidget>()),
          manager(new GlobalSettingsManager(window.get(), generator.get(), window.get()))
    {
        window->show();
    }

    ~GlobalSettingsTest() override
    {
        window.reset();
        expectNoWindowLeft();
    }

    /// Presses the command.
    void open()
    {
        manager->on_editGlobalSettingsClicked();
        dialog = window->findChild<GlobalSettingsDialog*>();
        ASSERT_TRUE(dialog != nullptr);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(dialog, patience));
    }

    /// Hands over another schema, as a reload does; the old one stays alive.
    void reload(const QByteArray& schema = newerSchema())
    {
        oldGenerator = std::move(generator);
        generator = TestSchema::parse(schema);
        manager->setAllSettings(generator.get());
    }

    QLineEdit* field(const QString& label) const
    {
        auto* found = qobject_cast<QLineEdit*>(cellOf(gridOf(dialog), label, 3));
        EXPECT_NE(found, nullptr) << label.toStdString();
        return found;
    }

    QCheckBox* box(const QString& label) const
    {
        auto* found = qobject_cast<QCheckBox*>(cellOf(gridOf(dialog), label, 3));
        EXPECT_NE(found, nullptr) << label.toStdString();
        return found;
    }

    QCheckBox* toggle() const { return box("Edit Advanced Settings"); }

    static QString valueIn(const HParser::Generator& schema, const QString& name)
    {
        const auto* setting = schema.getGlobalSettings()->getStructSettingByDescriptiveName(name);
        EXPECT_NE(setting, nullptr) << name.toStdString();
        return setting->getValue();
    }

    QString value(const QString& name) const { return valueIn(*generator, name); }

    bool advancedEdited() const
    {
        return generator->getGlobalSettings()->getAdvancedSettingsEdited();
    }

    /// Edits every kind of setting.
    void editAll() const
    {
        enterText(field("Charger Name"), "Van");
        enterText(field("Supply Voltage"), "12.5");
        clickOn(box("Key Tone"));
        clickOn(toggle());
        enterText(field("Fan Steps"), "7");
    }

    void expectEdited() const
    {
        EXPECT_EQ(value("Charger Name"), "Van");
        EXPECT_EQ(value("Supply Voltage"), "12.5");
        EXPECT_EQ(value("Key Tone"), "false");
        EXPECT_EQ(value("Fan Steps"), "7");
        EXPECT_TRUE(advancedEdited());
    }

    void expectDefaults() const
    {
        EXPECT_EQ(value("Charger Name"), "Bench");
        EXPECT_EQ(value("Supply Voltage"), "14.6");
        EXPECT_EQ(value("Key Tone"), "true");
        EXPECT_EQ(value("Fan Steps"), "4");
        EXPECT_FALSE(advancedEdited());
    }

    void pressOk() const
    {
        clickOn(childNamed<QPushButton>(dialog, "okPushButton"));
        expectClosed();
    }

    /// Presses "Cancel" and answers its question.
    void pressCancel(const QString& answer) const
    {
        const auto press = [this] { clickOn(childNamed<QPushButton>(dialog, "cancelPushButton")); };
        answerQuestion(press, answer);
    }

    /// Does something that has to ask, and answers.
    static void answerQuestion(const std::function<void()>& act, const QString& answer)
    {
        DialogScript script;
        script.expectQuestion("Cancel Editing?",
                              "All your changes will be lost. Do you want to continue?", answer);
        act();
    }

    void expectClosed() const
    {
        flushDeletions();
        EXPECT_TRUE(dialog.isNull());
    }

    void expectOpen() const
    {
        flushDeletions();
        ASSERT_FALSE(dialog.isNull());
        EXPECT_TRUE(dialog->isVisible());
    }

    std::unique_ptr<HParser::Generator> oldGenerator;
    std::unique_ptr<HParser::Generator> generator;
    std::unique_ptr<QWidget> window;
    GlobalSettingsManager* manager;
    QPointer<GlobalSettingsDialog> dialog;
};

// The manager's block

TEST_F(GlobalSettingsTest, BlockHasTheSchemasDefaults)
{
    expectDefaults();
}

TEST_F(GlobalSettingsTest, BlockHasTheNewSchemasDefaultsAfterAReload)
{
    open();
    editAll();
    pressOk();
    reload();
    EXPECT_EQ(value("Charger Name"), "Field");
    EXPECT_EQ(value("Input Voltage"), "20");
    EXPECT_EQ(value("Key Tone"), "true");
    EXPECT_EQ(value("Fan Steps"), "4");
    EXPECT_FALSE(advancedEdited());
    open();
    EXPECT_EQ(field("Charger Name")->text(), "Field");
    EXPECT_EQ(field("Input Voltage")->text(), "20");
    EXPECT_FALSE(toggle()->isChecked());
}

// The dialog

TEST_F(GlobalSettingsTest, DialogHasItsTextsAndModality)
{
    open();
    EXPECT_EQ(dialog->windowTitle(), "Global Settings Editor");
    EXPECT_EQ(dialog->windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(dialog->parent(), window.get());
    EXPECT_EQ(QApplication::activeModalWidget(), dialog); // and the command has returned
    EXPECT_EQ(childNamed<QLabel>(dialog, "label")->text(), "Global Settings Editor");
    EXPECT_EQ(childNamed<QPushButton>(dialog, "okPushButton")->text(), "OK");
    EXPECT_EQ(childNamed<QPushButton>(dialog, "cancelPushButton")->text(), "Cancel");
    auto* container = childNamed<QWidget>(dialog, "verticalLayoutWidget");
    EXPECT_EQ(container->layout(), childNamed<QVBoxLayout>(dialog, "containerLayout"));
}

TEST_F(GlobalSettingsTest, WindowHasATitleBarAndASystemMenuOnly)
{
    open();
    EXPECT_TRUE(dialog->isWindow());
    const Qt::WindowFlags flags = dialog->windowFlags();
    EXPECT_TRUE(flags.testFlag(Qt::WindowTitleHint));
    EXPECT_TRUE(flags.testFlag(Qt::WindowSystemMenuHint));
    EXPECT_FALSE(flags & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowCloseButtonHint));
}

TEST_F(GlobalSettingsTest, GridIsInTheContainer)
{
    open();
    auto* container = childNamed<QVBoxLayout>(dialog, "containerLayout");
    ASSERT_EQ(container->count(), 1);
    EXPECT_EQ(container->itemAt(0)->layout(), gridOf(dialog));
    reload();
    flushDeletions();
    ASSERT_EQ(container->count(), 1);
    EXPECT_EQ(container->itemAt(0)->layout(), gridOf(dialog));
}

TEST_F(GlobalSettingsTest, SmallDialogsScroll)
{
    open();
    dialog->resize(dialog->minimumSizeHint());
    clickOn(toggle());
    field("Charger Name")->setFocus();
    EXPECT_LT(dialog->height(), 200);
    for (QWidget* editor : std::initializer_list<QWidget*>{field("Supply Voltage"), box("Key Tone"),
                                                           toggle(), field("Fan Steps")}) {
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(dialog->focusWidget(), editor);
        EXPECT_EQ(editor->visibleRegion().boundingRect().height(), editor->height());
    }
}

TEST_F(GlobalSettingsTest, OpensInEditMode)
{
    open();
    for (const char* name : {"Charger Name", "Supply Voltage"}) {
        EXPECT_TRUE(field(name)->isEnabled()) << name;
    }
    EXPECT_TRUE(box("Key Tone")->isEnabled());
    EXPECT_TRUE(toggle()->isEnabled());
    EXPECT_FALSE(toggle()->isChecked());
    EXPECT_FALSE(field("Fan Steps")->isEnabled());
    EXPECT_EQ(cellOf(gridOf(dialog), "Scale", 3), nullptr); // a list: its label alone
    EXPECT_EQ(dialog->focusWidget(), field("Charger Name"));
}

TEST_F(GlobalSettingsTest, AdvancedEditorsFollowTheToggle)
{
    open();
    clickOn(toggle());
    EXPECT_TRUE(field("Fan Steps")->isEnabled());
    enterText(field("Fan Steps"), "7");
    EXPECT_EQ(value("Fan Steps"), "7");
    clickOn(toggle());
    EXPECT_FALSE(field("Fan Steps")->isEnabled());
    EXPECT_EQ(field("Fan Steps")->text(), "4");
}

TEST_F(GlobalSettingsTest, NumbersAreHeldWithinTheirBounds)
{
    open();
    enterText(field("Supply Voltage"), "99");
    EXPECT_EQ(field("Supply Voltage")->text(), "30");
    enterText(field("Supply Voltage"), "1");
    EXPECT_EQ(field("Supply Voltage")->text(), "9");
}

// OK

TEST_F(GlobalSettingsTest, OkKeepsTheEditedValues)
{
    open();
    editAll();
    pressOk();
    expectEdited();
    open();
    EXPECT_EQ(field("Charger Name")->text(), "Van");
    EXPECT_EQ(field("Supply Voltage")->text(), "12.5");
    EXPECT_FALSE(box("Key Tone")->isChecked());
    EXPECT_TRUE(toggle()->isChecked());
    EXPECT_TRUE(field("Fan Steps")->isEnabled());
    EXPECT_EQ(field("Fan Steps")->text(), "7");
}

TEST_F(GlobalSettingsTest, OkKeepsWhatIsStillBeingTyped)
{
    open();
    typeOver(field("Supply Voltage"), "99");
    pressOk();
    EXPECT_EQ(value("Supply Voltage"), "30");
}

TEST_F(GlobalSettingsTest, OkKeepsWhatIsTypedWhereButtonsTakeNoFocus)
{
    open();
    childNamed<QPushButton>(dialog, "okPushButton")->setFocusPolicy(Qt::NoFocus);
    typeOver(field("Charger Name"), "Van");
    pressOk();
    EXPECT_EQ(value("Charger Name"), "Van");
}

TEST_F(GlobalSettingsTest, ReturnPressesOk)
{
    open();
    typeOver(field("Charger Name"), "Van");
    QTest::keyClick(field("Charger Name"), Qt::Key_Return);
    expectClosed();
    EXPECT_EQ(value("Charger Name"), "Van");
}

// Cancel

TEST_F(GlobalSettingsTest, ConfirmedCancelRestoresEveryValue)
{
    open();
    editAll();
    pressCancel("Yes");
    expectClosed();
    expectDefaults();
    open();
    EXPECT_EQ(field("Charger Name")->text(), "Bench");
    EXPECT_FALSE(toggle()->isChecked());
    EXPECT_FALSE(field("Fan Steps")->isEnabled());
}

TEST_F(GlobalSettingsTest, ConfirmedCancelRestoresEarlierEdits)
{
    open();
    editAll();
    pressOk();
    open();
    enterText(field("Charger Name"), "Shed");
    clickOn(box("Key Tone"));
    clickOn(toggle()); // off: advanced values fall back
    EXPECT_EQ(value("Fan Steps"), "4");
    pressCancel("Yes");
    expectClosed();
    expectEdited();
    open();
    EXPECT_TRUE(toggle()->isChecked());
    EXPECT_EQ(field("Fan Steps")->text(), "7");
}

TEST_F(GlobalSettingsTest, ConfirmedCancelDropsWhatIsStillBeingTyped)
{
    open();
    typeOver(field("Charger Name"), "Shed");
    pressCancel("Yes");
    expectClosed();
    expectDefaults();
}

TEST_F(GlobalSettingsTest, CancelRestoresTheEditorsBeforeItDeletesThem)
{
    open();
    editAll();
    const QPointer<QLineEdit> name = field("Charger Name");
    const QPointer<QCheckBox> tone = box("Key Tone");
    pressCancel("Yes");
    ASSERT_FALSE(name.isNull() || tone.isNull()); // until control is back in the event loop
    EXPECT_EQ(name->text(), "Bench");
    EXPECT_TRUE(tone->isChecked());
    expectClosed();
    EXPECT_TRUE(name.isNull() && tone.isNull());
    expectDefaults();
}

TEST_F(GlobalSettingsTest, DeclinedCancelKeepsTheDialogAndTheEdits)
{
    for (const QString& answer : {QString("No"), DialogScript::closeControl}) {
        SCOPED_TRACE(answer.toStdString());
        open();
        editAll();
        pressCancel(answer);
        expectOpen();
        expectEdited();
        EXPECT_EQ(field("Charger Name")->text(), "Van");
        EXPECT_TRUE(field("Fan Steps")->isEnabled());
        pressCancel("Yes");
        expectClosed();
        expectDefaults();
    }
}

TEST_F(GlobalSettingsTest, OkAfterADeclinedCancelKeepsTheEdits)
{
    open();
    editAll();
    pressCancel("No");
    pressOk();
    expectEdited();
}

// Other ways to close

TEST_F(GlobalSettingsTest, CloseControlAsksLikeCancel)
{
    open();
    editAll();
    const auto close = [this] { dialog->close(); };
    answerQuestion(close, "No");
    expectOpen();
    expectEdited();
    answerQuestion(close, "Yes");
    expectClosed();
    expectDefaults();
}

TEST_F(GlobalSettingsTest, EscapeAsksLikeCancel)
{
    open();
    editAll();
    const auto escape = [this] { QTest::keyClick(dialog.data(), Qt::Key_Escape); };
    answerQuestion(escape, "No");
    expectOpen();
    expectEdited();
    answerQuestion(escape, "Yes");
    expectClosed();
    expectDefaults();
}

TEST_F(GlobalSettingsTest, GoesAwayWithItsWindow)
{
    open();
    typeOver(field("Charger Name"), "Shed");
    const DialogScript nothing;
    window.reset();
    EXPECT_TRUE(dialog.isNull());
}

// A new schema while the dialog is open

TEST_F(GlobalSettingsTest, OpenDialogShowsTheNewBlock)
{
    open();
    editAll();
    typeOver(field("Charger Name"), "half typed");
    reload();
    oldGenerator.reset(); // nothing points into it
    expectOpen();
    EXPECT_EQ(field("Charger Name")->text(), "Field");
    EXPECT_TRUE(field("Charger Name")->isEnabled());
    EXPECT_EQ(field("Input Voltage")->text(), "20");
    EXPECT_EQ(cellOf(gridOf(dialog), "Supply Voltage", 1), nullptr);
    EXPECT_EQ(dialog->focusWidget(), field("Charger Name"));
    EXPECT_FALSE(toggle()->isChecked());
    EXPECT_FALSE(field("Fan Steps")->isEnabled());
}

TEST_F(GlobalSettingsTest, OkAfterAReloadEditsTheNewBlock)
{
    open();
    reload();
    oldGenerator.reset();
    enterText(field("Input Voltage"), "25");
    pressOk();
    EXPECT_EQ(value("Input Voltage"), "25");
    EXPECT_EQ(value("Charger Name"), "Field");
}

TEST_F(GlobalSettingsTest, CancelAfterAReloadRestoresTheNewBlock)
{
    open();
    editAll();
    reload();
    oldGenerator.reset();
    enterText(field("Input Voltage"), "25");
    clickOn(box("Key Tone"));
    pressCancel("Yes");
    expectClosed();
    EXPECT_EQ(value("Input Voltage"), "20");
    EXPECT_EQ(value("Key Tone"), "true");
}

TEST_F(GlobalSettingsTest, ReloadDuringTheQuestionRestoresTheNewBlock)
{
    open();
    editAll();
    DialogScript script;
    script.thenDo([this](QWidget& question) {
        reload();
        oldGenerator.reset();
        clickOn(qobject_cast<QMessageBox*>(&question)->button(QMessageBox::Yes));
    });
    clickOn(childNamed<QPushButton>(dialog, "cancelPushButton"));
    script.finish();
    expectClosed();
    EXPECT_EQ(value("Charger Name"), "Field");
    EXPECT_EQ(value("Key Tone"), "true");
}

// A schema without advanced settings in its block

class PlainGlobalSettingsTest : public GlobalSettingsTest
{
protected:
    PlainGlobalSettingsTest() : GlobalSettingsTest(plainSchema()) {}

    static QByteArray plainSchema()
    {
        QByteArray text = TestSchema::text();
        text.replace("\"Fan Steps\", \"\", General, 4, 3, advanced",
                     "\"Fan Steps\", \"\", General, 4, 3, basic");
        return text;
    }
};

TEST_F(PlainGlobalSettingsTest, HasNoToggle)
{
    open();
    EXPECT_EQ(cellOf(gridOf(dialog), "Edit Advanced Settings", 1), nullptr);
    enterText(field("Fan Steps"), "7");
    pressOk();
    EXPECT_EQ(value("Fan Steps"), "7");
}
