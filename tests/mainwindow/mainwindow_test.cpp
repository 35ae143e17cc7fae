// The main window's form, and what is disabled during an edit.

#include "applicationglobalmap.h"
#include "profiles/profilewizarddialog.h"
#include "support/gui/editorwindow.h"
#include "support/gui/windowtest.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>

namespace
{
QStringList textsOf(const QList<QAction*>& actions)
{
    QStringList texts;
    for (const QAction* action : actions) {
        texts.append(action->isSeparator() ? "-" : action->text());
    }
    return texts;
}

} // namespace

// The form

TEST_F(WindowTest, TitleSizeAndFont)
{
    EXPECT_EQ(window->windowTitle(), "Kelvaron Profile Editor FOR FIRMWARE VERSION 0.9x ONLY");
    EXPECT_EQ(window->minimumSize(), QSize(712, 350));
    window->resize(100, 100);
    EXPECT_EQ(window->size(), QSize(712, 350));
    EXPECT_EQ(window->font().family(), "Lucida Grande");
    EXPECT_FALSE(window->windowIcon().isNull());
}

TEST_F(WindowTest, CommandsHaveTheirTexts)
{
    const QList<QPair<QString, QString>> texts = {
        {"actionHelp", "Help..."},
        {"actionAbout", "About..."},
        {"actionExit", "Exit"},
        {"actionExportXML", "Save Profiles to File..."},
        {"actionImportXML", "Load Profiles from File..."},
        {"actionExportHEX", "Export as HEX..."},
        {"actionImportHEX", "Import from HEX..."},
        {"actionEditGlobalSettings", "Edit Global Settings..."},
        {"actionWriteProfiles", "Write Profiles to Kelvaron..."},
        {"actionReadProfiles", "Read Profiles from Kelvaron..."},
        {"actionFlashFirmware", "Update Kelvaron Firmware..."},
        {"actionDeleteAllProfiles", "Delete all Profiles..."},
        {"actionHelp_2", "Getting Started..."},
        {"actionCheckNewFirmware", "Check for new Firmware..."}};
    for (const auto& [name, text] : texts) {
        EXPECT_EQ(command(name)->text(), text);
    }
}

TEST_F(WindowTest, CommandsHaveTheirKeys)
{
    const QMap<QString, QString> keys = {{"actionExportXML", "Ctrl+S"},
                                         {"actionImportXML", "Ctrl+O"},
                                         {"actionWriteProfiles", "Ctrl+Shift+W"},
                                         {"actionReadProfiles", "Ctrl+Shift+R"},
                                         {"actionCheckNewFirmware", "Ctrl+Shift+U"},
                                         {"actionFlashFirmware", "Ctrl+Shift+F"},
                                         {"actionExit", "Ctrl+Q"},
                                         {"actionDeleteAllProfiles", "Ctrl+Shift+Del"},
                                         {"actionHelp_2", "F1"},
                                         {"actionAbout", "Shift+F1"}};
    for (auto key = keys.cbegin(); key != keys.cend(); ++key) {
        EXPECT_EQ(command(key.key())->shortcut().toString(), key.value());
    }
}

TEST_F(WindowTest, AProfileIsMadeChangedAndMovedByKeysAlone)
{
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), patience));
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(window.get(), key, modifiers);
    };
    // A key shows the button pressed for a moment before it acts.
    const auto expectSoon = [](const std::function<bool()>& condition) {
        EXPECT_TRUE(waitFor(condition));
    };
    press(Qt::Key_N, Qt::ControlModifier);
    expectSoon([this] { return window->findChild<ProfileWizardDialog*>() != nullptr; });
    auto* wizard = window->findChild<ProfileWizardDialog*>();
    ASSERT_NE(wizard, nullptr);
    QTest::keyClick(wizard, Qt::Key_Return); // the chemistry
    QTest::keyClick(wizard, Qt::Key_Return); // its settings
    flushDeletions();
    ASSERT_EQ(list()->count(), 1);
    makeProfile("Second");
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), patience));

    press(Qt::Key_Up, Qt::AltModifier);
    expectSoon([this] { return rowTitle(0) == "Second"; });
    press(Qt::Key_Down, Qt::AltModifier);
    expectSoon([this] { return rowTitle(1) == "Second"; });

    auto* save = child<QPushButton>("saveChangesButton");
    const auto type = [&](const QString& text) {
        press(Qt::Key_E, Qt::ControlModifier);
        expectSoon([save] { return save->isEnabled(); });
        typeOver(
            qobject_cast<QLineEdit*>(cellOf(gridOf(child<QWidget>("containerScroll")), "Title", 3)),
            text);
    };
    type("Changed");
    press(Qt::Key_Return, Qt::ControlModifier);
    expectSoon([this] { return rowTitle(1) == "Changed"; });

    type("Dropped");
    DialogScript script;
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "Yes");
    press(Qt::Key_Escape, Qt::NoModifier);
    expectSoon([save] { return !save->isEnabled(); });
    script.finish();
    EXPECT_EQ(rowTitle(1), "Changed");
}

TEST_F(WindowTest, ButtonsAndBoxesHaveTheirTexts)
{
    EXPECT_EQ(child<QPushButton>("addProfileButton")->text(), "Create New Profile");
    EXPECT_EQ(child<QPushButton>("profileNameUpButton")->text(), "Move Up ▲");
    EXPECT_EQ(child<QPushButton>("profileNameDownButton")->text(), "Move Down ▼");
    EXPECT_EQ(child<QPushButton>("editProfileButton")->text(), "Edit Profile");
    EXPECT_EQ(child<QPushButton>("saveChangesButton")->text(), "Save Changes");
    EXPECT_EQ(child<QPushButton>("cancelChangesButton")->text(), "Cancel");
    EXPECT_EQ(child<QCheckBox>("profileSettingsActiveCB")->text(), "Is Active");
    EXPECT_EQ(child<QCheckBox>("profileSettingsDefaultCB")->text(), "Is Default");
    EXPECT_EQ(child<QCheckBox>("profileSettingsModifiableCB")->text(), "Is Modifiable");
    for (const char* name :
         {"centralWidget", "profileNamesList", "settingsList", "profileSettingsTitle",
          "profileSettingsSubtitle", "containerScroll"}) {
        EXPECT_NE(window->findChild<QWidget*>(name), nullptr) << name;
    }
}

TEST_F(WindowTest, MenusStandInOrder)
{
    EXPECT_EQ(textsOf(child<QMenuBar>("menuBar")->actions()),
              QStringList({"File", "Edit", "Help"}));
    EXPECT_EQ(textsOf(child<QMenu>("menuFile")->actions()),
              QStringList({"Save Profiles to File...", "Load Profiles from File...", "-",
                           "Write Profiles to Kelvaron...", "Read Profiles from Kelvaron...", "-",
                           "Check for new Firmware...", "Update Kelvaron Firmware...", "-", "Exit",
                           "-"}));
    EXPECT_EQ(textsOf(child<QMenu>("menuEdit")->actions()),
              QStringList({"Edit Global Settings...", "-", "Delete all Profiles..."}));
    EXPECT_EQ(textsOf(child<QMenu>("menuHelp")->actions()),
              QStringList({"Getting Started...", "About..."}));
}

TEST_F(WindowTest, HexCommandsAndTheOldHelpAreNowhereToBeSeen)
{
    for (const char* name : {"actionHelp", "actionExportHEX", "actionImportHEX"}) {
        EXPECT_TRUE(command(name)->associatedWidgets().isEmpty()) << name;
    }
}

TEST_F(WindowTest, ToolbarStandsInOrder)
{
    auto* toolbar = child<QToolBar>("mainToolBar");
    EXPECT_EQ(toolbar->iconSize(), QSize(20, 20));
    EXPECT_FALSE(toolbar->isFloatable());
    EXPECT_FALSE(toolbar->isMovable());
    const QList<QAction*> actions = toolbar->actions();
    ASSERT_EQ(actions.size(), 11);
    EXPECT_EQ(
        textsOf(actions.mid(0, 7)),
        QStringList({"Load Profiles from File", "Save Profiles to File", "-", "Delete all Profiles",
                     "-", "Write Profiles to Kelvaron", "Read Profiles from Kelvaron"}));
    const QWidget* wideSpacer = toolbar->widgetForAction(actions.at(7));
    EXPECT_EQ(wideSpacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    const auto* title = qobject_cast<QLabel*>(toolbar->widgetForAction(actions.at(8)));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->text(), "Kelvaron Profile Editor");
    EXPECT_EQ(title->font().family(), "Arial");
    EXPECT_EQ(title->font().pointSize(), 13);
    EXPECT_TRUE(title->font().bold());
    EXPECT_EQ(toolbar->widgetForAction(actions.at(9))->width(), 15);
    const auto* logo = qobject_cast<QLabel*>(toolbar->widgetForAction(actions.at(10)));
    ASSERT_NE(logo, nullptr);
    const QImage shownLogo = logo->pixmap(Qt::ReturnByValue).toImage();
    EXPECT_FALSE(shownLogo.isNull());
    EXPECT_EQ(shownLogo, QIcon(":/new/images/tovo_logo.png").pixmap(64, 20).toImage());
}

TEST_F(WindowTest, ToolbarHasItsIcons)
{
    const auto picture = [](const QIcon& icon) { return icon.pixmap(20, 20).toImage(); };
    const QStyle* style = window->style();
    const QList<QPair<QString, QIcon>> icons = {
        {"Load Profiles from File", style->standardIcon(QStyle::SP_DialogOpenButton)},
        {"Save Profiles to File", style->standardIcon(QStyle::SP_DialogSaveButton)},
        {"Delete all Profiles", style->standardIcon(QStyle::SP_DialogDiscardButton)},
        {"Write Profiles to Kelvaron", QIcon(":/new/images/upload.png")},
        {"Read Profiles from Kelvaron", QIcon(":/new/images/download.png")}};
    for (const auto& [text, icon] : icons) {
        EXPECT_FALSE(picture(icon).isNull()) << text;
        EXPECT_EQ(picture(toolbarCommand(text)->icon()), picture(icon)) << text;
    }
    EXPECT_EQ(picture(window->windowIcon()), picture(QIcon(":/new/images/upload_download.png")));
}

TEST_F(WindowTest, StatusBarShowsTheBuild)
{
    auto* statusBar = child<QStatusBar>("statusBar");
    QList<QLabel*> labels = statusBar->findChildren<QLabel*>();
    labels.removeOne(child<QLabel>("transferStatus"));
    labels.removeOne(child<QLabel>("listStatus"));
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.first()->text(), "Kelvaron Profile Editor for Mac OS: v0.99 - "
                                      "3e1fec7a|6af60691|0d819de1 - MacOS");
    statusBar->showMessage("passing");
    EXPECT_TRUE(labels.first()->isVisible());
}

TEST_F(WindowTest, StartsEmptyAndUnlocked)
{
    EXPECT_EQ(list()->count(), 0);
    EXPECT_FALSE(child<QPushButton>("editProfileButton")->isVisible());
    EXPECT_FALSE(child<QWidget>("containerScroll")->isVisible());
    EXPECT_FALSE(child<QPushButton>("profileNameUpButton")->isEnabled());
    EXPECT_FALSE(child<QPushButton>("profileNameDownButton")->isEnabled());
    expectLocked(false);
    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.0.0");
}

TEST_F(WindowTest, ListStandsLeftOfThePaneAtEverySize)
{
    makeProfile("Torch");
    for (const QSize size : {QSize(712, 350), QSize(1280, 800), QSize(900, 600)}) {
        window->resize(size);
        QCoreApplication::processEvents();
        const QWidget* pane = child<QWidget>("containerScroll");
        const QRect listPlace(list()->mapTo(window.get(), QPoint()), list()->size());
        const QRect panePlace(pane->mapTo(window.get(), QPoint()), pane->size());
        EXPECT_LT(listPlace.right(), panePlace.left()) << size.width();
        EXPECT_GT(listPlace.width(), 100);
        EXPECT_GT(panePlace.width(), 100);
        EXPECT_TRUE(window->rect().contains(panePlace)) << size.width();
        for (const char* name : {"addProfileButton", "profileNameUpButton", "profileNameDownButton",
                                 "saveChangesButton", "cancelChangesButton", "editProfileButton"}) {
            const QWidget* button = child<QPushButton>(name);
            EXPECT_TRUE(window->rect().contains(
                QRect(button->mapTo(window.get(), QPoint()), button->size())))
                << name << " at " << size.width();
        }
    }
}

// The edit lock

TEST_F(WindowTest, EditingLocksExactlyItsCommands)
{
    makeProfile("Torch");
    expectLocked(false);
    edit();
    expectLocked(true);
    EXPECT_TRUE(child<QPushButton>("profileNameUpButton")->isEnabled());
    EXPECT_TRUE(child<QPushButton>("profileNameDownButton")->isEnabled());
    clickOn(child<QPushButton>("saveChangesButton"));
    expectLocked(false);
}

TEST_F(WindowTest, CancellingAnEditUnlocks)
{
    makeProfile("Torch");
    edit();
    DialogScript script;
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "No");
    clickOn(child<QPushButton>("cancelChangesButton"));
    expectLocked(true);
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "Yes");
    clickOn(child<QPushButton>("cancelChangesButton"));
    expectLocked(false);
}
