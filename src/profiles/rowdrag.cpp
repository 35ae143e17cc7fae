#include "profiles/rowdrag.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <QScrollBar>

RowDrag::RowDrag(QListWidget* profileList)
    : QObject(profileList), list(profileList), line(new QWidget(profileList->viewport()))
{
    constexpr int thickness = 4; // pixels
    line->setFixedHeight(thickness);
    line->setStyleSheet(QStringLiteral("background-color: rgb(220,110,0);")); // not a valid row
    line->setAttribute(Qt::WA_TransparentForMouseEvents);
    line->hide();
    list->viewport()->installEventFilter(this);
    list->installEventFilter(this);
}

bool RowDrag::eventFilter(QObject* watched, QEvent* event)
{
    bool isTaken = false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        press(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseMove:
        isTaken = move(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonRelease:
        isTaken = release(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::ShortcutOverride: // Escape is a shortcut while a profile is being edited
    case QEvent::KeyPress:
        isTaken = isDragging && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
        if (isTaken) {
            event->accept();
            end();
        }
        break;
    case QEvent::Hide:
    case QEvent::WindowDeactivate:
        end();
        break;
    default:
        break;
    }
    return isTaken || QObject::eventFilter(watched, event);
}

void RowDrag::press(const QMouseEvent& event)
{
    end();
    if (event.button() == Qt::LeftButton) {
        pressedAt = event.pos();
        row = list->row(list->itemAt(event.pos()));
    }
}

bool RowDrag::move(const QMouseEvent& event)
{
    if (row < 0 || !event.buttons().testFlag(Qt::LeftButton)) {
        return false;
    }
    pointer = event.pos();
    if (!isDragging) {
        isDragging = (pointer - pressedAt).manhattanLength() >= QApplication::startDragDistance();
        if (isDragging) {
            constexpr int interval = 30; // milliseconds
            scrolling.start(interval, this);
        }
    }
    if (isDragging) {
        showTarget();
    }
    return isDragging;
}

bool RowDrag::release(const QMouseEvent& event)
{
    if (!isDragging || event.button() != Qt::LeftButton) {
        end();
        return false;
    }
    const int from = row;
    const int gap = gapAt(event.pos().y());
    const bool isInside = list->viewport()->rect().contains(event.pos());
    end();
    const int to = gap > from ? gap - 1 : gap;
    if (isInside && from < list->count() && to != from) {
        emit dropped(from, to);
    }
    return true;
}

void RowDrag::end()
{
    row = -1;
    isDragging = false;
    scrolling.stop();
    line->hide();
}

/// Returns the nearest gap between rows: 0 above the first row, the number of rows below the last.
int RowDrag::gapAt(int y) const
{
    const QListWidgetItem* item = list->itemAt(list->viewport()->width() / 2, y);
    if (item == nullptr) {
        return y < 0 ? 0 : list->count();
    }
    return list->row(item) + (y > list->visualItemRect(item).center().y() ? 1 : 0);
}

void RowDrag::showTarget()
{
    const bool isInside = row < list->count() && list->viewport()->rect().contains(pointer);
    line->setVisible(isInside);
    if (!isInside) {
        return;
    }
    const int gap = gapAt(pointer.y());
    const int y = gap < list->count() ? list->visualItemRect(list->item(gap)).top()
                                      : list->visualItemRect(list->item(gap - 1)).bottom() + 1;
    line->setFixedWidth(list->viewport()->width());
    const int lowest = list->viewport()->height() - line->height();
    line->move(0, qBound(0, y - line->height() / 2, lowest));
    line->raise();
}

void RowDrag::timerEvent(QTimerEvent*)
{
    constexpr int edge = 24; // pixels
    constexpr int step = 8;
    QScrollBar* bar = list->verticalScrollBar();
    if (pointer.y() < edge) {
        bar->setValue(bar->value() - step);
    } else if (pointer.y() > list->viewport()->height() - edge) {
        bar->setValue(bar->value() + step);
    }
    showTarget();
}
