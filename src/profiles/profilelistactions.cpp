#include "profiles/profilelistactions.h"

#include "profiles/profilename.h"
#include "profiles/profilenamelistwidget.h"
#include "profiles/profilenameslistmanager.h"
#include "ui_mainwindow.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

ProfileListActions::ProfileListActions(const Ui::MainWindow* form,
                                       ProfileNamesListManager* profileList)
    : QObject(form->profileNamesList), ui(form), list(profileList),
      menu(new QMenu(form->profileNamesList))
{
    addOfButton(QStringLiteral("Edit Profile"), ui->editProfileButton);
    QAction* duplicate = add(QStringLiteral("Duplicate"), Qt::CTRL | Qt::Key_D);
    connect(duplicate, &QAction::triggered, this, &ProfileListActions::duplicateWanted);
    QAction* copy = add(QStringLiteral("Copy"), QKeySequence::Copy);
    connect(copy, &QAction::triggered, this, &ProfileListActions::copyWanted);
    QAction* paste = add(QStringLiteral("Paste"), QKeySequence::Paste);
    connect(paste, &QAction::triggered, this, &ProfileListActions::pasteWanted);
    menu->addSeparator();
    addFlags();
    menu->addSeparator();
    addOfButton(QStringLiteral("Move Up"), ui->profileNameUpButton);
    addOfButton(QStringLiteral("Move Down"), ui->profileNameDownButton);
    QAction* top = add(QStringLiteral("Move to the Top"), Qt::ALT | Qt::Key_Home);
    connect(top, &QAction::triggered, list, &ProfileNamesListManager::moveToTop);
    QAction* end = add(QStringLiteral("Move to the End"), Qt::ALT | Qt::Key_End);
    connect(end, &QAction::triggered, list, &ProfileNamesListManager::moveToEnd);
    menu->addSeparator();
    QAction* remove = add(QStringLiteral("Delete...\tDel")); // the list itself handles the key
    connect(remove, &QAction::triggered, list, &ProfileNamesListManager::deleteSelected);
    undo = add(QStringLiteral("Undo Delete or Move"), QKeySequence::Undo);
    connect(undo, &QAction::triggered, list, &ProfileNamesListManager::undo);

    changes = {duplicate, copy, paste, remove, undo};
    ofProfile = {duplicate, copy, active, isDefault, top, end, remove};
    connect(list, &ProfileNamesListManager::historyChanged, this, &ProfileListActions::enable);
    connect(list, &ProfileNamesListManager::settingsPaneUpdateNeeded, this,
            &ProfileListActions::enable);
    connect(list, &ProfileNamesListManager::noMoreProfilesLeft, this, &ProfileListActions::enable);
    enable();

    ui->profileNamesList->installEventFilter(
        this); // has the keyboard focus and receives the Menu key
    ui->profileNamesList->viewport()->installEventFilter(this);
    connect(ui->profileNamesList, &QListWidget::itemDoubleClicked, this,
            [this] { ui->editProfileButton->click(); });
}

QAction* ProfileListActions::add(const QString& text, const QKeySequence& key)
{
    QAction* action = menu->addAction(text);
    action->setShortcut(key);
    ui->profileNamesList->addAction(action); // a closed menu's shortcuts are inactive
    return action;
}

/// A command that has a button. The menu only shows the button's key; the button itself handles it.
void ProfileListActions::addOfButton(const QString& text, QPushButton* button)
{
    QAction* action = menu->addAction(text + QLatin1Char('\t')
                                      + button->shortcut().toString(QKeySequence::NativeText));
    connect(action, &QAction::triggered, button, [button] { button->click(); });
    connect(menu, &QMenu::aboutToShow, action,
            [action, button] { action->setEnabled(button->isVisible() && button->isEnabled()); });
}

void ProfileListActions::addFlags()
{
    active = add(QStringLiteral("Active"));
    isDefault = add(QStringLiteral("Default"));
    active->setCheckable(true);
    isDefault->setCheckable(true);
    connect(active, &QAction::triggered, this,
            [this] { list->getCurrentItem()->getProfileName()->requestActiveChange(); });
    connect(isDefault, &QAction::triggered, this,
            [this] { list->getCurrentItem()->getProfileName()->requestDefaultChange(); });
    connect(menu, &QMenu::aboutToShow, this, [this] {
        const ProfileNameListWidget* item = list->getCurrentItem();
        active->setChecked(item != nullptr && item->getProfileName()->getActiveStatus());
        isDefault->setChecked(item != nullptr && item->getProfileName()->getDefaultStatus());
    });
}

void ProfileListActions::setEditing(bool on)
{
    isEditing = on;
    enable();
}

void ProfileListActions::enable()
{
    const bool hasProfile = list->getCurrentItem() != nullptr;
    const QList<QAction*> actions = changes + ofProfile;
    for (QAction* action : actions) {
        action->setEnabled(!(isEditing && changes.contains(action))
                           && (hasProfile || !ofProfile.contains(action))
                           && (action != undo || list->canUndo()));
    }
}

bool ProfileListActions::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto* press = static_cast<QKeyEvent*>(event);
        if (press->key() == Qt::Key_F10 && press->modifiers() == Qt::ShiftModifier) {
            showMenuBelowSelected(); // for keyboards without a Menu key
            return true;
        }
    }
    if (event->type() != QEvent::ContextMenu) {
        return QObject::eventFilter(watched, event);
    }
    const auto* request = static_cast<QContextMenuEvent*>(event);
    if (request->reason() == QContextMenuEvent::Mouse) {
        showMenu(request->globalPos());
    } else {
        showMenuBelowSelected();
    }
    return true;
}

void ProfileListActions::showMenu(const QPoint& pointer)
{
    QListWidget* listWidget = ui->profileNamesList;
    QListWidgetItem* item = listWidget->itemAt(listWidget->viewport()->mapFromGlobal(pointer));
    if (item != nullptr && !isEditing) {
        list->on_listWidgetClicked(item);
    }
    menu->popup(pointer);
}

void ProfileListActions::showMenuBelowSelected()
{
    QListWidget* listWidget = ui->profileNamesList;
    QPoint place = listWidget->viewport()->rect().center();
    if (list->getCurrentItem() != nullptr) {
        listWidget->scrollToItem(list->getCurrentItem());
        place = listWidget->visualItemRect(list->getCurrentItem()).center();
    }
    menu->popup(listWidget->viewport()->mapToGlobal(place));
}
