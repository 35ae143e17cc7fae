#include "look/textstyle.h"

#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOption>

namespace
{
/// The parts of a menu item's text, with direction marks that keep the punctuation in its place.
QString inOwnDirection(const QString& text)
{
    const QChar mark = text.isRightToLeft() ? QChar(0x200F) : QChar(0x200E);
    const QChar tab = QLatin1Char('\t'); // separates the command from its shortcut
    return mark + QString(text).replace(tab, mark + QString(tab) + mark) + mark;
}

/// Labels and fields align a text by the text's own direction, which would keep it on the left.
template <typename Widget>
void alignRight(Widget* widget)
{
    const Qt::Alignment alignment = widget->alignment();
    if (alignment.testFlag(Qt::AlignLeft)) {
        widget->setAlignment((alignment & ~Qt::AlignLeft) | Qt::AlignRight | Qt::AlignAbsolute);
    }
}
} // namespace

TextStyle::TextStyle(const QString& styleName) : QProxyStyle(styleName) {}

void TextStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    if (!widget->isRightToLeft()) {
        return;
    }
    if (auto* label = qobject_cast<QLabel*>(widget)) {
        alignRight(label);
    } else if (auto* field = qobject_cast<QLineEdit*>(widget)) {
        alignRight(field);
    }
}

void TextStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const
{
    const auto* comboBox = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    const auto* menuItem = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_ComboBoxLabel && comboBox != nullptr) {
        drawComboBoxLabel(*comboBox, painter, widget);
    } else if (element == CE_MenuItem && menuItem != nullptr
               && menuItem->direction == Qt::RightToLeft) {
        QStyleOptionMenuItem marked(*menuItem);
        marked.text = inOwnDirection(marked.text);
        QProxyStyle::drawControl(element, &marked, painter, widget);
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void TextStyle::drawComboBoxLabel(const QStyleOptionComboBox& option, QPainter* painter,
                                  const QWidget* widget) const
{
    constexpr int margins = 2;   // pixels beside the text, as drawn by most styles
    constexpr int iconSpace = 4; // between icon and text
    int room = proxy()->subControlRect(CC_ComboBox, &option, SC_ComboBoxEditField, widget).width()
               - margins;
    if (!option.currentIcon.isNull()) {
        room -= option.iconSize.width() + iconSpace;
    }
    QStyleOptionComboBox fitted(option);
    // The ends of ports and chemistries distinguish them.
    fitted.currentText = option.fontMetrics.elidedText(option.currentText, Qt::ElideMiddle, room);
    painter->save();
    painter->setLayoutDirection(Qt::LayoutDirectionAuto); // the text's own width
    QProxyStyle::drawControl(CE_ComboBoxLabel, &fitted, painter, widget);
    painter->restore();
}
