#pragma once

#include <QObject>
#include <QSize>

class QResizeEvent;
class QWidget;

/// Keeps a window within the free area of its screen, the frame that the system draws around it
/// included.
///
/// A window that needs more room than the screen has gets the size of the free area; its FittedFont
/// then reduces the font size. A window whose layout fixes its size gets a smaller font here. A
/// window that the user enlarges is left alone.
class ScreenFit : public QObject
{
    Q_OBJECT

public:
    /// Watches `window`, which has a layout and owns this object. REQUIRES: the window's
    /// FittedFont, if any, was created before.
    explicit ScreenFit(QWidget* window);

    /// Returns the largest size, without the frame, that the window may have on its screen. Until
    /// the window has a frame, the frame of its parent window is used, or else a generous guess.
    static QSize room(const QWidget& window);

    /// Centres a window with a layout, about to be shown, over its parent window, as far as the
    /// screen has room there. Without a visible parent window the system chooses the position.
    static void centre(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitMinimum();
    void fitFont();
    void fit();
    bool hasGrownByLayout(const QResizeEvent* event) const;
    void moveOntoScreen();

    QWidget* window;
    QSize ownMinimum; ///< never enlarged
    bool isFrameGuessed = true;
};
