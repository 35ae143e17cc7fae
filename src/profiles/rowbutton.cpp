#include "profiles/rowbutton.h"

#include "widgets/focusframe.h"

#include <QPainter>

RowButton::RowButton(QWidget* parent) : QPushButton(parent) {}

void RowButton::paintEvent(QPaintEvent* event)
{
    QPushButton::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        FocusFrame::draw(painter, rect());
    }
}
