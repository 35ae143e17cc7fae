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

/// What can be done with the profiles of the list beside its buttons: the list's context menu, and keys
/// that hold in the whole window. A double click on a row edits its profile.
class ProfileListActions : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed and outlive this object, a child of the form's list.
    ProfileListActions(const Ui::MainWindow* form, ProfileNamesListManager* profileList);

public slots:
    /// Disables what must not happen while a profile is being edited.
    void setEditing(bool on);

signals:
    /// The selected profile is to be copied below itself, or to the clipboard; what the clipboard holds
    /// is to be added below it.
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
    QList<QAction*> changes;   ///< not during an edit
    QList<QAction*> ofProfile; ///< not without a selected profile
    QAction* undo = nullptr;
    QAction* active = nullptr;
    QAction* isDefault = nullptr;
    bool isEditing = false;
};
