#include "widgets/textstyle.h"

#include <QLabel>
#include <QPainter>
#include <QStyleOption>

namespace
{
/// The parts of a menu item's text, with marks that keep their signs in order among the letters.
QString inOwnDirection(const QString& text)
{
    const QChar mark = text.isRightToLeft() ? QChar(0x200F) : QChar(0x200E);
    const QChar tab = QLatin1Char('\t'); // between the command and its key
    return mark + QString(text).replace(tab, mark + QString(tab) + mark) + mark;
}
} // namespace

TextStyle::TextStyle(const QString& styleName) : QProxyStyle(styleName) {}

void TextStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    auto* label = qobject_cast<QLabel*>(widget);
    // A label aligns its text by the text's own direction, which would leave it on the left.
    if (label != nullptr && label->isRightToLeft() && label->alignment().testFlag(Qt::AlignLeft)) {
        label->setAlignment((label->alignment() & ~Qt::AlignLeft) | Qt::AlignRight
                            | Qt::AlignAbsolute);
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
    constexpr int margins = 2;   // pixels beside the text, as styles draw it
    constexpr int iconSpace = 4; // between icon and text
    int room = proxy()->subControlRect(CC_ComboBox, &option, SC_ComboBoxEditField, widget).width()
               - margins;
    if (!option.currentIcon.isNull()) {
        room -= option.iconSize.width() + iconSpace;
    }
    QStyleOptionComboBox fitted(option);
    // Ports and chemistries are told apart by their ends.
    fitted.currentText = option.fontMetrics.elidedText(option.currentText, Qt::ElideMiddle, room);
    painter->save();
    painter->setLayoutDirection(Qt::LayoutDirectionAuto); // that of the text
    QProxyStyle::drawControl(CE_ComboBoxLabel, &fitted, painter, widget);
    painter->restore();
}
