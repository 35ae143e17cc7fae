#pragma once

#include "listtour.h"
#include "support/gui/dialogscript.h"
#include "tourcamera.h"

#include <QObject>
#include <QString>

class MainWindow;
class QAction;
class QWidget;

/// Drives the real main window through the main job by real events: profiles made with the wizard,
/// edited, flagged, reordered, deleted, saved, loaded, written to the simulated charger and read
/// back, firmware flashed into it, and a server asked for a newer one. Leaves a numbered picture of
/// every step, a page that shows them all, and in the file accessibility.txt what a screen reader
/// finds there.
class Tour : public QObject
{
    Q_OBJECT

public:
    /// Pictures go into `outputFolder`, which is made if needed. The window is borrowed.
    Tour(MainWindow* mainWindow, const QString& outputFolder);

    /// True when every step went as a user would expect.
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
