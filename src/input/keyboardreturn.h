#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWindow>

class QWidget;

/// Gives the keyboard back to the main window when the last dialog has gone. Some window managers hand
/// it to a dialog that is just closing when two close at once, and then nobody has it.
///
/// A user who has turned to another program is left there, unless that was at the very moment of the
/// dialog's end: then it is thought to be the window manager's doing.
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
    QPointer<QWindow> lastWindow; ///< that had the keyboard
    QElapsedTimer sinceGone;      ///< since the last dialog has gone
};
