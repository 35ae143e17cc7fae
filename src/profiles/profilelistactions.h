#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>

class ProfileNamesListManager;
class QAction;
class QMenu;
class QPoint;
class QPushButton;

namespace Ui
{
class MainWindow;
}

/// The commands on profiles that have no button: the list's context menu, and shortcuts that work
/// in the whole window. A double click on a row edits its profile.
class ProfileListActions : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed and outlive this object, a child of the form's list.
    ProfileListActions(const Ui::MainWindow* form, ProfileNamesListManager* profileList);

public slots:
    /// Disables the commands that are not allowed while a profile is being edited.
    void setEditing(bool on);

signals:
    /// Emitted to copy the selected profile below itself, to copy it to the clipboard, or to add
    /// the clipboard's content below it.
    void duplicateWanted();
    void copyWanted();
    void pasteWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* add(const QString& text, const QKeySequence& key = {});
    void addOfButton(const QString& text, QPushButton* button);
    void addFlags();
    void enable();
    void showMenu(const QPoint& pointer);
    void showMenuBelowSelected();

    const Ui::MainWindow* ui;
    ProfileNamesListManager* list;
    QMenu* menu;               ///< a child of the list
    QList<QAction*> changes;   ///< disabled while a profile is being edited
    QList<QAction*> ofProfile; ///< disabled when no profile is selected
    QAction* undo = nullptr;
    QAction* active = nullptr;
    QAction* isDefault = nullptr;
    bool isEditing = false;
};
