#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPoint>

class QListWidget;
class QMouseEvent;
class QWidget;

/// Lets the user drag a row of the profile list to another place. A line shows where it would go;
/// the list scrolls near its ends. Pressing Escape, or releasing the button outside the list,
/// leaves the row where it is.
class RowDrag : public QObject
{
    Q_OBJECT

public:
    /// The list becomes the parent.
    explicit RowDrag(QListWidget* profileList);

signals:
    /// Requests that the row `from` become the row `to`.
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
    int row = -1; ///< on which the button was pressed; -1: none
    bool isDragging = false;
    QBasicTimer scrolling;
};
