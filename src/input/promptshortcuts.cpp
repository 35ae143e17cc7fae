#include "input/promptshortcuts.h"

#include <QAbstractButton>
#include <QShortcutEvent>

PromptShortcuts::PromptShortcuts(QWidget* window) : QObject(window)
{
    const QList<QAbstractButton*> buttons = window->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (!button->shortcut().isEmpty()) {
            button->installEventFilter(this);
        }
    }
}

bool PromptShortcuts::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Shortcut || static_cast<QShortcutEvent*>(event)->isAmbiguous()) {
        return QObject::eventFilter(watched, event);
    }
    static_cast<QAbstractButton*>(watched)->click();
    return true;
}
