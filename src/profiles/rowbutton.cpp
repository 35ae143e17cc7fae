#include "profiles/rowbutton.h"

#include "look/focusframe.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

RowButton::RowButton(QWidget* parent) : QPushButton(parent) {}

bool RowButton::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        // Without a widget: a tooltip of this one would inherit the style sheets of the button and
        // the row.
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), toolTip());
        return true;
    }
    return QPushButton::event(event);
}

void RowButton::paintEvent(QPaintEvent* event)
{
    QPushButton::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        FocusFrame::draw(painter, rect());
    }
}
