#include "tour.h"

#include "applicationglobalmap.h"
#include "firmware/firmwareflasher.h"
#include "mainwindow.h"
#include "settingsui/advancedmodetogglecheckbox.h"
#include "settingsui/settingslineedit.h"
#include "support/gui/accessibletree.h"
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

Tour::Tour(MainWindow* mainWindow, QString outputFolder)
    : window(mainWindow), folder(std::move(outputFolder))
{
    QDir().mkpath(folder);
}

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
    deleteOneProfile();
    saveAndLoad();
    writeToCharger();
    readFromCharger();
    flashFirmware();
    checkForFirmware();
    showEditMenu();
    showMessages();
    check(page.write(folder), "the page of the pictures is written");
    return succeeded;
}

void Tour::showStart()
{
    check(QTest::qWaitForWindowExposed(window, patience), "the main window shows");
    picture(window, "start");
}

void Tour::makeProfiles()
{
    makeProfile(0, "Drill pack 5S", "Workshop", true);
    makeProfile(2, "Garden tractor", "12 V, winter care", false);
    makeProfile(3, "Torch cells", "Quick & gentle <AA>", false);
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    check(list->count() == 3, "the wizard made three profiles");
    checkRowsAreWhole();
    picture(window, "three-profiles");
}

void Tour::makeProfile(int chemistry, const QString& title, const QString& subtitle, bool isShown)
{
    click(window, "addProfileButton");
    QWidget* wizard = QApplication::activeModalWidget();
    check(wizard != nullptr, "the wizard opens");
    if (wizard == nullptr) {
        return;
    }
    wizard->findChild<QComboBox*>()->setCurrentIndex(chemistry);
    if (isShown) {
        picture(wizard, "wizard-chemistry");
    }
    click(wizard, "nextButton");
    const QList<SettingsLineEdit*> fields = wizard->findChildren<SettingsLineEdit*>();
    typeInto(fields.at(0), title);
    typeInto(fields.at(1), subtitle);
    if (isShown) {
        picture(wizard, "wizard-settings");
    }
    click(wizard, "nextButton");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Tour::editProfile()
{
    clickRow(0);
    picture(window, "view-mode");
    click(window, "editProfileButton");
    auto* toggle = window->findChild<AdvancedModeToggleCheckBox*>();
    check(toggle != nullptr && toggle->isEnabled(), "advanced settings can be switched on");
    if (toggle != nullptr) {
        toggle->click();
    }
    typeInto(window->findChildren<SettingsLineEdit*>().at(0), "Drill pack 6S");
    picture(window, "edit-mode-advanced");
    auto* scroll = window->findChild<QScrollArea*>("containerScroll");
    scroll->verticalScrollBar()->setValue(scroll->verticalScrollBar()->maximum());
    picture(window, "edit-mode-advanced-below");
    click(window, "saveChangesButton");
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    check(rowTitle(list, 0) == "Drill pack 6S", "saving renames the row");
    picture(window, "changes-saved");
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
    check(rowTitle(list, 1) == "Torch cells", "the profile moves up");
    picture(window, "main-window");
}

void Tour::deleteOneProfile()
{
    auto* list = window->findChild<QListWidget*>("profileNamesList");
    onNextDialog([this](QWidget* box) {
        picture(box, "message-delete");
        QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes),
                          Qt::LeftButton);
    });
    click(list->itemWidget(list->item(1)), "deleteProfileButton");
    check(list->count() == 2, "one profile is deleted");
}

void Tour::saveAndLoad()
{
    const QString file = QDir(folder).absoluteFilePath("profiles.xml");
    QFile::remove(file);
    auto* list = window->findChild<QListWidget*>("profileNamesList");
    chooseFile("actionExportXML", file, "save-dialog", [this] {
        onNextDialog([this](QWidget* box) {
            picture(box, "message-saved");
            QTest::keyClick(box, Qt::Key_Return);
        });
    });
    check(QFile::exists(file), "the list is saved");
    onNextDialog([this](QWidget* box) {
        picture(box, "message-delete-all");
        QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes),
                          Qt::LeftButton);
    });
    trigger("actionDeleteAllProfiles");
    check(list->count() == 0, "the list is empty");
    picture(window, "list-empty");
    chooseFile("actionImportXML", file, "load-dialog", [] {});
    check(list->count() == 2 && rowTitle(list, 0) == "Drill pack 6S", "the list is loaded back");
    picture(window, "loaded-back");
    checkRowsAreWhole();
}

void Tour::chooseFile(const QString& actionName, const QString& path, const QString& pictureName,
                      const std::function<void()>& expectDialogs)
{
    onNextDialog([&](QWidget* dialog) {
        auto* fileName = dialog->findChild<QLineEdit*>("fileNameEdit");
        fileName->setText(path); // typed letter by letter it would enter folders on its way
        picture(dialog, pictureName);
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
            picture(box, "message-add-or-replace");
            QTest::mouseClick(box->findChildren<QPushButton*>().last(), Qt::LeftButton);
            answerResetQuestion("read-success", "Reset Kelvaron");
        });
    });
    waitUntilNoDialogIsLeft();
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    check(list->count() == 2 && rowTitle(list, 0) == "Drill pack 6S"
              && rowTitle(list, 1) == "Garden tractor",
          "the charger gives back what was written");
    picture(window, "read-back");
}

void Tour::startTransfer(const QString& actionName, const QString& pictureName,
                         const std::function<void()>& expectDialogs)
{
    trigger(actionName);
    QWidget* dialog = QApplication::activeModalWidget();
    check(dialog != nullptr, "the transfer dialog opens");
    if (dialog != nullptr) {
        picture(dialog, pictureName + "-port");
        expectDialogs();
        click(dialog, "okButton");
        picture(dialog, pictureName + "-working");
    }
}

void Tour::answerResetQuestion(const QString& pictureName, const QString& button)
{
    onNextDialog([=](QWidget* question) {
        picture(question->parentWidget(), pictureName);
        picture(question, "message-reset");
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
    check(waitFor(isOver), "no dialog is left");
}

void Tour::flashFirmware()
{
    trigger("actionFlashFirmware");
    QWidget* tool = QApplication::activeModalWidget();
    check(tool != nullptr, "the firmware tool opens");
    if (tool == nullptr) {
        return;
    }
    picture(tool, "firmware-tool");
    const QStringList bundles = QDir().entryList({"*.kelvaron"});
    typeInto(tool->findChild<QLineEdit*>("fileInputBox"), bundles.value(0));
    click(tool, "advancedOptionsButton");
    picture(tool, "firmware-chosen");
    answerResetQuestion("firmware-verified", "Stay in Bootloader Mode");
    // The machine may be too slow for the watchdog.
    tool->findChild<FirmwareTool::FirmwareFlasher*>()->setClock([] { return std::time_t(0); });
    click(tool, "submitButton");
    picture(tool, "firmware-erasing");
    pictureWhenShown(tool, "eraseFlashCM", "firmware-loading");
    pictureWhenShown(tool, "loadFileCM", "firmware-uploading");
    pictureWhenShown(tool, "uploadCM", "firmware-verifying");
    const auto* button = tool->findChild<QPushButton*>("submitButton");
    const auto isOver = [button] { return button->isEnabled(); };
    check(waitFor(isOver), "the charger is flashed");
    tool->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    check(list->count() == 2 && rowTitle(list, 0) == "Drill pack 6S", "the list comes back");
    picture(window, "after-flash");
}

void Tour::pictureWhenShown(QWidget* root, const char* markName, const QString& name)
{
    const auto* mark = root->findChild<QLabel*>(markName);
    const auto isShown = [mark] { return mark != nullptr && mark->isVisible(); };
    check(waitFor(isShown), name + " is reached");
    picture(root, name);
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
    check(checker != nullptr, "the update check opens");
    if (checker == nullptr) {
        return;
    }
    onNextDialog([this, checker](QWidget* box) {
        picture(checker, "update-check");
        picture(box, "message-up-to-date");
        QTest::keyClick(box, Qt::Key_Return);
    });
    const auto* button = checker->findChild<QPushButton*>("mainButton");
    const auto isOver = [checker, button] {
        return button->text() == "Close" && QApplication::activeModalWidget() == checker;
    };
    check(waitFor(isOver), "the server's answer is shown");
    click(checker, "mainButton");
    waitUntilNoDialogIsLeft();
}

void Tour::showEditMenu()
{
    check(!window->findChild<QAction*>("actionEditGlobalSettings")->isEnabled(),
          "global settings are not offered");
    auto* menu = window->findChild<QMenu*>("menuEdit");
    auto* bar = window->findChild<QMenuBar*>("menuBar");
    menu->popup(bar->mapToGlobal(bar->actionGeometry(menu->menuAction()).bottomLeft()));
    picture(menu, "edit-menu");
    menu->close();
}

void Tour::showMessages()
{
    const auto close = [this](const char* name) {
        return [this, name](QWidget* box) {
            picture(box, name);
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
    check(action != nullptr && action->isEnabled(), actionName + " is enabled");
    action->trigger();
}

void Tour::click(QWidget* root, const QString& name)
{
    auto* button = root->findChild<QAbstractButton*>(name);
    const bool isClickable = button != nullptr && button->isVisible() && button->isEnabled();
    check(isClickable, name + " can be clicked");
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
        check(dialog != nullptr && dialog != before, "a dialog appears");
        if (dialog != nullptr && dialog != before) {
            interact(dialog);
        }
    });
    timer->start();
}

void Tour::picture(QWidget* widget, const QString& name)
{
    check(QTest::qWaitForWindowExposed(widget->window(), patience), name + " shows");
    QTest::qWait(150); // lets styles and scroll bars settle; nothing is decided by it
    const QString file =
        QStringLiteral("%1-%2.png").arg(++pictureNumber, 2, 10, QLatin1Char('0')).arg(name);
    check(widget->grab().save(QDir(folder).absoluteFilePath(file)), file + " is written");
    check(TourPage::describes(name), "there are words for " + name);
    page.add(name, file);
    readAloud(widget, name);
}

void Tour::readAloud(QWidget* widget, const QString& name)
{
    QFile file(QDir(folder).absoluteFilePath("accessibility.txt"));
    const bool isOpen = file.open(pictureNumber == 1 ? QIODevice::WriteOnly : QIODevice::Append);
    check(isOpen, file.fileName() + " is written");
    file.write(QStringLiteral("%1 %2\n\n%3\n")
                   .arg(pictureNumber, 2, 10, QLatin1Char('0'))
                   .arg(name, AccessibleTree::print(widget))
                   .toUtf8());
    const QStringList faults = AccessibleTree::faults(widget);
    check(faults.isEmpty(), "a screen reader can tell all of " + name + '\n' + faults.join('\n'));
}

void Tour::checkRowsAreWhole()
{
    const auto* list = window->findChild<QListWidget*>("profileNamesList");
    check(QTest::qWaitForWindowExposed(window, patience), "the main window shows");
    QTest::qWait(50); // until the rows are painted
    for (int row = 0; row < list->count(); ++row) {
        const auto* cross =
            list->itemWidget(list->item(row))->findChild<QWidget*>("deleteProfileButton");
        const QRect place(cross->mapTo(list->viewport(), QPoint()), cross->size());
        check(list->viewport()->rect().contains(place),
              "row " + QString::number(row) + " is whole");
    }
}

void Tour::check(bool isTrue, const QString& what)
{
    if (!isTrue) {
        std::fprintf(stderr, "Tour: it is not so that %s\n", qUtf8Printable(what));
        succeeded = false;
    }
}
