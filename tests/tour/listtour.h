#pragma once

#include <QPoint>
#include <QString>

class MainWindow;
class QListWidget;
class QMenu;
class QWidget;
class TourCamera;

/// The part of the tour that shows what the list offers to the pointer and to the keys, and its
/// status in the status bar. It leaves the list unchanged.
class ListTour
{
public:
    /// Both are borrowed.
    ListTour(MainWindow* mainWindow, TourCamera* tourCamera);

    /// The context menu, the tooltip of a row, the search by a letter, a row that is dragged, and the
    /// way back. Wants three profiles, the last one "Garden tractor".
    void showCommands();

    /// The status of a list that was changed since it was saved.
    void showStatus();

    /// Waits until the status bar shows this text for the list.
    void waitForStatus(const QString& text);

private:
    void showMenu();
    void search();
    void dragRow();
    void takeBack();
    QMenu* openMenu(int row);
    QPoint middleOf(int row) const;
    QString title(int row) const;
    QWidget* rowWidget(int row) const;

    MainWindow* window;
    TourCamera* camera;
    QListWidget* list;
};
