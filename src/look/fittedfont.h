#pragma once

#include <QObject>
#include <QSize>

class QWidget;

/// Keeps the texts of a window as large as the system wants them while the window has room for
/// them, and makes them smaller while it has not, so that none is cut off. Widgets with a dynamic
/// property `textScale` have texts this many times as large.
class FittedFont : public QObject
{
    Q_OBJECT

public:
    /// Watches `window`, which has a layout and owns this object.
    explicit FittedFont(QWidget* window);

    /// The size in points that the system wants.
    static double wantedSize();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();
    void use(double pointSize);
    bool fits() const;

    QWidget* window;
    double size = 0;   ///< in points
    bool busy = false; ///< a change of the font makes events of its own
    QSize fittedTo;    ///< the window's size and need when it was fitted last
    QSize fittedNeed;
};
