#pragma once

#include <QObject>
#include <QSize>

class QWidget;

/// Keeps the texts of a window at the system's font size while there is room for them, and reduces
/// the size otherwise, so that no text is cut off. The dynamic property `textScale` of a widget
/// multiplies its font size.
class FittedFont : public QObject
{
    Q_OBJECT

public:
    /// Watches `window`, which has a layout and owns this object.
    explicit FittedFont(QWidget* window);

    /// Returns the system's font size in points.
    static double wantedSize();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();
    void use(double pointSize);
    bool fits() const;

    QWidget* window;
    double size = 0;   ///< in points
    bool busy = false; ///< a change of the font causes further events
    QSize fittedTo;    ///< the window's size, and the size it needed, when it was last fitted
    QSize fittedNeed;
};
