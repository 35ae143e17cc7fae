// The rows and columns of the settings pane.

#include "support/gui/settingspanetest.h"

#include <QApplication>

TEST_F(SettingsPaneTest, GridHasARowForEachSettingInScreenOrder)
{
    window.add("A");
    EXPECT_EQ(window.gridLabels(),
              QStringList({"Title", "Subtitle", "Mode", "Cells", "Current", "Balance",
                           "Edit Advanced Settings", "Cutoff", "Pack Voltage", "Cold Check", "Note",
                           "Ending", "Margin"}));
}

TEST_F(SettingsPaneTest, GridHasEditorsAndUnitsInTheirColumns)
{
    window.add("A");
    EXPECT_EQ(window.lineEdit("Title")->objectName(), "SettingsLineEdit");
    EXPECT_EQ(window.lineEdit("Current")->objectName(), "SettingsLineEdit");
    EXPECT_EQ(window.checkBox("Balance")->objectName(), "SettingsCheckBox");
    const auto* units = qobject_cast<QLabel*>(window.gridCell("Current", 5));
    ASSERT_NE(units, nullptr);
    EXPECT_EQ(units->text(), "A");
    EXPECT_EQ(qobject_cast<QLabel*>(window.gridCell("Pack Voltage", 5))->text(), "V");
    for (const char* name : {"Title", "Note", "Balance", "Cold Check", "Mode"}) {
        EXPECT_EQ(window.gridCell(name, 5), nullptr) << name;
    }
    const QGridLayout* grid = window.grid();
    for (int row = 0; row < grid->rowCount(); ++row) {
        for (const int column : {0, 2, 4}) {
            EXPECT_EQ(grid->itemAtPosition(row, column), nullptr) << row << "," << column;
        }
    }
}

TEST_F(SettingsPaneTest, TextEditorsHaveRoomForTheirTexts)
{
    window.add("A");
    QCoreApplication::processEvents();
    const QLineEdit* subtitle = window.lineEdit("Subtitle");
    constexpr int frame = 4; // on each side
    EXPECT_GE(subtitle->width(),
              subtitle->fontMetrics().horizontalAdvance("Workshop winter") + 2 * frame);
    EXPECT_EQ(window.lineEdit("Current")->width(), subtitle->width()); // one column
}

TEST_F(SettingsPaneTest, AClearedPaneShowsTheNextProfile)
{
    window.add("A");
    const QPointer<QLineEdit> title = window.lineEdit("Title");
    window.pane->clearSettingsPane();
    EXPECT_EQ(window.grid(), nullptr);
    flushDeletions();
    EXPECT_TRUE(title.isNull());
    window.add("B", "Plain Cell");
    EXPECT_EQ(window.gridLabels(), QStringList({"Title", "Subtitle", "Capacity"}));
    edit();
    EXPECT_EQ(QApplication::focusWidget(), window.lineEdit("Title"));
}

TEST_F(SettingsPaneTest, ListSettingsShowTheirLabelAlone)
{
    window.add("A");
    for (const bool isEditing : {false, true}) {
        if (isEditing) {
            edit();
            clickOn(window.advancedToggle());
        }
        for (const char* name : {"Mode", "Ending"}) {
            EXPECT_NE(window.gridCell(name, 1), nullptr) << name;
            EXPECT_EQ(window.gridCell(name, 3), nullptr) << name;
            EXPECT_EQ(window.gridCell(name, 5), nullptr) << name;
        }
    }
    save();
    EXPECT_EQ(value("Mode"), "Slow");
    EXPECT_EQ(value("Ending"), "Stop");
}

TEST_F(SettingsPaneTest, GridUsesItsFont)
{
    window.add("A");
    for (QWidget* widget : {window.gridCell("Current", 1), window.gridCell("Current", 3),
                            window.gridCell("Current", 5), window.gridCell("Balance", 1),
                            window.gridCell("Balance", 3), window.gridCell("Title", 3),
                            window.gridCell("Edit Advanced Settings", 1),
                            window.gridCell("Edit Advanced Settings", 3)}) {
        EXPECT_EQ(widget->font().family(), "Lucida Grande");
        EXPECT_EQ(widget->font().pointSize(), 11);
    }
}

TEST_F(SettingsPaneTest, AdvancedSettingsStandBelowTheirToggle)
{
    window.add("A");
    const auto* label = qobject_cast<QLabel*>(window.gridCell("Edit Advanced Settings", 1));
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->styleSheet(), "QLabel { color : red; }");
    EXPECT_EQ(window.advancedToggle()->objectName(), "AdvancedModeToggleCheckBox");
    EXPECT_EQ(window.gridLabels().count("Edit Advanced Settings"), 1);
}

TEST_F(SettingsPaneTest, NoToggleWithoutAdvancedSettings)
{
    window.add("A", "Plain Cell");
    EXPECT_FALSE(window.gridLabels().contains("Edit Advanced Settings"));
    EXPECT_EQ(window.findChild<QCheckBox*>("AdvancedModeToggleCheckBox"), nullptr);
    edit();
    EXPECT_TRUE(window.lineEdit("Capacity")->isEnabled());
    enterText(window.lineEdit("Capacity"), "55");
    save();
    EXPECT_EQ(value("Capacity"), "55");
    edit();
    enterText(window.lineEdit("Capacity"), "66");
    window.cancelEditing();
    EXPECT_EQ(value("Capacity"), "55");
}

TEST_F(SettingsPaneTest, GridShowsTheValues)
{
    window.add("A");
    EXPECT_EQ(window.lineEdit("Title")->text(), "A");
    EXPECT_EQ(window.lineEdit("Current")->text(), "2.5");
    EXPECT_EQ(window.lineEdit("Cutoff")->text(), "0.25");
    EXPECT_TRUE(window.checkBox("Balance")->isChecked());
    EXPECT_FALSE(window.checkBox("Cold Check")->isChecked());
    EXPECT_FALSE(window.advancedToggle()->isChecked());
}
