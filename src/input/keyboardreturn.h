#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWindow>

class QWidget;

/// Returns the keyboard focus to the main window when the last dialog has closed. When two dialogs
/// close at once, some window managers give the focus to the one that is just closing, and then no
/// window has it.
///
/// If the user has switched to another program, the focus stays there, unless the switch happened
/// in the moment when the dialog closed: it is then taken to be the window manager's doing.
class KeyboardReturn : public QObject
{
    Q_OBJECT

public:
    /// `mainWindow` becomes the parent.
    explicit KeyboardReturn(QWidget* mainWindow);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void onFocusWindowChanged(QWindow* window);
    void onDialogGone();
    void checkSoon();
    void returnKeyboard();
    void settleActiveWindow();

    QWidget* mainWindow;
    QPointer<QWindow> lastWindow; ///< the dialog that had the keyboard focus
    QElapsedTimer sinceGone;      ///< since the last dialog closed
};
