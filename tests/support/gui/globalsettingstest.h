#pragma once

#include "settingsui/globalsettingsdialog.h"
#include "support/gui/editorwindow.h"
#include "support/waiting.h"

/// The test schema with another name, kind of default and bound in its global block.
inline QByteArray newerSchema()
{
    QByteArray text = TestSchema::text();
    text.replace("\"Supply Voltage\", \"V\", General, 14.6",
                 "\"Input Voltage\", \"V\", General, 20");
    text.replace("\"Bench\"", "\"Field\"");
    return text;
}

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

    /// Sets another schema, as a reload does; the old one is kept.
    void reload(const QByteArray& schema = newerSchema())
    {
        oldGenerator = std::move(generator);
        generator = TestSchema::parse(schema);
        manager->setAllSettings(generator.get());
    }

    QLineEdit* field(const QString& label) const { return editorIn<QLineEdit>(dialog, label); }
    QCheckBox* box(const QString& label) const { return editorIn<QCheckBox>(dialog, label); }

    QCheckBox* toggle() const { return box("Edit Advanced Settings"); }

    static QString valueIn(const HParser::Generator& schema, const QString& name)
    {
        const auto* setting = schema.getGlobalSettings()->getStructSettingByDescriptiveName(name);
        EXPECT_NE(setting, nullptr) << name;
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

    /// Performs an action that must ask, and answers.
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
