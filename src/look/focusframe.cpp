#include "look/focusframe.h"

#include <QPainter>

void FocusFrame::draw(QPainter& painter, const QRect& area)
{
    constexpr int thickness = 2;   // pixels
    const QColor blue(0, 80, 180); // stands out from white and from the selected row's grey
    painter.fillRect(area.x(), area.y(), area.width(), thickness, blue);
    painter.fillRect(area.x(), area.bottom() + 1 - thickness, area.width(), thickness, blue);
    painter.fillRect(area.x(), area.y(), thickness, area.height(), blue);
    painter.fillRect(area.right() + 1 - thickness, area.y(), thickness, area.height(), blue);
}
