#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPoint>

class QListWidget;
class QMouseEvent;
class QWidget;

/// Lets the user drag a row of the profile list to another place. A line shows where it would go; near
/// the list's ends the list scrolls. Escape, or letting go outside the list, leaves the row where it is.
class RowDrag : public QObject
{
    Q_OBJECT

public:
    /// The list becomes the parent.
    explicit RowDrag(QListWidget* profileList);

signals:
    /// The row `from` is to become the row `to`.
    void dropped(int from, int to);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void press(const QMouseEvent& event);
    bool move(const QMouseEvent& event);
    bool release(const QMouseEvent& event);
    void end();
    void showTarget();
    int gapAt(int y) const;

    QListWidget* list;
    QWidget* line; ///< in the list's viewport
    QPoint pressedAt;
    QPoint pointer;
    int row = -1; ///< that the pointer was pressed on; -1: none
    bool isDragging = false;
    QBasicTimer scrolling;
};
