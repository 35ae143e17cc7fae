#include "input/menukey.h"

#include <QMenuBar>
#include <QShortcut>

void MenuKey::install(QMenuBar* menuBar)
{
    const auto* key = new QShortcut(Qt::Key_F10, menuBar->window());
    QObject::connect(key, &QShortcut::activated, menuBar,
                     [menuBar] { menuBar->setActiveAction(menuBar->actions().value(0)); });
}
