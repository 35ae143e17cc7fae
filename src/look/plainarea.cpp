#include "look/plainarea.h"

#include <QAbstractScrollArea>
#include <QScrollBar>

namespace
{
const QString flat = QStringLiteral(
    "QScrollBar { background: rgb(240,240,240); }"
    "QScrollBar:vertical { width: 12px; } QScrollBar:horizontal { height: 12px; }"
    "QScrollBar::handle { background: rgb(170,170,170); border-radius: 4px; margin: 2px; }"
    "QScrollBar::handle:vertical { min-height: 24px; }"
    "QScrollBar::handle:horizontal { min-width: 24px; }"
    "QScrollBar::handle:hover { background: rgb(130,130,130); }"
    "QScrollBar::add-line, QScrollBar::sub-line { width: 0px; height: 0px; }");

void setStyles(const QAbstractScrollArea* area, const QString& style)
{
    area->verticalScrollBar()->setStyleSheet(style);
    area->horizontalScrollBar()->setStyleSheet(style);
}
} // namespace

void PlainArea::dress(QAbstractScrollArea* area)
{
    setStyles(area, flat);
    area->setFrameStyle(QFrame::Box | QFrame::Plain);
    QPalette palette = area->palette();
    palette.setColor(QPalette::WindowText, QColor(184, 184, 184)); // draws the frame
    area->setPalette(palette);
}

void PlainArea::undress(QAbstractScrollArea* area)
{
    setStyles(area, {});
    area->setFrameShape(QFrame::NoFrame);
    area->setPalette(QPalette());
}
