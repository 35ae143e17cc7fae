#include "tour.h"

#include "applicationglobalmap.h"
#include "firmware/firmwareflasher.h"
#include "mainwindow.h"
#include "settingsui/advancedmodetogglecheckbox.h"
#include "settingsui/fieldnote.h"
#include "settingsui/settingslineedit.h"
#include "support/gui/httpserver.h"
#include "support/gui/widgets.h"
#include "support/waiting.h"
#include "updatecheck/newfirmwarechecker.h"

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
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
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
    QWidget* wizard = QApplication::activeModalWidget();
    camera.check(wizard != nullptr, "the wizard opens");
    if (wizard == nullptr) {
        return;
    }
    wizard->findChild<QComboBox*>()->setCurrentIndex(chemistry);
    if (isShown) {
        camera.take(wizard, "wizard-chemistry");
    }
    click(wizard, "nextButton");
    const QList<SettingsLineEdit*> fields = wizard->findChildren<SettingsLineEdit*>();
    typeInto(fields.at(0), title);
    typeInto(fields.at(1), subtitle);
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
    typeInto(window->findChildren<SettingsLineEdit*>().at(0), "Drill pack 6S");
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
    typeInto(cells, "60");
    QTest::keyClick(cells, Qt::Key_Return);
    const auto note = [this] { return window->findChild<FieldNote*>(); };
    const bool isNoted = waitFor([&] { return note() != nullptr && note()->isVisible(); });
    camera.check(isNoted, "a number that is too large is noted");
    if (isNoted) {
        camera.takeWith(pane, note(), "field-note");
    }
    typeInto(cells, "6");
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
    onNextDialog([this](QWidget* box) {
        camera.take(box, "message-delete");
        QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes),
                          Qt::LeftButton);
    });
    click(list->itemWidget(list->item(1)), "deleteProfileButton");
    camera.check(list->count() == 2, "one profile is deleted");
}

void Tour::saveAndLoad()
{
    const QString file = camera.pathOf("profiles.xml");
    QFile::remove(file);
    auto* list = window->findChild<QListWidget*>("profileNamesList");
    chooseFile("actionExportXML", file, "save-dialog", [this] {
        onNextDialog([this](QWidget* box) {
            camera.take(box, "message-saved");
            QTest::keyClick(box, Qt::Key_Return);
        });
    });
    camera.check(QFile::exists(file), "the list is saved");
    listTour.showStatus();
    onNextDialog([this](QWidget* box) {
        camera.take(box, "message-delete-all");
        QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes),
                          Qt::LeftButton);
    });
    trigger("actionDeleteAllProfiles");
    camera.check(list->count() == 0, "the list is empty");
    camera.take(window, "list-empty");
    chooseFile("actionImportXML", file, "load-dialog", [] {});
    camera.check(list->count() == 2 && rowTitle(list, 0) == "Drill pack 6S",
                 "the list is loaded back");
    camera.take(window, "loaded-back");
    checkRowsAreWhole();
}

void Tour::chooseFile(const QString& actionName, const QString& path, const QString& pictureName,
                      const std::function<void()>& expectDialogs)
{
    onNextDialog([&](QWidget* dialog) {
        auto* fileName = dialog->findChild<QLineEdit*>("fileNameEdit");
        fileName->setText(path); // typed letter by letter it would enter folders on its way
        camera.take(dialog, pictureName);
        expectDialogs();
        QTest::keyClick(fileName, Qt::Key_Return);
    });
    trigger(actionName);
}

void Tour::writeToCharger()
{
    startTransfer("actionWriteProfiles", "write",
                  [this] { answerResetQuestion("write-success", "Stay in Bootloader Mode"); });
    waitUntilNoDialogIsLeft();
}

void Tour::readFromCharger()
{
    startTransfer("actionReadProfiles", "read", [this] {
        onNextDialog([this](QWidget* box) {
            camera.take(box, "message-add-or-replace");
            QTest::mouseClick(box->findChildren<QPushButton*>().last(), Qt::LeftButton);
            answerResetQuestion("read-success", "Reset Kelvaron");
        });
    });
    waitUntilNoDialogIsLeft();
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    camera.check(list->count() == 2 && rowTitle(list, 0) == "Drill pack 6S"
                     && rowTitle(list, 1) == "Garden tractor",
                 "the charger gives back what was written");
    camera.take(window, "read-back");
}

void Tour::startTransfer(const QString& actionName, const QString& pictureName,
                         const std::function<void()>& expectDialogs)
{
    trigger(actionName);
    QWidget* dialog = QApplication::activeModalWidget();
    camera.check(dialog != nullptr, "the transfer dialog opens");
    if (dialog != nullptr) {
        camera.take(dialog, pictureName + "-port");
        if (pictureName == "write") {
            camera.takeTooltip(dialog, dialog->findChild<QComboBox*>(), "port-tooltip");
        }
        expectDialogs();
        click(dialog, "okButton");
        camera.take(dialog, pictureName + "-working");
    }
}

void Tour::answerResetQuestion(const QString& pictureName, const QString& button)
{
    onNextDialog([=](QWidget* question) {
        camera.take(question->parentWidget(), pictureName);
        camera.take(question, "message-reset");
        const QList<QPushButton*> buttons = question->findChildren<QPushButton*>();
        for (QPushButton* candidate : buttons) {
            if (candidate->text() == button) {
                QTest::mouseClick(candidate, Qt::LeftButton);
            }
        }
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
    QWidget* tool = QApplication::activeModalWidget();
    camera.check(tool != nullptr, "the firmware tool opens");
    if (tool == nullptr) {
        return;
    }
    camera.take(tool, "firmware-tool");
    const QStringList bundles = QDir().entryList({"*.kelvaron"});
    typeInto(tool->findChild<QLineEdit*>("fileInputBox"), bundles.value(0));
    click(tool, "advancedOptionsButton");
    camera.take(tool, "firmware-chosen");
    answerResetQuestion("firmware-verified", "Stay in Bootloader Mode");
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
    HttpServer server;
    const QString newest = ApplicationGlobalMap::getString("bundle_version");
    server.answer("/downloads/latest_bundle_info_new.xml",
                  {200, "<info><current_version>" + newest.toUtf8() + "</current_version></info>"});
    NewFirmwareChecker::NewFirmwareChecker::setServer(server.address());
    trigger("actionCheckNewFirmware");
    QWidget* checker = QApplication::activeModalWidget();
    camera.check(checker != nullptr, "the update check opens");
    if (checker == nullptr) {
        return;
    }
    onNextDialog([this, checker](QWidget* box) {
        camera.take(checker, "update-check");
        camera.take(box, "message-up-to-date");
        QTest::keyClick(box, Qt::Key_Return);
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
    const auto close = [this](const char* name) {
        return [this, name](QWidget* box) {
            camera.take(box, name);
            QTest::keyClick(box, Qt::Key_Return);
        };
    };
    onNextDialog(close("message-getting-started"));
    trigger("actionHelp_2");
    onNextDialog(close("message-about"));
    trigger("actionAbout");
}

void Tour::trigger(const QString& actionName)
{
    auto* action = window->findChild<QAction*>(actionName);
    camera.check(action != nullptr && action->isEnabled(), actionName + " is enabled");
    action->trigger();
}

void Tour::click(QWidget* root, const QString& name)
{
    auto* button = root->findChild<QAbstractButton*>(name);
    const bool isClickable = button != nullptr && button->isVisible() && button->isEnabled();
    camera.check(isClickable, name + " can be clicked");
    if (isClickable) {
        QTest::mouseClick(button, Qt::LeftButton);
    }
}

void Tour::clickRow(int row)
{
    auto* list = window->findChild<QListWidget*>("profileNamesList");
    const QRect place = list->visualItemRect(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      place.topLeft() + QPoint(40, 12));
}

void Tour::typeInto(QWidget* field, const QString& text)
{
    auto* edit = qobject_cast<QLineEdit*>(field);
    edit->setFocus();
    edit->selectAll();
    typeText(edit, text);
}

void Tour::onNextDialog(const std::function<void(QWidget*)>& interact)
{
    auto* timer = new QTimer(this);
    const QWidget* before = QApplication::activeModalWidget();
    auto waited = std::make_shared<int>(0);
    timer->setInterval(20);
    connect(timer, &QTimer::timeout, this, [=] {
        QWidget* dialog = QApplication::activeModalWidget();
        *waited += timer->interval();
        if ((dialog == nullptr || dialog == before || !dialog->isVisible()) && *waited < patience) {
            return;
        }
        timer->stop();
        timer->deleteLater();
        camera.check(dialog != nullptr && dialog != before, "a dialog appears");
        if (dialog != nullptr && dialog != before) {
            interact(dialog);
        }
    });
    timer->start();
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
