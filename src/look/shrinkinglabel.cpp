#include "look/shrinkinglabel.h"

#include <QPainter>
#include <QStyle>

ShrinkingLabel::ShrinkingLabel(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ShrinkingLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void ShrinkingLabel::paintEvent(QPaintEvent*)
{
    constexpr double smallest = 5; // points
    constexpr double step = 0.5;
    QFont fitting = font();
    double size = fontInfo().pointSizeF();
    while (size > smallest && QFontMetrics(fitting).horizontalAdvance(text()) > width()) {
        size -= step;
        fitting.setPointSizeF(size);
    }
    QPainter painter(this);
    painter.setFont(fitting);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // the text's own width
    style()->drawItemText(
        &painter, contentsRect(),
        QStyle::visualAlignment(layoutDirection(), Qt::AlignRight | Qt::AlignVCenter), palette(),
        isEnabled(), text(), foregroundRole());
}
