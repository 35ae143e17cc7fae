#pragma once

#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "profileimport/importprofilesmain.h"
#include "profiles/profilename.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilenameslistmanager.h"
#include "profiles/profilesettings.h"
#include "settingsui/globalsettingsmanager.h"
#include "settingsui/settingspanemanager.h"
#include "support/gui/dialogscript.h"
#include "support/gui/testschema.h"
#include "support/gui/widgets.h"
#include "ui_mainwindow.h"
#include "window/managers.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPushButton>

/// The main window's form with its list and pane, connected as in the program, on a test schema and
/// without an installation. Shown and active when constructed.
class EditorWindow : public QMainWindow
{
public:
    explicit EditorWindow(const QByteArray& schema = TestSchema::text());
    ~EditorWindow() override;

    std::unique_ptr<Ui::MainWindow> ui;
    HParser::Generator* generator = nullptr;
    Managers managers;

    // Those of the managers that most tests use.
    SettingsPaneManager* pane = nullptr;
    ProfileNamesListManager* list = nullptr;
    ImportProfiles::ImportProfilesMain* importer = nullptr;
    GlobalSettingsManager* globalSettings = nullptr;

    /// Adds a profile as a finished wizard does.
    ProfileSettings* add(const QString& title, const QString& chemistry = "Alpha Cell");

    /// Adds a profile as an import does.
    ProfileSettings* import(const QString& title, bool active, bool isDefault);

    int count() const;
    ProfileNameListWidget* item(int row) const;
    ProfileName* row(int row) const;
    QStringList titles() const;

    /// The number of the selected row; -1 when there is none.
    int currentRow() const;

    /// The rows whose default flag is set.
    QList<int> defaultRows() const;

    /// A mouse click on a row, on its light, its mark and its cross.
    void clickRow(int row) const;
    void clickLight(int row) const;
    void clickMark(int row) const;
    void clickCross(int row) const;

    /// The grid that the pane shows; nullptr when there is none.
    QGridLayout* grid() const;

    /// The texts of column 1 from top to bottom.
    QStringList gridLabels() const;

    /// The widget in a column of the row that has this label; nullptr when the cell is empty.
    QWidget* gridCell(const QString& label, int column) const;

    /// The editors of the row that has this label; fail the test when there is none.
    QLineEdit* lineEdit(const QString& label) const;
    QCheckBox* checkBox(const QString& label) const;
    QCheckBox* advancedToggle() const;

    /// The setting of the profile shown in this row of the list; fails the test when it is missing.
    HParser::StructSetting* setting(int row, const QString& name) const;

    /// Presses "Cancel" and answers its question.
    void cancelEditing(const QString& answer = "Yes") const;
};

/// The grid under a widget (the pane's scroll area or a wizard); nullptr when there is none.
QGridLayout* gridOf(const QWidget* root);

/// The widget in a column of the grid's row that has this label; nullptr when the cell is empty.
QWidget* cellOf(const QGridLayout* grid, const QString& label, int column);

/// The editor in the grid's row that has this label; fails the test when there is none.
template <typename T>
T* editorIn(const QWidget* root, const QString& label)
{
    auto* found = qobject_cast<T*>(cellOf(gridOf(root), label, 3));
    EXPECT_NE(found, nullptr) << label;
    return found;
}
