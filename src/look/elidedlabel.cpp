#include "look/elidedlabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) {
        return QLabel::event(event);
    }
    if (shownText() == text()) {
        event->ignore(); // a widget around the label may have a tooltip
        return false;
    }
    // Without a widget: a tooltip of this one would inherit the style sheets around it.
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       Qt::convertFromPlainText(text()));
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // the text's own width
    style()->drawItemText(
        &painter, contentsRect(),
        QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter), palette(),
        isEnabled(), shownText(), foregroundRole());
}
