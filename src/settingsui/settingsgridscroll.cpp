#include "settingsui/settingsgridscroll.h"

#include <QScrollArea>
#include <QScrollBar>

namespace
{
// The background is white in every theme, so the texts must not follow a dark palette.
// Nor may the mark of the focus, which is made for the palette's own background.
const QString darkTexts = QStringLiteral("QWidget { color: black;"
                                         "  selection-background-color: rgb(0,80,180);"
                                         "  selection-color: white; }"
                                         "QWidget:disabled { color: rgb(90,90,90); }");

// A white background takes the scroll bars' native look away.
const QString flatScrollBar = QStringLiteral(
    "QScrollBar { background: rgb(240,240,240); }"
    "QScrollBar:vertical { width: 12px; } QScrollBar:horizontal { height: 12px; }"
    "QScrollBar::handle { background: rgb(170,170,170); border-radius: 4px; margin: 2px; }"
    "QScrollBar::handle:vertical { min-height: 24px; }"
    "QScrollBar::handle:horizontal { min-width: 24px; }"
    "QScrollBar::handle:hover { background: rgb(130,130,130); }"
    "QScrollBar::add-line, QScrollBar::sub-line { width: 0px; height: 0px; }");

void setStyles(QScrollArea* scroll, const QString& area, const QString& content,
               const QString& scrollBar)
{
    scroll->setStyleSheet(area);
    scroll->widget()->setStyleSheet(content);
    scroll->verticalScrollBar()->setStyleSheet(scrollBar);
    scroll->horizontalScrollBar()->setStyleSheet(scrollBar);
}
} // namespace

void SettingsGridScroll::dress(QScrollArea* scroll)
{
    setStyles(scroll, QStringLiteral("background-color:white;"), darkTexts, flatScrollBar);
    scroll->setFrameShape(QFrame::StyledPanel);
    scroll->setFocusPolicy(Qt::StrongFocus); // scrolls by keys
}

void SettingsGridScroll::undress(QScrollArea* scroll)
{
    setStyles(scroll, {}, {}, {});
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
}
