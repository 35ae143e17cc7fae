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
    if (event->type() == QEvent::ChildRemoved) { // a destroyed object may have been a dialog
        QMetaObject::invokeMethod(this, &KeyboardReturn::settleActiveWindow, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

/// A dialog that closes before it had the focus leaves Qt with a window that has the keyboard focus
/// but is not active; none of its widgets has the focus then.
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
        // No change of focus is reported when a window is destroyed while it has the focus.
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
    // The window below may be about to close, too.
    QMetaObject::invokeMethod(this, &KeyboardReturn::returnKeyboard, Qt::QueuedConnection);
}

void KeyboardReturn::returnKeyboard()
{
    if (QGuiApplication::focusWindow() == nullptr && QApplication::activeModalWidget() == nullptr
        && mainWindow->isVisible()) {
        mainWindow->activateWindow();
    }
}
