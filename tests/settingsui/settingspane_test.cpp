// The settings pane and its grid, used with mouse and keyboard.

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "profiles/profilename.h"
#include "profiles/profilenameslistmanager.h"
#include "profiles/profilesettings.h"
#include "settingsui/settingsgridlayout.h"
#include "settingsui/settingspanemanager.h"
#include "support/gui/dialogscript.h"
#include "support/gui/editorwindow.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDoubleValidator>
#include <QGridLayout>
#include <QLineEdit>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

namespace
{
const QStringList basicFields = {"Title", "Subtitle", "Cells", "Current", "Margin"};
const QStringList advancedFields = {"Cutoff", "Pack Voltage", "Note"};
} // namespace

class SettingsPaneTest : public ::testing::Test
{
protected:
    ~SettingsPaneTest() override
    {
        QLocale::setDefault(QLocale::c());
        flushDeletions();
    }

    void edit() { clickOn(window.ui->editProfileButton); }
    /// As a keyboard that has this character sends it.
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
            EXPECT_EQ(window.lineEdit(name)->isEnabled(), enabled) << name.toStdString();
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
            EXPECT_FALSE(widget->isEnabled()) << widget->objectName().toStdString();
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

// Showing

TEST_F(SettingsPaneTest, IsHiddenWithoutAProfile)
{
    for (const QWidget* widget : paneWidgets()) {
        EXPECT_FALSE(widget->isVisible()) << widget->objectName().toStdString();
    }
    EXPECT_FALSE(window.pane->getEditMode());
    EXPECT_EQ(window.grid(), nullptr);
}

TEST_F(SettingsPaneTest, ShowsTheSelectedProfileInViewMode)
{
    window.add("Torch");
    QCoreApplication::processEvents();
    for (const QWidget* widget : paneWidgets()) {
        EXPECT_TRUE(widget->isVisible()) << widget->objectName().toStdString();
    }
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "Torch");
    EXPECT_EQ(window.ui->profileSettingsSubtitle->text(), "first");
    expectFlagBoxes(false, false, true);
    expectViewMode();
    EXPECT_EQ(window.ui->containerScroll->styleSheet(), "background-color:white;");
    for (int i = 0; i < window.grid()->count(); ++i) {
        EXPECT_TRUE(window.grid()->itemAt(i)->widget()->isVisible()) << i;
    }
}

TEST_F(SettingsPaneTest, AnnouncesTheEndOfEditingWhenAProfileIsShown)
{
    QSignalSpy editing(window.pane, &SettingsPaneManager::editing);
    window.add("Torch");
    ASSERT_EQ(editing.count(), 1);
    EXPECT_EQ(editing.at(0).at(0), false);
}

TEST_F(SettingsPaneTest, FollowsTheSelection)
{
    window.import("A", true, true);
    window.row(0)->getProfileSettings()->setModifiable(false);
    window.add("B", "Plain Cell");
    expectFlagBoxes(false, false, true);
    EXPECT_EQ(window.gridLabels(), QStringList({"Title", "Subtitle", "Capacity"}));
    window.clickRow(0);
    expectFlagBoxes(true, true, false);
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "A");
    EXPECT_TRUE(window.gridLabels().contains("Current"));
    expectViewMode();
}

TEST_F(SettingsPaneTest, SelectingUsesTheSameEditorsAgain)
{
    window.add("A");
    const QPointer<QLineEdit> field = window.lineEdit("Current");
    const QPointer<QLineEdit> advanced = window.lineEdit("Cutoff");
    window.add("B");
    EXPECT_EQ(window.lineEdit("Current"), field);
    window.add("P", "Plain Cell");
    EXPECT_FALSE(advanced->isVisible());
    EXPECT_EQ(window.gridLabels(), QStringList({"Title", "Subtitle", "Capacity"}));
    EXPECT_EQ(window.grid()->count(), 7); // three labels, three editors, the units
    const QWidget* container = window.grid()->parentWidget();
    const int widgets = container->findChildren<QWidget*>().size();
    window.clickRow(0);
    EXPECT_EQ(window.gridLabels().size(), 13);
    EXPECT_TRUE(window.lineEdit("Cutoff")->isVisible());
    window.clickRow(2);
    EXPECT_EQ(container->findChildren<QWidget*>().size(), widgets);
}

TEST_F(SettingsPaneTest, AnotherProfileIsShownFromItsFirstRowAndColumn)
{
    window.add("A");
    window.add("B");
    const QScrollBar* across = window.ui->containerScroll->horizontalScrollBar();
    const QScrollBar* down = window.ui->containerScroll->verticalScrollBar();
    window.ui->containerScroll->setFixedSize(150, 80); // less than the grid needs
    ASSERT_TRUE(waitFor([=] { return across->maximum() > 0 && down->maximum() > 0; }));
    window.ui->containerScroll->ensureVisible(2000, 2000);
    ASSERT_GT(across->value(), 0);
    ASSERT_GT(down->value(), 0);
    window.clickRow(0);
    EXPECT_EQ(across->value(), 0);
    EXPECT_EQ(down->value(), 0);
}

TEST_F(SettingsPaneTest, EditorsFollowTheSelectedProfileAlone)
{
    window.add("A");
    window.add("B");
    window.setting(0, "Current")->setValue(7.0);
    EXPECT_EQ(window.lineEdit("Current")->text(), "2.5");
    window.setting(1, "Current")->setValue(3.0);
    EXPECT_EQ(window.lineEdit("Current")->text(), "3");
    window.clickRow(0);
    EXPECT_EQ(window.lineEdit("Current")->text(), "7");
    EXPECT_EQ(window.lineEdit("Title")->text(), "A");
}

TEST_F(SettingsPaneTest, ProfilesNotShownDisturbNoEdit)
{
    window.add("A");
    window.add("B");
    edit();
    window.lineEdit("Current")->setText("3.75");
    window.setting(0, "Current")->setValue(7.0);
    window.setting(0, "Cutoff")->enableAdvancedMode(true);
    EXPECT_EQ(window.lineEdit("Current")->text(), "3.75");
    EXPECT_FALSE(window.lineEdit("Cutoff")->isEnabled());
}

TEST_F(SettingsPaneTest, EditsGoIntoTheSelectedProfileAlone)
{
    window.add("A");
    window.add("B");
    edit();
    enterText(window.lineEdit("Current"), "9");
    clickOn(window.checkBox("Balance"));
    save();
    EXPECT_EQ(window.setting(0, "Current")->getValue(), "2.5");
    EXPECT_TRUE(window.setting(0, "Balance")->isOn());
    EXPECT_EQ(window.setting(1, "Current")->getValue(), "9");
    EXPECT_FALSE(window.setting(1, "Balance")->isOn());
}

TEST_F(SettingsPaneTest, UndoBringsNoValueOfAnotherProfile)
{
    window.add("A");
    edit();
    enterText(window.lineEdit("Current"), "9");
    save();
    window.add("B");
    edit();
    QLineEdit* field = window.lineEdit("Current");
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(field->text(), "2.5");
}

TEST_F(SettingsPaneTest, TextsKeepTheLengthOfTheirOwnField)
{
    window.add("P", "Plain Cell");
    window.add("A");
    EXPECT_EQ(window.lineEdit("Note")->maxLength(), 7);
    EXPECT_EQ(window.lineEdit("Subtitle")->maxLength(), 15);
}

TEST_F(SettingsPaneTest, TabFollowsTheRowsOfAnotherChemistry)
{
    window.add("A");
    window.add("P", "Plain Cell");
    window.add("B"); // its rows come from both
    edit();
    clickOn(window.advancedToggle());
    QStringList reached;
    window.lineEdit("Title")->setFocus();
    for (int i = 0; i < 11; ++i) {
        reached.append(QApplication::focusWidget()->accessibleName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(reached, QStringList({"Title", "Subtitle", "Cells", "Current", "Balance",
                                    "Edit Advanced Settings", "Cutoff", "Pack Voltage",
                                    "Cold Check", "Note", "Margin"}));
    EXPECT_EQ(QApplication::focusWidget(), window.ui->cancelChangesButton);
}

TEST_F(SettingsPaneTest, ShowsTheFlagsOfTheRowAlone)
{
    window.add("A");
    const QPointer<QGridLayout> grid = window.grid();
    window.clickMark(0);
    expectFlagBoxes(true, true, true);
    EXPECT_EQ(window.grid(), grid);
}

// The grid

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

// Starting to edit

TEST_F(SettingsPaneTest, EditEnablesTheEditorsAndAnnouncesIt)
{
    window.add("A");
    QSignalSpy editing(window.pane, &SettingsPaneManager::editing);
    edit();
    EXPECT_TRUE(window.pane->getEditMode());
    ASSERT_EQ(editing.count(), 1);
    EXPECT_EQ(editing.at(0).at(0), true);
    EXPECT_FALSE(window.ui->editProfileButton->isEnabled());
    for (const QWidget* widget : std::initializer_list<QWidget*>{
             window.ui->profileSettingsTitle, window.ui->profileSettingsSubtitle,
             window.ui->profileSettingsActiveCB, window.ui->profileSettingsDefaultCB,
             window.ui->profileSettingsModifiableCB, window.ui->saveChangesButton,
             window.ui->cancelChangesButton, window.advancedToggle(), window.checkBox("Balance")}) {
        EXPECT_TRUE(widget->isEnabled()) << widget->objectName().toStdString();
    }
    for (const QString& name : basicFields) {
        EXPECT_TRUE(window.lineEdit(name)->isEnabled()) << name.toStdString();
    }
}

TEST_F(SettingsPaneTest, AdvancedEditorsStayDisabledUntilTheToggle)
{
    window.add("A");
    edit();
    expectAdvancedEditorsEnabled(false);
    EXPECT_FALSE(window.advancedToggle()->isChecked());
    clickOn(window.advancedToggle());
    expectAdvancedEditorsEnabled(true);
    EXPECT_TRUE(settings()->getAdvancedSettingsEdited());
}

TEST_F(SettingsPaneTest, AdvancedEditorsAreEnabledWhereTheyWereEditedBefore)
{
    window.add("A");
    edit();
    clickOn(window.advancedToggle());
    enterText(window.lineEdit("Cutoff"), "1.5");
    save();
    expectGridEnabled(false);
    EXPECT_EQ(value("Cutoff"), "1.5");
    edit();
    EXPECT_TRUE(window.advancedToggle()->isChecked());
    expectAdvancedEditorsEnabled(true);

    // Also after the pane was rebuilt.
    save();
    window.add("B");
    window.clickRow(0);
    expectGridEnabled(false);
    EXPECT_TRUE(window.advancedToggle()->isChecked());
    edit();
    expectAdvancedEditorsEnabled(true);
    EXPECT_EQ(window.lineEdit("Cutoff")->text(), "1.5");
}

TEST_F(SettingsPaneTest, ProfileThatIsNotModifiableCanBeEdited)
{
    window.add("A")->setModifiable(false);
    window.add("B");
    window.clickRow(0);
    expectFlagBoxes(false, false, false);
    edit();
    EXPECT_TRUE(window.pane->getEditMode());
    EXPECT_TRUE(window.lineEdit("Title")->isEnabled());
}

// The advanced toggle

TEST_F(SettingsPaneTest, UncheckingTheToggleReturnsComputedValues)
{
    window.add("A");
    edit();
    clickOn(window.advancedToggle());
    enterText(window.lineEdit("Cutoff"), "1.5");
    enterText(window.lineEdit("Pack Voltage"), "13");
    EXPECT_EQ(value("Cutoff"), "1.5");
    enterText(window.lineEdit("Current"), "4");
    clickOn(window.advancedToggle());
    EXPECT_EQ(value("Cutoff"), "0.4");
    EXPECT_EQ(value("Pack Voltage"), "12");
    EXPECT_EQ(window.lineEdit("Cutoff")->text(), "0.4");
    EXPECT_EQ(window.lineEdit("Pack Voltage")->text(), "12");
    EXPECT_FALSE(settings()->getAdvancedSettingsEdited());
    expectAdvancedEditorsEnabled(false);
    EXPECT_TRUE(window.lineEdit("Current")->isEnabled());
}

TEST_F(SettingsPaneTest, TogglesStateIsSaved)
{
    window.add("A");
    edit();
    clickOn(window.advancedToggle());
    save();
    EXPECT_TRUE(settings()->getAdvancedSettingsEdited());
    edit();
    clickOn(window.advancedToggle());
    save();
    EXPECT_FALSE(settings()->getAdvancedSettingsEdited());
}

// Typing

TEST_F(SettingsPaneTest, NumberAboveItsBoundIsCorrectedWhenTheFieldIsLeft)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "99");
    EXPECT_EQ(value("Current"), "2.5"); // not before
    QTest::keyClick(window.lineEdit("Current"), Qt::Key_Tab);
    EXPECT_EQ(window.lineEdit("Current")->text(), "20");
    EXPECT_EQ(value("Current"), "20");
    enterText(window.lineEdit("Current"), "-3");
    EXPECT_EQ(window.lineEdit("Current")->text(), "0.1");
}

TEST_F(SettingsPaneTest, ReturnKeyCommitsAField)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "99");
    QTest::keyClick(window.lineEdit("Current"), Qt::Key_Return);
    EXPECT_EQ(window.lineEdit("Current")->text(), "20");
    EXPECT_TRUE(window.pane->getEditMode());
}

TEST_F(SettingsPaneTest, ClickIntoAnotherFieldCommitsTheFirst)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "1.236");
    clickOn(window.lineEdit("Margin"));
    EXPECT_EQ(window.lineEdit("Current")->text(), "1.24");
    EXPECT_EQ(value("Current"), "1.24");
}

TEST_F(SettingsPaneTest, InvalidNumbersCannotBeTyped)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "1x2y");
    EXPECT_EQ(window.lineEdit("Current")->text(), "12");
    typeOver(window.lineEdit("Current"), "abc");
    EXPECT_EQ(window.lineEdit("Current")->text(), "");
}

TEST_F(SettingsPaneTest, ValidatorTakesEveryDouble)
{
    window.add("A");
    const auto* validator =
        qobject_cast<const QDoubleValidator*>(window.lineEdit("Current")->validator());
    ASSERT_NE(validator, nullptr);
    EXPECT_EQ(validator->bottom(), -1.7976931348623157e308);
    EXPECT_EQ(validator->top(), 1.7976931348623157e308);
    EXPECT_EQ(validator->decimals(), 20);
    EXPECT_EQ(qobject_cast<const QDoubleValidator*>(window.lineEdit("Title")->validator()),
              nullptr);
}

TEST_F(SettingsPaneTest, NumbersAreShownWithAPointInEveryLocale)
{
    QLocale::setDefault(QLocale::German);
    window.add("A");
    EXPECT_EQ(window.lineEdit("Current")->text(), "2.5");
    edit();
    enterText(window.lineEdit("Current"), "1.5");
    EXPECT_EQ(window.lineEdit("Current")->text(), "1.5");
    EXPECT_EQ(value("Current"), "1.5");
}

TEST_F(SettingsPaneTest, CommaIsRefusedInTheCLocaleToo)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "1,7");
    EXPECT_EQ(window.lineEdit("Current")->text(), "17");
}

TEST_F(SettingsPaneTest, EmptyNumberCountsAsZeroWhenSaved)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Current"), "");
    save();
    EXPECT_EQ(value("Current"), "0.1"); // zero, brought to the lower bound
    EXPECT_EQ(window.lineEdit("Current")->text(), "0.1");
}

TEST_F(SettingsPaneTest, TextIsLimitedToItsField)
{
    window.add("A");
    EXPECT_EQ(window.lineEdit("Title")->maxLength(), 11);
    EXPECT_EQ(window.lineEdit("Subtitle")->maxLength(), 15);
    EXPECT_EQ(window.lineEdit("Note")->maxLength(), 7);
    edit();
    typeOver(window.lineEdit("Title"), "0123456789ABCDEF");
    EXPECT_EQ(window.lineEdit("Title")->text(), "0123456789A");
    save();
    EXPECT_EQ(value("Title"), "0123456789A");
}

TEST_F(SettingsPaneTest, CharactersThatTheChargerCannotHoldAreRefusedWithAHint)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Title"), "B");
    typeBeyondAscii(window.lineEdit("Title"), "\xC3\xA4");
    QTest::keyClicks(window.lineEdit("Title"), "r 3");
    EXPECT_EQ(window.lineEdit("Title")->text(), "Br 3");
    EXPECT_TRUE(waitFor([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(
        QToolTip::text(),
        QString::fromUtf8(
            "The Kelvaron can only store plain English letters, digits and punctuation (ASCII), "
            "not \"\xC3\xA4\"."));
    save();
    EXPECT_EQ(value("Title"), "Br 3");
}

TEST_F(SettingsPaneTest, NoHintForATextThatIsTooLong)
{
    QToolTip::hideText();
    ASSERT_TRUE(waitFor([] { return !QToolTip::isVisible(); }));
    window.add("A");
    edit();
    typeOver(window.lineEdit("Title"), "0123456789ABCDEF");
    EXPECT_FALSE(QToolTip::isVisible());
}

TEST_F(SettingsPaneTest, PastedTextThatTheChargerCannotHoldIsRefusedWhole)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Title"), "one");
    QGuiApplication::clipboard()->setText(QString::fromUtf8(" tw\xC3\xB6"));
    QTest::keySequence(window.lineEdit("Title"), QKeySequence(QKeySequence::Paste));
    EXPECT_EQ(window.lineEdit("Title")->text(), "one");
    QGuiApplication::clipboard()->setText(" two");
    QTest::keySequence(window.lineEdit("Title"), QKeySequence(QKeySequence::Paste));
    EXPECT_EQ(window.lineEdit("Title")->text(), "one two");
}

TEST_F(SettingsPaneTest, ImportedTextWithSuchCharactersCanBeMended)
{
    window.add("A");
    const QString imported = QString::fromUtf8("B\xC3\xA4r");
    window.setting(0, "Subtitle")->setValue(imported);
    window.add("B");
    window.clickRow(0); // shows what came in
    edit();
    QLineEdit* field = window.lineEdit("Subtitle");
    EXPECT_EQ(field->text(), imported);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_End);
    QTest::keyClicks(field, "1");
    typeBeyondAscii(field, "\xC3\xBC");
    EXPECT_EQ(field->text(), imported + "1"); // the other one is refused
    QTest::keyClick(field, Qt::Key_Tab);      // and leaving the field stores it
    EXPECT_EQ(value("Subtitle"), imported + "1");
    typeOver(field, "Baer");
    save();
    EXPECT_EQ(value("Subtitle"), "Baer");
}

TEST_F(SettingsPaneTest, FormulasRefreshOtherEditors)
{
    window.add("A");
    edit();
    enterText(window.lineEdit("Current"), "0.8");
    EXPECT_EQ(window.lineEdit("Margin")->text(), "0.8"); // its upper bound
    EXPECT_EQ(value("Margin"), "0.8");
    EXPECT_EQ(window.lineEdit("Cutoff")->text(), "0.08"); // its default
    enterText(window.lineEdit("Cells"), "5");
    EXPECT_EQ(window.lineEdit("Pack Voltage")->text(), "20");
}

TEST_F(SettingsPaneTest, CheckBoxWritesAtOnce)
{
    window.add("A");
    edit();
    clickOn(window.checkBox("Balance"));
    EXPECT_EQ(value("Balance"), "false");
    clickOn(window.checkBox("Balance"));
    EXPECT_EQ(value("Balance"), "true");
}

// Saving

TEST_F(SettingsPaneTest, SaveStoresEverythingAndReturnsToViewMode)
{
    window.add("A");
    edit();
    enterText(window.lineEdit("Title"), "Torch");
    enterText(window.lineEdit("Subtitle"), "blue");
    enterText(window.lineEdit("Cells"), "4");
    clickOn(window.checkBox("Balance"));
    clickOn(window.ui->profileSettingsModifiableCB);
    const QPointer<QGridLayout> grid = window.grid();
    QSignalSpy editing(window.pane, &SettingsPaneManager::editing);
    save();
    EXPECT_EQ(value("Title"), "Torch");
    EXPECT_EQ(value("Cells"), "4");
    EXPECT_EQ(value("Balance"), "false");
    EXPECT_EQ(window.row(0)->getTitle(), "Torch");
    EXPECT_EQ(window.row(0)->getSubtitle(), "blue");
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "Torch");
    EXPECT_EQ(window.ui->profileSettingsSubtitle->text(), "blue");
    EXPECT_FALSE(window.row(0)->getProfileSettings()->getModifiable());
    expectViewMode();
    ASSERT_EQ(editing.count(), 1);
    EXPECT_EQ(editing.at(0).at(0), false);
    EXPECT_EQ(window.grid(), grid); // not rebuilt
}

TEST_F(SettingsPaneTest, SaveTakesTheFieldThatStillHasTheFocus)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Title"), "Torch");
    ASSERT_TRUE(window.lineEdit("Title")->hasFocus());
    window.pane->on_saveButtonClicked();
    EXPECT_EQ(value("Title"), "Torch");
    EXPECT_EQ(window.row(0)->getTitle(), "Torch");

    edit();
    typeOver(window.lineEdit("Current"), "1.236");
    window.pane->on_saveButtonClicked();
    EXPECT_EQ(value("Current"), "1.24");
    EXPECT_EQ(window.lineEdit("Current")->text(), "1.24");
}

TEST_F(SettingsPaneTest, UncommittedAdvancedNumberSurvivesASaveBelowItsFormulaSource)
{
    window.add("A");
    edit();
    clickOn(window.advancedToggle());
    typeOver(window.lineEdit("Pack Voltage"), "14.5"); // follows "Cells", which is saved before it
    window.pane->on_saveButtonClicked();
    EXPECT_EQ(value("Pack Voltage"), "14.5");
}

TEST_F(SettingsPaneTest, SavedDefaultMakesAnInactiveProfileActiveAndTakesTheMark)
{
    window.import("A", true, true);
    window.add("B");
    edit();
    clickOn(window.ui->profileSettingsDefaultCB);
    expectFlagBoxes(true, true, true);
    EXPECT_EQ(window.defaultRows(), QList<int>({0})); // not before it is saved
    save();
    EXPECT_EQ(window.defaultRows(), QList<int>({1}));
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    EXPECT_TRUE(window.row(0)->getActiveStatus());
    EXPECT_EQ(window.list->getDefaultItem(), window.item(1));
    expectFlagBoxes(true, true, true);
}

TEST_F(SettingsPaneTest, SavedInactiveTakesTheDefaultToo)
{
    window.import("A", true, true);
    edit();
    clickOn(window.ui->profileSettingsActiveCB);
    expectFlagBoxes(false, false, true);
    save();
    EXPECT_FALSE(window.row(0)->getActiveStatus());
    EXPECT_TRUE(window.defaultRows().isEmpty());
    EXPECT_EQ(window.list->getDefaultItem(), nullptr);
}

TEST_F(SettingsPaneTest, UncheckingDefaultAloneKeepsActive)
{
    window.import("A", true, true);
    edit();
    clickOn(window.ui->profileSettingsDefaultCB);
    expectFlagBoxes(true, false, true);
    save();
    EXPECT_TRUE(window.row(0)->getActiveStatus());
    EXPECT_TRUE(window.defaultRows().isEmpty());
}

TEST_F(SettingsPaneTest, CheckingActiveAloneChangesNothingElse)
{
    window.add("A");
    edit();
    clickOn(window.ui->profileSettingsActiveCB);
    expectFlagBoxes(true, false, true);
    save();
    EXPECT_TRUE(window.row(0)->getActiveStatus());
    EXPECT_TRUE(window.defaultRows().isEmpty());
}

TEST_F(SettingsPaneTest, ImportedFlagsThatDisagreeSurviveASave)
{
    window.import("A", false, true); // default but not active, as its file had it
    edit();
    save();
    EXPECT_FALSE(window.row(0)->getActiveStatus());
    EXPECT_EQ(window.defaultRows(), QList<int>({0}));
}

// Cancelling

TEST_F(SettingsPaneTest, CancelAsksAndNoKeepsEditing)
{
    window.add("A");
    edit();
    enterText(window.lineEdit("Current"), "7");
    clickOn(window.ui->profileSettingsActiveCB);
    const QPointer<QGridLayout> grid = window.grid();
    for (const QString& answer : {QString("No"), DialogScript::closeControl}) {
        window.cancelEditing(answer);
        EXPECT_TRUE(window.pane->getEditMode());
        EXPECT_EQ(value("Current"), "7");
        EXPECT_EQ(window.lineEdit("Current")->text(), "7");
        EXPECT_TRUE(window.lineEdit("Current")->isEnabled());
        EXPECT_FALSE(window.ui->editProfileButton->isEnabled());
        expectFlagBoxes(true, false, true);
        EXPECT_EQ(window.grid(), grid);
    }
    save();
    EXPECT_EQ(value("Current"), "7");
}

TEST_F(SettingsPaneTest, CancelRestoresEveryValue)
{
    window.add("A");
    edit();
    enterText(window.lineEdit("Title"), "Other");
    enterText(window.lineEdit("Cells"), "6");
    enterText(window.lineEdit("Current"), "7");
    enterText(window.lineEdit("Margin"), "3");
    clickOn(window.checkBox("Balance"));
    clickOn(window.advancedToggle());
    enterText(window.lineEdit("Cutoff"), "1.5");
    enterText(window.lineEdit("Note"), "changed");
    clickOn(window.checkBox("Cold Check"));
    clickOn(window.ui->profileSettingsActiveCB);
    clickOn(window.ui->profileSettingsModifiableCB);
    QSignalSpy editing(window.pane, &SettingsPaneManager::editing);
    window.cancelEditing();

    const QList<QPair<QString, QString>> expected = {
        {"Title", "A"},  {"Subtitle", "first"}, {"Cells", "3"},   {"Current", "2.5"},
        {"Margin", "1"}, {"Cutoff", "0.25"},    {"Note", "none"}, {"Pack Voltage", "12"}};
    for (const auto& [name, text] : expected) {
        EXPECT_EQ(value(name), text) << name.toStdString();
        EXPECT_EQ(window.lineEdit(name)->text(), text) << name.toStdString();
    }
    EXPECT_EQ(value("Balance"), "true");
    EXPECT_TRUE(window.checkBox("Balance")->isChecked());
    EXPECT_EQ(value("Cold Check"), "false");
    EXPECT_FALSE(window.checkBox("Cold Check")->isChecked());
    EXPECT_FALSE(window.advancedToggle()->isChecked());
    EXPECT_FALSE(settings()->getAdvancedSettingsEdited());
    EXPECT_FALSE(window.setting(0, "Cutoff")->advancedModeEnabled);
    expectFlagBoxes(false, false, true);
    EXPECT_TRUE(window.row(0)->getProfileSettings()->getModifiable());
    EXPECT_EQ(window.row(0)->getTitle(), "A");
    EXPECT_EQ(window.ui->profileSettingsTitle->text(), "A");
    expectViewMode();
    ASSERT_EQ(editing.count(), 1);
    EXPECT_EQ(editing.at(0).at(0), false);
}

TEST_F(SettingsPaneTest, CancelRestoresAdvancedSettingsThatWereEditedBefore)
{
    window.add("A");
    edit();
    clickOn(window.advancedToggle());
    enterText(window.lineEdit("Cutoff"), "1.5");
    enterText(window.lineEdit("Pack Voltage"), "13.123");
    save();
    edit();
    clickOn(window.advancedToggle()); // off: back to the computed values
    EXPECT_EQ(value("Cutoff"), "0.25");
    window.cancelEditing();
    EXPECT_EQ(value("Cutoff"), "1.5");
    EXPECT_EQ(value("Pack Voltage"), "13.123");
    EXPECT_EQ(window.lineEdit("Cutoff")->text(), "1.5");
    EXPECT_TRUE(window.advancedToggle()->isChecked());
    EXPECT_TRUE(settings()->getAdvancedSettingsEdited());
    EXPECT_TRUE(window.setting(0, "Cutoff")->advancedModeEnabled);
    expectViewMode();
    edit();
    expectAdvancedEditorsEnabled(true);
}

TEST_F(SettingsPaneTest, CancelDropsTextThatWasNotCommitted)
{
    window.add("A");
    edit();
    typeOver(window.lineEdit("Title"), "Other");
    window.cancelEditing();
    EXPECT_EQ(value("Title"), "A");
    EXPECT_EQ(window.lineEdit("Title")->text(), "A");
    edit();
    typeOver(window.lineEdit("Current"), "7");
    DialogScript script; // pressed without leaving the field
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "Yes");
    window.pane->on_cancelButtonClicked();
    script.finish();
    QCoreApplication::processEvents();
    EXPECT_EQ(value("Current"), "2.5");
    EXPECT_EQ(value("Cutoff"), "0.25");
    EXPECT_EQ(window.lineEdit("Current")->text(), "2.5");
}

TEST_F(SettingsPaneTest, CancelRestoresImportedValuesOutsideTheirBounds)
{
    ProfileSettings* profile = window.import("A", false, false);
    profile->settings->getStructSettingByDescriptiveName("Current")->storeValueFromText("77.777");
    profile->settings->getStructSettingByDescriptiveName("Cutoff")->storeValueFromText("99");
    profile->settings->getStructSettingByDescriptiveName("Title")->storeValueFromText(
        "longer than its field");
    window.import("B", false, false);
    window.clickRow(0);
    EXPECT_EQ(window.lineEdit("Current")->text(), "77.777");
    edit();
    enterText(window.lineEdit("Current"), "5");
    clickOn(window.advancedToggle());
    window.cancelEditing();
    EXPECT_EQ(value("Current"), "77.777");
    EXPECT_EQ(value("Cutoff"), "99");
    EXPECT_EQ(value("Title"), "longer than its field");
    EXPECT_EQ(window.lineEdit("Current")->text(), "77.777");
}

TEST_F(SettingsPaneTest, CancelRestoresTheEditorsBeforeItDeletesThem)
{
    window.add("A");
    edit();
    const QPointer<QLineEdit> current = window.lineEdit("Current");
    enterText(current, "7");
    window.cancelEditing();
    ASSERT_FALSE(current.isNull()); // until control is back in the event loop
    EXPECT_EQ(current->text(), "2.5");
    flushDeletions();
    EXPECT_TRUE(current.isNull());
}

TEST_F(SettingsPaneTest, CancelledEditorStoresNothingWhenItGoesAway)
{
    ProfileSettings* profile = window.import("A", false, false);
    profile->settings->getStructSettingByDescriptiveName("Current")->storeValueFromText("77.777");
    window.import("B", false, false);
    window.clickRow(0);
    edit();
    QLineEdit* current = window.lineEdit("Current");
    typeOver(current, "7");
    ASSERT_TRUE(current->hasFocus()); // which it loses when it goes
    qobject_cast<SettingsGridLayout*>(window.grid())->cancelSettings();
    flushDeletions();
    EXPECT_EQ(value("Current"), "77.777");
    EXPECT_EQ(window.lineEdit("Current")->text(), "77.777");
}

TEST_F(SettingsPaneTest, FlagsSwitchedInTheRowSurviveACancel)
{
    window.import("A", true, true);
    window.add("B");
    edit();
    window.clickMark(1);
    window.clickLight(0);
    window.cancelEditing();
    EXPECT_FALSE(window.row(0)->getActiveStatus());
    EXPECT_TRUE(window.row(1)->getActiveStatus());
    EXPECT_EQ(window.defaultRows(), QList<int>({1}));
    EXPECT_EQ(window.list->getDefaultItem(), window.item(1));
    EXPECT_TRUE(window.setting(1, "default")->isOn());
    EXPECT_EQ(childNamed<QPushButton>(window.row(1), "defaultProfileButton")->toolTip(), "Default");
    expectFlagBoxes(true, true, true);
}

TEST_F(SettingsPaneTest, GridWorksAfterACancel)
{
    window.add("A");
    edit();
    window.cancelEditing();
    edit();
    enterText(window.lineEdit("Current"), "3");
    clickOn(window.advancedToggle());
    enterText(window.lineEdit("Cutoff"), "0.7");
    save();
    EXPECT_EQ(value("Current"), "3");
    EXPECT_EQ(value("Cutoff"), "0.7");
    EXPECT_EQ(window.gridLabels().size(), 13);
}

// The list runs empty

TEST_F(SettingsPaneTest, HidesWhenTheListRunsEmpty)
{
    window.add("A");
    const QPointer<QLineEdit> field = window.lineEdit("Current");
    const QPointer<HParser::StructSetting> setting = window.setting(0, "Current");
    ASSERT_TRUE(window.list->deleteAllProfilesNoConfirmation());
    flushDeletions();
    for (const QWidget* widget : paneWidgets()) {
        EXPECT_FALSE(widget->isVisible()) << widget->objectName().toStdString();
    }
    EXPECT_FALSE(field->isVisible());
    EXPECT_EQ(setting, nullptr);

    // What is left must not touch the profile that is gone.
    field->setText("3");
    emit field->editingFinished();
    window.pane->on_editButtonClicked();
    window.pane->on_saveButtonClicked();
    EXPECT_FALSE(window.pane->getEditMode());
    QTest::keyClick(&window, Qt::Key_Tab);
    window.resize(1000, 700);
    QCoreApplication::processEvents();
}

TEST_F(SettingsPaneTest, ShowsAProfileAgainAfterTheListRanEmpty)
{
    window.add("A");
    window.list->deleteAllProfilesNoConfirmation();
    flushDeletions();
    window.add("B");
    QCoreApplication::processEvents();
    for (const QWidget* widget : paneWidgets()) {
        EXPECT_TRUE(widget->isVisible()) << widget->objectName().toStdString();
    }
    EXPECT_TRUE(window.lineEdit("Current")->isVisible());
    edit();
    enterText(window.lineEdit("Current"), "4");
    save();
    EXPECT_EQ(value("Current"), "4");
}
