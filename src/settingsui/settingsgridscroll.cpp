#include "settingsui/settingsgridscroll.h"

#include "settingsui/settingsgridlayout.h"

SettingsGridScroll::SettingsGridScroll(HParser::StructSettings* settings, QWidget* parent)
    : QScrollArea(parent), grid(fill(this, settings))
{}

SettingsGridLayout* SettingsGridScroll::fill(QScrollArea* scroll, HParser::StructSettings* settings)
{
    auto* container = new QWidget;
    // The background is white in every theme, so the texts must not follow a dark palette.
    QPalette palette = scroll->palette();
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::All, role, Qt::black);
        palette.setColor(QPalette::Disabled, role, QColor(95, 95, 95));
    }
    container->setPalette(palette);

    auto* grid = new SettingsGridLayout(settings, container);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    scroll->setStyleSheet(QStringLiteral("background-color:white;"));
    scroll->setWidget(container);
    return grid;
}
