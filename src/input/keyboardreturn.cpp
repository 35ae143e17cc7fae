#include "input/keyboardreturn.h"

#include <QApplication>
#include <QWidget>

KeyboardReturn::KeyboardReturn(QWidget* window) : QObject(window), mainWindow(window)
{
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this,
            &KeyboardReturn::onFocusWindowChanged);
    window->installEventFilter(this);
}

bool KeyboardReturn::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ChildRemoved) { // a dialog has been destroyed, perhaps
        QMetaObject::invokeMethod(this, &KeyboardReturn::settleActiveWindow, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

/// A dialog that goes before it was ever given the focus leaves Qt with a window that has the keyboard
/// but is not active: none of its widgets has the focus then.
void KeyboardReturn::settleActiveWindow()
{
    if (QApplication::activeWindow() == nullptr && QApplication::activeModalWidget() == nullptr
        && QGuiApplication::focusWindow() != nullptr
        && QGuiApplication::focusWindow() == mainWindow->windowHandle()) {
        QApplication::setActiveWindow(mainWindow);
    }
}

void KeyboardReturn::onFocusWindowChanged(QWindow* window)
{
    constexpr int moment = 500; // milliseconds
    if (lastWindow != nullptr) {
        disconnect(lastWindow, &QObject::destroyed, this, &KeyboardReturn::onDialogGone);
        if (!lastWindow->isVisible()) {
            onDialogGone();
        }
    }
    lastWindow = window;
    if (window != nullptr) {
        // A window that is destroyed with the focus announces no change of it.
        connect(window, &QObject::destroyed, this, &KeyboardReturn::onDialogGone);
    } else if (sinceGone.isValid() && sinceGone.elapsed() < moment) {
        checkSoon();
    }
}

void KeyboardReturn::onDialogGone()
{
    sinceGone.start();
    checkSoon();
}

void KeyboardReturn::checkSoon()
{
    // The window below may be the next to close.
    QMetaObject::invokeMethod(this, &KeyboardReturn::returnKeyboard, Qt::QueuedConnection);
}

void KeyboardReturn::returnKeyboard()
{
    if (QGuiApplication::focusWindow() == nullptr && QApplication::activeModalWidget() == nullptr
        && mainWindow->isVisible()) {
        mainWindow->activateWindow();
    }
}
