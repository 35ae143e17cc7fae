#pragma once

#include "support/gui/editorwindow.h"

#include <QTest>

inline const QStringList basicFields = {"Title", "Subtitle", "Cells", "Current", "Margin"};
inline const QStringList advancedFields = {"Cutoff", "Pack Voltage", "Note"};

class SettingsPaneTest : public ::testing::Test
{
protected:
    ~SettingsPaneTest() override
    {
        QLocale::setDefault(QLocale::c());
        flushDeletions();
    }

    void edit() { clickOn(window.ui->editProfileButton); }
    /// Sends the key of a keyboard that has this character.
    static void typeBeyondAscii(QWidget* field, const char* character)
    {
        QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString::fromUtf8(character),
                            Qt::NoModifier);
    }

    void save() { clickOn(window.ui->saveChangesButton); }

    QList<QWidget*> paneWidgets() const
    {
        return {window.ui->editProfileButton,        window.ui->profileSettingsTitle,
                window.ui->profileSettingsSubtitle,  window.ui->profileSettingsActiveCB,
                window.ui->profileSettingsDefaultCB, window.ui->profileSettingsModifiableCB,
                window.ui->containerScroll,          window.ui->saveChangesButton,
                window.ui->cancelChangesButton};
    }

    QString value(const QString& name) const
    {
        return window.setting(window.currentRow(), name)->getValue();
    }

    HParser::StructSettings* settings() const
    {
        return window.row(window.currentRow())->getProfileSettings()->settings;
    }

    /// Every widget of the grid is enabled, or none.
    void expectGridEnabled(bool enabled) const
    {
        const QGridLayout* grid = window.grid();
        ASSERT_NE(grid, nullptr);
        for (int i = 0; i < grid->count(); ++i) {
            EXPECT_EQ(grid->itemAt(i)->widget()->isEnabled(), enabled) << i;
        }
    }

    void expectAdvancedEditorsEnabled(bool enabled) const
    {
        for (const QString& name : advancedFields) {
            EXPECT_EQ(window.lineEdit(name)->isEnabled(), enabled) << name;
        }
        EXPECT_EQ(window.checkBox("Cold Check")->isEnabled(), enabled);
    }

    void expectViewMode() const
    {
        EXPECT_FALSE(window.pane->getEditMode());
        EXPECT_TRUE(window.ui->editProfileButton->isEnabled());
        for (const QWidget* widget : std::initializer_list<QWidget*>{
                 window.ui->profileSettingsTitle, window.ui->profileSettingsSubtitle,
                 window.ui->profileSettingsActiveCB, window.ui->profileSettingsDefaultCB,
                 window.ui->profileSettingsModifiableCB, window.ui->saveChangesButton,
                 window.ui->cancelChangesButton}) {
            EXPECT_FALSE(widget->isEnabled()) << widget->objectName();
        }
        expectGridEnabled(false);
    }

    void expectFlagBoxes(bool active, bool isDefault, bool modifiable) const
    {
        EXPECT_EQ(window.ui->profileSettingsActiveCB->isChecked(), active);
        EXPECT_EQ(window.ui->profileSettingsDefaultCB->isChecked(), isDefault);
        EXPECT_EQ(window.ui->profileSettingsModifiableCB->isChecked(), modifiable);
    }

    EditorWindow window;
};
