#include "settingsui/settingsgridscroll.h"

#include "look/plainarea.h"

#include <QScrollArea>

namespace
{
// The background is white in every theme, so the texts must not follow a dark palette. Neither must
// the focus frame, whose colour suits the palette's own background.
const QString darkTexts = QStringLiteral("QWidget { color: black;"
                                         "  selection-background-color: rgb(0,80,180);"
                                         "  selection-color: white; }"
                                         "QWidget:disabled { color: rgb(90,90,90); }");
} // namespace

void SettingsGridScroll::dress(QScrollArea* scroll)
{
    scroll->setStyleSheet(QStringLiteral("background-color:white;"));
    scroll->widget()->setStyleSheet(darkTexts);
    PlainArea::dress(scroll);
    scroll->setFocusPolicy(Qt::StrongFocus); // so that keys scroll it
}

void SettingsGridScroll::undress(QScrollArea* scroll)
{
    scroll->setStyleSheet({});
    scroll->widget()->setStyleSheet({});
    PlainArea::undress(scroll);
    scroll->setFocusPolicy(Qt::NoFocus);
}
