#include "tour.h"

#include "applicationglobalmap.h"
#include "firmware/firmwareflasher.h"
#include "mainwindow.h"
#include "settingsui/advancedmodetogglecheckbox.h"
#include "settingsui/fieldnote.h"
#include "settingsui/settingslineedit.h"
#include "support/gui/dialogscript.h"
#include "support/gui/updateserver.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>

#include <cstdio>
#include <cstdlib>

namespace
{
constexpr int wholeTour = 5 * patience; // milliseconds until the tour counts as stuck

QString rowTitle(const QListWidget* list, int row)
{
    const QWidget* widget = list->itemWidget(list->item(row));
    return widget->findChild<QLabel*>("profileTitle")->text();
}
} // namespace

Tour::Tour(MainWindow* mainWindow, const QString& outputFolder)
    : window(mainWindow), camera(outputFolder), listTour(mainWindow, &camera)
{}

bool Tour::run()
{
    QTimer::singleShot(wholeTour, this, [] {
        std::fprintf(stderr, "Tour: stuck\n");
        std::_Exit(EXIT_FAILURE);
    });
    showStart();
    makeProfiles();
    editProfile();
    flagAndReorder();
    listTour.showCommands();
    deleteOneProfile();
    saveAndLoad();
    writeToCharger();
    readFromCharger();
    flashFirmware();
    checkForFirmware();
    showEditMenu();
    showMessages();
    return camera.finish();
}

void Tour::showStart()
{
    camera.check(QTest::qWaitForWindowExposed(window, patience), "the main window shows");
    camera.take(window, "start");
}

void Tour::makeProfiles()
{
    makeProfile(0, "Drill pack 5S", "Workshop", true);
    makeProfile(2, "Garden tractor", "12 V, winter care", false);
    makeProfile(3, "Torch cells", "Quick & gentle <AA>", false);
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    camera.check(list->count() == 3, "the wizard made three profiles");
    checkRowsAreWhole();
    listTour.waitForStatus("not saved yet");
    camera.take(window, "three-profiles");
}

void Tour::makeProfile(int chemistry, const QString& title, const QString& subtitle, bool isShown)
{
    click(window, "addProfileButton");
    QWidget* wizard = openedDialog("the wizard");
    wizard->findChild<QComboBox*>()->setCurrentIndex(chemistry);
    if (isShown) {
        camera.take(wizard, "wizard-chemistry");
    }
    click(wizard, "nextButton");
    const QList<SettingsLineEdit*> fields = wizard->findChildren<SettingsLineEdit*>();
    typeOver(fields.at(0), title);
    typeOver(fields.at(1), subtitle);
    if (isShown) {
        camera.take(wizard, "wizard-settings");
    }
    click(wizard, "nextButton");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Tour::editProfile()
{
    clickRow(0);
    camera.take(window, "view-mode");
    click(window, "editProfileButton");
    auto* toggle = window->findChild<AdvancedModeToggleCheckBox*>();
    camera.check(toggle != nullptr && toggle->isEnabled(), "advanced settings can be switched on");
    if (toggle != nullptr) {
        toggle->click();
    }
    showWhatFieldsTake();
    typeOver(window->findChildren<SettingsLineEdit*>().at(0), "Drill pack 6S");
    camera.take(window, "edit-mode-advanced");
    auto* scroll = window->findChild<QScrollArea*>("containerScroll");
    scroll->verticalScrollBar()->setValue(scroll->verticalScrollBar()->maximum());
    camera.take(window, "edit-mode-advanced-below");
    click(window, "saveChangesButton");
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    camera.check(rowTitle(list, 0) == "Drill pack 6S", "saving renames the row");
    camera.take(window, "changes-saved");
}

void Tour::showWhatFieldsTake()
{
    auto* pane = window->findChild<QWidget*>("settingsList");
    const auto fields = window->findChildren<SettingsLineEdit*>();
    camera.takeTooltip(pane, fields.at(5), "field-tooltip");
    SettingsLineEdit* cells = fields.at(2);
    typeOver(cells, "60");
    QTest::keyClick(cells, Qt::Key_Return);
    const auto note = [this] { return window->findChild<FieldNote*>(); };
    const bool isNoted = waitFor([&] { return note() != nullptr && note()->isVisible(); });
    camera.check(isNoted, "a number that is too large is noted");
    if (isNoted) {
        camera.takeWith(pane, note(), "field-note");
    }
    typeOver(cells, "6");
}

void Tour::flagAndReorder()
{
    auto* list = window->findChild<QListWidget*>("profileNamesList");
    const auto clickInRow = [&](int row, const char* button) {
        click(list->itemWidget(list->item(row)), button);
    };
    clickInRow(1, "defaultProfileButton");
    clickInRow(0, "activeProfileButton");
    clickRow(2);
    click(window, "profileNameUpButton");
    camera.check(rowTitle(list, 1) == "Torch cells", "the profile moves up");
    camera.take(window, "main-window");
}

void Tour::deleteOneProfile()
{
    auto* list = window->findChild<QListWidget*>("profileNamesList");
    DialogScript script;
    script.thenPress("Yes", takes("message-delete"));
    click(list->itemWidget(list->item(1)), "deleteProfileButton");
    camera.check(list->count() == 2, "one profile is deleted");
}

void Tour::saveAndLoad()
{
    const QString file = camera.pathOf("profiles.xml");
    QFile::remove(file);
    auto* list = window->findChild<QListWidget*>("profileNamesList");
    DialogScript script;
    chooseFile(script, file, "save-dialog");
    script.thenPress("OK", takes("message-saved"));
    trigger("actionExportXML");
    camera.check(QFile::exists(file), "the list is saved");
    listTour.showStatus();
    script.thenPress("Yes", takes("message-delete-all"));
    trigger("actionDeleteAllProfiles");
    camera.check(list->count() == 0, "the list is empty");
    camera.take(window, "list-empty");
    chooseFile(script, file, "load-dialog");
    trigger("actionImportXML");
    camera.check(list->count() == 2 && rowTitle(list, 0) == "Drill pack 6S",
                 "the list is loaded back");
    camera.take(window, "loaded-back");
    checkRowsAreWhole();
}

void Tour::chooseFile(DialogScript& script, const QString& path, const QString& pictureName)
{
    script.thenDo([=](QWidget& dialog) {
        auto* fileName = dialog.findChild<QLineEdit*>("fileNameEdit");
        fileName->setText(path); // typed letter by letter it would enter folders on its way
        camera.take(&dialog, pictureName);
        QTest::keyClick(fileName, Qt::Key_Return);
    });
}

void Tour::writeToCharger()
{
    QWidget* dialog = openTransfer("actionWriteProfiles", "write");
    camera.takeTooltip(dialog, dialog->findChild<QComboBox*>(), "port-tooltip");
    DialogScript script;
    answerResetQuestion(script, "write-success", "Stay in Bootloader Mode");
    transfer(dialog, "write");
}

void Tour::readFromCharger()
{
    QWidget* dialog = openTransfer("actionReadProfiles", "read");
    DialogScript script;
    script.thenPress("Replace Profiles", takes("message-add-or-replace"));
    answerResetQuestion(script, "read-success", "Reset Kelvaron");
    transfer(dialog, "read");
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    camera.check(list->count() == 2 && rowTitle(list, 0) == "Drill pack 6S"
                     && rowTitle(list, 1) == "Garden tractor",
                 "the charger gives back what was written");
    camera.take(window, "read-back");
}

QWidget* Tour::openTransfer(const QString& actionName, const QString& pictureName)
{
    trigger(actionName);
    QWidget* dialog = openedDialog("the transfer dialog");
    camera.take(dialog, pictureName + "-port");
    return dialog;
}

void Tour::transfer(QWidget* dialog, const QString& pictureName)
{
    click(dialog, "okButton");
    camera.take(dialog, pictureName + "-working");
    waitUntilNoDialogIsLeft();
}

void Tour::answerResetQuestion(DialogScript& script, const QString& pictureName,
                               const QString& button)
{
    script.thenDo([=](QWidget& question) {
        camera.take(question.parentWidget(), pictureName);
        camera.take(&question, "message-reset");
        clickOn(buttonWithText(question, button));
    });
}

void Tour::waitUntilNoDialogIsLeft()
{
    const auto isOver = [] { return QApplication::activeModalWidget() == nullptr; };
    camera.check(waitFor(isOver), "no dialog is left");
}

void Tour::flashFirmware()
{
    trigger("actionFlashFirmware");
    QWidget* tool = openedDialog("the firmware tool");
    camera.take(tool, "firmware-tool");
    const QStringList bundles = QDir().entryList({"*.kelvaron"});
    typeOver(tool->findChild<QLineEdit*>("fileInputBox"), bundles.value(0));
    click(tool, "advancedOptionsButton");
    camera.take(tool, "firmware-chosen");
    DialogScript script;
    answerResetQuestion(script, "firmware-verified", "Stay in Bootloader Mode");
    // The machine may be too slow for the watchdog.
    tool->findChild<FirmwareTool::FirmwareFlasher*>()->setClock([] { return std::time_t(0); });
    click(tool, "submitButton");
    camera.take(tool, "firmware-erasing");
    pictureWhenShown(tool, "eraseFlashCM", "firmware-loading");
    pictureWhenShown(tool, "loadFileCM", "firmware-uploading");
    pictureWhenShown(tool, "uploadCM", "firmware-verifying");
    const auto* button = tool->findChild<QPushButton*>("submitButton");
    const auto isOver = [button] { return button->isEnabled(); };
    camera.check(waitFor(isOver), "the charger is flashed");
    tool->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    camera.check(list->count() == 2 && rowTitle(list, 0) == "Drill pack 6S", "the list comes back");
    camera.take(window, "after-flash");
}

void Tour::pictureWhenShown(QWidget* root, const char* markName, const QString& name)
{
    const auto* mark = root->findChild<QLabel*>(markName);
    const auto isShown = [mark] { return mark != nullptr && mark->isVisible(); };
    camera.check(waitFor(isShown), name + " is reached");
    camera.take(root, name);
}

void Tour::checkForFirmware()
{
    UpdateServer server;
    server.offer(ApplicationGlobalMap::getString("bundle_version"), {});
    trigger("actionCheckNewFirmware");
    QWidget* checker = openedDialog("the update check");
    DialogScript script;
    script.thenPress("OK", [this, checker](QMessageBox& box) {
        camera.take(checker, "update-check");
        camera.take(&box, "message-up-to-date");
    });
    const auto* button = checker->findChild<QPushButton*>("mainButton");
    const auto isOver = [checker, button] {
        return button->text() == "Close" && QApplication::activeModalWidget() == checker;
    };
    camera.check(waitFor(isOver), "the server's answer is shown");
    click(checker, "mainButton");
    waitUntilNoDialogIsLeft();
}

void Tour::showEditMenu()
{
    camera.check(!window->findChild<QAction*>("actionEditGlobalSettings")->isEnabled(),
                 "global settings are not offered");
    auto* menu = window->findChild<QMenu*>("menuEdit");
    auto* bar = window->findChild<QMenuBar*>("menuBar");
    menu->popup(bar->mapToGlobal(bar->actionGeometry(menu->menuAction()).bottomLeft()));
    camera.take(menu, "edit-menu");
    menu->close();
}

void Tour::showMessages()
{
    DialogScript script;
    script.thenPress("OK", takes("message-getting-started"));
    trigger("actionHelp_2");
    script.thenPress("OK", takes("message-about"));
    trigger("actionAbout");
}

QWidget* Tour::openedDialog(const QString& name)
{
    QWidget* dialog = QApplication::activeModalWidget();
    camera.check(dialog != nullptr, name + " opens");
    if (dialog == nullptr) {
        std::_Exit(EXIT_FAILURE); // the rest of the tour is about it
    }
    return dialog;
}

void Tour::trigger(const QString& actionName)
{
    ::trigger(window->findChild<QAction*>(actionName));
}

void Tour::click(QWidget* root, const QString& name)
{
    clickOn(childNamed<QAbstractButton>(root, name));
}

void Tour::clickRow(int row)
{
    auto* list = window->findChild<QListWidget*>("profileNamesList");
    const QRect place = list->visualItemRect(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      place.topLeft() + QPoint(40, 12));
}

DialogScript::Look Tour::takes(const char* pictureName)
{
    return [this, pictureName](QMessageBox& box) { camera.take(&box, pictureName); };
}

void Tour::checkRowsAreWhole()
{
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    camera.check(QTest::qWaitForWindowExposed(window, patience), "the main window shows");
    QTest::qWait(50); // until the rows are painted
    for (int row = 0; row < list->count(); ++row) {
        const auto* cross =
            list->itemWidget(list->item(row))->findChild<QWidget*>("deleteProfileButton");
        const QRect place(cross->mapTo(list->viewport(), QPoint()), cross->size());
        camera.check(list->viewport()->rect().contains(place),
                     "row " + QString::number(row) + " is whole");
    }
}
