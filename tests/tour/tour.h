#pragma once

#include "listtour.h"
#include "support/gui/dialogscript.h"
#include "tourcamera.h"

#include <QObject>
#include <QString>

class MainWindow;
class QAction;
class QWidget;

/// Takes the real main window through all main tasks with real events: profiles made with the
/// wizard, edited, flagged, reordered, deleted, saved, loaded, written to the simulated charger and
/// read back, firmware flashed into it, and a server asked for a newer one. Leaves a numbered
/// picture of every step, a page that shows them all, and the file accessibility.txt with the
/// content for screen readers.
class Tour : public QObject
{
    Q_OBJECT

public:
    /// Pictures are saved in `outputFolder`, which is created if needed. The window is borrowed.
    Tour(MainWindow* mainWindow, const QString& outputFolder);

    /// Returns true if every step went as a user would expect.
    bool run();

private:
    void showStart();
    void makeProfiles();
    void editProfile();
    void showWhatFieldsTake();
    void flagAndReorder();
    void deleteOneProfile();
    void saveAndLoad();
    void writeToCharger();
    void readFromCharger();
    void flashFirmware();
    void checkForFirmware();
    void showEditMenu();
    void showMessages();

    void makeProfile(int chemistry, const QString& title, const QString& subtitle, bool isShown);
    QWidget* openTransfer(const QString& actionName, const QString& pictureName);
    void transfer(QWidget* dialog, const QString& pictureName);
    void answerResetQuestion(DialogScript& script, const QString& pictureName,
                             const QString& button);
    void waitUntilNoDialogIsLeft();
    void pictureWhenShown(QWidget* window, const char* markName, const QString& name);
    void trigger(const QString& actionName);
    void click(QWidget* root, const QString& name);
    void clickRow(int row);
    QWidget* openedDialog(const QString& name);
    DialogScript::Look takes(const char* pictureName);
    void chooseFile(DialogScript& script, const QString& path, const QString& pictureName);
    void checkRowsAreWhole();

    MainWindow* window;
    TourCamera camera;
    ListTour listTour;
};
