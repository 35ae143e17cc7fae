#include "settingsui/focusinsight.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>

FocusInSight::FocusInSight(QScrollArea* scrollArea) : QObject(scrollArea), scroll(scrollArea)
{
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget* before, QWidget* now) {
        if (before != nullptr && now != nullptr && before->window() == now->window()) {
            follow(now);
        }
    });
    connect(scroll->verticalScrollBar(), &QScrollBar::rangeChanged, this,
            [this] { follow(scroll->window()->focusWidget()); });
}

void FocusInSight::follow(QWidget* focused)
{
    if (focused != nullptr && scroll->widget() != nullptr
        && scroll->widget()->isAncestorOf(focused)) {
        // ensureWidgetVisible() considers only the text cursor.
        const QPoint middle = focused->mapTo(scroll->widget(), focused->rect().center());
        scroll->ensureVisible(middle.x(), middle.y(), focused->width() / 2 + 1,
                              focused->height() / 2 + 1);
    }
}
