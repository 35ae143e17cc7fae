#include "support/gui/cuttexts.h"

#include "look/elidedlabel.h"
#include "look/shrinkinglabel.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QLabel>
#include <QToolButton>

namespace
{
bool isScrolled(const QWidget* widget)
{
    for (const QWidget* parent = widget->parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        if (qobject_cast<const QAbstractScrollArea*>(parent) != nullptr) {
            return true;
        }
    }
    return false;
}

QSize neededBy(const QWidget* widget)
{
    const auto* label = qobject_cast<const QLabel*>(widget);
    if (label != nullptr && label->wordWrap()) {
        return {0, label->heightForWidth(label->width())};
    }
    if (qobject_cast<const ElidedLabel*>(widget) != nullptr
        || qobject_cast<const ShrinkingLabel*>(widget) != nullptr) {
        return {0, widget->fontMetrics().height()};
    }
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    if (button != nullptr && button->maximumWidth() < QWIDGETSIZE_MAX) {
        return button->fontMetrics().boundingRect(button->text()).size(); // kept small on purpose
    }
    return widget->sizeHint();
}

bool sticksOut(const QWidget* widget)
{
    const QWidget* window = widget->window();
    const QRect place(widget->mapTo(window, QPoint(0, 0)), widget->size());
    return !window->rect().contains(place);
}
} // namespace

QStringList cutTexts(QWidget* window)
{
    QStringList cut;
    const QList<QWidget*> widgets = window->findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const QString text = label != nullptr    ? label->text()
                             : button != nullptr ? button->text()
                                                 : QString();
        if (text.isEmpty() || !widget->isVisible() || widget->window() != window
            || isScrolled(widget) || qobject_cast<const QToolButton*>(widget) != nullptr) {
            continue;
        }
        const QSize need = neededBy(widget);
        if (widget->width() < need.width() || widget->height() < need.height()
            || sticksOut(widget)) {
            cut.append(text);
        }
    }
    return cut;
}
