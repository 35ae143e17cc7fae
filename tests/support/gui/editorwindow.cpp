#include "support/gui/editorwindow.h"

#include "profiles/profilerows.h"
#include "settingsui/settingsgridlayout.h"
#include "support/waiting.h"

#include <QApplication>

EditorWindow::EditorWindow(const QByteArray& schema) : ui(std::make_unique<Ui::MainWindow>())
{
    qRegisterMetaType<ProfileName*>("ProfileName*"); // for signal spies
    qRegisterMetaType<ProfileSettings*>("ProfileSettings*");
    generator = TestSchema::parse(schema).release();
    generator->setParent(this);
    ui->setupUi(this);
    managers.make(ui.get(), generator, this);
    pane = managers.pane;
    list = managers.list;
    importer = managers.importer;
    globalSettings = managers.globalSettings;
    show();
    QApplication::setActiveWindow(this);
    EXPECT_TRUE(QTest::qWaitForWindowActive(this, patience));
}

EditorWindow::~EditorWindow() = default;

ProfileSettings* EditorWindow::add(const QString& title, const QString& chemistry)
{
    auto* profile = new ProfileSettings;
    profile->setChemistry(chemistry, generator);
    profile->settings->getStructSettings().at(0)->setValue(title);
    list->addNewProfile(profile);
    return profile;
}

ProfileSettings* EditorWindow::import(const QString& title, bool active, bool isDefault)
{
    auto* profile = new ProfileSettings;
    profile->setChemistry("Alpha Cell", generator);
    profile->settings->getStructSettings().at(0)->setValue(title);
    list->on_profileReadyForImport(profile, active, isDefault);
    return profile;
}

int EditorWindow::count() const
{
    return ui->profileNamesList->count();
}

ProfileNameListWidget* EditorWindow::item(int row) const
{
    return ProfileRows::itemAt(*ui->profileNamesList, row);
}

ProfileName* EditorWindow::row(int row) const
{
    return item(row)->getProfileName();
}

QStringList EditorWindow::titles() const
{
    QStringList titles;
    for (int i = 0; i < count(); ++i) {
        titles.append(row(i)->getTitle());
    }
    return titles;
}

int EditorWindow::currentRow() const
{
    return list->getCurrentItem() != nullptr ? ui->profileNamesList->row(list->getCurrentItem())
                                             : -1;
}

QList<int> EditorWindow::defaultRows() const
{
    QList<int> rows;
    for (int i = 0; i < count(); ++i) {
        if (row(i)->getDefaultStatus()) {
            rows.append(i);
        }
    }
    return rows;
}

void EditorWindow::clickRow(int rowNumber) const
{
    clickOn(childNamed<QLabel>(row(rowNumber), "profileTitle"));
}

void EditorWindow::clickLight(int rowNumber) const
{
    clickOn(childNamed<QPushButton>(row(rowNumber), "activeProfileButton"));
}

void EditorWindow::clickMark(int rowNumber) const
{
    clickOn(childNamed<QPushButton>(row(rowNumber), "defaultProfileButton"));
}

void EditorWindow::clickCross(int rowNumber) const
{
    clickOn(childNamed<QPushButton>(row(rowNumber), "deleteProfileButton"));
}

QGridLayout* EditorWindow::grid() const
{
    return gridOf(ui->containerScroll);
}

QStringList EditorWindow::gridLabels() const
{
    QStringList labels;
    const QGridLayout* shown = grid();
    for (int i = 0; shown != nullptr && i < shown->rowCount(); ++i) {
        if (const QLayoutItem* cell = shown->itemAtPosition(i, 1)) {
            labels.append(qobject_cast<QLabel*>(const_cast<QLayoutItem*>(cell)->widget())->text());
        }
    }
    return labels;
}

QWidget* EditorWindow::gridCell(const QString& label, int column) const
{
    return cellOf(grid(), label, column);
}

QLineEdit* EditorWindow::lineEdit(const QString& label) const
{
    return editorIn<QLineEdit>(ui->containerScroll, label);
}

QCheckBox* EditorWindow::checkBox(const QString& label) const
{
    return editorIn<QCheckBox>(ui->containerScroll, label);
}

QCheckBox* EditorWindow::advancedToggle() const
{
    return checkBox("Edit Advanced Settings");
}

HParser::StructSetting* EditorWindow::setting(int rowNumber, const QString& name) const
{
    HParser::StructSetting* found =
        row(rowNumber)->getProfileSettings()->settings->getStructSettingByDescriptiveName(name);
    EXPECT_NE(found, nullptr) << name;
    return found;
}

void EditorWindow::cancelEditing(const QString& answer) const
{
    DialogScript script;
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", answer);
    clickOn(ui->cancelChangesButton);
}

QGridLayout* gridOf(const QWidget* root)
{
    // A grid that was replaced waits for its deletion outside of every container.
    const QList<QGridLayout*> grids = root->findChildren<QGridLayout*>();
    for (QGridLayout* grid : grids) {
        if (qobject_cast<SettingsGridLayout*>(grid) != nullptr && grid->count() > 0) {
            return grid;
        }
    }
    return nullptr;
}

QWidget* cellOf(const QGridLayout* grid, const QString& label, int column)
{
    for (int i = 0; grid != nullptr && i < grid->rowCount(); ++i) {
        QLayoutItem* name = grid->itemAtPosition(i, 1);
        const auto* shown = name != nullptr ? qobject_cast<QLabel*>(name->widget()) : nullptr;
        if (shown != nullptr && shown->text() == label) {
            QLayoutItem* cell = grid->itemAtPosition(i, column);
            return cell != nullptr ? cell->widget() : nullptr;
        }
    }
    return nullptr;
}
