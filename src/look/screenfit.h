#pragma once

#include <QObject>
#include <QSize>

class QResizeEvent;
class QWidget;

/// Keeps a window within the free area of its screen, the frame that the system draws around it included.
///
/// A window that needs more room than there is gets the size of the room: a FittedFont then makes its
/// texts smaller. A window whose layout fixes its size gets a smaller font here. A window that the user
/// makes larger is left alone.
class ScreenFit : public QObject
{
    Q_OBJECT

public:
    /// Watches `window`, which has a layout and owns this object. To be made after the window's
    /// FittedFont, if it has one.
    explicit ScreenFit(QWidget* window);

    /// The largest size, without its frame, that the window may have on its screen. As long as the window
    /// has no frame, that of the window it belongs to counts, or else a generous guess.
    static QSize room(const QWidget& window);

    /// Moves a window with a layout that is about to be shown over the middle of the window it belongs to, as far as
    /// the screen has room there. Without a visible one the system chooses the place.
    static void centre(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitMinimum();
    void fitFont();
    void fit();
    bool hasGrownByLayout(const QResizeEvent* event) const;
    void moveOntoScreen();

    QWidget* window;
    QSize ownMinimum; ///< which is never made larger
    bool isFrameGuessed = true;
};
